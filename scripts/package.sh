#!/bin/sh
# Packs the libraries and tools of builds as Debian packages into build/packages, and looks at what came out.
#
#   package.sh BUILD...
set -eu
export LC_ALL=C
here=$(cd "$(dirname "$0")" && pwd)
cd "$here/.."
packages=build/packages
rm -rf "$packages"
mkdir -p "$packages"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "package: $1" >&2
  exit 1
}

for build in "$@"; do
  cmake --build "$build"
  rm -rf "$build/packages"
  cpack --config "$build/CPackConfig.cmake" >"$work/log" 2>&1 || { cat "$work/log" >&2; fail "cpack failed for $build"; }
  cp "$build"/packages/*.deb "$packages/"
done

for package in "$packages"/*.deb; do
  echo "== $package, $(stat -c %s "$package") bytes"
  dpkg-deb -f "$package" Package Version Architecture Depends | sed 's/^/  /'
  dpkg-deb -x "$package" "$work/files"
  find "$work/files" -type f -o -type l | sed "s|$work/files|  |" | sort
  find "$work/files" -name '*.so.1' -type f | while read -r library; do
    sh tests/abi/elf.sh no_run_path readelf nm "$library" || fail "$library has a run path"
    ! readelf -SW "$library" | grep -qE ' \.(symtab|debug_info) ' || fail "$library is not stripped"
  done
  rm -rf "$work/files"
done
