#include "sim/root/proc_overlay.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "sim/base/file.h"
#include "sim/base/places.h"

namespace gateway {
namespace {

constexpr pid_t kAhead = 2048;
// Links of ended processes do no harm until they are many.
constexpr int kMostLinks = 8192;

bool is_process(const std::string& name) {
  return name[0] >= '0' && name[0] <= '9';
}

std::string real(const std::string& name) {
  return std::string(place::kProc) + "/" + name;
}

std::string shown(const std::string& name) {
  return "/proc/" + name;
}

// The kernel's last word in the load average is the number it gave to the newest process here.
pid_t newest_process() {
  const std::string text = read_text(real("loadavg"));
  return static_cast<pid_t>(std::atoi(text.c_str() + text.rfind(' ') + 1));
}

}  // namespace

void ProcOverlay::fill() {
  for (const std::string& name : names_in(place::kProc)) {
    if (!is_process(name) && name != "bus" && name != "modules") make_link(real(name), shown(name));
  }
  // Of the modules, those of the gateway are listed.
  make_link(place::kModuleList, shown("modules"));
  // "bus" becomes a folder of its own, for the gateway's PCI bus beside the machine's others.
  make_folder(shown("bus"));
  for (const std::string& name : names_in(real("bus"))) {
    if (name != "pci") make_link(real("bus/" + name), shown("bus/" + name));
  }
  newest_ = newest_process();
  link_processes(1, newest_ + kAhead);
}

void ProcOverlay::keep_ahead() {
  const pid_t newest = newest_process();
  if (newest == newest_) return;
  const bool wrapped = newest < newest_;
  newest_ = newest;
  if (!wrapped && newest + kAhead / 2 < linked_to_) return;
  if (linked_ > kMostLinks) drop_ended_processes(newest);
  link_processes(wrapped ? newest + 1 : linked_to_ + 1, newest + kAhead);
}

void ProcOverlay::link_processes(pid_t first, pid_t last) {
  for (pid_t pid = first; pid <= last; ++pid) {
    const std::string name = std::to_string(pid);
    if (symlink(real(name).c_str(), shown(name).c_str()) == 0) ++linked_;
  }
  linked_to_ = last;
}

void ProcOverlay::drop_ended_processes(pid_t newest) {
  for (const std::string& name : names_in("/proc")) {
    if (!is_process(name)) continue;
    const pid_t pid = static_cast<pid_t>(std::atoi(name.c_str()));
    const bool to_come = pid > newest && pid <= newest + kAhead;
    if (!to_come && !path_exists(real(name)) && unlink(shown(name).c_str()) == 0) --linked_;
  }
}

}  // namespace gateway
