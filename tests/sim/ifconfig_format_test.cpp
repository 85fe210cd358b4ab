// Addresses as the gateway's ifconfig prints them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sim/tools/interface_text.h"
#include "simulation.h"

namespace sim_test {
namespace {

using gateway::tools::as_gateway_prints;
using testing::HasSubstr;
using testing::Not;

TEST(InterfaceText, TranslatesIpv4AddressesAlone) {
  EXPECT_EQ("        inet addr:192.168.2.1  Bcast:192.168.2.255  Mask:255.255.255.0\n",
            as_gateway_prints("        inet 192.168.2.1  netmask 255.255.255.0  broadcast 192.168.2.255\n"));
  EXPECT_EQ("        inet addr:127.0.0.1  Mask:255.0.0.0\n",
            as_gateway_prints("        inet 127.0.0.1  netmask 255.0.0.0\n"));
  EXPECT_EQ("        inet addr:10.0.0.1  P-t-P:10.0.0.2  Mask:255.255.255.255\n",
            as_gateway_prints("        inet 10.0.0.1  netmask 255.255.255.255  destination 10.0.0.2\n"));
  for (const char* text : {"", "\n", "\n\n", "inet\n", "        inet6 ::1  prefixlen 128  scopeid 0x10<host>\n",
                           "br0: flags=4163<UP>  mtu 1500\n", "no end"}) {
    EXPECT_EQ(text, as_gateway_prints(text));
  }
}

TEST(Ifconfig, PrintsTheBridgesAddress) {
  EXPECT_EQ("        inet addr:192.168.2.1  Bcast:192.168.2.255  Mask:255.255.255.0\n",
            run_script("ifconfig br0 | grep 'inet '").out);
  EXPECT_EQ("        inet addr:192.168.1.1  Bcast:192.168.1.255  Mask:255.255.255.0\n",
            run_script("/sbin/ifconfig br-lan | grep 'inet '").out);
}

TEST(Ifconfig, PrintsEveryAddressThatWay) {
  const Result result = run_script("ifconfig ra1 10.9.8.7 netmask 255.255.0.0; ifconfig -a");
  EXPECT_THAT(result.out, HasSubstr("inet addr:10.9.8.7  Bcast:10.9.255.255  Mask:255.255.0.0\n"));
  EXPECT_THAT(result.out, HasSubstr("inet addr:127.0.0.1  Mask:255.0.0.0\n"));
  EXPECT_THAT(result.out, Not(HasSubstr("netmask")));
}

TEST(Ifconfig, ReportsFailuresAsBefore) {
  const Result result =
      run_script("ifconfig nosuch; echo $?; ifconfig br0 1.2.3.4.5 up; echo $?; ifconfig lo >/dev/full; echo $?");
  EXPECT_EQ("1\n1\n0\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("nosuch: error fetching interface information: Device not found"));
}

TEST(Ifconfig, EndsQuietlyWhenNobodyReads) {
  EXPECT_EQ("lo: flags=73<UP,LOOPBACK,RUNNING>  mtu 65536\nifconfig lo\n",
            run_script("ifconfig lo | head -n 1; ifconfig lo >&-; cut -f2 /run/gateway-sim/journal | uniq").out);
}

}  // namespace
}  // namespace sim_test
