#!/bin/sh
# The settings' table as the development package has it: a program in C and one in C++ list the same rows as the script that
# makes pages and dat files of them, and the page, the manual page and the dictionary have every key.
#
#   settings.sh CMAKE SOURCE_DIR BUILD_DIR CC CXX [EMULATOR...]
set -eu
export LC_ALL=C
cmake=$1 source=$2 build=$3 cc=$4 cxx=$5
shift 5
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

fail() {
  echo "$1"
  exit 1
}

DESTDIR=$work/stage "$cmake" --install "$build" --component dev >"$work/log" 2>&1 || { cat "$work/log"; fail "cannot install"; }
include=$(dirname "$(find "$work/stage" -name wifimgr_settings.h)")
sh "$source/scripts/settings.sh" rows >"$work/rows"

# list COMPILER OPTION...: builds and runs the lister.
list() {
  "$@" -Wall -Wextra -Wpedantic -Werror -I"$include" -o "$work/list" "$build/lib/libapi_lib_wifimgr.so.1" \
    -Wl,-rpath,"$build/lib" -Wl,-rpath-link,"$build/lib"
}
list "$cc" -std=c11 "$source/tests/abi/list_settings.c"
"$@" "$work/list" >"$work/listed_by_c"
list "$cxx" -std=c++20 -x c++ "$source/tests/abi/list_settings.c" -x none
"$@" "$work/list" >"$work/listed_by_cpp"
for language in c cpp; do
  diff "$work/rows" "$work/listed_by_$language" || fail "the script reads the table otherwise than a compiler"
done

# Every form has a place for every key.
cut -f 1 "$work/rows" >"$work/keys"
[ "$(wc -l <"$work/keys")" -gt 100 ] || fail "too few settings"
page=$(find "$work/stage" -name settings.md)
manual=$(find "$work/stage" -name wifimgr_settings.3)
while read -r key; do
  grep -qF "| \`$key\` |" "$page" || fail "$key is not on the page"
  grep -qxF ".B $key" "$manual" || fail "$key is not in the manual"
done <"$work/keys"
sh "$source/scripts/settings.sh" dictionary >"$work/dictionary"
! grep -vE '^"[^"\\]*"$' "$work/dictionary" || fail "no line of a dictionary"
while read -r key; do
  # shellcheck disable=SC2059 # the key is the format
  one=$(printf "$key" 1)
  # shellcheck disable=SC2059
  none=$(printf "$key" 0)
  grep -qxF "\"$one\"" "$work/dictionary" || grep -qxF "\"$none\"" "$work/dictionary" || fail "$key is not in the dictionary"
done <"$work/keys"
