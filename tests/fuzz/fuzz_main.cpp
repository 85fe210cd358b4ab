// One door as a program of libFuzzer; DOOR_FUNCTION is the door's.
#include "fuzz/door.h"
#include "support/sandbox.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  sandbox::enter();
  fuzz::prepare();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::forget();
  fuzz::DOOR_FUNCTION({reinterpret_cast<const char*>(data), size});
  return 0;
}
