// The radios' neighbours: partial scan, site survey and the driver's table.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kWrongBands[] = {2, 3, -1, 256, INT32_MAX, INT32_MIN};

struct Radio {
  int band;
  const char* scan;
  const char* survey;
  const char* dump;
  const char* label;
};
constexpr Radio kRadios[] = {
    {0, "/userfs/bin/iwpriv ra0 set PartialScan=1 &", "/userfs/bin/iwpriv ra0 get_site_survey > /tmp/site_survey_ra0",
     "/tmp/site_survey_ra0", "2.4G"},
    {1, "/userfs/bin/iwpriv rai0 set PartialScan=1 &",
     "/userfs/bin/iwpriv rai0 get_site_survey > /tmp/site_survey_rai0", "/tmp/site_survey_rai0", "5G"},
};

TEST(PartialScan, IsStartedInTheBackground) {
  for (const Radio& radio : kRadios) {
    for (const int status : {0, -1, 256}) {
      seams::commands.clear();
      seams::on_command = [status](const std::string&) { return status; };
      EXPECT_EQ(0, wifimgr_lib_set_PartialScan(radio.band));
      EXPECT_THAT(seams::commands, ElementsAre(radio.scan));
    }
    EXPECT_THAT(seams::trace_of([&] { wifimgr_lib_set_PartialScan(radio.band); }),
                ElementsAre("[wifimgr_lib_set_PartialScan]:===Enter===\n",
                            "[wifimgr_lib_set_PartialScan]:===Success Exit===\n"));
  }
}

TEST(PartialScan, OfAnotherBandIsRefused) {
  for (const int band : kWrongBands) {
    EXPECT_THAT(seams::errors_of([band] { EXPECT_EQ(1, wifimgr_lib_set_PartialScan(band)); }),
                ElementsAre("[wifimgr_lib_set_PartialScan]:===Fail Exit===The wifi_type is wrong.\n"));
  }
  EXPECT_THAT(seams::commands, IsEmpty());
}

// A list and a second entry behind it, all "~" before the call.
struct Neighbours {
  wifimgr_neighbour_list list;
  wifimgr_neighbour second;

  Neighbours() { std::memset(static_cast<void*>(this), '~', sizeof *this); }
  std::string bytes() const { return std::string(reinterpret_cast<const char*>(this), sizeof *this); }
};
static_assert(sizeof(Neighbours) == 4 + 2 * 94);

// Surveys into a dump of this text.
Neighbours surveyed(const Radio& radio, const std::string& dump) {
  seams::on_command = [&](const std::string&) {
    sandbox::write_file(radio.dump, dump);
    return 0;
  };
  Neighbours neighbours;
  seams::commands.clear();
  EXPECT_EQ(0, wifimgr_lib_get_neighbourinfo(radio.band, &neighbours.list));
  EXPECT_THAT(seams::commands, ElementsAre(radio.survey));
  seams::on_command = nullptr;
  return neighbours;
}

std::string lines(int count) {
  std::string text;
  for (int line = 1; line <= count; ++line) text += "6  Neighbour-" + std::to_string(line) + "  02:00:00:00:00:99\n";
  return text;
}

void expect_label_only(const Radio& radio, const Neighbours& neighbours) {
  EXPECT_EQ(0u, neighbours.list.count);
  EXPECT_STREQ(radio.label, neighbours.list.first.band);
  EXPECT_EQ(std::string(89 + 94, '~'), neighbours.bytes().substr(4 + 5));
}

void expect_empty_entry(const Neighbours& neighbours) {
  EXPECT_EQ(std::string(4 + 94, '\0') + std::string(94, '~'), neighbours.bytes());
}

TEST(SiteSurvey, OfOneToThreeLinesHoldsTheBandsLabelAlone) {
  for (const Radio& radio : kRadios) {
    for (const int count : {1, 2, 3}) {
      SCOPED_TRACE(count);
      expect_label_only(radio, surveyed(radio, lines(count)));
      expect_label_only(radio, surveyed(radio, lines(count - 1) + "unfinished"));
      expect_label_only(radio, surveyed(radio, std::string(static_cast<size_t>(count), '\n')));
    }
  }
}

