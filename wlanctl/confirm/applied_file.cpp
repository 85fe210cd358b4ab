#include "wlanctl/confirm/applied_file.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/text.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/kept_file.h"
#include "wlanctl/store/revert.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {
namespace {

// An apply takes no key out of the file, but for those behind its count of SSIDs. After a boot the store says nothing: it
// was made of that file.
std::vector<std::string> lacking_keys(const Pending& pending, const std::vector<wifimgr_attr_record>& file) {
  std::vector<std::string> lacking = missing_keys(parse_dat_text(pending.dat), file);
  if (pending.boot != this_boot() || !is_store_open(pending.band)) return lacking;
  for (const std::string& key : missing_keys(table_of_store(pending.band), file)) {
    if (std::find(lacking.begin(), lacking.end(), key) == lacking.end()) lacking.push_back(key);
  }
  return lacking;
}

// The first ones tell what it is about.
std::string first_of(const std::vector<std::string>& keys) {
  constexpr size_t kMostNamed = 4;
  std::vector<std::string> named(keys.begin(), keys.begin() + std::min(std::ssize(keys), ptrdiff_t{kMostNamed}));
  if (keys.size() > named.size()) named.push_back("and " + std::to_string(keys.size() - named.size()) + " more keys");
  return joined(named, ", ");
}

}  // namespace

bool has_what_was_applied(const Pending& pending, Report& report) {
  const Band band = pending.band;
  const std::string label = label_of(band);
  const bool has_booted = pending.boot != this_boot();
  if (!has_booted && is_in_force_known(band)) return true;
  const auto file = parse_dat_file(band);
  const std::vector<std::string> lacking = lacking_keys(pending, file.value_or(std::vector<wifimgr_attr_record>()));
  if (lacking.empty()) return true;
  const std::string rollback = "wlanctl rollback " + label + " puts back what was before; --force keeps what is there";
  // After a boot the store has no more than the file.
  const std::string save = has_booted ? "" : "wlanctl save " + label + " --force writes the file anew, confirm then; ";
  report.problem({dat_path_of(band) + " has not all of what was applied to " + label +
                      ", a boot would come up without " + first_of(lacking),
                  save + rollback, about(band)});
  return false;
}

void keep_foreign_file(const Pending& pending, Report& report) {
  const Band band = pending.band;
  const std::string path = dat_path_of(band);
  // What an apply at work has written, in part or whole, is nobody else's.
  if (is_in_force_known(band) || is_apply_cut_off(band)) return;
  const std::optional<std::string> file = read_bytes(path);
  if (!file || file->empty() || *file == pending.dat) return;
  const bool is_known = pending.boot == this_boot() && kept_in_force(band).has_value();
  const std::string what = is_known
                               ? "others have changed " + path + " since the apply of " + label_of(band)
                               : "nobody knows whether " + path + " is as the apply of " + label_of(band) + " left it";
  if (keep_dat_bytes(band, *file)) {
    report.note(what + "; as it was before the roll back it is kept in " + kept_path_of(band));
  } else {
    report.note(what + ", and it cannot be kept in " + kept_path_of(band) + because(std::strerror(errno)) +
                "; the roll back overwrites it");
  }
}

}  // namespace wlanctl
