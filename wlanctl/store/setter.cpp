#include "wlanctl/store/setter.h"

#include "wlanctl/library/messages.h"
#include "wlanctl/library/output.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/value.h"

namespace wlanctl {

bool set_by_library(Band band, const Target& target, const std::string& value) {
  clear_messages();
  clear_shell_status();
  const CaughtOutput unheard;
  const Key& key = *target.key;
  if (key.setter(wifi_type_of(band), target.index, value.c_str()) != 0) return false;
  spread_list(band, key, value);
  return true;
}

void take_back(Band band, const std::vector<Stored>& stored) {
  for (auto one = stored.rbegin(); one != stored.rend(); ++one) {
    write_value(band, *one->target.key, one->target.index, one->before);
  }
}

}  // namespace wlanctl
