// What the process may do, and the programs that the library runs.
#include <ifaddrs.h>
#include <linux/capability.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>

#include "wlanctl/base/clock.h"
#include "wlanctl/base/text.h"
#include "wlanctl/doctor/checks.h"
#include "wlanctl/library/command.h"
#include "wlanctl/library/output.h"
#include "wlanctl/library/shell.h"

namespace wlanctl {
namespace {

constexpr char kRights[] = "rights";
constexpr char kTools[] = "tool";

struct Right {
  unsigned number;
  const char* name;
  Ill ill;
};
constexpr Right kNeeded[] = {{CAP_NET_ADMIN, "CAP_NET_ADMIN", Ill::kNoNetAdmin},
                             {CAP_SYS_MODULE, "CAP_SYS_MODULE", Ill::kNoSysModule},
                             {CAP_NET_RAW, "CAP_NET_RAW", Ill::kNoNetRaw}};

// As the library calls them: by name on the path, or by where they are.
struct Tool {
  const char* name;
  Ill ill;
};
constexpr Tool kCalled[] = {{"/bin/sh", Ill::kToolMissing},
                            {"ifconfig", Ill::kToolMissing},
                            {"brctl", Ill::kToolMissing},
                            {"/userfs/bin/iwpriv", Ill::kToolMissing},
                            {"insmod", Ill::kToolLacking},
                            {"rmmod", Ill::kToolLacking},
                            {"cat", Ill::kToolLacking},
                            {"killall", Ill::kToolLacking},
                            {"reboot", Ill::kToolLacking},
                            {"sys", Ill::kToolLacking},
                            {"/sbin/ifconfig", Ill::kToolLacking},
                            {"/usr/bin/wscd", Ill::kToolLacking},
                            {"/userfs/bin/mtd", Ill::kToolLacking}};

// The library reads an interface's address behind this, in what ifconfig prints.
constexpr char kAddressMark[] = "inet addr:";

// The bridge, where it has an address; else another interface that has one. "" where none has.
std::string interface_with_address() {
  ifaddrs* all = nullptr;
  if (getifaddrs(&all) != 0) return "";
  std::string found;
  for (const ifaddrs* one = all; one != nullptr; one = one->ifa_next) {
    if (one->ifa_addr == nullptr || one->ifa_addr->sa_family != AF_INET) continue;
    const std::string name = one->ifa_name;
    if (found.empty() || name == "br0") found = name;
  }
  freeifaddrs(all);
  return found;
}

bool is_program(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

// Where a shell would find it; "" for nowhere.
std::string place_of(const std::string& name) {
  if (name.find('/') != std::string::npos) return is_program(name) ? name : "";
  const char* const path = std::getenv("PATH");
  for (const std::string& folder : split_at(path == nullptr ? "/usr/bin:/bin" : path, ':')) {
    std::string there = (folder.empty() ? "." : folder) + "/" + name;
    if (is_program(there)) return there;
  }
  return "";
}

}  // namespace

void check_rights(Diagnosis& diagnosis) {
  const uid_t user = geteuid();
  diagnosis.add(user != 0, Ill::kNotRoot, kRights, std::nullopt, "user " + std::to_string(user));
  __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3] = {};
  if (syscall(SYS_capget, &header, data) != 0) return;
  for (const Right& right : kNeeded) {
    diagnosis.add((data[0].effective & (1U << right.number)) == 0, right.ill, kRights, std::nullopt, right.name);
  }
}

void check_tools(Diagnosis& diagnosis) {
  for (const Tool& tool : kCalled) {
    const std::string place = place_of(tool.name);
    diagnosis.add(place.empty(), tool.ill, kTools, std::nullopt, place.empty() ? tool.name : place);
  }
}

// It is run as the library runs it, but not waited for longer than a moment. What one prints that fails, or has to be
// ended, says nothing of how it prints an address.
void check_address_text(Diagnosis& diagnosis) {
  constexpr int64_t kLongestMs = 3000;
  const std::string interface = interface_with_address();
  if (interface.empty() || place_of("ifconfig").empty() || place_of("/bin/sh").empty()) return;
  const std::string line = "ifconfig " + interface;
  const CommandRun moment(ms_since_boot() + kLongestMs);
  CaughtOutput unheard;
  const int status = run_line(line);
  const std::string printed = unheard.end();
  if (status != 0) return;
  diagnosis.add(printed.find(kAddressMark) == std::string::npos, Ill::kIfconfigForeign, kTools, std::nullopt, line);
}

}  // namespace wlanctl