TEST(SiteSurvey, OfMoreLinesHoldsAnEmptyEntry) {
  for (const Radio& radio : kRadios) {
    for (const int count : {4, 5, 6, 100}) {
      SCOPED_TRACE(count);
      expect_empty_entry(surveyed(radio, lines(count)));
      expect_empty_entry(surveyed(radio, lines(count - 1) + "unfinished"));
      expect_empty_entry(surveyed(radio, std::string(static_cast<size_t>(count), '\n')));
    }
  }
}

TEST(SiteSurvey, WithoutALineOnlySetsTheCount) {
  for (const Radio& radio : kRadios) {
    const Neighbours neighbours = surveyed(radio, "");
    EXPECT_EQ(std::string(4, '\0') + std::string(2 * 94, '~'), neighbours.bytes());
  }
}

TEST(SiteSurvey, CountsALineOfAnyLengthOnce) {
  const std::string endless(100000, 'x');
  for (const Radio& radio : kRadios) {
    expect_label_only(radio, surveyed(radio, endless));
    expect_label_only(radio, surveyed(radio, endless + "\n" + endless + "\n" + endless + "\n"));
    expect_empty_entry(surveyed(radio, lines(3) + endless));
    expect_label_only(radio, surveyed(radio, std::string(5, '\0') + "\n" + std::string(5, '\0') + "\n"));
  }
}

TEST(SiteSurvey, LeavesItsDump) {
  for (const Radio& radio : kRadios) {
    surveyed(radio, lines(5));
    EXPECT_EQ(lines(5), sandbox::read_file(radio.dump));
  }
}

TEST(SiteSurvey, ReadsAnOldDumpWhenTheToolWritesNone) {
  for (const Radio& radio : kRadios) {
    sandbox::write_file(radio.dump, lines(4));
    seams::on_command = [](const std::string&) { return -1; };
    Neighbours neighbours;
    EXPECT_EQ(0, wifimgr_lib_get_neighbourinfo(radio.band, &neighbours.list));
    expect_empty_entry(neighbours);
  }
}

TEST(SiteSurvey, WithoutADumpIsRefusedAndLeavesTheList) {
  for (const Radio& radio : kRadios) {
    sandbox::write_file(kRadios[1 - radio.band].dump, lines(5));
    Neighbours neighbours;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_neighbourinfo(radio.band, &neighbours.list)); }),
                ElementsAre("[wifimgr_lib_get_neighbourinfo]:===Fail Exit===fp is NULL\n"));
    EXPECT_EQ(Neighbours().bytes(), neighbours.bytes());
    EXPECT_THAT(seams::commands, ElementsAre(radio.survey));
    seams::commands.clear();
    EXPECT_EQ(0, unlink(kRadios[1 - radio.band].dump));
  }
}

