// Where the programs are that tests start: in the build under test, which need not be the one that the test was built in.
#pragma once

#include <string>

namespace sim_test {

// The build under test: the folder that WIFIMGR_TEST_BUILD names, else the build of the test itself.
std::string build_folder();
inline std::string built(const std::string& path) {
  return build_folder() + "/" + path;
}

// The folder of the sources.
std::string source_folder();

// The simulated gateway: that of the build that WIFIMGR_TEST_GATEWAY names, where the gateway is not what is tested.
std::string gateway_sim_program();

inline std::string button_probe_program() {
  return built("tests/button_probe");
}
inline std::string request_probe_program() {
  return built("tests/request_probe");
}
inline std::string wireless_probe_program() {
  return built("tests/wireless_probe");
}
inline std::string library_probe_program() {
  return built("tests/library_probe");
}
inline std::string wlanctl_program() {
  return built("bin/wlanctl");
}

}  // namespace sim_test
