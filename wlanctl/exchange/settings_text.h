// Settings as a file has them, of whichever format: what its readers make, before anything is asked of a store.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/base/band.h"
#include "wlanctl/keys/assignment.h"

namespace wlanctl {

// Far more than the settings of two bands take.
inline constexpr size_t kLargestSettingsText = size_t{1} << 20;
inline constexpr size_t kMostLines = 4096;  // or members of an object
inline constexpr size_t kMostProblems = 100;

// Stands for a secret that was left out, in dat files and lines; in JSON null does.
inline constexpr char kSecretLeftOut[] = "***";

struct FileSetting {
  Band band = Band::k2_4G;
  Target target;        // without a key where no setting of the band has this dat key
  std::string dat_key;  // then
  std::string value;    // any bytes but NUL
  std::string written;  // of a line: all that stands behind =
  bool is_left_out = false;
  int line = 0;  // from 1

  bool is_setting() const { return target.key != nullptr; }

  // "HideSSID:2", or the dat key.
  std::string name() const { return is_setting() ? target.name() : dat_key; }
};

// What is wrong with a text, and where.
struct TextProblem {
  int line = 0;  // from 1; 0 for the text as a whole
  std::string message;
  std::string next;
  Json details = Json::object();
};

struct SettingsText {
  const char* format = "";  // "json", "dat" or "lines"
  std::vector<Band> bands;  // that it speaks of, be it without a setting
  std::vector<FileSetting> settings;
  std::vector<TextProblem> problems;
  std::vector<std::string> notes;

  // Whether so much is wrong that the rest is not looked at.
  bool is_hopeless() const { return problems.size() >= kMostProblems; }
};

}  // namespace wlanctl
