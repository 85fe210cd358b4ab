#!/bin/sh
# A test program that another build made loads the library of the build whose tests it runs, and that one's platform.
#
#   loaded_library.sh PROGRAM LIBRARY_FOLDER
set -eu
program=$1 folder=$2
loaded=$(LD_LIBRARY_PATH=$folder LD_TRACE_LOADED_OBJECTS=1 "$program")
for library in libapi_lib_wifimgr.so.1 libvexa_lib_dbg.so.1 libapi_lib_utility.so.1; do
  echo "$loaded" | grep -qF "$library => $folder/$library " || { echo "$loaded"; exit 1; }
done
