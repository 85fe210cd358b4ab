#include "programs.h"

#include <cstdlib>

namespace sim_test {
namespace {

std::string setting(const char* name, const std::string& otherwise) {
  const char* const value = std::getenv(name);
  return value != nullptr && *value != '\0' ? value : otherwise;
}

}  // namespace

std::string build_folder() {
  return setting("WIFIMGR_TEST_BUILD", BUILD_FOLDER);
}

std::string source_folder() {
  return SOURCE_FOLDER;
}

std::string gateway_sim_program() {
  return setting("WIFIMGR_TEST_GATEWAY", build_folder()) + "/bin/gateway-sim";
}

}  // namespace sim_test
