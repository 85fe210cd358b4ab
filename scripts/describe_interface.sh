#!/bin/sh
# Writes the description of the library's binary interface anew, after a change of it that is meant.
#
#   describe_interface.sh LIBRARY
set -eu
library=$(realpath "$1")
cd "$(dirname "$0")/.."
abidw --headers-dir include --no-corpus-path --no-comp-dir-path --no-architecture --no-elf-needed --no-show-locs \
  --exported-interfaces-only --drop-undefined-syms --type-id-style hash --out-file tests/abi/wifimgr.abi "$library"
