// The file that an execute script is: its mode, its place, and when there is none.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstring>
#include <functional>

#include "apply/calls.h"
#include "apply/dat_text.h"
#include "apply/script_text.h"
#include "support/seams.h"

namespace {

using script::written;
using testing::ElementsAre;
using testing::IsEmpty;
using ScriptFile = script::Script;

// What chmod answers, when not what the kernel does.
std::function<int(const char*, mode_t)> on_chmod;

void load(int band) {
  dat::load(band, {});
  script::take_snapshot(band);
}

TEST_F(ScriptFile, IsForItsOwnerAloneWhateverItWasBefore) {
  for (const int band : {0, 1}) {
    load(band);
    for (const mode_t mask : {0U, 022U, 0777U}) {
      for (const mode_t old_mode : {0777U, 0444U, 04000U}) {
        sandbox::write_file(script::path(band), std::string(5000, 'x'));
        ASSERT_EQ(0, chmod(script::path(band).c_str(), old_mode));
        const mode_t mask_before = umask(mask);
        EXPECT_THAT(written(band, 0), testing::Not(testing::HasSubstr("x\n")));
        umask(mask_before);
        struct stat status {};
        ASSERT_EQ(0, stat(script::path(band).c_str(), &status));
        EXPECT_EQ(0100700U, status.st_mode);
      }
    }
  }
}

TEST_F(ScriptFile, IsWholeWhenItsModeIsSetAndTheResultIsTheModes) {
  load(0);
  const std::string expected = written(0, 0);
  for (const int answer : {0, -1}) {
    std::string seen;
    on_chmod = [&](const char* path, mode_t mode) {
      EXPECT_EQ(script::path(0), path);
      EXPECT_EQ(0700U, mode);
      seen = sandbox::read_file(path);
      return answer;
    };
    EXPECT_EQ(answer, wifimgr_lib_write_wifi_execute_sh(0, 0));
    EXPECT_EQ(expected, seen);
  }
  on_chmod = nullptr;
}

TEST_F(ScriptFile, OfTheOtherBandStays) {
  for (const int band : {0, 1}) {
    load(band);
    sandbox::write_file(script::path(1 - band), "kept");
    written(band, 0);
    EXPECT_EQ("kept", sandbox::read_file(script::path(1 - band)));
  }
}

TEST_F(ScriptFile, UnknownBandIsRefusedAndWritesNothing) {
  for (const uint32_t band : {2U, 0x80000000U, 0xffffffffU}) {
    EXPECT_THAT(seams::errors_of([band] { EXPECT_EQ(-1, wifimgr_lib_write_wifi_execute_sh(band, 0)); }),
                ElementsAre("[wifimgr_lib_write_wifi_execute_sh]:===Fail Exit===The wifi_type is wrong.\n"));
  }
  EXPECT_FALSE(sandbox::exists(script::path(0)));
  EXPECT_FALSE(sandbox::exists(script::path(1)));
}

TEST_F(ScriptFile, ThatCannotBeOpenedIsAFailureAndPrintsNothing) {
  for (const int band : {0, 1}) {
    sandbox::load(band, sandbox::full_dat_without(band, "WirelessMode"));
    ASSERT_EQ(0, mkdir(script::path(band).c_str(), 0755));
    const auto write = [band] { EXPECT_EQ(-1, wifimgr_lib_write_wifi_execute_sh(static_cast<uint32_t>(band), 0)); };
    EXPECT_EQ("", sandbox::stdout_of(write));
    ASSERT_EQ(0, rmdir(script::path(band).c_str()));
    ASSERT_EQ(0, rmdir(script::folder(band).c_str()));
    EXPECT_EQ("", sandbox::stdout_of(write));
    EXPECT_THAT(calls::made_by(write), IsEmpty());
  }
}

TEST_F(ScriptFile, ThatIsCutIsEmptiedAndAFailureAndNotRun) {
  const auto write = [](int band) { return wifimgr_lib_write_wifi_execute_sh(static_cast<uint32_t>(band), 0); };
  const auto run = [](int band, const std::string& command) {
    seams::commands.clear();
    _11AC_CMDflag = 1;
    EXPECT_EQ(0U, wifimgr_lib_execute_wlan_script(band, command.c_str()));
    return seams::commands;
  };
  for (const int band : {0, 1}) {
    load(band);
    const std::string whole = written(band, 0);
    const size_t mid_mode = whole.find("AuthMode=WPA2PSK") + std::string("AuthMode=WPA2").size();
    for (const size_t room : {size_t{0}, mid_mode, whole.size() - 1}) {
      SCOPED_TRACE(room);
      seams::limit_file_size(room);
      const auto trace = seams::trace_of([&] { EXPECT_EQ(1, write(band)); });
      EXPECT_EQ("[wifimgr_lib_write_wifi_execute_sh]:===Fail Exit===\n", trace.back());
      EXPECT_EQ("", sandbox::read_file(script::path(band)));
      EXPECT_THAT(run(band, script::path(band)), IsEmpty());
      EXPECT_EQ(1, _11AC_CMDflag);
      EXPECT_THAT(run(1 - band, script::path(band)), IsEmpty()) << "run for the other band";
      EXPECT_THAT(run(band, "sh " + script::path(band) + " x"), IsEmpty());
      EXPECT_THAT(run(band, "other"), ElementsAre("other"));
    }
    seams::limit_file_size(whole.size());
    EXPECT_EQ(0, write(band));
    EXPECT_EQ(whole, sandbox::read_file(script::path(band)));
    EXPECT_THAT(run(band, script::path(band)), ElementsAre(script::path(band)));
    seams::limit_file_size(RLIM_INFINITY);
  }
}

// What a buffer on the stack holds unless somebody clears it.
__attribute__((noinline)) void soil_the_stack() {
  volatile char rubbish[16384];
  for (volatile char& byte : rubbish) byte = 'Z';
}

TEST_F(ScriptFile, HasFieldsThatFillTheirWidthToTheirEnd) {
  load(0);
  const std::string full(150, 'f');
  for (const char* key : {"RADIUS_Server", "RADIUS_Port", "EncrypType", "HideSSID", "RekeyInterval"}) {
    unsigned record = 0;
    ASSERT_EQ(2, is_attr_exist(shm_addr_2_4g, key, &record));
    std::memcpy(shm_addr_2_4g + record * 1236 + 36, full.data(), full.size());
  }
  soil_the_stack();
  const std::string text = written(0, 0);
  for (const char* key : {"RADIUS_Server", "RADIUS_Port", "EncrypType", "HideSSID", "RekeyInterval"}) {
    EXPECT_THAT(text, testing::HasSubstr(std::string(key) + "=" + full + "\n"));
  }
}

TEST_F(ScriptFile, TracesEntryAndSuccess) {
  load(0);
  const auto trace = seams::trace_of([] { written(0, 0); });
  EXPECT_EQ("[wifimgr_lib_write_wifi_execute_sh]:===Enter===\n", trace.front());
  EXPECT_EQ("[wifimgr_lib_write_wifi_execute_sh]:===Success Exit===\n", trace.back());
}

}  // namespace

extern "C" int chmod(const char* path, mode_t mode) noexcept {
  if (on_chmod) return on_chmod(path, mode);
  return calls::real<int(const char*, mode_t)>("chmod")(path, mode);
}
