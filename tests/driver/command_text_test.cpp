// Command lines and templates that callers get as texts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr size_t kBufferSize = 300;

// All bytes of a buffer that held only "~".
std::string buffer_after(const std::function<void(char* out)>& write) {
  std::string buffer(kBufferSize, '~');
  write(buffer.data());
  return buffer;
}

std::string untouched() {
  return std::string(kBufferSize, '~');
}

std::string holding(const std::string& text) {
  return text + '\0' + std::string(kBufferSize - text.size() - 1, '~');
}

std::string command(const char* prefix, int index, int size, const char* argument, int kind) {
  return buffer_after(
      [=](char* out) { EXPECT_EQ(0, wifimgr_lib_set_WIFI_CMD(prefix, index, size, argument, out, kind)); });
}

TEST(CommandText, IsForTheInterfaceOfAPrefixAndANumber) {
  for (const auto& [prefix, index, name] :
       std::initializer_list<std::tuple<const char*, int, const char*>>{{"ra", 0, "ra0"},
                                                                        {"ra", 7, "ra7"},
                                                                        {"rai", 12, "rai12"},
                                                                        {"ra", -1, "ra"},
                                                                        {"ra0", -1, "ra0"},
                                                                        {"ra", -2, "ra-2"},
                                                                        {"", 3, "3"},
                                                                        {"", -1, ""},
                                                                        {"w%d", -1, "w%d"},
                                                                        {"w%d", 1, "w%d1"},
                                                                        {"ra", INT32_MAX, "ra2147483647"},
                                                                        {"ra", INT32_MIN, "ra-2147483648"}}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(holding("/userfs/bin/iwpriv " + std::string(name) + " set Channel=6"),
              command(prefix, index, kBufferSize, "Channel=6", 0));
    EXPECT_EQ(holding("/userfs/bin/iwpriv " + std::string(name) + " Channel=6"),
              command(prefix, index, kBufferSize, "Channel=6", 1));
  }
}

TEST(CommandText, CutsTheInterfaceTo15Characters) {
  for (const auto& [prefix, index, name] : std::initializer_list<std::tuple<const char*, int, const char*>>{
           {"fifteen-letters", -1, "fifteen-letters"},
           {"sixteen--letters", -1, "sixteen--letter"},
           {"a-very-long-prefix-of-a-name", -1, "a-very-long-pre"},
           {"fourteen-lette", 1, "fourteen-lette1"},
           {"fourteen-lette", 12, "fourteen-lette1"},
           {"fifteen-letters", 1, "fifteen-letters"},
           {"a-very-long-prefix-of-a-name", 1, "a-very-long-pre"}}) {
    EXPECT_EQ(holding("/userfs/bin/iwpriv " + std::string(name) + " show"), command(prefix, index, 100, "show", 1));
  }
}

TEST(CommandText, HoldsTheArgumentAsItIs) {
  for (const char* argument : {"", "%s%n", "; reboot", "a b\n\"c\"", "set"}) {
    EXPECT_EQ(holding(std::string("/userfs/bin/iwpriv ra0 set ") + argument), command("ra", 0, 100, argument, 0));
    EXPECT_EQ(holding(std::string("/userfs/bin/iwpriv ra0 ") + argument), command("ra", 0, 100, argument, 1));
  }
  const std::string endless(100000, 'x');
  EXPECT_EQ(holding(("/userfs/bin/iwpriv ra0 set " + endless).substr(0, 298)),
            command("ra", 0, 299, endless.c_str(), 0));
}

TEST(CommandText, IsCutToTheCallersSize) {
  const std::string whole = "/userfs/bin/iwpriv ra0 set Channel=6";
  for (const size_t size : {1U, 2U, 19U, 35U, 36U, 37U, 38U}) {
    EXPECT_EQ(holding(whole.substr(0, size - 1)), command("ra", 0, static_cast<int>(size), "Channel=6", 0)) << size;
  }
  for (const int size : {0, -1, INT32_MIN}) {
    EXPECT_EQ(untouched(), command("ra", 0, size, "Channel=6", 0));
    EXPECT_EQ(untouched(), command("ra", 0, size, "Channel=6", 1));
  }
  EXPECT_EQ(holding(whole), command("ra", 0, INT32_MAX, "Channel=6", 0));
}

