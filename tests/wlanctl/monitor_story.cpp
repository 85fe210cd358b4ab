#include "monitor_story.h"

namespace wlanctl_test {

std::string watched(const std::string& words, const std::string& script, const std::string& before) {
  return "library_probe init 0 init 1 >/dev/null\n" + before +
         "\n: >lines; : >complaints; seen=1\n"
         "wlanctl monitor " +
         words +
         " >lines 2>complaints & monitor=$!\n"
         "until grep -q watching complaints; do sleep 0.02; done\n"
         "comes() {\n"
         "  tries=0\n"
         "  until tail -n +$seen lines | grep -q -e \"$1\"; do\n"
         "    tries=$((tries + 1)); [ $tries -lt 600 ] || { echo \"nothing of: $1\"; cat lines; exit 9; }; sleep 0.05\n"
         "  done\n"
         "  seen=$((seen + $(tail -n +$seen lines | grep -n -e \"$1\" | head -n 1 | cut -d: -f1)))\n"
         "}\n" +
         script +
         "\nkill -TERM $monitor 2>/dev/null; wait $monitor; echo ended $?; cat lines; grep -v watching complaints >&2; "
         "true";
}

}  // namespace wlanctl_test
