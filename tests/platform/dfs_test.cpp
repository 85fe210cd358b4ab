// The two switches of DFS zero-wait.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "params/setting_checks.h"
#include "platform/store_setting.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using settings::Buffer;
using settings::failed;
using settings::own_lines;
using store_setting::expect_written;
using store_setting::fails;
using store_setting::load;
using store_setting::not_read;
using store_setting::read;
using store_setting::refused;
using store_setting::Setting;
using store_setting::succeeds;
using testing::ElementsAre;

struct Switch : Setting {
  const char* key;
  const char* refusal;
};

const Switch kSwitches[] = {
    {{"wifimgr_lib_set_DfsDedicatedZeroWait", wifimgr_lib_set_DfsDedicatedZeroWait,
      "wifimgr_lib_get_DfsDedicatedZeroWait", wifimgr_lib_get_DfsDedicatedZeroWait},
     "DfsDedicatedZeroWait",
     "The DfsDedicatedZeroWait value is invalid."},
    {{"wifimgr_lib_set_DfsZeroWaitDefault", wifimgr_lib_set_DfsZeroWaitDefault, "wifimgr_lib_get_DfsZeroWaitDefault",
      wifimgr_lib_get_DfsZeroWaitDefault},
     "DfsZeroWaitDefault",
     "The DfsZeroWaitDefault value is invalid."},
};

constexpr char kOnly5G[] = "The type should be 1.";
constexpr char kSetIndex[] = "The ssid index is invalid.";
constexpr char kGetIndex[] = "The index should be -1.";

const uint32_t kOtherBands[] = {0, 2, 257, 0x7fffffffU, 0xffffffffU};
const int32_t kOtherIndexes[] = {0, 1, 2, 8, -2, INT_MAX, INT_MIN};

template <typename Check>
void for_each_switch(Check check) {
  for (const Switch& row : kSwitches) {
    SCOPED_TRACE(row.key);
    check(row);
  }
}

TEST(DfsSwitch, WritesField1OfItsKeyOn5G) {
  load();
  for_each_switch([](const Switch& row) {
    for (const std::string& value : settings::number(0, 1).accepted) {
      SCOPED_TRACE(value);
      expect_written(row, 1, -1, row.key, value);
    }
  });
}

TEST(DfsSwitch, RefusesAllButDigitsWithAValueOf0Or1) {
  load();
  for_each_switch([](const Switch& row) {
    for (const std::string& value : settings::number(0, 1).refused) {
      SCOPED_TRACE(value);
      EXPECT_EQ(fails(row.setter, row.refusal), refused(row, 1, -1, value.c_str()));
    }
  });
}

TEST(DfsSwitch, IsSetOn5GOnly) {
  load();
  for_each_switch([](const Switch& row) {
    for (const uint32_t band : kOtherBands) {
      SCOPED_TRACE(band);
      EXPECT_EQ(fails(row.setter, kOnly5G), refused(row, band, -1, "1"));
    }
  });
}

TEST(DfsSwitch, IsSetForTheWholeBandOnly) {
  load();
  for_each_switch([](const Switch& row) {
    for (const int32_t index : kOtherIndexes) {
      SCOPED_TRACE(index);
      EXPECT_EQ(fails(row.setter, kSetIndex), refused(row, 1, index, "1"));
    }
  });
}

TEST(DfsSwitch, RefusesANullValue) {
  load();
  for_each_switch([](const Switch& row) { EXPECT_EQ(fails(row.setter), refused(row, 1, -1, nullptr)); });
}

TEST(DfsSwitch, ChecksNullThenBandThenIndexThenValue) {
  load();
  for_each_switch([](const Switch& row) {
    EXPECT_EQ(fails(row.setter), refused(row, 0, 1, nullptr));
    EXPECT_EQ(fails(row.setter, kOnly5G), refused(row, 0, 1, "2"));
    EXPECT_EQ(fails(row.setter, kSetIndex), refused(row, 1, 1, "2"));
  });
}

