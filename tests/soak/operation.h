// What processes do while they are killed or something fails.
#pragma once

#include <string>

namespace soak {

struct Operation {
  const char* name;
  int (*run)(int band);  // returns what the library returned
  bool loads;            // the store is empty or part-loaded on the way
  bool saves;            // the dat file is empty or part-written on the way
  bool changes;          // a value of the store: that of `key` and `field` becomes `value`
  const char* key = nullptr;
  int field = 0;
  const char* value = nullptr;
};

extern const Operation kOperations[];
extern const int kOperationCount;

}  // namespace soak
