#include "sim/records/journal.h"

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/base/text.h"

namespace gateway {
namespace {

bool is_plain(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::strchr("%+,-./:=@_", c) != nullptr;
}

bool is_control(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

std::string spelt_out(const std::string& word) {
  std::string text = "$'";
  for (const char c : word) {
    char part[8];
    if (is_control(c)) {
      std::snprintf(part, sizeof part, "\\x%02x", static_cast<unsigned char>(c));
    } else {
      std::snprintf(part, sizeof part, c == '\'' || c == '\\' ? "\\%c" : "%c", c);
    }
    text += part;
  }
  return text + "'";
}

std::string quoted(const std::string& word) {
  bool plain = !word.empty();
  for (const char c : word) {
    if (is_control(c)) return spelt_out(word);
    plain = plain && is_plain(c);
  }
  if (plain) return word;
  std::string text = "'";
  for (const char c : word) text += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return text + "'";
}

std::string time_stamp() {
  timespec now = {};
  clock_gettime(CLOCK_REALTIME, &now);
  tm parts = {};
  gmtime_r(&now.tv_sec, &parts);
  char text[80];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d.%03ldZ", parts.tm_year + 1900, parts.tm_mon + 1,
                parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec, now.tv_nsec / 1000000);
  return text;
}

}  // namespace

std::string command_line(const std::vector<std::string>& words) {
  std::vector<std::string> shown;
  for (const std::string& word : words) shown.push_back(quoted(word));
  return joined(shown, " ");
}

std::string on_one_line(const std::string& text) {
  return std::any_of(text.begin(), text.end(), is_control) ? spelt_out(text) : text;
}

void record_call(const std::vector<std::string>& words, const std::vector<std::string>& changes) {
  std::string line = time_stamp() + "\t" + command_line(words) + "\t";
  line += changes.empty() ? "-" : joined(changes, "; ");
  line += "\n";
  // A journal of the user's own keeps the mode that it has, which may leave out other users inside.
  const UniqueFd fd(open(place::kJournal, O_WRONLY | O_APPEND | O_CLOEXEC));
  if (!fd && errno == EACCES) return;
  if (!fd) fail(std::string("open ") + place::kJournal);
  if (write(fd.get(), line.data(), line.size()) < 0) fail(std::string("write ") + place::kJournal);
}

StateLock::StateLock() : file_(open_file(place::kLock, O_RDWR | O_CREAT, 0666)) {
  lock_file(file_.get(), place::kLock);
}

}  // namespace gateway
