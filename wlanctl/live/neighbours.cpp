#include "wlanctl/live/neighbours.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

#include "wifimgr_lib.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/mac.h"
#include "wlanctl/live/radio.h"

namespace wlanctl {
namespace {

// The layout is the driver's; the library hands the bytes on as they are.
struct Entry {
  uint8_t bssid[6];
  uint16_t channel;
  int32_t signal;
  uint32_t age;
  uint8_t ssid_length;
  uint8_t wps;
  char ssid[34];
  char security[32];
  char mode[12];
  uint8_t rest[48];
};
static_assert(sizeof(Entry) == 144);

constexpr size_t kEntries = 128;
struct Table {
  uint32_t count;
  Entry entry[kEntries];
};
static_assert(sizeof(Table) == WIFIMGR_NEIGHBOUR_TABLE_SIZE);

constexpr size_t kMostSsidBytes = 32;
constexpr uint16_t kHighestChannel = 233;
constexpr int32_t kWeakest = -128;
constexpr int32_t kStrongest = 20;
constexpr uint8_t kGroupBit = 1;

template <size_t kSize>
bool is_text(const char (&field)[kSize]) {
  const size_t length = strnlen(field, kSize);
  return length < kSize && std::all_of(field, field + length, [](char c) { return c >= ' ' && c <= '~'; });
}

// Another driver, or another version, may fill the table otherwise: better nothing than numbers that mean something
// else.
bool is_believable(const Entry& entry) {
  return (entry.bssid[0] & kGroupBit) == 0 && entry.channel >= 1 && entry.channel <= kHighestChannel &&
         entry.signal >= kWeakest && entry.signal <= kStrongest && entry.ssid_length <= kMostSsidBytes &&
         entry.wps <= 1 && is_text(entry.security) && is_text(entry.mode);
}

Neighbour shown(const Entry& entry) {
  return {mac_text(entry.bssid), entry.channel, entry.signal,  entry.age, std::string(entry.ssid, entry.ssid_length),
          entry.security,        entry.mode,    entry.wps != 0};
}

// A text of UTF-8 in so many columns, with dots where something is left out.
std::string cut_to(const std::string& text, size_t columns) {
  constexpr char kDots[] = "...";
  constexpr size_t kDotCount = sizeof kDots - 1;
  const auto starts = [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) != 0x80; };
  if (static_cast<size_t>(std::count_if(text.begin(), text.end(), starts)) <= columns) return text;
  std::string cut;
  size_t used = 0;
  for (const char c : text) {
    if (starts(c) && ++used + kDotCount > columns) break;
    cut += c;
  }
  return cut + kDots;
}

}  // namespace

std::optional<std::vector<Neighbour>> neighbours_of(Band band, Report& report) {
  const std::string interface = interface_of(band, 0);
  const auto table = std::make_unique<Table>();
  if (!ask_driver(report, band, interface, "its neighbours",
                  [&] { return wifimgr_lib_get_neighbourinfo_v1(table.get(), number_of(band)) == 0; })) {
    return std::nullopt;
  }
  const size_t count = table->count;
  if (count > kEntries || !std::all_of(table->entry, table->entry + count, is_believable)) {
    report.problem({std::string(label_of(band)) + ": the driver's neighbour table is not laid out as expected",
                    "use a wlanctl of the driver's version; iwpriv " + interface + " get_site_survey prints a survey",
                    about(band, interface)});
    return std::nullopt;
  }
  std::vector<Neighbour> neighbours;
  for (size_t i = 0; i < count; ++i) neighbours.push_back(shown(table->entry[i]));
  std::stable_sort(neighbours.begin(), neighbours.end(),
                   [](const Neighbour& one, const Neighbour& other) { return one.signal > other.signal; });
  return neighbours;
}

Json json_of(const std::optional<std::vector<Neighbour>>& neighbours) {
  if (!neighbours) return Json();
  Json list = Json::array();
  for (const Neighbour& neighbour : *neighbours) {
    list.push_back({{"bssid", neighbour.bssid},
                    {"ssid", neighbour.ssid},
                    {"channel", neighbour.channel},
                    {"signal_dbm", neighbour.signal},
                    {"age_seconds", neighbour.age},
                    {"security", neighbour.security},
                    {"mode", neighbour.mode},
                    {"wps", neighbour.offers_wps}});
  }
  return list;
}

std::string table_of(const std::vector<Neighbour>& neighbours, size_t most) {
  const size_t count = std::min(most, neighbours.size());
  Rows rows = {{"  BSSID", "CH", "dBm", "WPS", "SECURITY", "SSID"}};
  size_t widest = rows[0][4].size();
  for (size_t i = 0; i < count; ++i) widest = std::max(widest, neighbours[i].security.size());
  const size_t used = std::string("  02:00:00:00:00:00  233  -128  yes    ").size() + widest;
  for (size_t i = 0; i < count; ++i) {
    const Neighbour& neighbour = neighbours[i];
    rows.push_back({"  " + neighbour.bssid, std::to_string(neighbour.channel), std::to_string(neighbour.signal),
                    neighbour.offers_wps ? "yes" : "no", neighbour.security,
                    cut_to(printable(neighbour.ssid), used < kColumns ? kColumns - used : 0)});
  }
  return table(rows);
}

}  // namespace wlanctl
