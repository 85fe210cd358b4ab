#!/bin/sh
# Installs into a staging root, and builds and runs a program in C and one in C++ against it, once by pkg-config and once by
# find_package.
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

install() { DESTDIR=$stage "$cmake" --install "$build" "$@" >"$work/log" 2>&1 || { cat "$work/log"; fail "cannot install"; }; }

install
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
    install --component platform
    export PKG_CONFIG_LIBDIR="$libraries/pkgconfig"
    flags=$(pkg-config --cflags --libs wifimgr)
    cp "$source/tests/install/caller.c" "$work/caller.cpp"
    # shellcheck disable=SC2086 # flags are words
    "$cc" -std=c11 -Wall -Wextra -Werror -o "$work/caller_c" "$source/tests/install/caller.c" $flags
    # shellcheck disable=SC2086
    "$cxx" -std=c++20 -Wall -Wextra -Werror -o "$work/caller_cpp" "$work/caller.cpp" $flags
    run "$work/caller_c" C "$@"
    run "$work/caller_cpp" C++ "$@"
    ;;
  find_package)
    install --component platform
    toolchain=$(setting CMAKE_TOOLCHAIN_FILE)
    "$cmake" -S "$source/tests/install/find_package" -B "$work/build" -G Ninja -DCALLER="$source/tests/install/caller.c" \
      -DCMAKE_PREFIX_PATH="$root" -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" \
      ${toolchain:+-DCMAKE_TOOLCHAIN_FILE="$toolchain"} >"$work/log" 2>&1 &&
      "$cmake" --build "$work/build" >>"$work/log" 2>&1 || { cat "$work/log"; fail "cannot build"; }
    run "$work/build/caller_c" C "$@"
    run "$work/build/caller_cpp" C++ "$@"
    ;;
  *)
    fail "unknown check $check"
    ;;
esac
