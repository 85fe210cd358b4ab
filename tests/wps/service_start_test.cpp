// The script that starts WPS.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>

#include "apply/calls.h"
#include "support/seams.h"
#include "wps/wps_script.h"

namespace {

using testing::IsEmpty;
using wps::kScript;

constexpr char kTool[] = "/userfs/bin/iwpriv ";

// What chmod answers, when not what the kernel does.
std::function<int(const char*, mode_t)> on_chmod;

int start(int band, int number, uint32_t method, uint32_t pin = 0) {
  const uint32_t argument[] = {method, pin};
  return wifimgr_lib_service_start_wps(kScript, band, number, argument);
}

// The lines that set these on an interface.
std::string script(const std::string& interface, std::initializer_list<const char*> settings) {
  std::string text;
  for (const char* setting : settings) text += kTool + interface + " set " + setting + "\n";
  return text;
}

mode_t mode_of(const char* path) {
  struct stat status {};
  EXPECT_EQ(0, stat(path, &status));
  return status.st_mode;
}

TEST(WpsStart, WithAPinIsComplete) {
  for (const int band : {0, 1}) {
    wps::load(band, "7;1", "2;1");
    EXPECT_EQ(0, start(band, 0, 0, 12345670));
    EXPECT_EQ(script(wps::interface(band, 0),
                     {"WscConfMode=7", "WscConfStatus=2", "WscMode=1", "WscPinCode=12345670", "WscGetConf=1"}),
              sandbox::read_file(kScript));
    EXPECT_EQ(0, start(band, 1, 0, 1234));
    EXPECT_EQ(script(wps::interface(band, 1),
                     {"WscConfMode=1", "WscConfStatus=1", "WscMode=1", "WscPinCode=1234", "WscGetConf=1"}),
              sandbox::read_file(kScript));
  }
}

TEST(WpsStart, WithThePushButtonIsComplete) {
  for (const int band : {0, 1}) {
    wps::load(band, "7;2", "2;1");
    EXPECT_EQ(0, start(band, 0, 1));
    EXPECT_EQ(script(wps::interface(band, 0), {"WscConfMode=7", "WscConfStatus=2", "WscMode=2", "WscGetConf=1"}),
              sandbox::read_file(kScript));
    EXPECT_EQ(0, start(band, 1, 1, 12345670));
    EXPECT_EQ(script(wps::interface(band, 1), {"WscConfMode=2", "WscConfStatus=1", "WscMode=2", "WscGetConf=1"}),
              sandbox::read_file(kScript));
  }
}

TEST(WpsStart, ByAnotherMethodSetsNone) {
  wps::load(0, "7;7", "2;2");
  for (const uint32_t method : {2U, 3U, 256U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
    EXPECT_EQ(0, start(0, 0, method, 12345670));
    EXPECT_EQ(script("ra0", {"WscConfMode=7", "WscConfStatus=2", "WscGetConf=1"}), sandbox::read_file(kScript));
  }
}

TEST(WpsStart, WithoutAPinLeavesItToTheDriver) {
  wps::load(0, "7;7", "2;2");
  EXPECT_EQ(0, start(0, 0, 0, 0));
  EXPECT_EQ(script("ra0", {"WscConfMode=7", "WscConfStatus=2", "WscMode=1", "WscGetConf=1"}),
            sandbox::read_file(kScript));
}

TEST(WpsStart, WritesThePinAsASignedNumber) {
  wps::load(0, "7;7", "2;2");
  for (const auto& [pin, line] :
       std::initializer_list<std::pair<uint32_t, const char*>>{{1, "WscPinCode=1"},
                                                               {99999999, "WscPinCode=99999999"},
                                                               {0x7fffffff, "WscPinCode=2147483647"},
                                                               {0x80000000, "WscPinCode=-2147483648"},
                                                               {4294967295, "WscPinCode=-1"}}) {
    EXPECT_EQ(0, start(0, 0, 0, pin));
    EXPECT_EQ(script("ra0", {"WscConfMode=7", "WscConfStatus=2", "WscMode=1", line, "WscGetConf=1"}),
              sandbox::read_file(kScript));
  }
}

// The number of the argument stands at the end of the last page that can be read.
TEST(WpsStart, ReadsNoPinButWithItsMethod) {
  wps::load(0, "7;7", "2;2");
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  void* const pages = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(MAP_FAILED, pages);
  auto* const method = reinterpret_cast<uint32_t*>(static_cast<char*>(pages) + page) - 1;
  ASSERT_EQ(0, mprotect(method + 1, page, PROT_NONE));
  for (const uint32_t number : {1U, 2U, 0xffffffffU}) {
    *method = number;
    EXPECT_EQ(0, wifimgr_lib_service_start_wps(kScript, 0, 0, method));
  }
}

TEST(WpsStart, GoesByTheLowByteOfTheStatusAndWritesAllOfIt) {
  wps::load(0, "7;7", "2;2");
  for (const auto& [status, line] :
       std::initializer_list<std::pair<const char*, const char*>>{{"1", "WscConfStatus=1"},
                                                                  {"2", "WscConfStatus=2"},
                                                                  {"257", "WscConfStatus=257"},
                                                                  {"258", "WscConfStatus=258"},
                                                                  {"65537", "WscConfStatus=65537"},
                                                                  {"-255", "WscConfStatus=-255"},
                                                                  {"-254", "WscConfStatus=-254"},
                                                                  {"-2147483646", "WscConfStatus=-2147483646"},
                                                                  {"2147483394", "WscConfStatus=2147483394"},
                                                                  {"01\n", "WscConfStatus=1"},
                                                                  {" 2x", "WscConfStatus=2"}}) {
    SCOPED_TRACE(status);
    wps::put(0, 2, "WscConfStatus", status);
    EXPECT_EQ(0, start(0, 1, 1));
    EXPECT_EQ(script("ra1", {"WscConfMode=7", line, "WscMode=2", "WscGetConf=1"}), sandbox::read_file(kScript));
  }
}

TEST(WpsStart, InAnotherStatusFailsAndEmptiesTheFileWithoutItsMode) {
  for (const int band : {0, 1}) {
    wps::load(band, "7;7", "2;2");
    for (const char* status : {"0", "3", "4", "255", "256", "259", "-1", "-253", "65536", "", "x", "x1", "\n"}) {
      for (const uint32_t method : {0U, 1U, 2U}) {
        SCOPED_TRACE(status);
        wps::put(band, 2, "WscConfStatus", status);
        sandbox::write_file(kScript, "old");
        ASSERT_EQ(0, chmod(kScript, 0640));
        const auto trace = seams::trace_of([&, b = band] { EXPECT_EQ(1, start(b, 1, method)); });
        EXPECT_EQ("[wifimgr_lib_service_start_wps]:===Fail Exit===\n", trace.back());
        EXPECT_TRUE(sandbox::exists(kScript));
        EXPECT_EQ("", sandbox::read_file(kScript));
        EXPECT_EQ(0100640U, mode_of(kScript));
      }
    }
  }
}

TEST(WpsStart, TakesAStatusThatCannotBeReadForZero) {
  for (const int band : {0, 1}) {
    sandbox::load(band, "BssidNum=2\nWscConfMode=7;7\n");
    wifimgr_lib_wifi_config_oper(static_cast<uint32_t>(band), 0);
    sandbox::write_file(kScript, "old");
    EXPECT_EQ(1, start(band, 0, 1));
    EXPECT_EQ("", sandbox::read_file(kScript));
  }
}

TEST(WpsStart, IntoAFileThatCannotBeOpenedIsASuccess) {
  for (const char* status : {"2;2", "0;0"}) {
    wps::load(0, "7;7", status);
    for (const char* path : {"", "/tmp", "/tmp/none/wps.sh"}) {
      const auto trace =
          seams::trace_of([path] { EXPECT_EQ(0, wifimgr_lib_service_start_wps(path, 0, 0, wps::kPushButton)); });
      EXPECT_EQ("[wifimgr_lib_service_start_wps]:===Success Exit===\n", trace.back());
    }
    EXPECT_FALSE(sandbox::exists("/tmp/none"));
  }
}

TEST(WpsStart, MakesTheScriptItsOwnersAloneWhateverItWasBefore) {
  for (const int band : {0, 1}) {
    wps::load(band, "7;7", "2;2");
    for (const mode_t mask : {0U, 022U, 0777U}) {
      for (const mode_t old_mode : {0777U, 0444U, 04000U}) {
        sandbox::write_file(kScript, std::string(5000, 'x'));
        ASSERT_EQ(0, chmod(kScript, old_mode));
        const mode_t mask_before = umask(mask);
        EXPECT_EQ(0, start(band, 0, 1));
        umask(mask_before);
        EXPECT_EQ(0100700U, mode_of(kScript));
        EXPECT_LT(sandbox::read_file(kScript).size(), 250u);
      }
    }
    EXPECT_EQ(0, unlink(kScript));
    EXPECT_EQ(0, start(band, 0, 1));
    EXPECT_EQ(0100700U, mode_of(kScript));
  }
}

TEST(WpsStart, FailsWhenTheModeCannotBeSetThoughTheScriptIsWhole) {
  wps::load(0, "7;7", "2;2");
  int calls = 0;
  on_chmod = [&calls](const char* path, mode_t mode) {
    ++calls;
    EXPECT_STREQ(kScript, path);
    EXPECT_EQ(0700U, mode);
    return -1;
  };
  const auto trace = seams::trace_of([] { EXPECT_EQ(1, start(0, 0, 1)); });
  EXPECT_EQ("[wifimgr_lib_service_start_wps]:===Fail Exit===\n", trace.back());
  EXPECT_EQ(1, calls);
  EXPECT_EQ(script("ra0", {"WscConfMode=7", "WscConfStatus=2", "WscMode=2", "WscGetConf=1"}),
            sandbox::read_file(kScript));
  on_chmod = nullptr;
}

TEST(WpsStart, WithoutAnArgumentFailsWhereWpsIsOnAndWritesNothing) {
  const std::pair<const char*, int> modes[] = {{"7;7", 1}, {"0;0", 0}};
  for (const auto& [mode, result] : modes) {
    wps::load(0, mode, "2;2");
    sandbox::write_file(kScript, "kept");
    EXPECT_EQ(result, wifimgr_lib_service_start_wps(kScript, 0, 0, nullptr));
    EXPECT_EQ(0, wifimgr_lib_service_start_wps(kScript, 2, 0, nullptr)) << "another band has no WPS that is on";
    EXPECT_EQ("kept", sandbox::read_file(kScript));
  }
}

TEST(WpsStart, GoesByTheStatusOfItsOwnSsid) {
  wps::load(0, "7;7", "0;1");
  EXPECT_EQ(1, start(0, 0, 1));
  EXPECT_EQ(0, start(0, 1, 1));
  wps::load(1, "7;7", "1;0");
  EXPECT_EQ(0, start(1, 0, 1));
  EXPECT_EQ(1, start(1, 1, 1));
}

TEST(WpsStart, RunsNothing) {
  wps::load(0, "7;7", "2;2");
  EXPECT_EQ(0, start(0, 0, 1));
  EXPECT_THAT(seams::commands, IsEmpty());
}

// A limit on the size of files stands in for a disk that is full after so many bytes.
TEST(WpsStart, ThatIsCutIsEmptyAndAFailure) {
  wps::load(0, "7;7", "2;2");
  ASSERT_EQ(0, start(0, 0, 1));
  const size_t whole = sandbox::read_file(kScript).size();
  for (const size_t room : {size_t{0}, size_t{1}, whole - 1}) {
    seams::limit_file_size(room);
    const auto trace = seams::trace_of([] { EXPECT_EQ(1, start(0, 0, 1)); });
    EXPECT_EQ("[wifimgr_lib_service_start_wps]:===Fail Exit===\n", trace.back());
    EXPECT_EQ("", sandbox::read_file(kScript));
  }
  seams::limit_file_size(whole);
  EXPECT_EQ(0, start(0, 0, 1));
}

}  // namespace

extern "C" int chmod(const char* path, mode_t mode) noexcept {
  if (on_chmod) return on_chmod(path, mode);
  return calls::real<int(const char*, mode_t)>("chmod")(path, mode);
}
