#!/bin/sh
# Installs into a staging root, and builds and runs a program in C and one in C++ against it, once by pkg-config and once by
# find_package, with what INTEGRATION.md says. The manual pages are those of the exported names.
#
#   staging.sh CHECK CMAKE SOURCE_DIR BUILD_DIR CC CXX READELF [EMULATOR...]
set -eu
check=$1 cmake=$2 source=$3 build=$4 cc=$5 cxx=$6 readelf=$7
shift 7
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
stage=$work/stage

fail() {
  echo "$1"
  exit 1
}

# The value of a setting of the build.
setting() { sed -n "s|^$1:[A-Z]*=||p" "$build/CMakeCache.txt"; }

# run PROGRAM LANGUAGE: runs a program with the staged libraries.
run() {
  program=$1 language=$2
  shift 2
  said=$(LD_LIBRARY_PATH=$libraries "$@" "$program") || fail "$program failed"
  [ "$said" = "$language" ] || fail "$program said $said"
}

# page_says LANGUAGE: the page's first block in that language.
page_says() {
  awk -v begin="\`\`\`$1" '$0 == begin { open = 1; next } open && /^```/ { exit } open' "$source/INTEGRATION.md" |
    grep . || fail "the page has no block in $1"
}

install() { DESTDIR=$stage "$cmake" --install "$build" "$@" >"$work/log" 2>&1 || { cat "$work/log"; fail "cannot install"; }; }

# What is linked needs these two components and nothing else.
case $check in
  files) install ;;
  *)
    install --component runtime
    install --component dev
    ;;
esac
library=$(find "$stage" -name libapi_lib_wifimgr.so.1)
libraries=$(dirname "$library")
root=$stage$(setting CMAKE_INSTALL_PREFIX)

case $check in
  files)
    for file in include/wifimgr_lib.h share/man/man3/wifimgr_lib.3 \
      bin/gateway-sim share/man/man1/gateway-sim.1 libexec/gateway-sim/gateway-tools libexec/gateway-sim/libgateway_driver.so \
      bin/wlanctl share/man/man1/wlanctl.1 share/bash-completion/completions/wlanctl share/zsh/site-functions/_wlanctl; do
      [ -s "$root/$file" ] || fail "no $file is installed"
    done
    [ -s "$libraries/pkgconfig/wifimgr.pc" ] || fail "no pkg-config file is installed"
    [ -s "$libraries/cmake/wifimgr/wifimgr-config.cmake" ] || fail "no CMake package is installed"
    [ "$(readlink "$libraries/libapi_lib_wifimgr.so")" = libapi_lib_wifimgr.so.1 ] || fail "no link for the linker"
    # No leftovers of what tests link, and nothing that a gateway has of its own unless it is asked for.
    found=$(cd "$libraries" && find . -maxdepth 1 \( -type f -o -type l \) | sort | tr '\n' ' ')
    [ "$found" = "./libapi_lib_wifimgr.so ./libapi_lib_wifimgr.so.1 " ] || fail "installed: $found"
    install --component platform
    # What programs are linked with lies where no loader looks.
    [ "$(cd "$libraries/wifimgr" && echo *)" = "libapi_lib_utility.so.1 libvexa_lib_dbg.so.1" ] ||
      fail "for the linker: $(ls "$libraries/wifimgr")"
    for name in libapi_lib_utility.so.1 libvexa_lib_dbg.so.1; do
      [ -s "$libraries/$name" ] || fail "no $name is installed with the platform's component"
    done
    ;;
  library)
    for name in no_run_path build_id bind_now relro no_exec_stack no_text_relocations no_build_path; do
      sh "$source/tests/abi/elf.sh" $name "$readelf" : "$library" "$source" "$build" || fail "$name"
    done
    ;;
  pkg_config)
    export PKG_CONFIG_LIBDIR="$libraries/pkgconfig"
    command=$(page_says sh)
    cp "$source/tests/install/caller.c" "$work/daemon.c"
    cp "$source/tests/install/caller.c" "$work/daemon.cpp"
    cd "$work"
    cc() { "$cc" -std=c11 -Wall -Wextra -Wstrict-prototypes -Werror -o caller_c "$@"; }
    eval "$command"
    cc() { "$cxx" -std=c++20 -Wall -Wextra -Werror -o caller_cpp "$@"; }
    eval "$(echo "$command" | sed 's/daemon\.c/daemon.cpp/')"
    # A program runs with the platform's own libraries, or the stand-ins.
    install --component platform
    run "$work/caller_c" C "$@"
    run "$work/caller_cpp" C++ "$@"
    ;;
  find_package)
    toolchain=$(setting CMAKE_TOOLCHAIN_FILE)
    mkdir "$work/daemon"
    cp "$source/tests/install/caller.c" "$work/daemon/caller.c"
    cp "$source/tests/install/caller.c" "$work/daemon/caller.cpp"
    {
      printf 'cmake_minimum_required(VERSION 3.25)\nproject(daemon LANGUAGES C CXX)\n'
      for language in c cpp; do
        printf 'add_executable(caller_%s caller.%s)\n' $language $language
        page_says cmake | sed "s/(daemon /(caller_$language /"
      done
    } >"$work/daemon/CMakeLists.txt"
    "$cmake" -S "$work/daemon" -B "$work/build" -G Ninja \
      -DCMAKE_PREFIX_PATH="$root" -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" \
      ${toolchain:+-DCMAKE_TOOLCHAIN_FILE="$toolchain"} >"$work/log" 2>&1 &&
      "$cmake" --build "$work/build" >>"$work/log" 2>&1 || { cat "$work/log"; fail "cannot build"; }
    install --component platform
    run "$work/build/caller_c" C "$@"
    run "$work/build/caller_cpp" C++ "$@"
    ;;
  manual)
    cd "$root/share/man"
    groff -man -ww -z -Tutf8 man3/*.3 >"$work/log" 2>&1 || { cat "$work/log"; fail "groff refuses a page"; }
    [ ! -s "$work/log" ] || { cat "$work/log"; fail "groff warns of the pages"; }
    sed -n 's/^\(FUNCTION\|OBJECT\)(\(.*\))$/\2/p' "$source/tests/abi/exported_names.def" >"$work/names"
    [ -s "$work/names" ] || fail "the list of exported names is empty"
    awk -f "$source/tests/install/manual.awk" "$source/tests/abi/exported_names.def" || fail "pages are missing"
    # What a page refers to is installed.
    sed -n 's/^\.BR \([A-Za-z0-9_\\-]*\) (3).*/\1/p' man3/*.3 | tr -d '\\' | sort -u | while read -r name; do
      [ -s "man3/$name.3" ] || { echo "a page refers to $name(3), which is not there"; exit 1; }
    done
    # The overview leads to every group.
    for page in man3/wifimgr_*.3; do
      name=$(basename "$page" .3)
      [ "$name" = wifimgr_lib ] || grep -qx "$name" "$work/names" || grep -q "^\.BR $name (3)" man3/wifimgr_lib.3 ||
        fail "wifimgr_lib(3) does not lead to $name(3)"
    done
    if command -v man >/dev/null; then
      said=$(MANPATH=$root/share/man MANPAGER=cat man 3 wifimgr_lib_set_channel 2>&1) || fail "man says: $said"
      printf '%s\n' "$said" | grep -q 'uint64_t wifimgr_lib_set_channel(' || fail "man shows: $said"
    fi
    ;;
  *)
    fail "unknown check $check"
    ;;
esac
