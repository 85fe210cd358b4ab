// A private gateway for one test: namespaces of its own for IPC, network, mounts, and a private /tmp.
#pragma once

#include <cstdint>
#include <string>

#include "wifimgr_lib.h"

namespace sandbox {

// Moves this process into fresh namespaces; ends it with a message when the machine refuses.
void enter();

// Where the bands' dat files are in the tests.
std::string dat_path(int band);

// Points the library's path buffer of a band at dat_path(band).
void use_dat_path(int band);

void write_file(const std::string& path, const std::string& text);
std::string read_file(const std::string& path);
bool exists(const std::string& path);

// Writes the band's dat file and loads it with wifimgr_lib_init; fails the test when that fails.
void load(int band, const std::string& dat_text);

// A dat text that has every key of these tests, with two SSIDs.
std::string full_dat(int band);

// The same with one line replaced: "Key" keeps its place and gets a new value ("Key=value\n").
std::string full_dat_with(int band, const std::string& key, const std::string& value);
std::string full_dat_without(int band, const std::string& key);

// The bytes of a band's segment, read through an attachment of the test's own.
std::string segment_bytes(int band);

// Field 1 to 8 of a key as it stands in the segment, "" for an empty one and for a missing key.
std::string field(int band, const std::string& key, int number);

// What `run` prints on standard output.
template <typename Run>
std::string stdout_of(Run run);

class StdoutCapture {
 public:
  StdoutCapture();
  ~StdoutCapture();
  std::string take();  // ends the capture

 private:
  int saved_;
  int file_;
};

template <typename Run>
std::string stdout_of(Run run) {
  StdoutCapture capture;
  run();
  return capture.take();
}

}  // namespace sandbox
