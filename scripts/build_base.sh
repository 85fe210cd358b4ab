#!/bin/sh
# Builds the library of another commit, for a comparison.
#
#   build_base.sh COMMIT FOLDER     checks it out into FOLDER and builds it in FOLDER/build
set -eu
commit=$(git rev-parse --verify --quiet "$1^{commit}") || { echo "build_base: there is no commit $1" >&2; exit 2; }
folder=$2

if [ -e "$folder/.git" ]; then
  git -C "$folder" checkout --quiet --detach "$commit"
else
  git worktree add --quiet --force --detach "$folder" "$commit"
fi
cmake -S "$folder" -B "$folder/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF -DWIFIMGR_SIM=OFF \
  -DWIFIMGR_WLANCTL=OFF >/dev/null
cmake --build "$folder/build" --target api_lib_wifimgr
