// The setters of the WMM lists: four numbers, kept whole.
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
using settings::repeat;
using settings::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using wmm::for_each_list;
using wmm::kLists;
using wmm::List;
using wmm::load_no_list;

constexpr char kSetterIndexRefusal[] = "The ssid index here should be -1.";

// No number has a range, and what stands behind a line end is not looked at.
const std::string kAccepted[] = {
    "3;7;1;1",
    "0;0;0;0",
    "99999;0;0;0",
    "0;0;0;99999",
    "003;07;0001;00",
    "4294967296;2147483648;18446744073709551616;9",
    "3;7;1;1\n",
    "3;7;1;\n",
    "3;7;1;1\nx",
    "3;7;1;1\n9",
    repeat("8", 143) + ";7;6;5",  // the longest that a field holds whole
};

const std::string kRefused[] = {
    "",          "\n",       ";",          ";;;",       "x",         "3",           "3;7",       "3;7;1",
    "3;7;1;1;1", "3;7;1;1;", "3;7;1;1;\n", ";7;1;1",    "3;;1;1",    "3;7;;1",      "3;;7;1;1",  "3;7;1;",
    "a;7;1;1",   "3;a;1;1",  "3;7;a;1",    "3;7;1;a",   "-3;7;1;1",  "3;+7;1;1",    "3; 7;1;1",  "3;7;1;1 ",
    " 3;7;1;1",  "3,7,1,1",  "3;7;1\n;1",  "0x3;7;1;1", "3.0;7;1;1", "3;7;1;1\r\n", "\n3;7;1;1",
};

constexpr char kGood[] = "4;4;3;2";

TEST(WmmSetter, ReplacesTheWholeListOfItsKeyInItsBandAlone) {
  settings::load_distinct();
  Image image;
  for_each_list([&](const List& list, uint32_t band) {
    for (const std::string& value : kAccepted) {
      SCOPED_TRACE("value " + value);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(0U, list.set(band, -1, value.c_str())); }), IsEmpty());
      image.set(static_cast<int>(band), list.key, 1, value);
      ASSERT_EQ("", image.difference());
    }
  });
}

TEST(WmmSetter, KeepsAsMuchAsAFieldHolds) {
  settings::load_distinct();
  Image image;
  const std::string list = settings::list_with(1, repeat("7", 149), ';');
  EXPECT_EQ(0U, wifimgr_lib_set_apTxop(0, -1, list.c_str()));
  image.set(0, "APTxop", 1, list.substr(0, 149));
  EXPECT_EQ("", image.difference());
}

TEST(WmmSetter, KeepsTheOldListWhenTheNewOneIsRefused) {
  settings::load_distinct();
  const Image image;
  for_each_list([&](const List& list, uint32_t band) {
    for (const std::string& value : kRefused) {
      SCOPED_TRACE("value " + value);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, list.set(band, -1, value.c_str())); }),
                  ElementsAre(failed("check_para_valid", "The input parameter is invalid.")));
    }
    ASSERT_EQ("", image.difference());
  });
}

TEST(WmmSetter, RefusesANumberThatNoFieldHolds) {
  settings::load_distinct();
  const Image image;
  for (int place = 0; place < 4; ++place) {
    const std::string list = settings::list_with(place, repeat("7", 150), ';');
    EXPECT_EQ(1U, wifimgr_lib_set_bssACM(1, -1, list.c_str()));
  }
  EXPECT_EQ("", image.difference());
}

TEST(WmmSetter, TracesARefusedListTwice) {
  settings::load_distinct();
  for_each_list([](const List& list, uint32_t band) {
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, list.set(band, -1, "3;7;1")); }),
                ElementsAre(entered(list.setter), entered("check_para_valid"),
                            failed("check_para_valid", "The input parameter is invalid."), failed(list.setter)));
  });
}

TEST(WmmSetter, RefusesANullListBeforeTheIndexWithoutCheckingIt) {
  settings::load_distinct();
  const Image image;
  for_each_list([](const List& list, uint32_t band) {
    for (const int32_t index : {-1, 0}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, list.set(band, index, nullptr)); }),
                  ElementsAre(entered(list.setter), failed(list.setter)));
    }
  });
  EXPECT_EQ("", image.difference());
}

