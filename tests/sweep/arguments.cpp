#include "sweep/arguments.h"

#include <sys/mman.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <cstring>

namespace sweep {
namespace {

bool is_one_of(const char* name, std::initializer_list<const char*> names) {
  for (const char* const one : names) {
    if (std::strcmp(name, one) == 0) return true;
  }
  return false;
}

char* end_of_room() {
  const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  const size_t room = (kMostRoom + page - 1) / page * page;
  void* const memory = mmap(nullptr, room + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) std::abort();
  char* const end = static_cast<char*>(memory) + room;
  if (mprotect(end, page, PROT_NONE) != 0) std::abort();
  return end;
}

const char* placed(const std::string& text) {
  char* const place = end_of_room() - text.size() - 1;
  std::memcpy(place, text.data(), text.size() + 1);
  return place;
}

}  // namespace

char* room_before_guard(size_t parameter, size_t size) {
  static std::array<char*, kMostParameters> ends = {};
  if (ends[parameter] == nullptr) ends[parameter] = end_of_room();
  return ends[parameter] - size;
}

const std::vector<std::string>& texts() {
  static const std::vector<std::string> all = {
      "",
      "0",
      "1",
      "-1",
      "2147483648",
      "-99999999999999999999",
      "0\n",
      " \t1",
      "%s%n%d%99999d",
      ";",
      ";;;;;;;;;;",
      "1;2;3;4",
      "a=b\nc=d",
      "RT2860",
      "ra0",
      "RTMP",
      "SSID1",
      "AuthMode",
      "WPAPSKWPA2PSK",
      "00:11:22:33:44:55",
      "255.255.255.255",
      "`exit 1`$(exit 1)'\"\\|&;",
      "\x01\x7f\x80\xff\xfe",
      std::string(34, 'A'),
      std::string(35, 'k'),
      std::string(149, '9'),
      std::string(150, 'f'),
      std::string(185, ';'),
      std::string(4000, 'A'),
  };
  return all;
}

const char* text_before_guard(const char* name, size_t text) {
  // What the contract lets a caller vouch for: strextract's four separators, and the size of a path.
  static std::vector<const char*> plain;
  static std::vector<const char*> separated;
  static std::vector<const char*> padded;
  if (plain.empty()) {
    for (const std::string& one : texts()) {
      plain.push_back(placed(one));
      separated.push_back(placed(one + ";;;;"));
      padded.push_back(placed(one + std::string(WIFIMGR_DAT_PATH_SIZE, '\0')));
    }
  }
  const std::vector<const char*>& from = is_one_of(name, {"src"})    ? separated
                                         : is_one_of(name, {"path"}) ? padded
                                                                     : plain;
  return from[text];
}

bool is_size(const Call& call, size_t parameter) {
  return is_one_of(call.names[parameter], {"len", "size", "length", "out_size"});
}

bool is_band(const char* name) {
  return is_one_of(name, {"wifi_type", "type"});
}

const std::vector<long long>& numbers(const Call& call, size_t parameter) {
  static const std::vector<long long> kBands = {0, 1, 2, -1, INT_MAX, INT_MIN};
  static const std::vector<long long> kSizes = {0, 1, 2, 6, 150, 151, 160, 4096, kMostRoom};
  static const std::vector<long long> kSignedSizes = {0, 1, 2, 6, 150, 151, 160, 4096, kMostRoom, -1, INT_MIN};
  // Taking a lock that exists would wait for ever the second time.
  static const std::vector<long long> kSemaphores = {-1, INT_MIN, INT_MAX, 99999};
  static const std::vector<long long> kNumbers = {0,   1,     2,     3,      4,     7,       8,       9,  15, 16,  32,
                                                  255, 32767, 32768, 0x8BE1, 65535, INT_MAX, INT_MIN, -1, -2, -128};
  // So many commands are run.
  static const std::vector<long long> kCounts = {0, 1, 2, 8, 9, 300, -1, INT_MIN};
  const char* const name = call.names[parameter];
  if (is_one_of(name, {"count", "wds_count"})) return kCounts;
  if (is_band(name)) return kBands;
  if (is_one_of(name, {"semid"})) return kSemaphores;
  if (!is_size(call, parameter)) return kNumbers;
  return is_one_of(name, {"size"}) ? kSignedSizes : kSizes;
}

size_t size_of_buffers(const Call& call) {
  for (size_t i = 0; i < kMostParameters && call.names[i] != nullptr; ++i) {
    if (!is_size(call, i)) continue;
    const long long size = numbers(call, i)[call.choices[i]];
    if (size >= 0) return static_cast<size_t>(size);
  }
  return kMostRoom;
}

char* filled(size_t parameter, size_t size, Content content) {
  constexpr size_t kFilled = 2048;
  char* const room = room_before_guard(parameter, size);
  const size_t length = size < kFilled ? size : kFilled;
  std::memset(room, content == Content::kZeroes ? 0 : content == Content::kGarbage ? 0xA5 : 'x', length);
  // Whoever hands over a text ends it; its size is the call's only where it is told.
  if (content != Content::kZeroes && size > 0) room[length - 1] = '\0';
  return room;
}

void bound_counts(char* restart_request) {
  constexpr int32_t kMostInterfaces = 300;
  wifimgr_restart_request request;
  std::memcpy(&request, restart_request, sizeof request);
  request.old_count %= kMostInterfaces;
  request.new_count %= kMostInterfaces;
  std::memcpy(restart_request, &request, sizeof request);
}

char* segment(unsigned choice) {
  return choice == 1 ? shm_addr_2_4g : shm_addr_5g;
}

}  // namespace sweep
