#include "params/setting_checks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <sstream>

#include "support/sandbox.h"

namespace settings {

std::string repeat(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

std::string list_with(int place, const std::string& part, char separator) {
  std::string list;
  for (int i = 0; i < 4; ++i) {
    if (i > 0) list += separator;
    list += i == place ? part : "1";
  }
  return list;
}

Values number(long lowest, long highest) {
  const std::string low = std::to_string(lowest);
  const std::string high = std::to_string(highest);
  Values values;
  values.accepted = {low, high, "0" + low, "0" + high, repeat("0", 30) + high};
  values.refused = {std::to_string(highest + 1), "-" + high, "+" + high, " " + high, high + " ", high + "\n",
                    high + "a", "x", "0x" + low, low + ".0",
                    // The same number again once 32 or 64 bits are full.
                    std::to_string(4294967296L + lowest),
                    std::string("1844674407370955") + std::to_string(1616 + lowest)};
  if (lowest == 0) {
    values.accepted.push_back("");
  } else {
    values.refused.insert(values.refused.end(), {"", "0", std::to_string(lowest - 1)});
  }
  return values;
}

Values digits() {
  return {{"", "0", "7", "08", "4294967296", repeat("9", 149), repeat("7", 200)},
          {"-1", "+1", " 1", "1 ", "1\n", "1a", "a1", "x", "0x1", "1.0", ";", "1;1"}};
}

Values any_text() {
  return {{"x", "", " ", "1\n", "a;b", "a=b", "%s%d%n", "\xff\x01", repeat("t", 149), repeat("u", 150)}, {}};
}

Values address() {
  return {{"0.0.0.0", "255.255.255.255", "10.0.0.1", "192.168.100.2001"},
          {"", "256.1.1.1", "1.1.1.256", "1.1.1", "1.1.1.1.1", "1..1.1", "a.1.1.1", "1.1.1.1\n", "192.168.100.20011"}};
}

Values text_of(size_t fewest, size_t most) {
  const auto long_text = [](size_t length) { return repeat("g", static_cast<int>(length)); };
  Values values = {{long_text(fewest), long_text(most)}, {long_text(most + 1), long_text(200)}};
  if (fewest > 0) values.refused.insert(values.refused.end(), {"", long_text(fewest - 1)});
  return values;
}

namespace {

bool is_one_value(const std::string& key) {
  return key == "BssidNum" || key == "ReloadFlag";
}

std::string distinct_dat(int band, const std::string& ssid_count) {
  std::istringstream lines(sandbox::full_dat(band));
  std::ostringstream text;
  text << "Default\n";
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    const size_t equals = line.find('=');
    if (equals == std::string::npos) continue;
    const std::string key = line.substr(0, equals);
    const int fields = is_one_value(key) ? 1 : WIFIMGR_FIELDS;
    ++number;
    text << key << '=';
    for (int field = 1; field <= fields && key != "BssidNum"; ++field) {
      text << (field > 1 ? ";" : "") << number << '.' << field << '@' << band;
    }
    text << (key == "BssidNum" ? ssid_count : "") << '\n';
  }
  return text.str();
}

}  // namespace

void load_distinct(const std::string& ssid_count) {
  for (const int band : {0, 1}) sandbox::load(band, distinct_dat(band, ssid_count));
}

void load_without(const std::string& key) {
  for (const int band : {0, 1}) {
    sandbox::write_file(sandbox::dat_path(band), sandbox::full_dat_without(band, key));
    ASSERT_EQ(0, creat_shm_from_datafile(band));
  }
}

void load_with(const std::string& key, const std::string& value) {
  for (const int band : {0, 1}) sandbox::load(band, sandbox::full_dat_with(band, key, value));
}

Image::Image() {
  for (const int band : {0, 1}) {
    bytes_[band] = sandbox::segment_bytes(band);
    EXPECT_FALSE(bytes_[band].empty()) << "no segment of band " << band;
  }
}

void Image::set(int band, const std::string& key, int field, const std::string& value) {
  std::string& bytes = bytes_[band];
  for (size_t at = 0; at + sizeof(wifimgr_attr_record) <= bytes.size(); at += sizeof(wifimgr_attr_record)) {
    if (std::strncmp(bytes.data() + at, key.c_str(), WIFIMGR_KEY_SIZE) != 0) continue;
    char* const slot = &bytes[at + WIFIMGR_KEY_SIZE + static_cast<size_t>(field - 1) * WIFIMGR_FIELD_SIZE];
    std::memset(slot, 0, WIFIMGR_FIELD_SIZE);
    value.copy(slot, WIFIMGR_FIELD_SIZE - 1);
    return;
  }
  ADD_FAILURE() << "no key " << key << " in band " << band;
}

std::string Image::difference() const {
  for (const int band : {0, 1}) {
    const std::string now = sandbox::segment_bytes(band);
    if (now == bytes_[band]) continue;
    if (now.size() != bytes_[band].size()) return std::string("the size of band ") + std::to_string(band);
    const auto at =
        static_cast<size_t>(std::mismatch(now.begin(), now.end(), bytes_[band].begin()).first - now.begin());
    const size_t in_record = at % sizeof(wifimgr_attr_record);
    return std::string("band ") + std::to_string(band) + " key " + std::string(now.c_str() + (at - in_record)) +
           " field " +
           std::to_string(in_record < WIFIMGR_KEY_SIZE ? 0 : (in_record - WIFIMGR_KEY_SIZE) / WIFIMGR_FIELD_SIZE + 1);
  }
  return "";
}

std::vector<std::string> own_lines(const std::string& function, const std::vector<std::string>& lines) {
  std::vector<std::string> own;
  for (const std::string& line : lines) {
    if (line.rfind("[" + function + "]:", 0) == 0) own.push_back(line);
  }
  return own;
}

std::string entered(const std::string& function) {
  return "[" + function + "]:===Enter===\n";
}
std::string succeeded(const std::string& function) {
  return "[" + function + "]:===Success Exit===\n";
}
std::string failed(const std::string& function, const std::string& why) {
  return "[" + function + "]:===Fail Exit===" + why + "\n";
}

Buffer::Buffer() {
  std::memset(bytes, 'Z', sizeof bytes);
}
std::string Buffer::text() const {
  return std::string(bytes, strnlen(bytes, sizeof bytes));
}
std::string Buffer::rest(size_t from) const {
  return std::string(bytes + from, sizeof bytes - from);
}
bool Buffer::is_untouched() const {
  return rest(0) == std::string(sizeof bytes, 'Z');
}

}  // namespace settings