TEST(WmmSetter, RefusesAnyIndexButMinusOne) {
  settings::load_distinct();
  const Image image;
  for_each_list([&](const List& list, uint32_t band) {
    for (const int32_t index : {0, 1, 2, 8, -2, INT_MAX, INT_MIN}) {
      SCOPED_TRACE(index);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, list.set(band, index, kGood)); }),
                  ElementsAre(failed(list.setter, kSetterIndexRefusal)));
    }
    ASSERT_EQ("", image.difference());
  });
}

TEST(WmmSetter, LooksAtTheListBeforeTheIndex) {
  settings::load_distinct();
  for_each_list([](const List& list, uint32_t band) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, list.set(band, 1, "x")); }),
                ElementsAre(failed("check_para_valid", "The input parameter is invalid.")));
  });
}

TEST(WmmSetter, LooksAtTheIndexBeforeTheBand) {
  settings::load_distinct();
  for (const List& list : kLists) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, list.set(2, 1, kGood)); }),
                ElementsAre(failed(list.setter, kSetterIndexRefusal)));
  }
}

TEST(WmmSetter, RefusesAnUnknownBand) {
  settings::load_distinct();
  const Image image;
  for (const List& list : kLists) {
    SCOPED_TRACE(list.key);
    for (const uint32_t band : {2U, 0xffffffffU, 0x80000000U}) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, list.set(band, -1, kGood)); }),
                  ElementsAre(failed("update_attr", "The wifi_type is wrong.")));
    }
  }
  EXPECT_EQ("", image.difference());
}

TEST(WmmSetter, AddsNoMissingKey) {
  load_no_list();
  const Image image;
  for_each_list([](const List& list, uint32_t band) {
    const auto lines = seams::trace_of([&] { EXPECT_EQ(1U, list.set(band, -1, kGood)); });
    EXPECT_THAT(own_lines("update_attr", lines),
                ElementsAre(entered("update_attr"), failed("update_attr", "The attr_name do not exist.")));
    EXPECT_THAT(own_lines(list.setter, lines), ElementsAre(entered(list.setter), failed(list.setter)));
  });
  EXPECT_EQ("", image.difference());
}

TEST(WmmSetter, TracesItsEntryAndItsSuccess) {
  settings::load_distinct();
  for_each_list([](const List& list, uint32_t band) {
    const auto lines = seams::trace_of([&] { (void)list.set(band, -1, kGood); });
    EXPECT_THAT(own_lines(list.setter, lines), ElementsAre(entered(list.setter), succeeded(list.setter)));
    EXPECT_THAT(own_lines("update_common_attr", lines), SizeIs(2));
  });
}

TEST(WmmSetter, TracesNothingOfItsOwnBelowLevel8ButReasons) {
  settings::load_distinct();
  for (const List& list : kLists) {
    EXPECT_THAT(own_lines(list.setter, seams::trace_of(
                                           [&] {
                                             (void)list.set(0, -1, kGood);
                                             (void)list.set(2, -1, kGood);
                                             (void)list.set(0, -1, "x");
                                             (void)list.set(0, -1, nullptr);
                                           },
                                           7)),
                IsEmpty());
  }
}

TEST(WmmSetter, ActsTheSameWithoutTracing) {
  settings::load_distinct();
  for_each_list([](const List& list, uint32_t band) {
    EXPECT_EQ(0U, list.set(band, -1, kGood));
    EXPECT_EQ(1U, list.set(band, 1, kGood));
    EXPECT_EQ(1U, list.set(band, -1, "3;7;1"));
  });
  EXPECT_THAT(seams::trace, IsEmpty());
}

TEST(WmmSetter, StoresWhatItsGetterGivesAndAsksForNoReload) {
  settings::load_with("ReloadFlag", "7");
  for_each_list([](const List& list, uint32_t band) {
    EXPECT_EQ(0U, list.set(band, -1, "5;06;7;8"));
    Buffer buffer;
    EXPECT_EQ(0, list.get(band, -1, buffer.bytes, sizeof buffer.bytes));
    EXPECT_EQ("5;06;7;8", buffer.text());
    EXPECT_EQ("7\n", sandbox::field(static_cast<int>(band), "ReloadFlag", 1));
  });
  EXPECT_THAT(seams::commands, IsEmpty());
}

}  // namespace
