#include "sim/root/real_paths.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>

#include "sim/base/file.h"

namespace gateway {
namespace {

// The gateway puts files of its own in these folders, so neither they nor a folder above them can be the real one.
constexpr const char* kGatewayFolders[] = {
    "/etc", "/usr/bin", "/usr/sbin", "/usr/lib/modules", "/lib/modules", "/var/run", "/run", "/tmp", "/bin", "/sbin",
    "/dev", "/proc",    "/sys",      "/userfs"};

// Folders in which nothing can stay real at all.
constexpr const char* kWhollyPrivate[] = {"/etc/Wireless", "/dev", "/proc", "/sys", "/userfs", "/run/gateway-sim"};

// Folders that the gateway has empty at its start.
constexpr const char* kFreshFolders[] = {"/tmp", "/run"};

bool can_stay_real(const std::string& folder) {
  for (const char* own : kGatewayFolders) {
    if (is_within(own, folder)) return false;
  }
  for (const char* own : kWhollyPrivate) {
    if (is_within(folder, own)) return false;
  }
  return true;
}

bool is_in_fresh_folder(const std::string& folder) {
  return std::any_of(std::begin(kFreshFolders), std::end(kFreshFolders),
                     [&](const char* fresh) { return is_within(folder, fresh); });
}

std::string checkout_of(const std::string& cache) {
  constexpr char kEntry[] = "CMAKE_HOME_DIRECTORY:INTERNAL=";
  std::ifstream stream(cache);
  for (std::string line; std::getline(stream, line);) {
    if (line.rfind(kEntry, 0) == 0) return line.substr(sizeof kEntry - 1);
  }
  return {};
}

}  // namespace

Installation find_installation() {
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  const std::string prefix = program.parent_path().parent_path();
  Installation installation;
  installation.programs = program.parent_path();
  installation.tools = prefix + "/libexec/gateway-sim/gateway-tools";
  installation.driver_library = prefix + "/libexec/gateway-sim/libgateway_driver.so";
  installation.dat_2_4g = prefix + "/share/gateway-sim/dat/RT2860AP.dat";
  installation.dat_5g = prefix + "/share/gateway-sim/dat/RT2860AP_AC.dat";
  for (const std::string& part :
       {installation.tools, installation.driver_library, installation.dat_2_4g, installation.dat_5g}) {
    if (path_exists(part)) continue;
    errno = ENOENT;
    fail("find a part of gateway-sim, " + part);
  }
  const std::string cache = prefix + "/CMakeCache.txt";
  if (path_exists(cache)) {
    installation.build_tree = prefix;
    installation.checkout = checkout_of(cache);
  }
  return installation;
}

std::vector<std::string> real_folders(const Installation& installation, const std::string& current) {
  std::vector<std::string> wanted = {current, installation.build_tree};
  if (is_in_fresh_folder(installation.checkout)) wanted.push_back(installation.checkout);
  std::sort(wanted.begin(), wanted.end());
  std::vector<std::string> folders;
  for (const std::string& folder : wanted) {
    if (folder.empty() || !is_folder(folder) || !can_stay_real(folder)) continue;
    const auto covers = [&](const std::string& other) { return is_within(folder, other); };
    if (std::none_of(folders.begin(), folders.end(), covers)) folders.push_back(folder);
  }
  return folders;
}

}  // namespace gateway
