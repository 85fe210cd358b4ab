// What callers make of a step that fails: this program stands in for the steps that cannot fail by themselves.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "store/ipc_objects.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;

bool g_refuse = false;
bool g_refuse_to_close = false;

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
  const int result = real(fclose, __func__)(file);
  return g_refuse_to_close ? EOF : result;
}

extern "C" int merge_para(wifimgr_attr_record* rec, char* out, int count) {
  return g_refuse ? 1 : real(merge_para, __func__)(rec, out, count);
}

namespace {

constexpr char kDat[] = "BssidNum=1\nChannel=6\nSSID1=home\n";

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

}  // namespace
