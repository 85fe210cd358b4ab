#include "wlanctl/history/folder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "wlanctl/files/bytes.h"
#include "wlanctl/files/lasting_folder.h"
#include "wlanctl/files/state_file.h"

namespace wlanctl {
namespace {

constexpr char kFormat[] = "wlanctl-history";
constexpr int kVersion = 1;
constexpr char kOff[] = "off";
constexpr char kName[] = "entry-";
constexpr size_t kMostDigits = 9;
constexpr size_t kMostNames = 1000;
constexpr char kGone[] = "it is gone";
constexpr size_t kSuffix = 7;  // of a file that is not whole yet, ".XXXXXX"

struct Listed {
  unsigned number = 0;  // 0 for what is no entry
  std::string name;
};

struct Listing {
  std::vector<Listed> files;  // entries by their number
  std::vector<std::string> unfinished;
  std::string failure;
};

unsigned number_of_name(const std::string& name) {
  if (!name.starts_with(kName)) return 0;
  const std::string digits = name.substr(sizeof kName - 1);
  if (digits.empty() || digits.size() > kMostDigits || digits[0] == '0') return 0;
  if (digits.find_first_not_of("0123456789") != std::string::npos) return 0;
  return static_cast<unsigned>(std::stoul(digits));
}

bool is_unfinished(const std::string& name) {
  return name.size() > kSuffix && name[name.size() - kSuffix] == '.' &&
         number_of_name(name.substr(0, name.size() - kSuffix)) != 0;
}

std::string path_of(const std::string& name) {
  return history_folder() + "/" + name;
}

// Whoever else could write there could have an undo set what they like.
std::string fault_of_folder(int folder) {
  struct stat status;
  if (fstat(folder, &status) != 0) return std::strerror(errno);
  if (status.st_uid != geteuid()) return "it is somebody else's";
  return (status.st_mode & 022) != 0 ? "others may write it" : "";
}

// A guardian works in another folder than who started it.
std::string fault_of_name(const std::string& path) {
  return path.starts_with('/') ? "" : "cannot use " + path + ": its name does not begin with /";
}

int open_folder(Listing* listing) {
  const std::string path = history_folder();
  listing->failure = fault_of_name(path);
  if (!listing->failure.empty()) return -1;
  const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) {
    if (errno != ENOENT) listing->failure = "cannot open " + path + ": " + std::strerror(errno);
    return -1;
  }
  const std::string fault = fault_of_folder(folder);
  if (fault.empty()) return folder;
  listing->failure = "cannot use " + path + ": " + fault;
  close(folder);
  return -1;
}

void take_name(const std::string& name, Listing* listing) {
  if (name == "." || name == "..") return;
  if (is_unfinished(name)) {
    listing->unfinished.push_back(name);
  } else {
    listing->files.push_back({number_of_name(name), name});
  }
}

Listing list_folder() {
  Listing listing;
  const int file = open_folder(&listing);
  DIR* const folder = file < 0 ? nullptr : fdopendir(file);
  if (folder == nullptr) return listing;
  while (const dirent* const entry = readdir(folder)) {
    take_name(entry->d_name, &listing);
    if (listing.files.size() + listing.unfinished.size() <= kMostNames) continue;
    listing.failure = history_folder() + " has more than " + std::to_string(kMostNames) + " files";
    break;
  }
  closedir(folder);
  std::sort(listing.files.begin(), listing.files.end(),
            [](const Listed& one, const Listed& other) { return one.number < other.number; });
  return listing;
}

std::string fault_of_file(int file) {
  struct stat status;
  if (fstat(file, &status) != 0) return std::strerror(errno);
  if (!S_ISREG(status.st_mode)) return "it is no plain file";
  if (status.st_uid != geteuid() || (status.st_mode & 077) != 0) return "it is not its owner's alone";
  return status.st_size > static_cast<off_t>(kMostBytesOfEntry) ? "it is too large" : "";
}

// What is wrong with the file; "" when the entry was read.
std::string read_entry(const Listed& listed, Entry* entry) {
  if (listed.number == 0) return "it is no entry";
  // A pipe in its place must not be waited for.
  const int file = open(path_of(listed.name).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  // Another wlanctl may have dropped it by now.
  if (file < 0 && errno == ENOENT) return kGone;
  if (file < 0) return errno == ELOOP ? "it is a link" : std::strerror(errno);
  std::string fault = fault_of_file(file);
  const std::optional<std::string> bytes = fault.empty() ? read_open_file(file) : std::nullopt;
  close(file);
  if (!fault.empty()) return fault;
  const std::optional<std::string> text = bytes ? without_head(*bytes, kFormat, kVersion) : std::nullopt;
  const std::optional<Entry> parsed = text ? parse_entry(*text) : std::nullopt;
  if (!parsed || parsed->number != listed.number) return "it is damaged";
  *entry = *parsed;
  return "";
}

std::string make_folder() {
  const std::string path = history_folder();
  if (std::string fault = fault_of_name(path); !fault.empty()) return fault;
  if (mkdir(path.c_str(), 0700) == 0) {
    finish_folder_of(path);
    return "";
  }
  return errno == EEXIST ? "" : "cannot make " + path + ": " + std::strerror(errno);
}

// What has no room in its file goes, from the end.
std::string bytes_of(Entry* entry) {
  std::string bytes = with_head(kFormat, kVersion, text_of(*entry));
  while (bytes.size() > kMostBytesOfEntry && !entry->changes.empty()) {
    const size_t kept = entry->changes.size() / 2;
    entry->left_out += entry->changes.size() - kept;
    entry->changes.resize(kept);
    bytes = with_head(kFormat, kVersion, text_of(*entry));
  }
  return bytes;
}

size_t size_of_file(const std::string& name) {
  struct stat status;
  return lstat(path_of(name).c_str(), &status) == 0 && status.st_size > 0 ? static_cast<size_t>(status.st_size) : 0;
}

// Makes room for an entry of so many bytes.
void drop_oldest(const Listing& listing, unsigned number, size_t bytes) {
  for (const std::string& name : listing.unfinished) (void)unlink(path_of(name).c_str());
  std::vector<std::string> others;
  for (const Listed& listed : listing.files) {
    if (listed.number == 0 || listed.number == number) continue;
    others.push_back(listed.name);
    bytes += size_of_file(listed.name);
  }
  size_t count = others.size() + 1;
  for (const std::string& name : others) {
    if (count <= kMostEntries && bytes <= kMostBytesOfAll) return;
    const size_t size = size_of_file(name);
    if (unlink(path_of(name).c_str()) != 0) continue;
    --count;
    bytes -= std::min(bytes, size);
  }
}

}  // namespace

std::string history_folder() {
  const char* const chosen = std::getenv(kHistoryVariable);
  if (chosen != nullptr) return std::strcmp(chosen, kOff) == 0 ? "" : chosen;
  const std::string folder = lasting_folder();
  return folder.empty() ? "" : folder + "/wlanctl-history";
}

History read_history() {
  const Listing listing = list_folder();
  History history;
  history.failure = listing.failure;
  for (const Listed& listed : listing.files) {
    Entry entry;
    const std::string fault = read_entry(listed, &entry);
    if (fault.empty()) {
      history.entries.push_back(std::move(entry));
    } else if (fault != kGone) {
      history.skipped.push_back({path_of(listed.name), fault});
    }
  }
  return history;
}

std::string write_entry(Entry* entry) {
  std::string failure = make_folder();
  if (!failure.empty()) return failure;
  const Listing listing = list_folder();
  if (!listing.failure.empty()) return listing.failure;
  unsigned number = entry->number;
  if (number == 0) {
    number = (listing.files.empty() ? 0 : listing.files.back().number) + 1;
    constexpr unsigned kLast = 999999999;
    if (number > kLast) return path_of(listing.files.back().name) + " has the last number that there is";
  }
  Entry numbered = *entry;
  numbered.number = number;
  const std::string bytes = bytes_of(&numbered);
  drop_oldest(listing, number, bytes.size());
  const std::string path = path_of(kName + std::to_string(number));
  if (!write_own_file(path, bytes)) return "cannot write " + path + ": " + std::strerror(errno);
  entry->number = number;
  return "";
}

}  // namespace wlanctl
