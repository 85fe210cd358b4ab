// A script of the library's, in a file that nobody else can reach, and run by /bin/sh.
#pragma once

#include <string>

namespace wlanctl {

class PrivateScript {
 public:
  PrivateScript();  // in a new folder; both go with this
  PrivateScript(const PrivateScript&) = delete;
  PrivateScript& operator=(const PrivateScript&) = delete;
  ~PrivateScript();

  // Null when no folder could be made.
  const char* path() const { return path_.empty() ? nullptr : path_.c_str(); }

  bool is_empty() const;

  // Runs it until its first command that fails; `output` receives what was printed, on one line.
  bool run(std::string* output) const;

 private:
  std::string folder_;
  std::string path_;
};

}  // namespace wlanctl
