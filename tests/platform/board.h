// The board under a test: files in /proc/zq2810, an /etc and network interfaces, all of the test's sandbox.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace board {

// Puts an empty folder in place of /proc/zq2810. Of the kernel's /proc only this process remains.
void use_own_proc();

// Puts an /etc with the radios' folders and nothing else in place of the machine's.
void use_own_etc();

std::string path(const std::string& name);  // of a file in /proc/zq2810
void put(const std::string& name, const std::string& text);
void put_all();  // every file of the board, each with its own name in it

// Leaves a named pipe that is open and empty, at which a waiting reader would hang; ends the test should one do so.
void put_silent_pipe(const std::string& path);

// The names of all files in /proc/zq2810 and what is in them, "name=text" in the order of the names.
std::vector<std::string> all_files();

using Mac = std::vector<uint8_t>;

// Adds an interface with this address; it is down.
void add_interface(const std::string& name, const Mac& mac);
void set_flags(const std::string& name, short flags);

// An interface request as the library issued it.
struct Query {
  unsigned long number = 0;
  std::string record;  // all 40 bytes
};
extern std::vector<Query> queries;

// A kernel that keeps each request in `queries`, puts the address or the flags in it and returns `result`.
void answer_with_address(const Mac& mac, int result = 0);
void answer_with_flags(uint16_t flags, int result = 0);

// The record of a request for an interface; `rest` stands behind the name, then zero.
std::string record_for(const std::string& name, const std::string& rest = "");

// Runs a command line, as the shell does.
int run(const std::string& line);

}  // namespace board
