#include "wlanctl/verbs/settings/output_place.h"

#include <sys/stat.h>

#include <cstdlib>

#include "wlanctl/base/band.h"
#include "wlanctl/base/report.h"
#include "wlanctl/files/lasting_folder.h"
#include "wlanctl/files/places.h"
#include "wlanctl/history/folder.h"
#include "wlanctl/store/dat_file.h"

namespace wlanctl {
namespace {

// What the tool's own files begin with, in each folder that has some.
constexpr char kOwnName[] = "/wlanctl";

// "" where there is nothing.
std::string real_path(const std::string& path) {
  char* const whole = realpath(path.c_str(), nullptr);
  std::string real = whole == nullptr ? "" : whole;
  std::free(whole);
  return real;
}

// Also by another name of the same file.
bool is_same_file(const std::string& left, const std::string& right) {
  struct stat one = {};
  struct stat other = {};
  return stat(left.c_str(), &one) == 0 && stat(right.c_str(), &other) == 0 && one.st_dev == other.st_dev &&
         one.st_ino == other.st_ino;
}

bool is_in(const std::string& place, const std::string& folder, const std::string& name) {
  const std::string real = real_path(folder);
  return !real.empty() && place.starts_with(real + name);
}

bool is_own(const std::string& place) {
  return is_in(place, place::kFolder, kOwnName) || is_in(place, lasting_folder(), kOwnName) ||
         is_in(place, history_folder(), "/");
}

bool refuse(const std::string& path, const std::string& reason, const std::string& next, Report& report) {
  report.problem({"cannot write " + path + ": " + reason, next, {{"file", path}}});
  return true;
}

}  // namespace

std::string place_of_output(const std::string& path) {
  std::string real = real_path(path);
  if (!real.empty()) return real;
  const size_t slash = path.rfind('/');
  const std::string folder = real_path(slash == std::string::npos ? "." : path.substr(0, slash + 1));
  const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
  return folder.empty() ? path : (folder == "/" ? "" : folder) + "/" + name;
}

bool refuse_output(const std::string& path, Report& report) {
  const std::string place = place_of_output(path);
  for (const Band band : kBands) {
    const std::string file = dat_path_of(band);
    if (place != place_of_output(file) && !is_same_file(place, file)) continue;
    const std::string label = label_of(band);
    return refuse(path, "it is the dat file of " + label,
                  "name another file; wlanctl save " + label +
                      " writes the store into it, and wlanctl import FILE --to-file what an export has",
                  report);
  }
  return is_own(place) && refuse(path, "wlanctl keeps files of its own there", "name another file", report);
}

}  // namespace wlanctl
