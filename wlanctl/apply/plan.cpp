#include "wlanctl/apply/plan.h"

#include <optional>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/run.h"
#include "wlanctl/base/report.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/keys/danger.h"
#include "wlanctl/library/file_redirect.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

// The dat file that a save would make of the store that the library works on: what differs in it makes a difference.
std::optional<std::string> saved_text(Band band) {
  const MemoryFile file;
  const DatRedirect redirect(band, file);
  if (wifimgr_lib_save_dataFile(number_of(band)) != 0) return std::nullopt;
  return file.text();
}

std::optional<std::string> saved_text(Band band, const std::vector<wifimgr_attr_record>& content) {
  const PrivateStore store(band, content);
  return saved_text(band);
}

std::vector<Danger> dangers_of(Band band) {
  std::vector<Danger> dangers;
  for (const Key& key : all_keys()) {
    if (!key.is_on(band) || key.scope == Scope::kLink) continue;
    const int last = key.scope == Scope::kBand ? 1 : ssid_count(band);
    for (int i = 1; i <= last; ++i) {
      const Target target = {&key, key.scope == Scope::kBand ? -1 : i};
      // What stands behind a line end in it, the script would take for a line of its own.
      const std::optional<std::string> value = read_raw_value(band, key, target.index);
      const std::string reason = value ? shell_danger_of(key, *value) : "";
      if (!reason.empty()) dangers.push_back({target.name(), reason});
    }
  }
  return dangers;
}

}  // namespace

Plan plan_apply(Band band) {
  Plan plan;
  const std::optional<std::string> live = saved_text(band);
  const auto parsed = parse_dat_file(band);
  const std::optional<std::string> file = parsed ? saved_text(band, *parsed) : std::nullopt;
  const std::optional<std::string> in_force = saved_text(band, settings_in_force(band));
  plan.is_file_in_force = file == in_force;
  plan.nothing = live && live == file && live == in_force && weigh(band) == 0 && is_told(band);

  const PrivateStore copy(band);
  Report unheard;
  make_consistent(band, unheard);
  plan.weight = plan.nothing ? 0 : weigh(band);
  plan.dangers = dangers_of(band);
  return plan;
}

}  // namespace wlanctl