TEST(CommandText, OfAnotherKindIsNotWritten) {
  for (const int kind : {2, 3, -1, 256, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(untouched(), command("ra", 0, 100, "Channel=6", kind)) << kind;
  }
}

TEST(CommandText, OfANullPointerIsNotWritten) {
  for (const int kind : {0, 1, 2}) {
    EXPECT_EQ(untouched(), command(nullptr, 0, 100, "Channel=6", kind));
    EXPECT_EQ(untouched(), command(nullptr, -1, 100, "Channel=6", kind));
    EXPECT_EQ(untouched(), command("ra", 0, 100, nullptr, kind));
    EXPECT_EQ(0, wifimgr_lib_set_WIFI_CMD("ra", 0, 100, "Channel=6", nullptr, kind));
  }
}

TEST(CommandText, TracesEntryAndSuccessForEveryKind) {
  char out[100];
  for (const int kind : {0, 1, 2}) {
    EXPECT_THAT(
        seams::trace_of([&] { wifimgr_lib_set_WIFI_CMD("ra", 0, sizeof out, "show", out, kind); }),
        ElementsAre("[wifimgr_lib_set_WIFI_CMD]:===Enter===\n", "[wifimgr_lib_set_WIFI_CMD]:===Success Exit===\n"));
  }
}

std::string line_template(int band, int size) {
  return buffer_after([=](char* out) { EXPECT_EQ(0, wifimgr_lib_get_WLAN_SCRIPT(band, size, out)); });
}

TEST(ScriptTemplate, IsALineForEachBand) {
  EXPECT_EQ(holding("/userfs/bin/iwpriv ra%d set %s=%s\n"), line_template(0, kBufferSize));
  EXPECT_EQ(holding("/userfs/bin/iwpriv rai%d set %s=%s\n"), line_template(1, kBufferSize));
}

TEST(ScriptTemplate, IsCutToTheCallersSize) {
  const std::string whole[] = {"/userfs/bin/iwpriv ra%d set %s=%s\n", "/userfs/bin/iwpriv rai%d set %s=%s\n"};
  for (const int band : {0, 1}) {
    for (const size_t size : {1U, 2U, 20U, 34U, 35U, 36U, 37U}) {
      EXPECT_EQ(holding(whole[band].substr(0, size - 1)), line_template(band, static_cast<int>(size))) << size;
    }
    for (const int size : {0, -1, INT32_MIN}) EXPECT_EQ(untouched(), line_template(band, size));
    EXPECT_EQ(0, wifimgr_lib_get_WLAN_SCRIPT(band, 100, nullptr));
  }
}

TEST(ScriptTemplate, OfAnotherBandIsRefusedAndNotWritten) {
  for (const int band : {2, -1, 256, INT32_MAX, INT32_MIN}) {
    EXPECT_THAT(seams::errors_of([band] {
                  EXPECT_EQ(untouched(), buffer_after([band](char* out) {
                              EXPECT_EQ(1, wifimgr_lib_get_WLAN_SCRIPT(band, 100, out));
                            }));
                }),
                ElementsAre("[wifimgr_lib_get_WLAN_SCRIPT]:===Fail Exit===The wifi_type is wrong.\n"));
  }
}

TEST(ScriptTemplate, TracesEntryAndSuccess) {
  char out[100];
  for (const int band : {0, 1}) {
    EXPECT_THAT(seams::trace_of([&] { wifimgr_lib_get_WLAN_SCRIPT(band, sizeof out, out); }),
                ElementsAre("[wifimgr_lib_get_WLAN_SCRIPT]:===Enter===\n",
                            "[wifimgr_lib_get_WLAN_SCRIPT]:===Success Exit===\n"));
  }
}

TEST(ScriptTemplate, AndCommandTextsRunAndPrintNothing) {
  EXPECT_EQ("", sandbox::stdout_of([] {
              command("ra", 0, 100, "show", 0);
              line_template(1, 100);
            }));
  EXPECT_THAT(seams::commands, IsEmpty());
  EXPECT_THAT(requests::sockets, IsEmpty());
}

}  // namespace
