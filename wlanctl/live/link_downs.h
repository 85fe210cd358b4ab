// Which interfaces go down while something runs: the kernel tells each change, also of one that is up again by the end.
#pragma once

#include <set>
#include <string>

namespace wlanctl {

class LinkDowns {
 public:
  LinkDowns();
  LinkDowns(const LinkDowns&) = delete;
  LinkDowns& operator=(const LinkDowns&) = delete;
  ~LinkDowns();

  bool is_all_told() const { return is_all_told_; }

  // Since this was made. Where the kernel did not tell all, there is nothing to say against it.
  bool may_have_been_down(const std::string& interface);

 private:
  void take();

  int file_;
  bool is_all_told_;
  std::set<std::string> down_;
};

}  // namespace wlanctl
