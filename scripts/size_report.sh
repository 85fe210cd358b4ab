#!/bin/sh
# What the library costs and asks for on the gateway; fails when it is more than the gateway grants.
#
#   size_report.sh LIBRARY [TOOL-PREFIX]
#
# What was tried for ARM64, and what it saved (the file grows by whole pages of 4,096 bytes; what read-only bytes are left
# before the next one is the report's "padding"):
#
#   -mcmodel=tiny                      8,192: one instruction for an address instead of two
#   texts in rows instead of pointers  4,384: 24 bytes for each of 124 relocations, 8 for each pointer
#   -Os, no unwind tables, 4 KiB pages in the file since long
#   -O2 for the search and the parser  costs 340, and makes a getter of the last key a third faster
#   _FORTIFY_SOURCE=2                  costs 430
#   -fstack-protector-strong           costs 8,192, and the dynamic loader as a fourth library: not on ARM64
#   -flto                              costs 28,700: the exported functions must stay apart, and their texts are doubled
#   -fno-jump-tables, -fipa-pta        nothing
#   -fmerge-all-constants              costs 90: tables become pointers again
#   linker's -O1, -O2                  cost 2,650: a larger hash table for faster look-ups
#   --no-eh-frame-hdr                  80, not worth it
#   -fomit-frame-pointer               not wanted: backtraces follow the frame pointers
#   prefixes of function names folded  8,192, not wanted: a plain grep would no longer find them
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
file_bytes=$(stat -c %s "$work/library")
bar "file" "$file_bytes" $most_bytes

# kind WORDS SECTION...: what one kind of byte costs in the file.
explained=0
kind() {
  words=$1 sum=0
  shift
  for name in "$@"; do sum=$((sum + $(section "$name"))); done
  explained=$((explained + sum))
  printf '  %-34s %8d bytes  %s\n' "$words" "$sum" "$*"
}
kind "code" .init .text .fini
kind "ways to other code" .plt .plt.got .plt.sec .got .got.plt
kind "texts and constant tables" .rodata
kind "constant tables with addresses" .data.rel.ro .init_array .fini_array
kind "names of functions and objects" .dynsym .dynstr .gnu.hash .gnu.version .gnu.version_r
kind "relocations of data" .rela.dyn
kind "relocations of calls" .rela.plt
kind "tables and paths that callers write" .data
kind "unwinding, of the C runtime's own" .eh_frame_hdr .eh_frame
kind "the loader's and debugger's" .dynamic .note.gnu.build-id .note.gnu.property .comment .shstrtab
headers=$("${tools}readelf" -hW "$work/library" |
  awk '/Size of this header|Size of program headers|Size of section headers/ { size[++n] = $5 }
    /Number of program headers|Number of section headers/ { count[++m] = $5 }
    END { print size[1] + size[2] * count[1] + size[3] * count[2] }')
printf '  %-34s %8d bytes\n' "headers" "$headers"
printf '  %-34s %8d bytes\n' "padding" $((file_bytes - explained - headers))
printf '  %-34s %8d bytes, not in the file\n' ".bss" "$(section .bss)"
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
