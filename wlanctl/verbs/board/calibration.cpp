// calibration: a radio's calibration image, between flash and the file that the driver loads.
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "wifimgr_lib.h"
#include "wlanctl/base/report.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/plain_file.h"
#include "wlanctl/library/command.h"
#include "wlanctl/library/private_script.h"
#include "wlanctl/library/query.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

// Where the library keeps each band's image, and where it passes through.
struct Places {
  const char* image;
  const char* temporary;
};
constexpr Places kPlaces[] = {{"/etc/RT30xxEEPROM.bin", "/tmp/RT30xxEEPROM.bin"},
                              {"/etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin", "/tmp/MT7610EEPROM.bin"}};

const Places& places_of(Band band) {
  return kPlaces[number_of(band)];
}

// The chip that the driver's image is for, "7915" and the like; none when there is no image.
std::optional<std::string> chip_of_image(Band band) {
  unsigned char id[2] = {};
  std::FILE* const file = std::fopen(places_of(band).image, "re");
  const size_t read = file == nullptr ? 0 : std::fread(id, 1, sizeof id, file);
  if (file != nullptr) (void)std::fclose(file);
  if (read != sizeof id) return std::nullopt;
  char text[8];
  (void)std::snprintf(text, sizeof text, "%02x%02x", id[1], id[0]);
  return text;
}

Json about_image(Band band) {
  return {{"band", label_of(band)}, {"file", places_of(band).image}};
}

// A pipe in the place of one of the files would be waited for, and an image that another call has left would pass for
// what flash has.
bool are_files(Band band, Report& report) {
  const Places& places = places_of(band);
  if (unlink(places.temporary) != 0 && errno != ENOENT) {
    const std::string reason = std::strerror(errno);
    report.problem({std::string(places.temporary) + " cannot be removed: " + reason,
                    "move it away, and try again",
                    {{"band", label_of(band)}, {"file", places.temporary}, {"reason", reason}}});
  }
  if (access(places.image, F_OK) == 0) {
    if (const std::string reason = reason_against_file(places.image); !reason.empty()) {
      report.problem({std::string(places.image) + " cannot be used: " + reason,
                      "move it away, and try again",
                      {{"band", label_of(band)}, {"file", places.image}, {"reason", reason}}});
    }
  }
  return !report.has_problems();
}

int read(const Words& words, Report& report) {
  const Band band = *parse_band(words.band);
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  report.data() = {{"band", label_of(band)}, {"file", places_of(band).image}, {"taken", false}, {"chip", Json()}};
  if (!are_files(band, report)) return kRefused;
  std::string said;
  clear_shell_status();
  const bool done = call_quietly([&] { return wifimgr_lib_get_wifi_calibration(number_of(band)) == 0; }, &said);
  // The library keeps the driver's file without a failure when the image is another chip's, which it says, and when
  // there is no image, which leaves the file that it passes through.
  const bool is_foreign = said.find("use default ") != std::string::npos;
  const bool is_missing = access(places_of(band).temporary, F_OK) == 0;
  const bool is_taken = done && !is_foreign && !is_missing && last_shell_status() == 0;
  const std::optional<std::string> chip = chip_of_image(band);
  report.data() = {
      {"band", label_of(band)}, {"file", places_of(band).image}, {"taken", is_taken}, {"chip", json_or_null(chip)}};
  if (is_taken) {
    report.text() << label_of(band) << ": " << places_of(band).image << " is as in flash, for chip "
                  << chip.value_or("-") << '\n';
    return kDone;
  }
  if (!commands_run().empty() && commands_run().back().failed()) said = account_of(commands_run().back());
  Json details = about_image(band);
  details["reason"] = said;
  if (done && is_foreign) {
    report.problem({std::string(label_of(band)) + ": the image in flash is for another chip; the driver's file stays",
                    "flash the band's own image", std::move(details)});
    return kRefused;
  }
  const bool is_lost = done && !is_missing;
  report.problem({std::string(label_of(band)) +
                      (is_lost ? std::string(": the image was not copied to ") + places_of(band).image
                               : std::string(": flash gave no image")) +
                      because(said),
                  is_lost ? "is there room? try again before the next boot" : "is this the gateway, and are you root?",
                  std::move(details)});
  return kNoAnswer;
}

