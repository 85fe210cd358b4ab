// What the fuzzers ever found, and the inputs they begin with, go through each door once more; then some thousand changes
// of them, always the same.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "fuzz/door.h"
#include "support/sandbox.h"

namespace {

// Those of the tool take longer: most of them read a whole band, some of them write one.
#ifdef DOORS_OF_TOOL
constexpr unsigned kChanges = 100;
#else
constexpr unsigned kChanges = 400;
#endif
constexpr size_t kMostBytes = 4096;

struct Door {
  const char* name;
  void (*attempt)(std::string_view input);
};
// Those of one stand: the stand-ins of the other would be in their way.
#ifdef DOORS_OF_TOOL
#define DOOR_LIBRARY(name)
#define DOOR_TOOL(name) {#name, fuzz::try_##name},
#else
#define DOOR_LIBRARY(name) {#name, fuzz::try_##name},
#define DOOR_TOOL(name)
#endif
constexpr Door kDoors[] = {
#define DOOR(name, stand, about) DOOR_##stand(name)
#include "fuzz/doors.def"
#undef DOOR
};

// Read before /tmp, where they may be, is a private one.
std::vector<std::string> g_inputs[std::size(kDoors)];

std::vector<std::string> inputs_of(const Door& door) {
  std::vector<std::string> paths;
  for (const char* const kind : {"seeds", "kept"}) {
    const std::filesystem::path folder = std::filesystem::path(FUZZ_FOLDER) / kind / door.name;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(folder, none)) paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  std::vector<std::string> inputs;
  for (const std::string& path : paths) inputs.push_back(sandbox::read_file(path));
  return inputs;
}

const int g_are_read = [] {
  for (size_t i = 0; i < std::size(kDoors); ++i) g_inputs[i] = inputs_of(kDoors[i]);
  return 0;
}();

std::string changed(std::string input, const std::vector<std::string>& all, std::mt19937& random) {
  const auto below = [&](size_t end) { return end == 0 ? 0 : random() % end; };
  for (size_t changes = 1 + below(4); changes > 0; --changes) {
    const size_t at = below(input.size());
    const size_t count = below(16);
    switch (below(5)) {
      case 0:
        if (!input.empty()) input[at] = static_cast<char>(random());
        break;
      case 1:
        input.erase(at, count);
        break;
      case 2:
        input.insert(at, count, static_cast<char>(random()));
        break;
      case 3: {
        const std::string& other = all[below(all.size())];
        input = input.substr(0, at) + other.substr(below(other.size()));
        break;
      }
      default:
        input.insert(at, input.substr(below(input.size()), count * count));
    }
    input.resize(std::min(input.size(), kMostBytes));
  }
  return input;
}

class Replay : public testing::TestWithParam<size_t> {};

TEST_P(Replay, FindsNothingThatWasEverFound) {
  const Door& door = kDoors[GetParam()];
  const std::vector<std::string>& inputs = g_inputs[GetParam()];
  ASSERT_FALSE(inputs.empty()) << "a door needs inputs to begin with";
  fuzz::prepare();
  for (const std::string& input : inputs) {
    fuzz::forget();
    door.attempt(input);
  }
}

TEST_P(Replay, StandsChangesOfIt) {
  const Door& door = kDoors[GetParam()];
  const std::vector<std::string>& inputs = g_inputs[GetParam()];
  ASSERT_FALSE(inputs.empty());
  fuzz::prepare();
  std::mt19937 random(1);
  for (unsigned i = 0; i < kChanges; ++i) {
    fuzz::forget();
    door.attempt(changed(inputs[i % inputs.size()], inputs, random));
  }
}

INSTANTIATE_TEST_SUITE_P(Doors, Replay, testing::Range(size_t{0}, std::size(kDoors)),
                         [](const auto& door) { return std::string(kDoors[door.param].name); });

}  // namespace
