// What callers make of a step that fails: this program stands in for the steps that cannot fail by themselves.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

#include "store/ipc_objects.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;

bool g_refuse = false;
bool g_refuse_to_close = false;
// Refuses the n-th merge from now on and all that follow; 0 refuses none.
int g_refuse_merge_from = 0;

// What a save does with the stream it writes to, each with how often the lock had been asked for P or V before.
struct StreamStep {
  std::string call;
  FILE* file;
  int lock_steps;
};
std::vector<StreamStep> g_stream_steps;

void note(const char* call, FILE* file) {
  g_stream_steps.push_back({call, file, seams::semop_fault.calls});
}

template <typename Function>
Function* real(Function*, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" int attr_value_parser(const char* key, char* value, unsigned* count, char** fields) {
  return g_refuse ? 1 : real(attr_value_parser, __func__)(key, value, count, fields);
}

extern "C" int update_common_attr(char* segment, int record, const char* name, const char* value) {
  return g_refuse ? 1 : real(update_common_attr, __func__)(segment, record, name, value);
}

extern "C" int fclose(FILE* file) {
  note(__func__, file);
  const int result = real(fclose, __func__)(file);
  return g_refuse_to_close ? EOF : result;
}

extern "C" void flockfile(FILE* file) noexcept {
  note(__func__, file);
  real(flockfile, __func__)(file);
}

extern "C" void funlockfile(FILE* file) noexcept {
  note(__func__, file);
  real(funlockfile, __func__)(file);
}

extern "C" int merge_para(wifimgr_attr_record* rec, char* out, int count) {
  if (g_refuse_merge_from > 1) {
    --g_refuse_merge_from;
  } else if (g_refuse_merge_from == 1) {
    return 1;
  }
  return g_refuse ? 1 : real(merge_para, __func__)(rec, out, count);
}

namespace {

constexpr char kDat[] = "BssidNum=1\nChannel=6\nHT_TxStream=1\nSSID1=home\n";

std::vector<std::string> errors_of_save(int ssids = 1) {
  return seams::errors_of([=] { EXPECT_EQ(1, update_datafile_from_shm(0, ssids)); });
}

TEST(RefusedStep, AValueThatCannotBeSplitIsNoAttribute) {
  wifimgr_attr_record record = {};
  char line[] = "Channel=6\n";
  g_refuse = true;
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, parse_data_from_line(line, &record)); }),
              ElementsAre("[parse_data_from_line]:===Fail Exit===Parse the attr_value failed.\n"));
  EXPECT_EQ('\0', record.key[0]);
}

TEST(RefusedStep, AChangeThatFailsIsReportedAndGivesTheLockBack) {
  sandbox::load(0, kDat);
  g_refuse = true;
  for (const char* name : {"Channel", "SSID1"}) {
    EXPECT_THAT(seams::errors_of([=] { EXPECT_EQ(1, update_attr(0, -1, name, "1")); }),
                ElementsAre("[update_attr]:===Fail Exit===Modify the attr_value failed.\n"));
  }
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, update_attr(0, 1, "SSID1", "1")); }),
              ElementsAre("[update_attr]:===Fail Exit===Modify the attr_value failed.\n"));
  EXPECT_EQ(0, update_attr(0, 1, "Channel", "1"));
  EXPECT_EQ(1, ipc::semaphore_value(0));
}

TEST(RefusedStep, ALineThatCannotBeJoinedEndsTheSave) {
  sandbox::load(0, kDat);
  g_refuse = true;
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, update_datafile_from_shm(0, 1)); }),
              ElementsAre("[update_datafile_from_shm]:===Fail Exit===merge some values to one line failed.\n"));
  EXPECT_EQ(1, ipc::semaphore_value(0));
}

TEST(RefusedStep, AFileThatCannotBeClosedIsNotSaved) {
  sandbox::load(0, kDat);
  g_refuse_to_close = true;
  const int result = update_datafile_from_shm(0, 1);
  g_refuse_to_close = false;
  EXPECT_EQ(1, result);
  EXPECT_EQ(1, ipc::semaphore_value(0));
}

