// The file that an execute script is: its mode, its place, and when there is none.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