TEST(SiteSurvey, OfAnotherBandIsRefusedAndLeavesTheList) {
  for (const int band : kWrongBands) {
    Neighbours neighbours;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_neighbourinfo(band, &neighbours.list)); }),
                ElementsAre("[wifimgr_lib_get_neighbourinfo]:===Fail Exit===The wifi_type is wrong.\n"));
    EXPECT_EQ(Neighbours().bytes(), neighbours.bytes());
  }
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(SiteSurvey, WithoutAListFailsAndRunsNothing) {
  for (const int band : {0, 1}) EXPECT_EQ(1, wifimgr_lib_get_neighbourinfo(band, nullptr));
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(SiteSurvey, TracesEntryAndSuccessAndLeavesNoDescriptor) {
  sandbox::write_file(kRadios[0].dump, lines(5));
  const int before = requests::open_descriptors();
  wifimgr_neighbour_list list;
  EXPECT_THAT(seams::trace_of([&] { wifimgr_lib_get_neighbourinfo(0, &list); }),
              ElementsAre("[wifimgr_lib_get_neighbourinfo]:===Enter===\n",
                          "[wifimgr_lib_get_neighbourinfo]:===Success Exit===\n"));
  EXPECT_EQ(before, requests::open_descriptors());
}

// The table's buffer and some bytes behind it, all "~" before the call.
std::string table_buffer() {
  return std::string(18436 + 8, '~');
}

TEST(NeighbourTable, IsAskedOfTheRadioIntoTheCallersBuffer) {
  for (const auto& [band, interface] : std::initializer_list<std::pair<int, const char*>>{{0, "ra0"}, {1, "rai0"}}) {
    std::string buffer = table_buffer();
    std::string reply;
    for (int i = 0; i < 18436; ++i) reply += static_cast<char>(i % 251);
    requests::sent.clear();
    requests::driver = [&](const requests::Request& request, void* record) {
      EXPECT_EQ(buffer.data(), requests::data_of(record));
      return requests::answering(reply)(request, record);
    };
    EXPECT_EQ(0, wifimgr_lib_get_neighbourinfo_v1(buffer.data(), band));
    ASSERT_EQ(1u, requests::sent.size());
    const requests::Request& request = requests::sent[0];
    EXPECT_EQ(0x8BE1u, request.number);
    EXPECT_EQ(requests::padded(interface), request.interface);
    EXPECT_EQ(18436, request.length);
    EXPECT_EQ(0x0683, request.flags);
    EXPECT_EQ(0u, request.unused);
    EXPECT_TRUE(table_buffer().substr(8) == request.payload);
    EXPECT_TRUE(reply + "~~~~~~~~" == buffer);
  }
  EXPECT_THAT(requests::sockets, testing::Each(requests::SocketCall{AF_INET, SOCK_DGRAM, 0}));
  EXPECT_EQ(2u, requests::sockets.size());
}

TEST(NeighbourTable, IsThereWhenTheDriverAnswersMoreThanZero) {
  requests::driver = [](const requests::Request&, void*) { return 5; };
  std::string buffer = table_buffer();
  EXPECT_EQ(0, wifimgr_lib_get_neighbourinfo_v1(buffer.data(), 0));
}

TEST(NeighbourTable, WithoutASocketIsRefused) {
  for (const int band : {0, 1}) {
    std::string buffer = table_buffer();
    seams::fail(requests::socket_fault, 1, EMFILE);
    EXPECT_THAT(
        seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_neighbourinfo_v1(buffer.data(), band)); }),
        ElementsAre("[wifimgr_lib_get_neighbourinfo_v1]:===Fail Exit===Create socket_id_StaRssi socket fail\n"));
    EXPECT_TRUE(table_buffer() == buffer);
  }
  EXPECT_THAT(requests::sent, IsEmpty());
}

TEST(NeighbourTable, ThatTheDriverRefusesIsRefused) {
  const int before = requests::open_descriptors();
  for (const int band : {0, 1}) {
    std::string buffer = table_buffer();
    seams::fail(requests::ioctl_fault, 1, EOPNOTSUPP);
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_neighbourinfo_v1(buffer.data(), band)); }),
                ElementsAre("[wifimgr_lib_get_neighbourinfo_v1]:===Fail Exit===ioctl open fail\n"));
    EXPECT_TRUE(table_buffer() == buffer);
  }
  EXPECT_EQ(before, requests::open_descriptors());
}

TEST(NeighbourTable, OfAnotherBandIsRefusedBeforeASocketIsOpened) {
  std::string buffer = table_buffer();
  for (const int band : kWrongBands) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_neighbourinfo_v1(buffer.data(), band)); }),
                ElementsAre("[wifimgr_lib_get_neighbourinfo_v1]:===Fail Exit===The wifi_type is wrong.\n"));
  }
  EXPECT_THAT(requests::sockets, IsEmpty());
  EXPECT_TRUE(table_buffer() == buffer);
}

TEST(NeighbourTable, TracesEntryAndSuccessPrintsNothingAndLeavesNoDescriptor) {
  std::string buffer = table_buffer();
  const int before = requests::open_descriptors();
  EXPECT_EQ("", sandbox::stdout_of([&] {
              EXPECT_THAT(seams::trace_of([&] { wifimgr_lib_get_neighbourinfo_v1(buffer.data(), 1); }),
                          ElementsAre("[wifimgr_lib_get_neighbourinfo_v1]:===Enter===\n",
                                      "[wifimgr_lib_get_neighbourinfo_v1]:===Success Exit===\n"));
            }));
  EXPECT_EQ(before, requests::open_descriptors());
  EXPECT_THAT(seams::commands, IsEmpty());
}

}  // namespace
