// Records the getters and setters that the library calls, and makes chosen ones fail. The program defines these
// functions itself, so that the library's own calls arrive here; each goes on to the real one.
#pragma once

#include <dlfcn.h>

#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace calls {

// The calls in order, as "set_channel(0,-1,6)"; those that another recorded call makes are left out.
extern std::vector<std::string> made;

std::vector<std::string> made_by(const std::function<void()>& run);

// From now on this function, named without "wifimgr_lib_", does nothing and fails.
void refuse(const std::string& function);
void allow(const std::string& function);  // again

// One recorded call, for as long as it runs.
class Call {
 public:
  Call(const std::string& function, std::initializer_list<std::string> arguments);
  ~Call();
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;
  bool refused() const { return refused_; }

 private:
  bool refused_;
};

// The library's own function of this name.
template <typename Function>
Function* real(const char* name) {
  void* const found = dlsym(RTLD_NEXT, name);
  if (found == nullptr) std::abort();
  return reinterpret_cast<Function*>(found);
}

}  // namespace calls
