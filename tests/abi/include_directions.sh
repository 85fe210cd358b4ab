#!/bin/sh
# The rooms of the library know only those below them: store <- params <- apply, and driver <- wps, platform, which also
# stand on store and params. Everything may use include/ and platform_libs/. The examples are callers: the public header
# and their own. The simulator has nothing of the library, and rooms of its own; the tool has the public header alone.
#
#   include_directions.sh SOURCE_DIR
set -eu
export LC_ALL=C
cd "$1"
failed=0

# The project's own headers that a file includes, quoted or in angle brackets.
own_headers() {
  sed -nE -e 's/^ *# *include *"(.*)".*/\1/p' \
    -e 's/^ *# *include *<(wifimgr_(lib|settings)\.h|(include|platform_libs|store|params|apply|driver|wps|platform|examples|sim|wlanctl|tests)\/.*)>.*/\1/p' "$1"
}

# allow ROOM PLAIN-NAMES ALLOWED-ROOM...: which of them the files of a room may include.
allow() {
  room=$1
  pattern="^($2"
  shift 2
  for allowed in "$@"; do pattern="$pattern|$allowed/[a-z0-9_]+\\.(h|def)"; done
  pattern="$pattern)\$"
  files=$(find "$room" -type f)
  [ -n "$files" ] || { echo "nothing in $room"; failed=1; return 0; }
  for file in $files; do
    for header in $(own_headers "$file"); do
      echo "$header" | grep -qE "$pattern" || { echo "$file includes $header"; failed=1; }
    done
  done
}

public='wifimgr_(lib|settings)\.h|platform_libs/[a-z_]+\.h'
allow include 'none'
allow platform_libs '(vexa_lib_dbg|api_lib_utility)\.h'
allow store "$public" store
allow params "$public" store params
allow apply "$public" store params apply
allow driver "$public" store driver
allow wps "$public" store params driver wps
allow platform "$public" store params driver platform
allow examples '(wifimgr_lib|attach_store)\.h'
allow sim/base 'none' sim/base
allow sim/driver 'none' sim/driver
allow sim/records 'none' sim/base sim/records
allow sim/network 'none' sim/base sim/network
allow sim/state 'none' sim/base sim/driver sim/records sim/state
allow sim/radio 'none' sim/base sim/driver sim/records sim/network sim/state sim/radio
allow sim/tools 'none' sim/base sim/driver sim/records sim/network sim/state sim/radio sim/tools
allow sim/simctl 'none' sim/base sim/driver sim/records sim/network sim/state sim/radio sim/tools sim/simctl
allow sim/root 'none' sim/base sim/radio sim/root
allow sim/outside 'none' sim/base sim/radio sim/root sim/outside

# The rooms of the tool, from the lowest to the highest; the last row is for all of them, and for rooms without one.
tool='wifimgr_(lib|settings)\.h'
allow wlanctl/base none wlanctl/base
allow wlanctl/files "$tool" wlanctl/base wlanctl/files
allow wlanctl/library "$tool" wlanctl/base wlanctl/files wlanctl/library
allow wlanctl/keys "$tool" wlanctl/base wlanctl/files wlanctl/keys
allow wlanctl/store "$tool" wlanctl/base wlanctl/files wlanctl/library wlanctl/keys wlanctl/store
allow wlanctl/check "$tool" wlanctl/base wlanctl/files wlanctl/library wlanctl/keys wlanctl/store wlanctl/check
allow wlanctl/live "$tool" wlanctl/base wlanctl/files wlanctl/library wlanctl/store wlanctl/live
allow wlanctl/apply "$tool" wlanctl/base wlanctl/files wlanctl/library wlanctl/keys wlanctl/store wlanctl/check wlanctl/live \
  wlanctl/apply
allow wlanctl/history "$tool" wlanctl/base wlanctl/files wlanctl/keys wlanctl/store wlanctl/history
allow wlanctl/ssid "$tool" wlanctl/base wlanctl/files wlanctl/library wlanctl/keys wlanctl/store wlanctl/check \
  wlanctl/apply wlanctl/ssid
allow wlanctl/confirm "$tool" wlanctl/base wlanctl/files wlanctl/library wlanctl/keys wlanctl/store wlanctl/live \
  wlanctl/apply wlanctl/history wlanctl/ssid wlanctl/confirm
allow wlanctl/exchange "$tool" wlanctl/base wlanctl/files wlanctl/library wlanctl/keys wlanctl/store wlanctl/check \
  wlanctl/apply wlanctl/exchange
allow wlanctl/watch "$tool" wlanctl/base wlanctl/files wlanctl/library wlanctl/keys wlanctl/store wlanctl/live wlanctl/apply \
  wlanctl/confirm wlanctl/watch
allow wlanctl/doctor "$tool" wlanctl/base wlanctl/files wlanctl/library wlanctl/keys wlanctl/store wlanctl/check wlanctl/live \
  wlanctl/apply wlanctl/confirm wlanctl/doctor
allow wlanctl/command_line "$tool" wlanctl/base wlanctl/command_line
allow wlanctl/completion none wlanctl/base wlanctl/keys wlanctl/command_line wlanctl/completion
allow wlanctl "$tool" wlanctl/base wlanctl/files wlanctl/library wlanctl/keys wlanctl/store wlanctl/check wlanctl/live \
  wlanctl/apply wlanctl/history wlanctl/ssid wlanctl/confirm wlanctl/exchange wlanctl/watch \
  wlanctl/doctor wlanctl/command_line wlanctl/completion wlanctl/verbs \
  wlanctl/verbs/apply wlanctl/verbs/settings wlanctl/verbs/ssid

# What is dear to compile is included once; the JSON library to print, and to parse.
once() {
  [ "$(grep -rlE "^ *# *include *<$1" wlanctl | sort | xargs)" = "$2" ] || { echo "$1 is for $2 alone"; failed=1; }
}
once CLI/ wlanctl/command_line/parse.cpp
once nlohmann/ 'wlanctl/base/json_print.cpp wlanctl/exchange/json_tree.cpp'

exit $failed
