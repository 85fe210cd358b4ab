#!/bin/sh
# The exported names of the library are the same in its header, its symbol table and the list of the tests, each stands in
# full where it is defined, the tables have no other, and the manual counts them.
#
#   exports.sh NM SOURCE_DIR LIBRARY
set -eu
export LC_ALL=C
nm=$1 source=$2 library=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
failed=0

# Compares a sorted list of names with that of the library.
expect_same() {
  if ! diff "$work/library" "$2" >"$work/difference"; then
    echo "$1 differs from the library's symbol table (< library alone, > $1 alone):"
    grep '^[<>]' "$work/difference"
    failed=1
  fi
}

"$nm" -D --defined-only "$library" | awk '$2 !~ /^[Aa]$/ { print $3 }' | sort >"$work/library"
[ -s "$work/library" ] || { echo "$library exports nothing"; exit 1; }

# A declaration may go over several lines; the name is the last word before its parameters or dimensions.
awk '/^WIFIMGR_API / { declaration = "" ; open = 1 }
     open { declaration = declaration " " $0 }
     open && /;/ { sub(/[(\[;].*/, "", declaration); n = split(declaration, word, /[ *]+/); print word[n]; open = 0 }' \
  "$source/include/wifimgr_lib.h" | sort >"$work/header"
expect_same "include/wifimgr_lib.h" "$work/header"

sed -n 's/^\(FUNCTION\|OBJECT\)(\(.*\))$/\2/p' "$source/tests/abi/exported_names.def" | sort >"$work/list"
expect_same "tests/abi/exported_names.def" "$work/list"

if grep -nE '^(extern [^"]|(int|u?int[0-9]+_t|unsigned|char|void) )' "$source/include/wifimgr_lib.h"; then
  echo "the header declares these without WIFIMGR_API"
  failed=1
fi

# Definitions: extern "C" in front of a function, a row of a table, or an object at the start of a line. A row of the
# settings' table defines what is of a family; the others have a function by themselves.
sed -nE 's/^WIFIMGR_SETTING\("[^"]*", ([^"]*), [A-Z_]+, -?[0-9]+, -?[0-9]+, ".*/\1/p' "$source/include/wifimgr_settings.h" |
  tr ',' '\n' | awk '$1 ~ /^wifimgr_lib_/ && family != "OWN" { print $1 } { family = $1 }' >"$work/rows"
while read -r name; do
  pattern="^extern \"C\" .*[ *]$name\\(|^[A-Z_]+\\(([^\"]*[ (,])?$name,|^[a-z][A-Za-z0-9_]*[ *]+$name(\\[[^]]*\\])*( =|;)"
  grep -qxF "$name" "$work/rows" && continue
  if ! grep -qE "$pattern" "$source"/store/*.cpp "$source"/params/*.cpp "$source"/params/*.def "$source"/apply/*.cpp \
    "$source"/driver/*.cpp "$source"/wps/*.cpp "$source"/wps/*.def "$source"/platform/*.cpp; then
    echo "no definition of $name stands in full in a .cpp or .def file"
    failed=1
  fi
done <"$work/library"

# The rows of the tables name exported functions alone.
sed -nE 's/^[A-Z_0-9]+\((.*)\)$/\1/p' "$source"/include/wifimgr_settings.h "$source"/params/*.def "$source"/wps/*.def |
  grep -oE '\bwifimgr_lib_[gs]et_[A-Za-z0-9_]+' | sort -u >"$work/tables"
[ -s "$work/tables" ] || { echo "no function in any table"; failed=1; }
if ! comm -23 "$work/tables" "$work/library" >"$work/unknown" || [ -s "$work/unknown" ]; then
  echo "the tables name these, which are not exported:"
  cat "$work/unknown"
  failed=1
fi

# A number that the manual tells is that of the list.
functions=$(grep -c '^FUNCTION(' "$source/tests/abi/exported_names.def")
for told in $(grep -oE '[0-9]+ functions' "$source/man/wifimgr_lib.3" | cut -d ' ' -f 1); do
  [ "$told" = "$functions" ] || { echo "wifimgr_lib(3) tells of $told functions, not $functions"; failed=1; }
done

exit $failed
