#include "gateway.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "wifimgr_lib.h"

namespace bench {

Size size;
std::string dat_text;
std::vector<std::string> commands;

namespace {

constexpr char kFolder[] = "/tmp";
constexpr int kLinesWithoutAKey = 4;

[[noreturn]] void give_up(const char* what) {
  std::perror(what);
  std::exit(1);
}

void write_text(const char* path, const std::string& text) {
  const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (file < 0 || write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size())) give_up(path);
  close(file);
}

void enter_namespaces() {
  const unsigned user = getuid(), group = getgid();
  const bool is_root = user == 0;
  if (unshare((is_root ? 0 : CLONE_NEWUSER) | CLONE_NEWIPC | CLONE_NEWNET | CLONE_NEWNS) != 0) give_up("unshare");
  if (!is_root) {
    write_text("/proc/self/setgroups", "deny");
    write_text("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
    write_text("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
  }
  if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) give_up("mount");
  if (mount("tmpfs", kFolder, "tmpfs", 0, nullptr) != 0) give_up(kFolder);
}

std::string for_every_ssid(const char* value) {
  std::string list = value;
  for (int ssid = 1; ssid < size.ssids; ++ssid) list += std::string(";") + value;
  return list;
}

// The keys that the works use stand first, in the middle and last, what every band has near the start, and settings
// that nobody asks for in between.
std::vector<std::string> records() {
  std::vector<std::string> lines = {"BeaconPeriod=100", "BssidNum=" + std::to_string(size.ssids),
                                    "WdsEnable=0",      "ReloadFlag=0",
                                    "WirelessMode=9",   "EnableSSID=" + for_every_ssid("1")};
  for (int ssid = 1; ssid <= size.ssids; ++ssid) lines.push_back("SSID" + std::to_string(ssid) + "=Gateway");
  const size_t keys = static_cast<size_t>(size.keys);
  for (int number = 0; lines.size() < keys - 1; ++number) {
    if (lines.size() == keys / 2) {
      lines.push_back("Channel=6");
    } else if (lines.size() == keys / 2 + 1) {
      lines.push_back("HideSSID=" + for_every_ssid("0"));
    } else {
      char line[64];
      (void)std::snprintf(line, sizeof line, "%c%cSetting%d=", 'A' + number % 26, 'a' + number / 26 % 26, number);
      lines.push_back(line + for_every_ssid("1"));
    }
  }
  lines.push_back("RTSThreshold=2347");
  return lines;
}

std::string text_of(const std::vector<std::string>& records) {
  std::string text = "Default\n";
  for (int line = 1; line < kLinesWithoutAKey; ++line) text += "# a comment\n";
  for (const std::string& record : records) text += record + "\n";
  return text;
}

}  // namespace

void set_up() {
  enter_namespaces();
  dat_text = text_of(records());
  char path[WIFIMGR_DAT_PATH_SIZE] = "";
  (void)std::snprintf(path, sizeof path, "%s/2.4g.dat", kFolder);
  write_text(path, dat_text);
  if (wifimgr_lib_set_wifi_path(0, path) != 0 || wifimgr_lib_init(0) != 0) {
    (void)std::fprintf(stderr, "the band cannot be loaded\n");
    std::exit(1);
  }
}

std::string other_file() {
  return std::string(kFolder) + "/other.dat";
}

void run(const std::string& command) {
  using Run = int (*)(const char*);
  static const auto real = reinterpret_cast<Run>(dlsym(RTLD_NEXT, "system"));
  (void)real((command + " >/dev/null 2>&1").c_str());
}

}  // namespace bench

extern "C" int system(const char* command) {
  bench::commands.emplace_back(command);
  return 0;
}
