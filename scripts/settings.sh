#!/bin/sh
# Prints the settings' table in another form.
#
#   settings.sh markdown     a page for the reference
#   settings.sh man          the same as a manual page
#   settings.sh dictionary   keys, bounds and words for a fuzzer, one quoted text a line
#   settings.sh dat_2_4g     the dat file of a band with every default; dat_5g
#   settings.sh rows         the columns, separated by tabs
set -eu
here=$(dirname "$0")
exec awk -v as="${1:?markdown, man, dictionary, dat_2_4g, dat_5g or rows}" -f "$here/settings.awk" \
  "$here/../include/wifimgr_settings.h"
