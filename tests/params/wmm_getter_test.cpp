// The getters of the WMM lists.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>

#include "params/setting_checks.h"
#include "params/wmm_lists.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using settings::Buffer;
using settings::entered;
using settings::failed;
using settings::Image;
using settings::own_lines;
using settings::succeeded;
using testing::ElementsAre;
using wmm::for_each_list;
using wmm::kLists;
using wmm::List;
using wmm::load_no_list;

TEST(WmmGetter, ReadsTheWholeListOfItsKeyInItsBand) {
  settings::load_distinct();
  for_each_list([](const List& list, uint32_t band) {
    const std::string stored = sandbox::field(static_cast<int>(band), list.key, 1);
    ASSERT_NE(std::string::npos, stored.find(".8@")) << stored;
    Buffer buffer;
    EXPECT_EQ(0, list.get(band, -1, buffer.bytes, sizeof buffer.bytes));
    EXPECT_EQ(stored, buffer.text());
  });
}

TEST(WmmGetter, CopiesTheWholeFieldAndNothingBehindIt) {
  settings::load_distinct();
  for_each_list([](const List& list, uint32_t band) {
    Buffer buffer;
    EXPECT_EQ(0, list.get(band, -1, buffer.bytes, WIFIMGR_FIELD_SIZE + 1));
    std::string slot = sandbox::field(static_cast<int>(band), list.key, 1);
    slot.resize(WIFIMGR_FIELD_SIZE, '\0');
    EXPECT_EQ(slot, std::string(buffer.bytes, WIFIMGR_FIELD_SIZE));
    EXPECT_EQ("ZZZZZZZZZZ", buffer.rest(WIFIMGR_FIELD_SIZE));
  });
}

TEST(WmmGetter, HasNoLineEndFromTheFile) {
  for (const int band : {0, 1}) sandbox::load(band, sandbox::full_dat(band));
  Buffer buffer;
  EXPECT_EQ(0, wifimgr_lib_get_apCwmax(1, -1, buffer.bytes, sizeof buffer.bytes));
  EXPECT_EQ("6;10;4;3", buffer.text());
}

TEST(WmmGetter, RefusesAnyIndexButMinusOne) {
  settings::load_distinct();
  for_each_list([](const List& list, uint32_t band) {
    for (const int32_t index : {0, 1, 2, 8, -2, INT_MAX, INT_MIN}) {
      SCOPED_TRACE(index);
      Buffer buffer;
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, list.get(band, index, buffer.bytes, 256)); }),
                  ElementsAre(failed(list.getter, list.index_refusal)));
      EXPECT_TRUE(buffer.is_untouched());
    }
  });
}

TEST(WmmGetter, LooksAtTheIndexBeforeBandAndSize) {
  settings::load_distinct();
  for (const List& list : kLists) {
    Buffer buffer;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, list.get(2, 0, buffer.bytes, 1)); }),
                ElementsAre(failed(list.getter, list.index_refusal)));
  }
}

TEST(WmmGetter, RefusesAnUnknownBand) {
  settings::load_distinct();
  for (const List& list : kLists) {
    SCOPED_TRACE(list.key);
    for (const uint32_t band : {2U, 0xffffffffU, 0x80000000U}) {
      Buffer buffer;
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, list.get(band, -1, buffer.bytes, sizeof buffer.bytes)); }),
                  ElementsAre(failed("read_attr", "The wifi_type is wrong.")));
      EXPECT_TRUE(buffer.is_untouched());
    }
  }
}

TEST(WmmGetter, RefusesABufferBelow151Bytes) {
  settings::load_distinct();
  for_each_list([](const List& list, uint32_t band) {
    for (const uint32_t size : {0U, 1U, 150U}) {
      Buffer buffer;
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, list.get(band, -1, buffer.bytes, size)); }),
                  ElementsAre(failed("read_attr", "The size of buffer is too small!")));
      EXPECT_TRUE(buffer.is_untouched());
    }
  });
}

TEST(WmmGetter, RefusesAMissingKey) {
  load_no_list();
  for_each_list([](const List& list, uint32_t band) {
    Buffer buffer;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, list.get(band, -1, buffer.bytes, sizeof buffer.bytes)); }),
                ElementsAre(failed("read_attr", "The attr_name do not exist.")));
    EXPECT_TRUE(buffer.is_untouched());
  });
}

TEST(WmmGetter, RefusesANullBufferFirst) {
  settings::load_distinct();
  for_each_list([](const List& list, uint32_t band) {
    for (const int32_t index : {-1, 0}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1, list.get(band, index, nullptr, WIFIMGR_VALUE_SIZE)); }),
                  ElementsAre(entered(list.getter), failed(list.getter)));
    }
  });
}

TEST(WmmGetter, TracesItsEntryAndItsExit) {
  settings::load_distinct();
  for_each_list([](const List& list, uint32_t band) {
    Buffer buffer;
    const auto read = [&](uint32_t wifi_type) {
      return own_lines(list.getter,
                       seams::trace_of([&] { (void)list.get(wifi_type, -1, buffer.bytes, sizeof buffer.bytes); }));
    };
    EXPECT_THAT(read(band), ElementsAre(entered(list.getter), succeeded(list.getter)));
    EXPECT_THAT(read(2), ElementsAre(entered(list.getter), failed(list.getter)));
  });
}

TEST(WmmGetter, ChangesNothing) {
  settings::load_distinct();
  const Image image;
  for_each_list([](const List& list, uint32_t band) {
    Buffer buffer;
    EXPECT_EQ(0, list.get(band, -1, buffer.bytes, sizeof buffer.bytes));
  });
  EXPECT_EQ("", image.difference());
}

}  // namespace
