#!/bin/sh
# What the public header tells of ranges, units and refusals is what the rows of the settings' table say.
#
#   contracts.sh SOURCE_DIR
set -eu
export LC_ALL=C
sh "$1/scripts/settings.sh" rows | awk -F '\t' -f "$1/tests/abi/contracts.awk" "$1/include/wifimgr_lib.h" -
