// Stands between the library's functions: the program defines every function that another one of the library calls,
// counts the calls, and answers in its place when told to.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "wifimgr_lib.h"

namespace interposed {

// How often each function was called, in all.
extern std::map<std::string, int> calls;

// Answers given instead of calling the library's own function.
extern std::map<std::string, uint64_t> answers;

// Taken instead of the library's own function when set.
extern std::function<int(char* flags, int count)> parse_driver_answer;
extern std::function<int(int wifi_type, int bssid_num)> update_datafile_answer;
extern std::function<int(int wifi_type, int index, const char* name, char* buf, unsigned len)> read_attr_answer;
extern std::function<int(int wifi_type, int index, const char* name, const char* value)> update_attr_answer;

// A call of a function of one of the change detection's groups.
struct GroupCall {
  std::string function;
  wifimgr_band_snapshot* record;
  uint32_t wifi_type;
};
extern std::vector<GroupCall> group_calls;

// The functions that are defined here.
std::vector<std::string> names();

}  // namespace interposed
