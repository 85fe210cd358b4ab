#!/bin/sh
# Builds the library a second time from a copy of its sources in another folder, and compares the two byte for byte.
#
#   reproducible.sh CMAKE SOURCE_DIR BUILD_DIR LIBRARY
set -eu
cmake=$1 source=$2 build=$3 library=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
copy=$work/a/copy/elsewhere

mkdir -p "$copy"
for part in CMakeLists.txt cmake platform_libs include store params apply driver wps platform examples packaging man; do
  cp -R "$source/$part" "$copy/"
done

# The settings that decide what comes out; the folders are the copy's own.
settings=$work/settings
: >"$settings"
for name in CMAKE_BUILD_TYPE CMAKE_C_COMPILER CMAKE_CXX_COMPILER CMAKE_C_FLAGS CMAKE_CXX_FLAGS CMAKE_SHARED_LINKER_FLAGS \
  CMAKE_TOOLCHAIN_FILE WIFIMGR_WERROR; do
  value=$(sed -n "s|^$name:[A-Z]*=||p" "$build/CMakeCache.txt")
  case $value in "$source"/*) value=$copy/${value#"$source"/} ;; esac
  [ -z "$value" ] || printf 'set(%s "%s" CACHE STRING "")\n' "$name" "$value" >>"$settings"
done
"$cmake" -G Ninja -C "$settings" -S "$copy" -B "$work/b" \
  -DBUILD_TESTING=OFF -DWIFIMGR_SIM=OFF -DWIFIMGR_WLANCTL=OFF >"$work/log" 2>&1 &&
  "$cmake" --build "$work/b" --target api_lib_wifimgr -j 2 >>"$work/log" 2>&1 || { cat "$work/log"; exit 1; }

cmp "$library" "$work/b/lib/$(basename "$library")"
