// Runs a piece of code in a child and stops it before each of its system calls.
#pragma once

#include <functional>
#include <string>

namespace soak {

// What is done to one system call of the child.
struct Fault {
  int nth = 0;  // counted from 1; 0: none is touched
  bool kills = false;
  int error = 0;  // else the call fails, with so many-th of its errors
};

struct Outcome {
  int calls = 0;             // system calls before the child ended or was killed
  long number = -1;          // of the call that was touched
  bool was_touched = false;  // false: the child ended before its nth call, or the call cannot fail in such a way
  int error = 0;
  int status = 0;  // as of waitpid
};

// The errors that a call can come back with when a resource is missing; none for calls that cannot fail so.
// `variant` counts from 0; -1 behind the last.
int error_of(long number, int variant);
std::string name_of(long number);

// `prepare` and `tell` run in the child too, unharmed.
Outcome run(const std::function<void()>& prepare, const std::function<void()>& code, const std::function<void()>& tell,
            const Fault& fault);

}  // namespace soak
