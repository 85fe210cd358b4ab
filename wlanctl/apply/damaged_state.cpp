#include "wlanctl/apply/damaged_state.h"

#include <string>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/bridges.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/apply/unread.h"
#include "wlanctl/base/report.h"
#include "wlanctl/files/places.h"

namespace wlanctl {
namespace {

constexpr struct {
  bool (*is_damaged)(Band band);
  const char* place;
  const char* meaning;
} kFiles[] = {
    {is_applied_damaged, place::kApplied, "what was last applied is not known"},
    {are_lacks_damaged, place::kLacking, "not all of what was not in force can be asked of the system"},
    {are_bridges_damaged, place::kBridges, "where the interfaces were put is not known"},
    {is_unread_damaged, place::kUnread, "what the driver has not read yet is not known"},
};

}  // namespace

void note_damaged_state(Band band, Report& report) {
  for (const auto& file : kFiles) {
    if (!file.is_damaged(band)) continue;
    report.note(std::string(file.place) + label_of(band) + " is damaged: " + file.meaning +
                "; an apply that restarts the interfaces writes it anew");
  }
}

}  // namespace wlanctl
