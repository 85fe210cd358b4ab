#!/bin/sh
# Packs the libraries and tools of builds, one per processor, as Debian packages into build/packages, and looks at what
# came out.
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
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

fail() {
  echo "package: $1" >&2
  exit 1
}

# What a package has at least.
contents_of() {
  case $1 in
    libapi-lib-wifimgr1) echo libapi_lib_wifimgr.so.1 ;;
    libapi-lib-wifimgr-dev)
      echo libapi_lib_wifimgr.so wifimgr_lib.h wifimgr_settings.h wifimgr.pc wifimgr-config.cmake \
        wifimgr/libvexa_lib_dbg.so.1 wifimgr/libapi_lib_utility.so.1 wifimgr_lib.3 wifimgr_conventions.3 \
        wifimgr_lib_set_channel.3 wifimgr_settings.3 settings.md
      ;;
    libapi-lib-wifimgr-platform1) echo libvexa_lib_dbg.so.1 libapi_lib_utility.so.1 ;;
    wifimgr-tools)
      echo wlanctl gateway-sim gateway-tools libgateway_driver.so wlanctl.1 gateway-sim.1 _wlanctl \
        bash-completion/completions/wlanctl
      ;;
  esac
}
names="libapi-lib-wifimgr1 libapi-lib-wifimgr-dev libapi-lib-wifimgr-platform1 wifimgr-tools"

for build in "$@"; do
  cmake --build "$build"
  rm -rf "$build/packages"
  cpack --config "$build/CPackConfig.cmake" >"$work/log" 2>&1 || { cat "$work/log" >&2; fail "cpack failed for $build"; }
  cp "$build"/packages/*.deb "$packages/"
done

[ "$(find "$packages" -name '*.deb' | wc -l)" -eq $(($# * $(echo "$names" | wc -w))) ] ||
  fail "not every package of every processor is there: $(ls "$packages")"

for package in "$packages"/*.deb; do
  echo "== $package, $(stat -c %s "$package") bytes"
  dpkg-deb -f "$package" Package Version Architecture Depends Recommends | sed 's/^/  /'
  dpkg-deb -x "$package" "$work/files"
  find "$work/files" -type f -o -type l | sed "s|$work/files|  |" | sort | tee "$work/list"
  contents=$(contents_of "$(dpkg-deb -f "$package" Package)")
  [ -n "$contents" ] || fail "$package is none that is known here"
  for file in $contents; do
    grep -q "/$file\$" "$work/list" || fail "$package lacks $file"
  done
  find "$work/files" -type f | while read -r file; do
    sections=$(readelf -SW "$file" 2>/dev/null) || continue
    ! echo "$sections" | grep -qE ' \.(symtab|debug_info) ' || fail "$file is not stripped"
    case $file in
      *.so.1) sh tests/abi/elf.sh no_run_path readelf nm "$file" || fail "$file has a run path" ;;
    esac
  done
  rm -rf "$work/files"
done
