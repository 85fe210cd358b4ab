#!/bin/sh
# What the loader sees of the library as it ships.
#
#   elf.sh CHECK READELF NM LIBRARY [FOLDER...]
set -eu
export LC_ALL=C
check=$1 readelf=$2 nm=$3 library=$4
shift 4

fail() {
  echo "$1"
  exit 1
}

dynamic=$("$readelf" -dW "$library")
segments=$("$readelf" -lW "$library")
sections=$("$readelf" -SW "$library")

case $check in
  needed)
    found=$(echo "$dynamic" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | sort | tr '\n' ' ')
    case $found in
      # The C library is GNU's or musl's.
      "libapi_lib_utility.so.1 libc.so.6 libvexa_lib_dbg.so.1 " | "libapi_lib_utility.so.1 libc.so libvexa_lib_dbg.so.1 ") ;;
      *) fail "needed: $found" ;;
    esac
    ;;
  soname)
    echo "$dynamic" | grep -q '(SONAME).*\[libapi_lib_wifimgr\.so\.1\]$' || fail "$dynamic"
    ;;
  build_id)
    "$readelf" -nW "$library" | grep -q 'Build ID: [0-9a-f]\{40\}' || fail "no build id"
    ;;
  no_build_path)
    for folder in "$@"; do ! grep -aqF "$folder/" "$library" || fail "$folder is in $library"; done
    ;;
  no_run_path)
    ! echo "$dynamic" | grep -qE '\((RUNPATH|RPATH)\)' || fail "$dynamic"
    ;;
  bind_now)
    echo "$dynamic" | grep -qE '\((FLAGS|BIND_NOW)\).*BIND_NOW|\(BIND_NOW\)' || fail "$dynamic"
    echo "$dynamic" | grep -qE '\(FLAGS_1\).*NOW' || fail "$dynamic"
    ;;
  relro)
    echo "$segments" | grep -q '^ *GNU_RELRO ' || fail "$segments"
    ;;
  no_exec_stack)
    echo "$segments" | grep -qE '^ *GNU_STACK .* RW +0x' || fail "$segments"
    ! echo "$segments" | grep -qE '^ *(LOAD|GNU_STACK) .* (RWE|W E) ' || fail "$segments"
    ;;
  no_text_relocations)
    ! echo "$dynamic" | grep -qE 'TEXTREL' || fail "$dynamic"
    ;;
  no_symbolic)
    ! echo "$dynamic" | grep -q 'SYMBOLIC' || fail "$dynamic"
    ;;
  no_thread_locals)
    ! echo "$segments" | grep -q '^ *TLS ' || fail "$segments"
    ! echo "$sections" | grep -qE ' \.t(bss|data)' || fail "$sections"
    ;;
  no_static_constructors)
    # One entry of one pointer each is the compiler's own.
    "$nm" "$library" | grep -E '_GLOBAL__(sub_)?[ID]_|__static_initialization' && fail "static constructors or destructors"
    pointer=$("$readelf" -h "$library" | sed -n 's/.*Class: *ELF\(..\)$/\1/p')
    size=$(echo "$dynamic" | sed -n 's/.*(INIT_ARRAYSZ) *\([0-9]*\) .*/\1/p')
    [ "$size" -le $((pointer / 8)) ] || fail "init_array of $size bytes"
    ! echo "$sections" | grep -qE ' \.(ctors|preinit_array)' || fail "$sections"
    ;;
  no_cxx_runtime)
    found=$("$nm" -D --undefined-only "$library" | awk '{ print $2 }' |
      grep -E '^_Z|^__(cxa|gxx|gcc)_|^_Unwind' | grep -v '^__cxa_finalize' || true)
    [ -z "$found" ] || fail "imports of a C++ runtime: $found"
    ;;
  bounds_checked)
    # The C library's checked variants; musl has none.
    echo "$dynamic" | grep -qE '\(NEEDED\).*\[libc\.so\.6\]' || exit 0
    "$nm" -D --undefined-only "$library" | grep -qE ' U __(snprintf|memcpy)_chk(@|$)' || fail "no checked calls"
    ;;
  canaries)
    "$nm" -D --undefined-only "$library" | grep -qE ' U __stack_chk_fail(@|$)' || fail "no canaries"
    ;;
  constant_rows)
    # The loader writes addresses into writable data for exported objects alone: whatever else holds a function or a text
    # is made read-only when that is done.
    data=$(echo "$sections" | sed 's/^ *\[ *[0-9]*\] *//' | awk '$1 == ".data" { print "0x" $3, "0x" $5 }')
    first=$((${data% *})) end=$((${data% *} + ${data#* }))
    objects=$("$readelf" --dyn-syms -W "$library" | awk '$4 == "OBJECT" && $7 != "UND" { print "0x" $2 " " $3 }')
    relocations=$("$readelf" -rW "$library" | grep -oE '^[0-9a-f]{8,16}')
    [ -n "$objects" ] && [ -n "$relocations" ] || fail "nothing to look at"
    # The C runtime's own mark of the library.
    own=$("$nm" "$library" | awk '$3 == "__dso_handle" { print "0x" $1 }')
    for place in $relocations; do
      place=$((0x$place))
      [ $place -ge $first ] && [ $place -lt $end ] && [ $place -ne $((own)) ] || continue
      echo "$objects" | while read -r start size; do
        [ $place -lt $((start)) ] || [ $place -ge $((start + size)) ] || exit 1
      done || continue
      fail "an address is written into the library's own writable data: $(printf '%#x' $place)"
    done
    ;;
  no_versions)
    # Callers that exist were linked against unversioned names.
    ! "$readelf" -VW "$library" | grep -q "Version definition section" || fail "versioned exports"
    ;;
  interposable)
    # Each call of an exported function goes through the symbol table. These are called inside the library.
    relocations=$("$readelf" -rW "$library")
    for name in read_attr update_attr semaphore_p semaphore_v is_attr_exist wifimgr_lib_get_bssidnum \
      update_datafile_from_shm parse_driver merge_para rstrtok doStrDecCheck wds_store chipspecial_compare \
      wifimgr_lib_set_reloadFlag update_auth_mode store_global pre_wlan_state dat_path_2_4g shm_addr_5g; do
      echo "$relocations" | grep -qE " $name( \+ 0)?$" || fail "$name is bound inside the library"
    done
    ;;
  *)
    fail "unknown check $check"
    ;;
esac
