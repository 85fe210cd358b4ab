// The board: buttons, flash, package id. And all of it as it was.
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <system_error>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/base/text.h"
#include "sim/radio/boot.h"
#include "sim/radio/radio.h"
#include "sim/records/flash.h"
#include "sim/records/journal.h"
#include "sim/simctl/words.h"
#include "sim/state/driver_defaults.h"
#include "sim/tools/process.h"
#include "sim/tools/tool.h"

namespace gateway::tools::simctl {
namespace {

struct Button {
  const char* name;
  const char* file;
};
constexpr Button kButtons[] = {{"wlan", "wlan_button"},
                               {"wps", "wps_button"},
                               {"wps5g", "wps_5g_button"},
                               {"wlan11ac", "wlan11ac_button"},
                               {"wlan-wps", "wlan_wps_button"}};

constexpr char kPartition[] = "reservearea";
constexpr unsigned long kImageSize = 0x20000;
constexpr size_t kMostButtonText = 4095;

// Where each radio's calibration image lies in the partition.
constexpr unsigned long kImagePlaces[] = {0x280000, 0x20000};

// An image as far as anyone looks into it: chip id, version, hardware address.
std::string image_for(Band band, const std::string& word) {
  const uint32_t chip = number_from("0x" + word, "chip id", UINT16_MAX);
  std::string image = {static_cast<char>(chip & 0xff), static_cast<char>(chip >> 8), '\x01', '\x00'};
  image += hardware_address(band, 0);
  return image;
}

std::string image_from(Band band, const std::string& word) {
  constexpr char kChip[] = "chip=";
  if (word.rfind(kChip, 0) == 0) return image_for(band, word.substr(sizeof kChip - 1));
  try {
    return read_text(word);
  } catch (const std::system_error& error) {
    throw Refusal(std::string("cannot ") + error.what());
  }
}

// Readers empty the file under this lock.
void fill_button(const std::string& path, const std::string& text) {
  const UniqueFd fd = open_file(path, O_WRONLY | O_CREAT);
  lock_file(fd.get(), path);
  if (ftruncate(fd.get(), 0) != 0) fail("empty " + path);
  write_all(fd.get(), text, path);
}

}  // namespace

Changes press(const Words& words) {
  expect_words(words, 1, 2);
  const std::string text = words.size() > 1 ? words[1] : std::string("1");
  if (text.empty() || text.size() > kMostButtonText) throw UsageError("a press leaves 1 to 4095 bytes");
  Words names;
  for (const Button& button : kButtons) {
    names.emplace_back(button.name);
    if (words[0] != button.name) continue;
    fill_button(std::string(place::kPlatform) + "/" + button.file, text);
    return {words[0] + " button: pressed, " + on_one_line(text)};
  }
  throw UsageError("no button " + words[0] + " (known: " + joined(names, ", ") + ")");
}

Changes calibration(const Words& words) {
  expect_words(words, 2, 2);
  const Band band = band_from(words[0]);
  std::string image = image_from(band, words[1]);
  if (image.size() > kImageSize) throw Refusal("an image has at most " + std::to_string(kImageSize) + " bytes");
  // The whole block is written: nothing of an older image stays.
  image.resize(kImageSize, '\xff');
  write_flash(kPartition, kImagePlaces[static_cast<size_t>(band)], image);
  return {std::string(kPartition) + ": calibration image of the " + traits(band).label + " radio written"};
}

Changes chip_id(const Words& words) {
  expect_words(words, 1, 1);
  const bool negative = words[0].rfind('-', 0) == 0;
  const uint32_t id = number_from(words[0].substr(negative ? 1 : 0), "package id", INT32_MAX);
  const std::string text = std::string(negative ? "-" : "") + std::to_string(id);
  write_text(std::string(place::kPlatform) + "/chip_id", text + "\n", 0644);
  return {"chip_id: " + text};
}

// Nobody is asked and nothing is put in order. What has reached a file outlives it: which of it the flash would have had
// already, the simulation does not know.
Changes power_cut(const Words& words) {
  expect_words(words, 0, 0);
  end_processes(false);
  return boot_again("power cut");
}

Changes reset(const Words& words) {
  expect_words(words, 0, 0);
  start_platform();
  for (const Band band : kBands) {
    if (!is_loaded(band)) continue;
    start_driver(band);
    start_stations(band);
  }
  store_default_helpers();
  return {"driver and board as after a boot"};
}

}  // namespace gateway::tools::simctl
