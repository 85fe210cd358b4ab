// What is reported when an SSID's security fields cannot be brought in line with its authentication mode.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply/calls.h"
#include "apply/dat_text.h"

namespace {

using testing::IsEmpty;
using Lines = std::vector<std::string>;

void put_mode(const std::string& mode) {
  dat::put(0, 1, "AuthMode", mode);
}

// Each failing setter says so and the others still run.
struct Failure {
  const char* mode;
  const char* function;
  std::string printed;
};

std::string repeated(const std::string& line, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += line;
  return all;
}

TEST(AuthModeFailure, IsReportedOnStandardOutput) {
  const std::string start = "write_wlan_config:wifimgr_lib_set_";
  for (const Failure& f : std::vector<Failure>{
           {"WEP", "set_ieee8021x", start + "ieee8021x fail.\n"},
           {"WEP", "set_authMode", start + "authMode fail.\n"},
           {"WEP", "set_encrypType", start + "encrypType fail.\n"},
           {"WEP", "set_keyType", repeated(start + "keyType fail.\n", 4)},
           {"WPA2PSK", "set_defaultKeyID", start + "defaultKeyID fail.\n"},
           {"WPA2PSK", "set_keyStr", repeated(start + "keyStr fail.\n", 4)},
           {"WPA2PSK", "set_keyType", repeated(start + "keyType fail.\n", 4)},
           {"WPA2", "set_ieee8021x", start + "ieee8021x fail.\n"},
           {"WPA2", "set_defaultKeyID", start + "defaultKeyID fail.\n"},
           {"WPA3-192Bit", "set_authMode", start + "authMode fail.\n"},
           {"WPA3-192Bit", "set_ieee8021x", start + "ieee8021x fail.\n"},
           {"OPEN", "set_authMode", start + "authMode fail.\n"},
           // Not the words of the cipher.
           {"OPEN", "set_encrypType", start + "authMode fail.\n"},
           {"OPEN", "set_defaultKeyID", start + "defaultKeyID fail.\n"},
           {"OPEN", "set_WPAPSK", start + "WPAPSK fail.\n"},
           {"OPEN", "set_keyType", repeated(start + "keyType fail.\n", 4)},
           {"OPEN", "set_keyStr", repeated(start + "keyStr fail.\n", 4)},
       }) {
    SCOPED_TRACE(std::string(f.mode) + ", " + f.function);
    dat::load(0, {});
    put_mode(f.mode);
    const Lines all = calls::made_by([] { update_auth_mode(0, 1); });
    dat::load(0, {});
    put_mode(f.mode);
    calls::refuse(f.function);
    EXPECT_EQ(f.printed, sandbox::stdout_of([] {
                calls::made.clear();
                update_auth_mode(0, 1);
              }));
    EXPECT_EQ(all, calls::made);
    calls::allow(f.function);
  }
}

TEST(AuthModeFailure, OfAMissingKeyIsReportedToo) {
  sandbox::load(0, sandbox::full_dat_without(0, "IEEE8021X"));
  put_mode("WPA2");
  EXPECT_EQ("write_wlan_config:wifimgr_lib_set_ieee8021x fail.\n", sandbox::stdout_of([] { update_auth_mode(0, 1); }));
  EXPECT_EQ("2", sandbox::field(0, "DefaultKeyID", 1));
}

TEST(AuthModeFailure, IsNotReportedWhenThereIsNone) {
  for (const char* mode : {"WEP", "WPA2PSK", "WPA2", "WPA3-192Bit", "OPEN"}) {
    dat::load(1, {});
    dat::put(1, 1, "AuthMode", mode);
    EXPECT_THAT(sandbox::stdout_of([] { update_auth_mode(1, 1); }), IsEmpty()) << mode;
  }
}

}  // namespace
