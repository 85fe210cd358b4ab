#include "wlanctl/store/value.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "wlanctl/base/text.h"
#include "wlanctl/keys/dat_key.h"

namespace wlanctl {
namespace {

// A key of an index of its own has one value.
int field_of(const Key& key, int index) {
  return key.numbering == Numbering::kShared ? index : -1;
}

bool is_in_fields(const Key& key) {
  return is_split_list(key) && key.numbering == Numbering::kShared;
}

std::optional<std::string> read_field(Band band, const std::string& dat_key, int field) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  if (read_attr(number_of(band), field, dat_key.c_str(), text, sizeof text) != 0) return std::nullopt;
  return std::string(text, strnlen(text, sizeof text));
}

constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kLineFeed = "\n";

// In front of its line end. There are some thousand fields in a band, most of them empty.
std::string text_of(const char* field, size_t most, std::string_view line_ends) {
  const auto is_end = [&](char byte) { return byte == '\0' || line_ends.find(byte) != std::string_view::npos; };
  return {field, std::find_if(field, field + most, is_end)};
}

std::vector<StoreRecord> records_in(const std::vector<wifimgr_attr_record>& table, std::string_view line_ends) {
  std::vector<StoreRecord> records(table.size());
  for (size_t i = 0; i < table.size(); ++i) {
    const wifimgr_attr_record& record = table[i];
    records[i].key = text_of(record.key, sizeof record.key, line_ends);
    for (size_t field = 0; field < WIFIMGR_FIELDS; ++field) {
      std::string text = text_of(record.field[field], sizeof record.field[field], line_ends);
      if (text.empty()) continue;
      records[i].fields.resize(field);
      records[i].fields.push_back(std::move(text));
    }
  }
  return records;
}

}  // namespace

std::vector<StoreRecord> records_of(const std::vector<wifimgr_attr_record>& table) {
  return records_in(table, kLineEnds);
}

std::vector<StoreRecord> exact_records_of(const std::vector<wifimgr_attr_record>& table) {
  return records_in(table, kLineFeed);
}

std::optional<std::string> read_raw_value(Band band, const Key& key, int index) {
  std::optional<std::string> value = read_field(band, dat_key_of(key, index), field_of(key, index));
  for (const char end : {'\n', '\r'}) {
    if (value && value->ends_with(end)) value->pop_back();
  }
  return value;
}

std::optional<std::string> read_value(Band band, const Key& key, int index) {
  const std::optional<std::string> first = read_field(band, dat_key_of(key, index), field_of(key, index));
  if (!first) return std::nullopt;
  std::string value = without_line_end(*first);
  for (int i = 2; is_in_fields(key) && i <= WIFIMGR_FIELDS; ++i) {
    const std::optional<std::string> next = read_field(band, key.dat_key, i);
    if (!next || next->empty()) break;
    value += ';' + without_line_end(*next);
  }
  return value;
}

void write_value(Band band, const Key& key, int index, const std::string& value) {
  (void)update_attr(number_of(band), field_of(key, index), dat_key_of(key, index).c_str(), value.c_str());
  spread_list(band, key, value);
}

void spread_list(Band band, const Key& key, const std::string& value) {
  if (!is_in_fields(key)) return;
  std::vector<std::string> parts = split_at(value, ';');
  if (parts.size() > WIFIMGR_FIELDS) parts = {value};
  parts.resize(WIFIMGR_FIELDS);
  for (int i = 0; i < WIFIMGR_FIELDS; ++i) {
    (void)update_attr(number_of(band), i + 1, key.dat_key, parts[static_cast<size_t>(i)].c_str());
  }
}

int ssid_count(Band band) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  (void)wifimgr_lib_get_bssidnum(number_of(band), -1, text, sizeof text);
  const long count = std::strtol(text, nullptr, 10);
  return count < 0 ? 0 : static_cast<int>(std::min(count, static_cast<long>(WIFIMGR_FIELDS)));
}

bool is_switched_on(Band band, int ssid) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  return wifimgr_lib_get_enableSsid(wifi_type_of(band), ssid, text, sizeof text) == 0 &&
         std::strtol(text, nullptr, 10) == 1;
}

std::optional<std::string> senseless_count(Band band) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  (void)wifimgr_lib_get_bssidnum(number_of(band), -1, text, sizeof text);
  std::string value = without_line_end(std::string(text, strnlen(text, sizeof text)));
  const std::optional<int64_t> count = number_in(value);
  if (count && *count >= 1 && *count <= WIFIMGR_FIELDS) return std::nullopt;
  return value;
}

}  // namespace wlanctl