TEST(DfsSwitch, ChecksTheValueBeforeItLooksForTheKey) {
  for (const int band : {0, 1}) sandbox::load(band, "Default\nBssidNum=2\n");
  for_each_switch([](const Switch& row) {
    EXPECT_EQ(fails(row.setter, row.refusal), refused(row, 1, -1, "2"));
    EXPECT_EQ(fails(row.setter), refused(row, 1, -1, "1"));
    EXPECT_THAT(seams::errors_of([&] { (void)row.set(1, -1, "1"); }),
                ElementsAre(failed("update_attr", "The attr_name do not exist.")));
  });
}

TEST(DfsSwitch, TracesEntryAndSuccess) {
  load();
  for_each_switch([](const Switch& row) {
    EXPECT_EQ(succeeds(row.setter), own_lines(row.setter, seams::trace_of([&] { (void)row.set(1, -1, "1"); })));
    Buffer buffer;
    const auto lines = seams::trace_of([&] { (void)row.get(1, -1, buffer.bytes, sizeof buffer.bytes); });
    EXPECT_EQ(succeeds(row.getter), own_lines(row.getter, lines));
  });
}

TEST(DfsSwitch, ReadsField1OfItsKeyOn5G) {
  load();
  for_each_switch([](const Switch& row) { EXPECT_EQ(std::string(row.key) + ".1@1", read(row, 1, -1)); });
}

TEST(DfsSwitch, IsReadOn5GOnly) {
  load();
  for_each_switch([](const Switch& row) {
    for (const uint32_t band : kOtherBands) {
      SCOPED_TRACE(band);
      EXPECT_EQ(fails(row.getter, kOnly5G), not_read(row, static_cast<int>(band), -1));
    }
  });
}

TEST(DfsSwitch, IsReadForTheWholeBandOnly) {
  load();
  for_each_switch([](const Switch& row) {
    for (const int32_t index : kOtherIndexes) {
      SCOPED_TRACE(index);
      EXPECT_EQ(fails(row.getter, kGetIndex), not_read(row, 1, index));
    }
  });
}

TEST(DfsSwitch, ChecksBandThenIndexWhenItIsRead) {
  load();
  for_each_switch([](const Switch& row) {
    EXPECT_EQ(fails(row.getter, kOnly5G), not_read(row, 0, 1));
    EXPECT_EQ(fails(row.getter), not_read(row, 1, -1, true));
  });
}

TEST(DfsSwitch, IsNotReadIntoABufferBelow151Bytes) {
  load();
  for_each_switch([](const Switch& row) {
    Buffer buffer;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, row.get(1, -1, buffer.bytes, 150)); }),
                ElementsAre(failed("read_attr", "The size of buffer is too small!")));
    EXPECT_TRUE(buffer.is_untouched());
    EXPECT_EQ(0, row.get(1, -1, buffer.bytes, 151));
  });
}

TEST(DfsSwitch, IsNotReadWithoutItsKey) {
  for (const int band : {0, 1}) sandbox::load(band, "Default\nBssidNum=2\n");
  for_each_switch([](const Switch& row) { EXPECT_EQ(fails(row.getter), not_read(row, 1, -1)); });
}

TEST(DfsSwitch, OutlivesASaveAndALoad) {
  sandbox::load(1, "Default\nBssidNum=2\nDfsDedicatedZeroWait=0\nDfsZeroWaitDefault=0\n");
  EXPECT_EQ(0U, wifimgr_lib_set_DfsDedicatedZeroWait(1, -1, "1"));
  EXPECT_EQ(0, wifimgr_lib_save_dataFile(1));
  EXPECT_EQ("Default\nBssidNum=2\nDfsDedicatedZeroWait=1\nDfsZeroWaitDefault=0\n",
            sandbox::read_file(sandbox::dat_path(1)));
  EXPECT_EQ(0, creat_shm_from_datafile(1));
  Buffer buffer;
  EXPECT_EQ(0, wifimgr_lib_get_DfsDedicatedZeroWait(1, -1, buffer.bytes, sizeof buffer.bytes));
  EXPECT_EQ("1\n", buffer.text());
}

}  // namespace
