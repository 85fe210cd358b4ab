#include "sim/outside/system_log.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cstddef>
#include <string>

#include "sim/base/places.h"

namespace gateway {
namespace {

constexpr size_t kMostBytes = 8192;

UniqueFd listen_at(const char* path) {
  UniqueFd fd(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  std::string(path).copy(address.sun_path, sizeof address.sun_path - 1);
  if (!fd || bind(fd.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    fail(std::string("listen at ") + path);
  }
  if (chmod(path, 0666) != 0) fail(std::string("open ") + path + " to all");
  return fd;
}

// Without the number in front that says how urgent it is, and on one line.
std::string line_of(std::string message) {
  const size_t end = message.rfind('<', 0) == 0 ? message.find('>') : std::string::npos;
  if (end != std::string::npos) message.erase(0, end + 1);
  while (!message.empty() && (message.back() == '\n' || message.back() == '\0')) message.pop_back();
  for (char& c : message) {
    if (static_cast<unsigned char>(c) < 0x20 || c == '\x7f') c = ' ';
  }
  return message + "\n";
}

}  // namespace

SystemLog::SystemLog()
    : socket_(listen_at(place::kLogSocket)), file_(open_file(place::kSystemLog, O_WRONLY | O_CREAT | O_APPEND, 0644)) {}

void SystemLog::write_down() {
  char part[kMostBytes];
  for (ssize_t got; (got = recv(socket_.get(), part, sizeof part, 0)) >= 0;) {
    write_all(file_.get(), line_of(std::string(part, static_cast<size_t>(got))), place::kSystemLog);
  }
}

}  // namespace gateway
