#!/bin/sh
# Sees to it that the Debian packages of a task are there: installs what is missing when it may, else says what to do.
#
# usage: setup.sh build|demo|test|test-all|bench|clang|fuzz|arm64|musl|package|lint|box|box-native|docs
set -eu

build="g++ cmake ninja-build libcli11-dev nlohmann-json3-dev"
demo="$build net-tools bridge-utils"
bench="$demo libbenchmark-dev python3"
test="$bench libgtest-dev libgmock-dev abigail-tools pkg-config python3-jsonschema zsh groff-base man-db iproute2"
arm64="$test g++-aarch64-linux-gnu googletest qemu-user-static"
# Linux 6.7 can be told for a namespace what runs ARM64 programs, an older one for the whole machine.
[ "$(printf '%s\n' 6.7 "$(uname -r)" | sort -V | head -n 1)" = 6.7 ] || arm64="$arm64 binfmt-support"
musl="$test musl-tools"
package="$build dpkg-dev g++-aarch64-linux-gnu"
clang="$test clang"
fuzz="$clang libclang-rt-14-dev"
lint="$clang clang-format clang-tidy cppcheck"
docs="$build doxygen mandoc"
# The tests that run there are built as well. Nothing is emulated outside the machine.
box_parts="$demo python3 make cpio kmod e2fsprogs"
box="$box_parts g++-aarch64-linux-gnu googletest qemu-system-arm"
box_native="$box_parts libgtest-dev libgmock-dev qemu-system-x86"
test_all="$arm64 $musl $package $clang $box"

case "${1:-}" in
  build) packages=$build ;;
  demo) packages=$demo ;;
  test) packages=$test ;;
  test-all) packages=$test_all ;;
  bench) packages=$bench ;;
  clang) packages=$clang ;;
  fuzz) packages=$fuzz ;;
  arm64) packages=$arm64 ;;
  musl) packages=$musl ;;
  package) packages=$package ;;
  lint) packages=$lint ;;
  box) packages=$box ;;
  box-native) packages=$box_native ;;
  docs) packages=$docs ;;
  *)
    echo "usage: setup.sh build|demo|test|test-all|bench|clang|fuzz|arm64|musl|package|lint|box|box-native|docs" >&2
    exit 2
    ;;
esac

if ! command -v dpkg-query >/dev/null 2>&1; then
  echo "setup: not a Debian system; this needs what Debian calls: $packages" >&2
  exit 0
fi

missing=
for package in $packages; do
  status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

if [ "$(id -u)" -eq 0 ]; then
  apt="env DEBIAN_FRONTEND=noninteractive apt-get"
elif command -v sudo >/dev/null 2>&1 && sudo -n true 2>/dev/null; then
  apt="sudo -n env DEBIAN_FRONTEND=noninteractive apt-get"
else
  echo "setup: packages are missing and this user may not install them. As root:" >&2
  echo "  apt-get install$missing" >&2
  exit 1
fi

echo "setup: installing$missing"
# shellcheck disable=SC2086 # the words of both are meant to split
{
  $apt -qq update
  $apt -qq install -y --no-install-recommends $missing >/dev/null
} || {
  echo "setup: apt-get failed; install these by hand and try again:$missing" >&2
  exit 1
}
