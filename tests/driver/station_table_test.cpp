// The stations that are associated with an SSID.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "driver/allocation.h"
#include "driver/exchange.h"
#include "wifimgr_lib.h"

namespace {

using exchange::Seen;
using exchange::seen;
using exchange::zeros;
using testing::IsEmpty;

constexpr size_t kEntries = 32;
constexpr size_t kEntrySize = 40;
constexpr size_t kListSize = 8 + 64 * 6;

// The number-th station's MAC.
std::string mac(size_t number) {
  return std::string("\x02\x00\xAA\xBB\xCC", 5) + static_cast<char>(number);
}

// The bytes of an entry that the walk looks at; the rest is rubbish.
struct Entry {
  uint8_t ssid;
  uint8_t byte7;
  uint8_t byte8;
  uint8_t byte9;
};

constexpr Entry kElsewhere = {99, 1, 99, 1};

// The driver's reply; entries that are not given belong to no SSID.
std::string table(const std::vector<Entry>& entries, uint64_t count = 1) {
  std::string bytes(reinterpret_cast<const char*>(&count), sizeof count);
  for (size_t i = 0; i < kEntries; ++i) {
    const Entry& entry = i < entries.size() ? entries[i] : kElsewhere;
    std::string raw = exchange::rubbish(kEntrySize);
    raw[0] = static_cast<char>(entry.ssid);
    raw.replace(1, 6, mac(i));
    raw[7] = static_cast<char>(entry.byte7);
    raw[8] = static_cast<char>(entry.byte8);
    raw[9] = static_cast<char>(entry.byte9);
    bytes += raw;
  }
  return bytes;
}

// The caller's list with marked surroundings.
class List {
 public:
  List() : bytes_(kListSize + 32, 'Z') {}
  wifimgr_station_list* out() { return reinterpret_cast<wifimgr_station_list*>(bytes_.data() + 16); }
  std::string image() const { return bytes_; }
  static std::string untouched() { return std::string(kListSize + 32, 'Z'); }
  // These stations, and no byte more.
  static std::string of(const std::vector<size_t>& stations) {
    const uint64_t count = stations.size();
    std::string text(reinterpret_cast<const char*>(&count), sizeof count);
    for (const size_t station : stations) text += mac(station);
    std::string image = untouched();
    image.replace(16, text.size(), text);
    return image;
  }

