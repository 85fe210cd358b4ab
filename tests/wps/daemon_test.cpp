// The WPS daemon's restart.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>

#include "apply/calls.h"
#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kKill[] = "killall -9 wscd";
constexpr char kShow[] = "ifconfig br0 > /tmp/br0_info.txt";
constexpr char kUnreadable[] = "write_wlan_config:wifimgr_lib_get_wscConfMode fail.\n";

// What reading the mode answers, when not what it really does.
std::function<int(char* buf, uint32_t len)> on_read_mode;
int reads = 0;

void give_br0(const std::string& text) {
  seams::on_command = [text](const std::string& line) {
    if (line == kShow) sandbox::write_file("/tmp/br0_info.txt", text);
    return 0;
  };
}

class WpsDaemon : public testing::Test {
 protected:
  void SetUp() override {
    for (const int band : {0, 1}) {
      sandbox::load(band, "BssidNum=8\nWscConfMode=7;7;7;7;7;7;7;7\n");
    }
    give_br0("          inet addr:192.168.1.1  Bcast:192.168.1.255  Mask:255.255.255.0\n");
  }
};

TEST_F(WpsDaemon, IsEndedAndStartedWithTheSsidsInterfaceAndTheBridgesAddress) {
  for (const int band : {0, 1}) {
    for (int ssid_index = 1; ssid_index <= 8; ++ssid_index) {
      seams::commands.clear();
      EXPECT_EQ(0, wifimgr_lib_service_wpsstart_wifiupnp(band, ssid_index, "Yes"));
      EXPECT_THAT(seams::commands, ElementsAre(kKill, kShow,
                                               std::string("/usr/bin/wscd -i ") + (band == 0 ? "ra" : "rai") +
                                                   std::to_string(ssid_index - 1) + " -a 192.168.1.1 -m 1 &"));
    }
  }
}

TEST_F(WpsDaemon, IsOnlyEndedUnlessTheTextIsExactlyYes) {
  for (const char* enable : {"", "yes", "YES", "No", "Y", "Ye", "Yes ", " Yes", "Yes\n", "1"}) {
    seams::commands.clear();
    EXPECT_EQ(0, wifimgr_lib_service_wpsstart_wifiupnp(0, 1, enable));
    EXPECT_THAT(seams::commands, ElementsAre(kKill)) << enable;
  }
  EXPECT_EQ(0, reads);
}

TEST_F(WpsDaemon, IsStartedInEveryModeButZero) {
  for (const auto& [mode, is_started] : std::initializer_list<std::pair<const char*, bool>>{{"0", false},
                                                                                            {"00\n", false},
                                                                                            {"", false},
                                                                                            {"x", false},
                                                                                            {"x1", false},
                                                                                            {"-0", false},
                                                                                            {"1", true},
                                                                                            {"2", true},
                                                                                            {"3", true},
                                                                                            {"6", true},
                                                                                            {"7", true},
                                                                                            {"8", true},
                                                                                            {"-1", true},
                                                                                            {"256", true},
                                                                                            {"1x", true},
                                                                                            {"\n1", true}}) {
    SCOPED_TRACE(mode);
    ASSERT_EQ(0, update_attr(1, 2, "WscConfMode", mode));
    seams::commands.clear();
    EXPECT_EQ(0, wifimgr_lib_service_wpsstart_wifiupnp(1, 2, "Yes"));
    EXPECT_EQ(is_started ? 3u : 1u, seams::commands.size());
    EXPECT_EQ(kKill, seams::commands.front());
  }
}

TEST_F(WpsDaemon, OfAnUnreadableModeIsReportedAndNotStarted) {
  for (const int ssid_index : {0, -1, 9, INT32_MAX, INT32_MIN}) {
    seams::commands.clear();
    EXPECT_EQ(kUnreadable, sandbox::stdout_of([ssid_index] {
                EXPECT_EQ(0, wifimgr_lib_service_wpsstart_wifiupnp(0, ssid_index, "Yes"));
              }));
    EXPECT_THAT(seams::commands, ElementsAre(kKill));
  }
  for (const int band : {0, 1}) {
    sandbox::load(band, "BssidNum=8\n");
    EXPECT_EQ(kUnreadable,
              sandbox::stdout_of([band] { EXPECT_EQ(0, wifimgr_lib_service_wpsstart_wifiupnp(band, 1, "Yes")); }));
  }
}

TEST_F(WpsDaemon, OfAModeThatIsNotReadReportsNothing) {
  sandbox::load(0, "BssidNum=8\n");
  EXPECT_EQ("", sandbox::stdout_of([] { EXPECT_EQ(0, wifimgr_lib_service_wpsstart_wifiupnp(0, 1, "No")); }));
}

TEST_F(WpsDaemon, GoesByWhatTheBufferHoldsAfterAFailedRead) {
  on_read_mode = [](char* buf, uint32_t len) {
    EXPECT_EQ(160u, len);
    EXPECT_EQ(std::string(160, '\0'), std::string(buf, len));
    std::strcpy(buf, "7");
    return 1;
  };
  EXPECT_EQ(kUnreadable, sandbox::stdout_of([] { wifimgr_lib_service_wpsstart_wifiupnp(0, 1, "Yes"); }));
  EXPECT_THAT(seams::commands, ElementsAre(kKill, kShow, "/usr/bin/wscd -i ra0 -a 192.168.1.1 -m 1 &"));
}

