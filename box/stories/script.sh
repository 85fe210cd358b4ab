# Names and passphrases with a shell's characters. The script keeps them within double quotes and escapes what would end those; a dollar
# sign or a backquote stays the shell's, which callers know.
. "$STORY/lib.sh"
number=0
for name in 'a b' 'a"b' "it's" 'a$HOME' 'a`touch owned`' '$(touch owned)' 'a;touch owned' 'a\b' '*' 'a|b>c&d' '#comment'; do
  number=$((number + 1))
  probe init 0 oper 0 0 set wifimgr_lib_set_ssid 0 1 "$name" set wifimgr_lib_set_WPAPSK 0 1 "pass $name $number" script 0 0
  file $script24
  sh $script24 >/dev/null 2>&1
  settings ra0 | grep -E '^(SSID|WPAPSK)='
done
[ -e owned ] && fact "a name was run as a command" || fact "no name was run as a command"
done_here
