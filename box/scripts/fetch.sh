#!/bin/sh
# Fetches Debian's packages into a folder with an apt root of its own: the machine's package lists and architectures stay what they
# are, and no root is needed. What is there already, in the version that Debian has, is not fetched again.
#
#   fetch.sh FOLDER ARCH PACKAGE...    each PACKAGE as it is (NAME or NAME:ARCH)
#   fetch.sh -d FOLDER ARCH PACKAGE... each with all that it depends on
#   fetch.sh -k FOLDER ARCH            prints the version of the kernel that ARCH's kernel package stands for
#
# FOLDER/KIND.list then names the files. Exit code 3: apt-get could not reach what it needs.
set -eu
mode=plain
case "$1" in
  -d) mode=depends; shift ;;
  -k) mode=kernel; shift ;;
esac
folder=$1
arch=$2
shift 2
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
root=$folder/apt
host=$(dpkg --print-architecture)

lists_age_minutes=720
mirror=${BOX_MIRROR:-http://deb.debian.org}
release=$(. /etc/os-release && echo "${VERSION_CODENAME:-bookworm}")
keys=/usr/share/keyrings/debian-archive-keyring.gpg

apt() {
  tool=$1
  shift
  "$tool" -qq -o Dir::State="$root/state" -o Dir::State::status="$root/status" -o Dir::Cache="$root/cache" \
    -o Dir::Etc::sourcelist="$root/sources.list" -o Dir::Etc::sourceparts=/dev/null -o Dir::Log="$root/log" \
    -o APT::Architecture="$arch" -o APT::Architectures::="$arch" -o APT::Architectures::="$host" \
    -o APT::Sandbox::User="$(id -un)" -o Debug::NoLocking=1 -o Acquire::Retries=3 "$@"
}

if [ -z "$(find "$root/fresh" -mmin -$lists_age_minutes 2>/dev/null)" ]; then
  mkdir -p "$root/state/lists/partial" "$root/cache/archives/partial" "$root/log"
  : >"$root/status"
  cat >"$root/sources.list" <<END
deb [signed-by=$keys] $mirror/debian $release main
deb [signed-by=$keys] $mirror/debian $release-updates main
deb [signed-by=$keys] $mirror/debian-security $release-security main
END
  apt apt-get -o APT::Update::Error-Mode=any update >&2 || {
    # Lists of yesterday are better than none.
    [ -f "$root/fresh" ] || { echo "fetch: Debian's package lists cannot be had from $mirror" >&2; exit 3; }
    echo "fetch: Debian's package lists cannot be renewed; going on with those of $(date -r "$root/fresh" +%F)" >&2
  }
  touch "$root/fresh"
fi

case $mode in
  kernel)
    apt apt-cache depends "linux-image-$arch" | sed -n "s/^ *Depends: linux-image-\(.*-$arch\).*/\1/p" | head -n 1
    exit
    ;;
  plain)
    apt apt-get --print-uris download "$@" >"$root/uris" || { echo "fetch: not to be had: $*" >&2; exit 3; }
    ;;
  depends)
    apt apt-get --print-uris --no-install-recommends install "$@" >"$root/uris" ||
      { echo "fetch: not to be had: $*" >&2; exit 3; }
    ;;
esac

# 'URI' FILE SIZE CHECKSUM
awk '{ print $2 }' "$root/uris" | sed "s|^|$folder/|" >"$folder/list.new"
missing=
while read -r uri file _; do
  [ -f "$folder/$file" ] || missing="$missing $(echo "$file" | cut -d_ -f1,3 | sed 's/\.deb$//; s/_/:/; s/:all$//')"
done <"$root/uris"
if [ -n "$missing" ]; then
  echo "fetch:$missing" | cut -c1-160 >&2
  # shellcheck disable=SC2086 # the words are meant to split
  (cd "$folder" && apt apt-get download $missing) || { echo "fetch: a download failed" >&2; exit 3; }
fi
mv "$folder/list.new" "$folder/list"
