#include "wlanctl/store/attached_processes.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdio>

#include "wlanctl/base/text.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/process.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {
namespace {

// Others have keys of their own.
std::string kernel_objects_of(const std::string& process) {
  char text[PATH_MAX];
  const ssize_t length = readlink(("/proc/" + process + "/ns/ipc").c_str(), text, sizeof text);
  return std::string(text, length > 0 ? static_cast<size_t>(length) : 0);
}

// As the kernel names a mapping of the segment, also when it has been removed.
std::string mapping_of(Band band) {
  char text[32];
  (void)std::snprintf(text, sizeof text, "/SYSV%08x", static_cast<unsigned>(segment_key(band)));
  return text;
}

std::vector<pid_t> all_processes() {
  std::vector<pid_t> processes;
  DIR* const folder = opendir("/proc");
  if (folder == nullptr) return processes;
  while (const dirent* const entry = readdir(folder)) {
    const std::optional<int64_t> number = number_in(entry->d_name);
    if (number && *number > 0 && *number <= INT_MAX) processes.push_back(static_cast<pid_t>(*number));
  }
  (void)closedir(folder);
  std::sort(processes.begin(), processes.end());
  return processes;
}

// The numbers of the segments with that name that a process has.
std::vector<std::string> segments_in(const std::string& maps, const std::string& name) {
  constexpr size_t kNumber = 4;
  constexpr size_t kName = 5;
  std::vector<std::string> numbers;
  for (const std::string& line : lines_of(maps)) {
    if (line.find(name) == std::string::npos) continue;
    const std::vector<std::string> words = words_of(line);
    if (words.size() > kName && words[kName] == name) numbers.push_back(words[kNumber]);
  }
  return numbers;
}

}  // namespace

std::vector<AttachedProcess> attached_processes(Band band) {
  const std::string current = std::to_string(segment_of(band));
  const std::string name = mapping_of(band);
  const std::string own_objects = kernel_objects_of("self");
  std::vector<AttachedProcess> attached;
  for (const pid_t process : all_processes()) {
    const std::string number = std::to_string(process);
    if (process == getpid() || kernel_objects_of(number) != own_objects) continue;
    const std::vector<std::string> segments = segments_in(read_bytes("/proc/" + number + "/maps").value_or(""), name);
    if (segments.empty()) continue;
    const bool is_current = std::find(segments.begin(), segments.end(), current) != segments.end();
    attached.push_back({process, is_current});
  }
  return attached;
}

std::string names_of(const std::vector<AttachedProcess>& processes) {
  constexpr size_t kMost = 5;
  std::vector<std::string> names;
  for (size_t i = 0; i < std::min(kMost, processes.size()); ++i) {
    names.push_back(text_of_process(processes[i].process));
  }
  if (processes.size() > kMost) names.push_back("and " + std::to_string(processes.size() - kMost) + " more");
  return joined(names, ", ");
}

}  // namespace wlanctl