 private:
  std::string bytes_;
};

void expect_stations(unsigned index, const std::vector<Entry>& entries, const std::vector<size_t>& expected) {
  List list;
  requests::driver = requests::answering(table(entries));
  const Seen seen = exchange::seen([&] { return getMacEntryByIndex(list.out(), index), 0; });
  exchange::expect_exit(seen, {0, "", {}});
  EXPECT_EQ(List::of(expected), list.image());
}

TEST(StationTable, IsAskedOfTheInterfaceOfTheIndex) {
  for (unsigned index = 0; index <= 15; ++index) {
    SCOPED_TRACE(index);
    List list;
    const std::string interface = index < 8 ? "ra" + std::to_string(index) : "rai" + std::to_string(index - 8);
    const Seen seen = exchange::seen([&] { return getMacEntryByIndex(list.out(), index), 0; });
    exchange::expect_requests(seen, {exchange::request(0x8BEF, interface, 8, 0, zeros(8))});
  }
}

TEST(StationTable, IsReadInto4096ZeroedBytes) {
  std::string before;
  requests::driver = [&](const requests::Request&, void* record) {
    before.assign(static_cast<const char*>(requests::data_of(record)), 4096);
    std::memset(requests::data_of(record), 0, 4096);
    return 0;
  };
  List list;
  getMacEntryByIndex(list.out(), 0);
  EXPECT_EQ(zeros(4096), before);
  EXPECT_THAT(allocation::sizes, testing::ElementsAre(4096));
}

TEST(StationTable, OfAnIndexAbove15IsNotAskedFor) {
  requests::driver = requests::answering(table({{0, 1, 1, 1}}));
  for (const unsigned index : {16u, 17u, 256u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(index);
    List list;
    const Seen seen = exchange::seen([&] { return getMacEntryByIndex(list.out(), index), 0; });
    exchange::expect_silence(seen);
    exchange::expect_exit(seen, {0, "", {}});
    EXPECT_EQ(List::untouched(), list.image());
  }
}

TEST(StationTable, IsNotAskedForWithoutAList) {
  const Seen seen = exchange::seen([] { return getMacEntryByIndex(nullptr, 0), 0; });
  exchange::expect_silence(seen);
  exchange::expect_exit(seen, {0, "", {}});
}

TEST(StationTable, IsNotAskedForWithoutMemory) {
  allocation::fails = true;
  List list;
  const Seen seen = exchange::seen([&] { return getMacEntryByIndex(list.out(), 0), 0; });
  exchange::expect_silence(seen);
  exchange::expect_exit(seen, {0, "", {}});
  EXPECT_EQ(List::untouched(), list.image());
}

TEST(StationTable, LeavesTheListWithoutASocket) {
  for (const unsigned index : {0u, 8u}) {
    List list;
    const Seen seen = exchange::seen_without_socket([&] { return getMacEntryByIndex(list.out(), index), 0; });
    exchange::expect_exit(seen, {0, "==>getMacEntryByIndex(): create socket fail.\n", {}});
    EXPECT_THAT(seen.requests, IsEmpty());
    EXPECT_EQ(List::untouched(), list.image());
  }
}

TEST(StationTable, LeavesTheListWhenTheDriverRefuses) {
  for (const unsigned index : {0u, 8u}) {
    List list;
    const Seen seen = exchange::seen_with_refusal([&] { return getMacEntryByIndex(list.out(), index), 0; });
    exchange::expect_exit(seen, {0, "==>getMacEntryByIndex(): XXXXXX ioctl open fail\n", {}});
    EXPECT_EQ(1u, seen.requests.size());
    EXPECT_EQ(List::untouched(), list.image());
  }
}

TEST(StationTable, TakesAPositiveResultForSuccess) {
  requests::driver = [](const requests::Request& request, void* record) {
    return requests::answering(table({{0, 1, 1, 1}}))(request, record) + 7;
  };
  List list;
  getMacEntryByIndex(list.out(), 0);
  EXPECT_EQ(List::of({0}), list.image());
}

TEST(StationTable, ThatIsEmptyLeavesTheListAndItsCount) {
  for (const unsigned index : {0u, 8u}) {
    List list;
    requests::driver = requests::answering(table({{0, 1, 1, 1}}, 0));
    const Seen seen = exchange::seen([&] { return getMacEntryByIndex(list.out(), index), 0; });
    exchange::expect_exit(seen, {0, "==>getMacEntryByIndex(): 7915 no sta existance\n", {}});
    EXPECT_EQ(List::untouched(), list.image());
  }
}

TEST(StationTable, HasACountOf64BitsWhichDoesNotBoundTheWalk) {
  for (const uint64_t count : {uint64_t{1}, uint64_t{1} << 32, uint64_t{1} << 63, ~uint64_t{0}}) {
    List list;
    requests::driver = requests::answering(table({{1, 1, 9, 1}, kElsewhere, {1, 1, 9, 1}}, count));
    EXPECT_EQ("", seen([&] { return getMacEntryByIndex(list.out(), 9), 0; }).printed);
    EXPECT_EQ(List::of({0, 2}), list.image());
  }
}

TEST(StationTable, ListsTheStationsOfTheSsidInOrder) {
  for (unsigned index = 0; index <= 15; ++index) {
    SCOPED_TRACE(index);
    const auto ssid = static_cast<uint8_t>(index % 8);
    const auto other = static_cast<uint8_t>((index + 1) % 8);
    expect_stations(index, {{other, 1, 99, 1}, {ssid, 1, 99, 1}, {ssid, 1, 98, 0}, {99, 1, 99, 1}, {ssid, 1, 0x80, 0}},
                    {1, 2, 4});
  }
}

TEST(StationTable, WithoutAStationOfTheSsidIsAnEmptyList) {
  for (unsigned index = 0; index <= 15; ++index) expect_stations(index, {{99, 1, 99, 1}}, {});
}

TEST(StationTable, EndsAtAnEntryOfTheSsidWhoseBytes8And9AreZero) {
  for (const unsigned index : {1u, 7u, 9u, 15u}) {
    SCOPED_TRACE(index);
    const auto ssid = static_cast<uint8_t>(index % 8);
    expect_stations(index, {{ssid, 1, 99, 0}, {ssid, 1, 0, 0}, {ssid, 1, 99, 1}}, {0});
    expect_stations(index, {{ssid, 1, 0, 1}, {ssid, 1, 0, 0x80}, {ssid, 1, 99, 1}}, {0, 1, 2});
  }
}

TEST(StationTable, GoesOnAfterSuchAnEntryOfAnotherSsid) {
  for (const unsigned index : {1u, 7u, 9u, 15u}) {
    SCOPED_TRACE(index);
    const auto ssid = static_cast<uint8_t>(index % 8);
    expect_stations(index, {{99, 0, 0, 0}, {ssid, 1, 99, 1}}, {1});
  }
}

TEST(StationTable, Of2_4GListsAnEntryWhoseByte8IsTheSsidAgain) {
  for (unsigned index = 1; index <= 7; ++index) {
    SCOPED_TRACE(index);
    const auto ssid = static_cast<uint8_t>(index);
    expect_stations(index, {{ssid, 1, ssid, 0}, {99, 0x80, ssid, 0}, {ssid, 0, 99, 1}}, {0, 0, 1, 2});
  }
  expect_stations(0, {{0, 1, 0, 1}, {99, 1, 0, 0}, {0, 0, 99, 1}}, {0, 0, 1, 2});
}

TEST(StationTable, Of2_4GEndsAtAnEntryWhoseByte8IsTheSsidAndByte7Zero) {
  expect_stations(3, {{3, 1, 99, 1}, {99, 0, 3, 1}, {3, 1, 99, 1}}, {0});
  expect_stations(3, {{3, 1, 99, 1}, {3, 0, 3, 1}, {3, 1, 99, 1}}, {0, 1});
  expect_stations(0, {{0, 1, 99, 1}, {99, 0, 0, 0}, {0, 1, 99, 1}}, {0});
  expect_stations(0, {{0, 1, 99, 1}, {0, 0, 0, 1}, {0, 1, 99, 1}}, {0, 1});
}

TEST(StationTable, Of2_4GSsid0EndsAtTheFirstEntryOfZeros) {
  expect_stations(0, {{0, 1, 1, 0}, {0, 0, 0, 0}, {0, 1, 1, 0}}, {0});
  expect_stations(0, {{0, 1, 1, 0}, {0, 1, 0, 0}, {0, 1, 1, 0}}, {0});
}

TEST(StationTable, Of5GHasNoSecondTest) {
  for (unsigned index = 8; index <= 15; ++index) {
    SCOPED_TRACE(index);
    const auto ssid = static_cast<uint8_t>(index - 8);
    expect_stations(index, {{99, 1, ssid, 1}, {99, 0, ssid, 1}, {ssid, 0, ssid, 1}, {ssid, 1, ssid, 1}}, {2, 3});
  }
}

TEST(StationTable, HasTheBandsOwnSsidNumbers) {
  expect_stations(9, {{9, 1, 99, 1}, {1, 1, 99, 1}}, {1});
  expect_stations(15, {{15, 1, 99, 1}, {7, 1, 99, 1}}, {1});
}

std::vector<size_t> each_of_32(size_t times) {
  std::vector<size_t> stations;
  for (size_t i = 0; i < kEntries * times; ++i) stations.push_back(i / times);
  return stations;
}

TEST(StationTable, Of5GListsAll32Entries) {
  expect_stations(10, std::vector<Entry>(kEntries, {2, 1, 2, 1}), each_of_32(1));
}

TEST(StationTable, Of2_4GListsAll32EntriesTwice) {
  expect_stations(2, std::vector<Entry>(kEntries, {2, 1, 2, 1}), each_of_32(2));
}

TEST(StationTable, EndsBehind32Entries) {
  for (const unsigned index : {1u, 9u}) {
    List list;
    std::string reply = table({});
    reply.resize(4096, '\x01');
    requests::driver = requests::answering(reply);
    getMacEntryByIndex(list.out(), index);
    EXPECT_EQ(List::of({}), list.image());
  }
}

}  // namespace
