#include "wlanctl/verbs/apply/settings_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "wlanctl/base/report.h"
#include "wlanctl/check/dat_check.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/store/dat_file.h"

namespace wlanctl {
namespace {

// Of a plain file: a pipe with nobody at its other end would be waited for.
std::optional<std::string> bytes_of(const std::string& path, std::string* reason) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  struct stat status = {};
  std::optional<std::string> bytes;
  if (file < 0 || fstat(file, &status) != 0) {
    *reason = std::strerror(errno);
  } else if (!S_ISREG(status.st_mode)) {
    *reason = "it is no plain file";
  } else {
    bytes = read_open_file(file);
    if (!bytes) *reason = std::strerror(errno);
  }
  if (file >= 0) close(file);
  return bytes;
}

}  // namespace

std::optional<std::vector<BandSettings>> read_settings_file(const std::string& path, Report& report) {
  std::string reason;
  const std::optional<std::string> bytes = bytes_of(path, &reason);
  if (!bytes) {
    report.problem(
        {"cannot read " + path + ": " + reason, "name a band, 2.4g or 5g, or a file that is there", {{"file", path}}});
    return std::nullopt;
  }
  BandSettings settings = {band_of_dat_path(path), records_of(parse_dat_text(*bytes))};
  if (settings.records.empty()) {
    report.problem({path + " has no settings", "is it a dat file? wlanctl check judges it", {{"file", path}}});
    return std::nullopt;
  }
  return std::vector<BandSettings>{std::move(settings)};
}

}  // namespace wlanctl
