#include "wlanctl/history/entry.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>

#include "wlanctl/base/text.h"
#include "wlanctl/files/bytes.h"

namespace wlanctl {
namespace {

// Names come from outside, and stand in a line of a terminal.
constexpr size_t kLongestName = 32;

std::string name_of_user(uid_t user) {
  char room[4096];
  passwd entry = {};
  passwd* found = nullptr;
  if (getpwuid_r(user, &entry, room, sizeof room, &found) == 0 && found != nullptr) return entry.pw_name;
  return std::to_string(user);
}

// Who logged in stays the same through su and sudo, where the kernel keeps count of it.
std::optional<uid_t> login_user() {
  constexpr int64_t kNobody = 0xffffffff;
  const std::string text = without_line_end(read_bytes("/proc/self/loginuid").value_or(""));
  const int64_t user = number_in(text).value_or(kNobody);
  if (user < 0 || user >= kNobody) return std::nullopt;
  return static_cast<uid_t>(user);
}

std::string user_at_work() {
  const char* const by_sudo = std::getenv("SUDO_USER");
  if (by_sudo != nullptr && *by_sudo != '\0') return by_sudo;
  return name_of_user(login_user().value_or(getuid()));
}

std::string terminal_at_work() {
  char name[kLongestName] = "";
  for (const int stream : {STDIN_FILENO, STDERR_FILENO, STDOUT_FILENO}) {
    if (isatty(stream) == 1 && ttyname_r(stream, name, sizeof name) == 0) return name;
  }
  return "";
}

}  // namespace

void sign(Entry* entry) {
  if (entry->when == 0) entry->when = static_cast<int64_t>(time(nullptr));
  entry->user = user_at_work().substr(0, kLongestName);
  entry->terminal = terminal_at_work().substr(0, kLongestName);
}

const Entry* left_beside(const std::vector<Entry>& entries, const Entry& entry) {
  for (const Entry& other : entries) {
    const bool is_next = other.number + 1 == entry.number || entry.number + 1 == other.number;
    if (is_next && other.band != entry.band && other.deed == entry.deed && other.by == entry.by &&
        other.when == entry.when && other.user == entry.user && other.terminal == entry.terminal) {
      return &other;
    }
  }
  return nullptr;
}

const Entry* taken_back_by(const std::vector<Entry>& entries, const Entry& entry) {
  for (const Entry& other : entries) {
    const bool takes_back = other.deed == Deed::kRollback || other.deed == Deed::kUndo;
    if (!takes_back || other.about != entry.number || other.number <= entry.number) continue;
    if (other.state == State::kDone && taken_back_by(entries, other) == nullptr) return &other;
  }
  return nullptr;
}

}  // namespace wlanctl