// What a save did with its stream, in order, as "call after n"; all of it on one stream.
std::vector<std::string> stream_steps_of_save(int result) {
  g_stream_steps.clear();
  const int before = seams::semop_fault.calls;
  const int saved = update_datafile_from_shm(0, 1);
  const std::vector<StreamStep> steps = g_stream_steps;
  EXPECT_EQ(result, saved);
  std::vector<std::string> texts;
  for (const StreamStep& step : steps) {
    EXPECT_EQ(steps.front().file, step.file);
    texts.push_back(step.call + " after " + std::to_string(step.lock_steps - before));
  }
  return texts;
}

// The first two steps are P and V of the check.
TEST(SavedStream, IsLockedBeforeTheStoreAndUnlockedAfterIt) {
  sandbox::load(0, kDat);
  EXPECT_THAT(stream_steps_of_save(0), ElementsAre("flockfile after 2", "funlockfile after 4", "fclose after 4"));
}

TEST(SavedStream, IsUnlockedAndClosedWhenTheStoreCannotBeLocked) {
  sandbox::load(0, kDat);
  seams::fail(seams::semop_fault, 3, EINTR);
  EXPECT_THAT(stream_steps_of_save(1), ElementsAre("flockfile after 2", "funlockfile after 3", "fclose after 3"));
}

TEST(SavedStream, IsUnlockedAndClosedWhenALineCannotBeWritten) {
  sandbox::load(0, kDat);
  g_refuse_merge_from = 1;
  EXPECT_THAT(stream_steps_of_save(1), ElementsAre("flockfile after 2", "funlockfile after 4", "fclose after 4"));
}

TEST(RefusedStep, ALineThatCannotBeWrittenEndsTheSaveInTheMidstOfTheFile) {
  sandbox::load(0, kDat);
  g_refuse_merge_from = 2;
  EXPECT_THAT(errors_of_save(),
              ElementsAre("[update_datafile_from_shm]:===Fail Exit===merge some values to one line failed.\n"));
  EXPECT_EQ("Default\nBssidNum=1\n", sandbox::read_file(sandbox::dat_path(0)));
  EXPECT_EQ(1, ipc::semaphore_value(0));
}

constexpr char kUnlockFailed[] = "[semaphore_v]:===Fail Exit===seamphore_v failed.\n";

TEST(RefusedUnlock, OfACheckKeepsThePlainFailureOfALineThatIsTooLong) {
  sandbox::load(0, kDat);
  ASSERT_EQ(0, update_attr(0, 1, "HT_TxStream", std::string(149, 'a').c_str()));
  ASSERT_EQ(0, update_attr(0, 2, "HT_TxStream", std::string(149, 'a').c_str()));
  seams::fail(seams::semop_fault, 2, ERANGE);
  EXPECT_THAT(errors_of_save(2), ElementsAre(kUnlockFailed));
  EXPECT_EQ(kDat, sandbox::read_file(sandbox::dat_path(0)));
}

TEST(RefusedUnlock, OfARewriteKeepsTheMessageOfTheLineThatCannotBeJoined) {
  sandbox::load(0, kDat);
  g_refuse_merge_from = 1;
  seams::fail(seams::semop_fault, 4, ERANGE);
  EXPECT_THAT(
      errors_of_save(),
      ElementsAre(kUnlockFailed, "[update_datafile_from_shm]:===Fail Exit===merge some values to one line failed.\n"));
  EXPECT_EQ("Default\n", sandbox::read_file(sandbox::dat_path(0)));
}

TEST(RefusedUnlock, OfARewriteKeepsThePlainFailureOfAFileThatIsFull) {
  sandbox::load(0, kDat);
  char full[WIFIMGR_DAT_PATH_SIZE] = "/dev/full";
  ASSERT_EQ(0, wifimgr_lib_set_wifi_path(0, full));
  seams::fail(seams::semop_fault, 4, ERANGE);
  EXPECT_THAT(errors_of_save(), ElementsAre(kUnlockFailed));
}

}  // namespace
