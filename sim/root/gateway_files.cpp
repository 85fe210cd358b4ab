#include "sim/root/gateway_files.h"

#include <cerrno>
#include <filesystem>
#include <set>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/base/text.h"

namespace gateway {
namespace {

constexpr const char* kRecordedTools[] = {"ifconfig", "brctl"};
constexpr const char* kStandIns[] = {"iwpriv", "mtd", "insmod", "rmmod", "reboot", "sys", "wscd", "killall", "simctl"};
constexpr const char* kProgramFolders[] = {"/usr/sbin", "/sbin", "/usr/bin", "/bin"};

std::string resolved(const std::string& path) {
  const std::filesystem::path given(path);
  return std::filesystem::weakly_canonical(given.parent_path()) / given.filename();
}

PlannedFile text_file(const std::string& path, std::string text, unsigned mode = 0644) {
  return {resolved(path), std::move(text), mode, {}};
}

PlannedFile tool_link(const std::string& path) {
  return {path, {}, 0, place::kToolProgram};
}

// A stand-in also covers the machine's own program of that name: called by its full path, that would reach beyond the
// simulation.
void plan_tool(std::vector<PlannedFile>* plan, const std::string& name) {
  std::set<std::string> paths = {std::string(place::kTools) + "/" + name, resolved("/sbin/" + name),
                                 resolved("/usr/sbin/" + name)};
  for (const char* folder : kProgramFolders) {
    const std::string path = resolved(std::string(folder) + "/" + name);
    if (path_exists(path)) paths.insert(path);
  }
  if (name == "wscd") paths.insert(resolved("/usr/bin/wscd"));
  for (const std::string& path : paths) plan->push_back(tool_link(path));
}

void plan_recorded_tool(std::vector<PlannedFile>* plan, const std::string& name) {
  for (const char* folder : kProgramFolders) {
    const std::string path = std::string(folder) + "/" + name;
    if (!path_exists(path)) continue;
    plan->push_back({std::string(place::kRealTools) + "/" + name, read_text(path), 0755, {}});
    plan_tool(plan, name);
    return;
  }
  errno = ENOENT;
  fail("find " + name + " (Debian packages net-tools and bridge-utils)");
}

void plan_driver(std::vector<PlannedFile>* plan, const Installation& installation) {
  plan->push_back(text_file(place::kDat2_4G, read_text(installation.dat_2_4g)));
  plan->push_back(text_file(place::kDat5G, read_text(installation.dat_5g)));
  for (const WlanModule& module : wlan_modules()) {
    plan->push_back(text_file(std::string(place::kModuleFiles) + "/" + module.name + ".ko",
                              std::string("simulated WLAN driver module for chip ") + module.chip + "\n"));
  }
}

}  // namespace

std::vector<PlannedFile> plan_gateway_files(const Chips& chips, const Installation& installation) {
  std::vector<PlannedFile> plan;
  plan_driver(&plan, installation);
  plan.push_back({place::kToolProgram, read_text(installation.tools), 0755, {}});
  plan.push_back({place::kDriverLibrary, read_text(installation.driver_library), 0755, {}});
  for (const char* name : kStandIns) plan_tool(&plan, name);
  for (const char* name : kRecordedTools) plan_recorded_tool(&plan, name);
  plan.push_back({"/var/run", {}, 0, "/run"});
  plan.push_back({place::kChips, joined(chips, ","), 0644, {}});
  plan.push_back({place::kJournal, {}, 0666, {}});
  return plan;
}

void place_file(const PlannedFile& file, const std::string& root) {
  const std::string path = root + file.path;
  make_folder(parent_of(path));
  if (file.target.empty()) {
    write_text(path, file.text, file.mode);
  } else {
    make_link(file.target, path);
  }
}

}  // namespace gateway