TEST_F(WpsDaemon, IsStartedWithoutAnAddressWhenThereIsNone) {
  give_br0("br0       Link encap:Ethernet\n");
  EXPECT_EQ(0, wifimgr_lib_service_wpsstart_wifiupnp(1, 3, "Yes"));
  EXPECT_THAT(seams::commands, ElementsAre(kKill, kShow, "/usr/bin/wscd -i rai2 -a  -m 1 &"));
}

// Any process may write what is found; a shell would run it.
TEST_F(WpsDaemon, IsStartedWithoutAnAddressWhenWhatIsFoundIsNone) {
  for (const std::string found :
       {"x;y$z", "$(reboot)", "`reboot`", "10.0.0.1;reboot", "10.0.0.1|reboot", "192.168.100.100;", "192.168.100.1000",
        "192.168.100.256", "10.0.0", "10.0.0.1.2", "1", "1111111111111111111111111111111"}) {
    SCOPED_TRACE(found);
    give_br0("inet addr:" + found + "  Bcast:10.255.255.255\n");
    seams::commands.clear();
    EXPECT_EQ(0, wifimgr_lib_service_wpsstart_wifiupnp(1, 8, "Yes"));
    EXPECT_THAT(seams::commands, ElementsAre(kKill, kShow, "/usr/bin/wscd -i rai7 -a  -m 1 &"));
  }
}

TEST_F(WpsDaemon, GetsEveryAddress) {
  for (const std::string address : {"0.0.0.0", "10.0.0.1", "192.168.100.100", "255.255.255.255"}) {
    give_br0("inet addr:" + address + "  Bcast:10.255.255.255\n");
    seams::commands.clear();
    EXPECT_EQ(0, wifimgr_lib_service_wpsstart_wifiupnp(1, 8, "Yes"));
    EXPECT_THAT(seams::commands, ElementsAre(kKill, kShow, "/usr/bin/wscd -i rai7 -a " + address + " -m 1 &"));
  }
}

TEST_F(WpsDaemon, OfAnotherBandIsLeftAlone) {
  for (const int band : {2, -1, 256, INT32_MAX, INT32_MIN}) {
    for (const char* enable : {"Yes", "No"}) {
      EXPECT_EQ(-1, wifimgr_lib_service_wpsstart_wifiupnp(band, 1, enable));
    }
  }
  EXPECT_THAT(seams::commands, IsEmpty());
  const auto trace = seams::trace_of([] { wifimgr_lib_service_wpsstart_wifiupnp(2, 1, "Yes"); });
  EXPECT_EQ("[wifimgr_lib_service_wpsstart_wifiupnp]:===Enter===\n", trace.front());
  EXPECT_THAT(trace, testing::Not(testing::Contains(testing::HasSubstr("Success Exit"))));
}

TEST_F(WpsDaemon, WithoutATextIsLeftAlone) {
  for (const int band : {0, 1}) EXPECT_EQ(1, wifimgr_lib_service_wpsstart_wifiupnp(band, 1, nullptr));
  EXPECT_EQ(-1, wifimgr_lib_service_wpsstart_wifiupnp(2, 1, nullptr)) << "the band is judged first";
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST_F(WpsDaemon, TracesEntryAndSuccess) {
  const std::string name = "[wifimgr_lib_service_wpsstart_wifiupnp]:===";
  for (const char* enable : {"Yes", "No"}) {
    const auto trace = seams::trace_of([enable] { wifimgr_lib_service_wpsstart_wifiupnp(0, 1, enable); });
    EXPECT_EQ(name + "Enter===\n", trace.front());
    EXPECT_EQ(name + "Success Exit===\n", trace.back());
  }
}

TEST_F(WpsDaemon, IgnoresHowTheCommandsEnd) {
  seams::on_command = [](const std::string&) { return -1; };
  EXPECT_EQ(0, wifimgr_lib_service_wpsstart_wifiupnp(0, 1, "Yes"));
  EXPECT_EQ(3u, seams::commands.size());
}

TEST_F(WpsDaemon, LeavesNoDescriptorAndNoStoreChanged) {
  const std::string before = sandbox::segment_bytes(0) + sandbox::segment_bytes(1);
  const int descriptors = requests::open_descriptors();
  for (const int band : {0, 1, 2}) wifimgr_lib_service_wpsstart_wifiupnp(band, 1, "Yes");
  EXPECT_EQ(descriptors, requests::open_descriptors());
  EXPECT_TRUE(before == sandbox::segment_bytes(0) + sandbox::segment_bytes(1));
}

}  // namespace

extern "C" uint64_t wifimgr_lib_get_wscConfMode(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len) {
  ++reads;
  if (on_read_mode) return static_cast<uint64_t>(on_read_mode(buf, len));
  return calls::real<decltype(wifimgr_lib_get_wscConfMode)>("wifimgr_lib_get_wscConfMode")(wifi_type, ssid_index, buf,
                                                                                           len);
}
