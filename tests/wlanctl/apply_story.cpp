#include "apply_story.h"

namespace wlanctl_test {

namespace {

// With another deadline, and the sum that goes with it.
constexpr char kOverdue[] = R"sh(overdue() { python3 - $pending-$1 <<'OVERDUE'
import os, sys
path = sys.argv[1]
head, text = open(path, "rb").read().split(b"\n", 1)
words = text.split(b" ", 3)
words[2] = b"1"
text = b" ".join(words)
sum = 0xcbf29ce484222325
for byte in text:
    sum = (sum ^ byte) * 0x100000001b3 % 2**64
name, version, _ = head.split(b" ")
fresh = os.open(path + ".fresh", os.O_WRONLY | os.O_CREAT, 0o600)
os.write(fresh, b" ".join([name, version, str(sum).encode()]) + b"\n" + text)
os.rename(path + ".fresh", path)
OVERDUE
}
)sh";

}  // namespace

std::string functions() {
  return std::string("pending=/var/run/wlanctl-pending\n") +
         "commands() { cut -f2 /run/gateway-sim/journal | sed s,^/real/,,; }\n"
         "segment() { case $1 in 2.4g) '" +
         built("tests/segment_bytes") + "' 0x12345 ;; 5g) '" + built("tests/segment_bytes") + "' 0x12346 ;; esac; }\n" +
         kOverdue +
         "gone() { while [ -e $pending-$1 ]; do sleep 0.02; done; }\n"
         "guardian() {\n"
         "  for file in /run/gateway-sim/proc/[0-9]*/comm; do\n"
         "    { read name <$file; } 2>/dev/null || continue\n"
         "    [ \"$name\" = wlanctl-guard ] || continue\n"
         "    file=${file%/comm}; echo ${file##*/}\n"
         "  done\n"
         "}\n"
         "stop() { kill -STOP $1; until grep -q 'State:.T' /proc/$1/status; do sleep 0.02; done; }\n"
         "no_guardian() { while [ -n \"$(guardian)\" ]; do sleep 0.02; done; }\n"
         "mkdir -p /real /front; PATH=/front:$PATH\n"
         "stand_in() { ln -s \"$(command -v $1)\" /real/$1; cat >/front/$1; chmod 755 /front/$1; }\n"
         "with_pid() { sh -c 'echo $$ >\"$0\"; exec \"$@\"' \"$@\"; }\n"
         "preloaded() { LD_PRELOAD=\"$LD_PRELOAD:" +
         built("lib/libkill_at_rename.so") +
         "\" \"$@\"; }\n"
         "killed_at() { WLANCTL_KILL=\"$1\"; shift; export WLANCTL_KILL\n"
         "  preloaded \"$@\"; set -- $?; unset WLANCTL_KILL; return $1; }\n"
         "killed_in() { WLANCTL_KILL_IN=\"$1\"; shift; export WLANCTL_KILL_IN\n"
         "  preloaded \"$@\"; set -- $?; unset WLANCTL_KILL_IN; return $1; }\n";
}

Result run_story(const std::string& script, const Words& options) {
  return run(functions() + script, options);
}

std::string behind(const std::string& text, const std::string& mark) {
  const size_t at = text.find("== " + mark + "\n");
  if (at == std::string::npos) return "no \"" + mark + "\" in: " + text;
  const size_t begin = at + mark.size() + 4;
  const size_t end = text.find("\n== ", begin - 1);
  return text.substr(begin, end == std::string::npos ? end : end + 1 - begin);
}

}  // namespace wlanctl_test
