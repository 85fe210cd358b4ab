// The global record, where what stands behind it would be copied, too, if a second one were asked for.
#include <gtest/gtest.h>

#include "wifimgr_lib.h"

struct Records {
  wifimgr_key_setter global;
  wifimgr_key_setter behind;
};

// In place of the library's own, as a program's variable of an exported name is.
extern Records g_records asm("wlan_global_script_com_attr");
Records g_records = {{"Channel", nullptr}, {"Behind", nullptr}};

namespace {

TEST(GlobalRecord, IsCopiedAlone) {
  wifimgr_key_setter out[3] = {};
  EXPECT_EQ(1, wifimgr_lib_get_wlan_attr(2, out));
  EXPECT_STREQ("Channel", out[0].name);
  EXPECT_STREQ("", out[1].name);
}

}  // namespace
