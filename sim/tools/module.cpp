// insmod and rmmod: loading a WLAN module makes its radios appear, from the dat files as they then are.
#include <cerrno>
#include <cstdio>

#include "sim/base/file.h"
#include "sim/network/network_state.h"
#include "sim/radio/radio.h"
#include "sim/records/journal.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

std::string module_name(const std::string& given) {
  const std::string name = name_of(given);
  constexpr size_t kSuffix = 3;
  const bool has_suffix = name.size() > kSuffix && name.compare(name.size() - kSuffix, kSuffix, ".ko") == 0;
  return has_suffix ? name.substr(0, name.size() - kSuffix) : name;
}

int complain(const Words& words, const std::string& text) {
  std::fprintf(stderr, "%s: ERROR: %s\n", name_of(words[0]).c_str(), text.c_str());
  record_call(words, {});
  return 1;
}

// Bands that the module drives here; none when its chip is not there.
std::vector<Band> bands_of(const WlanModule& module) {
  const Chips chips = present_chips();
  std::vector<Band> bands;
  for (const Band band : kBands) {
    if (module_of(chips, band) == &module) bands.push_back(band);
  }
  return bands;
}

void record_change(const Words& words, const std::string& change, const NetworkState& before) {
  std::vector<std::string> changes = changes_between(before, read_network_state());
  changes.insert(changes.begin(), change);
  record_call(words, changes);
}

}  // namespace

int insmod(const Words& words) {
  const StateLock lock;
  if (words.size() < 2) return complain(words, "missing filename.");
  const std::string& file = words[1];
  const WlanModule* module = find_module(module_name(file));
  const std::string refusal = "could not insert module " + file + ": ";
  if (!path_exists(file)) return complain(words, "could not load module " + file + ": No such file or directory");
  if (module == nullptr) return complain(words, refusal + "Invalid module format");
  if (is_module_loaded(module->name)) return complain(words, refusal + "File exists");
  const NetworkState before = read_network_state();
  for (const Band band : bands_of(*module)) load_radio(band);
  mark_module(module->name, true);
  record_change(words, std::string(module->name) + ": loaded", before);
  return 0;
}

int rmmod(const Words& words) {
  const StateLock lock;
  if (words.size() < 2) return complain(words, "missing module name.");
  const std::string name = module_name(words[1]);
  const WlanModule* module = find_module(name);
  if (module == nullptr || !is_module_loaded(name)) {
    return complain(words, "Module " + name + " is not currently loaded");
  }
  const NetworkState before = read_network_state();
  for (const Band band : bands_of(*module)) unload_radio(band);
  mark_module(name, false);
  record_change(words, name + ": unloaded", before);
  return 0;
}

}  // namespace gateway::tools
