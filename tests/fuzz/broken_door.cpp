#include "fuzz/door.h"

// Every input breaks its rule: what make fuzz makes of a find is seen by it.
void fuzz::try_broken(std::string_view) {
  require(false, "make fuzz sees that something was found");
}
