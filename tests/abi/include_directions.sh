#!/bin/sh
# The rooms of the library know only those below them: store <- params <- apply, and driver <- wps, platform, which also
# stand on store and params. Everything may use include/ and imports/. The examples are callers: the public header and
# their own. The simulator has nothing of the library, and the tool its public header alone.
#
#   include_directions.sh SOURCE_DIR
set -eu
export LC_ALL=C
cd "$1"
failed=0

# The project's own headers that a file includes, quoted or in angle brackets.
own_headers() {
  sed -nE -e 's/^ *# *include *"(.*)".*/\1/p' \
    -e 's/^ *# *include *<(wifimgr_lib\.h|(include|imports|store|params|apply|driver|wps|platform|examples|sim|wlanctl|tests)\/.*)>.*/\1/p' "$1"
}

# allow ROOM PLAIN-NAMES ALLOWED-ROOM...: which of them the files of a room may include.
allow() {
  room=$1
  pattern="^($2"
  shift 2
  for allowed in "$@"; do pattern="$pattern|$allowed/[a-z_]+\\.(h|def)"; done
  pattern="$pattern)\$"
  files=$(find "$room" -type f)
  [ -n "$files" ] || { echo "nothing in $room"; failed=1; return 0; }
  for file in $files; do
    for header in $(own_headers "$file"); do
      echo "$header" | grep -qE "$pattern" || { echo "$file includes $header"; failed=1; }
    done
  done
}

public='wifimgr_lib\.h|imports/[a-z_]+\.h'
allow include 'none'
allow imports '(vexa_lib_dbg|api_lib_utility)\.h'
allow store "$public" store
allow params "$public" store params
allow apply "$public" store params apply
allow driver "$public" store driver
allow wps "$public" store params driver wps
allow platform "$public" store params driver platform
allow examples '(wifimgr_lib|attach_store)\.h'
allow sim 'none' sim sim/tools sim/driver
allow wlanctl 'wifimgr_lib\.h' wlanctl/base wlanctl/files wlanctl/library wlanctl/keys wlanctl/store wlanctl/check \
  wlanctl/live wlanctl/apply wlanctl/confirm wlanctl/command_line wlanctl/completion

exit $failed
