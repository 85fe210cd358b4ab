#include "fuzz/functions.h"

#include <type_traits>

namespace fuzz {
namespace {

template <typename Function>
void add(Functions& functions, Function function) {
  if constexpr (std::is_same_v<Function, Setter>) {
    functions.setters.push_back(function);
  } else if constexpr (std::is_same_v<Function, Getter>) {
    functions.getters.push_back(function);
  } else if constexpr (std::is_same_v<Function, OtherGetter>) {
    functions.other_getters.push_back(function);
  } else if constexpr (std::is_same_v<Function, SnapshotTaker>) {
    functions.snapshot_takers.push_back(function);
  }
}

}  // namespace

const Functions& functions() {
  static const Functions all = [] {
    Functions found;
#define FUNCTION(name, ...) add(found, &name);
#include "sweep_functions.def"
#undef FUNCTION
    return found;
  }();
  return all;
}

void get_all(int band, int index) {
  char value[WIFIMGR_VALUE_SIZE] = "";
  for (const Getter getter : functions().getters) {
    (void)getter(static_cast<uint32_t>(band), index, value, sizeof value);
  }
  for (const OtherGetter getter : functions().other_getters) (void)getter(band, index, value, sizeof value);
}

}  // namespace fuzz