// Reads flash back as the library would, but to a file of its own: the driver's stays.
bool is_in_flash(Band band, const std::string& image) {
  std::string line;
  {
    const ShellScope recorder(ShellMode::kRecord);
    ShellScope::lines().clear();
    std::string unheard;
    (void)call_quietly([&] { return wifimgr_lib_get_wifi_calibration(number_of(band)) == 0; }, &unheard);
    if (!ShellScope::lines().empty()) line = ShellScope::lines().front();
  }
  const PrivateScript copy;
  const size_t at = line.find(places_of(band).temporary);
  if (at == std::string::npos || copy.path() == nullptr) return false;
  line.replace(at, std::strlen(places_of(band).temporary), copy.path());
  std::string unheard;
  if (!call_quietly([&] { return std::system(line.c_str()) == 0; }, &unheard)) return false;
  const std::string flash = read_bytes(copy.path()).value_or("");
  return !flash.empty() && flash.compare(0, image.size(), image, 0, flash.size()) == 0;
}

int write(const Words& words, Report& report) {
  const Band band = *parse_band(words.band);
  const std::string image = places_of(band).image;
  const std::optional<std::string> chip = chip_of_image(band);
  report.data() = {{"band", label_of(band)}, {"file", image}, {"written", false}, {"chip", json_or_null(chip)}};
  if (!chip) {
    report.problem(
        {"there is no image in " + image, "calibration read brings the one in flash there", about_image(band)});
    return kWrongUsage;
  }
  if (!words.yes) {
    report.problem({std::string("this would replace the calibration of ") + label_of(band) + " in flash by " + image +
                        ", for chip " + *chip,
                    "if that is meant, say so with --yes", about_image(band)});
    return kRefused;
  }
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  if (!are_files(band, report)) return kRefused;
  const std::string bytes = read_bytes(image).value_or("");
  std::string said;
  clear_shell_status();
  const auto flash = [&] { return wifimgr_lib_set_wifi_calibration(number_of(band)) == 0 && last_shell_status() == 0; };
  if (!call_quietly(flash, &said)) {
    Json details = about_image(band);
    details["reason"] = said;
    report.problem({std::string(label_of(band)) + ": the image was not written" + because(said),
                    "compare flash with the file before the next boot", std::move(details)});
    return kNoAnswer;
  }
  if (!is_in_flash(band, bytes)) {
    report.problem({std::string(label_of(band)) + ": " + image + " was written, but flash does not have it",
                    "compare flash with the file before the next boot", about_image(band)});
    return kNoAnswer;
  }
  report.data()["written"] = true;
  report.text() << label_of(band) << ": " << image << " is in flash, for chip " << *chip << '\n';
  return kDone;
}

constexpr Word kReadWords[] = {word::kOneBand, word::kCommandTimeout, word::kWait};
constexpr Word kWriteWords[] = {
    word::kOneBand, word::kCommandTimeout, word::kWait, {"--yes", &Words::yes, "Yes, replace what is in flash"}};
constexpr Verb kRead = {"read", "Copy it from flash to the driver's file",
                        "The driver looks at the file when it is loaded.\n\nExamples:\n  wlanctl calibration read 2.4g",
                        kReadWords, read};
constexpr Verb kWrite = {"write", "Copy the driver's file to flash",
                         "Examples:\n  wlanctl calibration write 2.4g --yes", kWriteWords, write};
constexpr const Verb* kVerbs[] = {&kRead, &kWrite};

}  // namespace

const Verb kCalibration = {
    .name = "calibration",
    .help = "Copy calibration from flash, or to it",
    .footer = "Examples:\n  wlanctl calibration read 2.4g\n  wlanctl calibration write 2.4g --yes",
    .verbs = kVerbs};

}  // namespace wlanctl
