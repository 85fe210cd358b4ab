// monitor on a kernel that tells nothing by itself: interfaces and files are looked at once a second.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "monitor_story.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

// What is preloaded is of the programs' processor. Where that is not the machine's, its own tools say that they do without.
std::string without_words_of_loader(const std::string& text) {
  std::string rest;
  for (const std::string& line : lines_of(text)) {
    if (!line.starts_with("ERROR: ld.so: ")) rest += line + "\n";
  }
  return rest;
}

// Only the monitor lacks it, what comes then does not.
Result watch_without(const std::string& what, const std::string& words, const std::string& script,
                     const Words& options = {}) {
  const Result result =
      run(watched(words, "unset WLANCTL_WITHOUT; " + script,
                  "WLANCTL_WITHOUT='" + what + "'; LD_PRELOAD=\"$LD_PRELOAD:" + built("lib/libno_notices.so") +
                      "\"; export WLANCTL_WITHOUT LD_PRELOAD"),
          options);
  EXPECT_EQ("", without_words_of_loader(result.err));
  return result;
}

TEST(MonitorWithoutNetlink, TellsOfInterfacesAndTheirBridges) {
  const Result result = watch_without("netlink", "",
                                      "ifconfig ra1 down; comes 'interface-down  ra1 down'\n"
                                      "brctl delif br-lan ra1; comes 'bridge-left  ra1 out of br-lan'\n"
                                      "brctl addif br0 ra1; comes 'bridge-joined  ra1 into br0'\n"
                                      "ifconfig ra1 up; comes 'interface-up  ra1 up'");
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
  EXPECT_EQ(5u, lines_of(result.out).size()) << result.out;
}

TEST(MonitorWithoutNetlink, TellsOfADriverThatIsUnloadedAndLoaded) {
  const Result result =
      watch_without("netlink", "2.4g",
                    "rmmod mt7603eap; comes 'interface-gone  ra0 is gone'; comes 'driver-gone  .*there is no ra0'\n"
                    "insmod /lib/modules/4.4.115/mt7603eap.ko; comes 'interface-new  ra0 is there'; comes driver-back",
                    {"--chips", "7603,7612"});
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

TEST(MonitorWithoutNetlink, KeepsToItsBand) {
  const Result result = watch_without("netlink", "5g",
                                      "ifconfig ra1 down; ifconfig rai1 down; comes 'interface-down  rai1 down'\n"
                                      "ifconfig rai1 up; comes 'interface-up  rai1 up'");
  EXPECT_THAT(result.out, AllOf(HasSubstr("ended 0"), Not(HasSubstr("2.4g"))));
}

TEST(MonitorWithoutNetlink, TellsOfAnApply) {
  const Result result = watch_without("netlink", "2.4g",
                                      "wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1\n"
                                      "comes '2.4g  applied  applied'");
  EXPECT_THAT(result.out, HasSubstr("channel 6 -> 11"));
}

TEST(MonitorWithoutInotify, TellsOfADatFileThatIsWrittenAndGone) {
  const Result result = watch_without("inotify", "2.4g",
                                      "wlanctl save 2.4g >/dev/null 2>&1; comes 'dat-file  written, [0-9]* bytes'\n"
                                      "rm /etc/Wireless/RT2860AP/RT2860AP.dat; comes 'dat-file  it is gone'");
  EXPECT_THAT(result.out, AllOf(HasSubstr("ended 0"), Not(HasSubstr("applied"))));
}

TEST(MonitorWithoutInotify, TellsOfAConfirmationAndARollBack) {
  const std::string apply =
      "wlanctl set 2.4g Channel=$channel >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1\n"
      "comes 'apply-waiting  [0-9]* s for wlanctl confirm'\n";
  const Result result = watch_without("inotify", "2.4g",
                                      "channel=11; " + apply +
                                          "wlanctl confirm 2.4g >/dev/null 2>&1; comes '  confirmed  '\nchannel=1; " +
                                          apply + "wlanctl rollback 2.4g >/dev/null 2>&1; comes '  rolled-back  '");
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

TEST(MonitorWithoutBoth, TellsOfInterfacesFilesAndApplies) {
  const Result result = watch_without("netlink inotify", "2.4g",
                                      "ifconfig ra1 down; comes 'interface-down  ra1 down'\n"
                                      "wlanctl save 2.4g >/dev/null 2>&1; comes 'dat-file  written'\n"
                                      "wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1\n"
                                      "comes '2.4g  applied  applied'");
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

}  // namespace
}  // namespace wlanctl_test
