#!/bin/sh
# What the library costs and asks for on the gateway; fails when it is more than the gateway grants.
#
#   size_report.sh LIBRARY [TOOL-PREFIX]
set -eu
export LC_ALL=C
library=$1 tools=${2:-}
most_bytes=147456
most_writable=8192
newest_libc=2.17
needed_libraries="libapi_lib_utility.so.1 libc.so.6 libvexa_lib_dbg.so.1"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
failed=0

# bar NAME VALUE LIMIT: a number that may not be larger.
bar() {
  verdict=ok
  [ "$2" -le "$3" ] || { verdict="TOO MUCH"; failed=1; }
  printf '  %-34s %8d bytes, at most %d: %s\n' "$1" "$2" "$3" "$verdict"
}

# section NAME: the size of a section, in bytes.
section() {
  "${tools}readelf" -SW "$work/library" | sed 's/^ *\[ *[0-9]*\] *//' |
    awk -v name="$1" '$1 == name { print $5 }' | { read -r size || size=0; echo $((0x$size)); }
}

"${tools}strip" -o "$work/library" "$library"
echo "== $library, stripped"
[ "$(section .text)" -gt 0 ] || { echo "  cannot be read"; exit 1; }
bar "file" "$(stat -c %s "$work/library")" $most_bytes
for name in .text .rodata .dynsym .dynstr .gnu.hash .eh_frame .rela.dyn .rela.plt .data.rel.ro .data .bss; do
  printf '  %-34s %8d bytes\n' "$name" "$(section $name)"
done
printf '  %-34s %8d\n' "relocations" \
  "$("${tools}readelf" -rW "$work/library" | grep -cE '^[0-9a-f]{16} ')"

# Exported objects that can be written: those outside what the loader makes read-only.
writable_sections=$("${tools}readelf" -SW "$work/library" | sed 's/^ *\[ *\([0-9]*\)\] */\1 /' |
  awk '$2 == ".data" || $2 == ".bss" { printf "%s ", $1 }')
exported=$("${tools}readelf" --dyn-syms -W "$work/library" | awk -v sections="$writable_sections" '
  BEGIN { n = split(sections, list); for (i = 1; i <= n; ++i) writable[list[i]] = 1 }
  $4 == "OBJECT" && ($7 in writable) && !($2 in seen) { seen[$2] = 1; sum += $3 }
  END { print sum + 0 }')
printf '  %-34s %8d bytes\n' "exported objects, writable" "$exported"
bar "other writable data" $(($(section .data) + $(section .bss) - exported)) $most_writable

needed=$("${tools}readelf" -dW "$work/library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | sort | tr '\n' ' ')
verdict=ok
[ "$needed" = "$needed_libraries " ] || { verdict="NOT $needed_libraries"; failed=1; }
echo "  needed libraries: $needed: $verdict"

newest=$("${tools}readelf" -VW "$work/library" | grep -o 'Name: GLIBC_[0-9.]*' | sed 's/.*_//' | sort -V | tail -1)
verdict=ok
if [ -z "$newest" ]; then
  verdict="NOT FOUND"
  failed=1
elif [ "$(printf '%s\n' "$newest" $newest_libc | sort -V | tail -1)" != $newest_libc ]; then
  verdict="NEWER THAN $newest_libc"
  failed=1
fi
echo "  newest symbol version: GLIBC_$newest: $verdict"
exit $failed
