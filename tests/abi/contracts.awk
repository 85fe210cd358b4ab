# Holds the contract of each setter in the public header against its row in the settings' table: the key, the range or
# the words accepted, the unit and the refusal stand there as they stand in the row.
#
#   settings.sh rows | awk -F '\t' -f contracts.awk include/wifimgr_lib.h -
#
# Every setter of the common type has a row. A contract is the comment before the declarations; a refusal may stand in that of the section around it ("---- WPS").

# The header: comments and the names declared behind them.
FNR == 1 { ++files }
files == 1 && /^\/\*/ { comment = ""; in_comment = 1 }
files == 1 && in_comment {
  line = $0
  sub(/^\/\* ?/, "", line)
  sub(/^ \*( |$)/, "", line)
  is_end = sub(/ ?\*\/$/, "", line)
  comment = comment (comment == "" ? "" : " ") line
  if (is_end) {
    in_comment = 0
    if (comment ~ /^---- /) section = comment
  }
  next
}
files == 1 && /^WIFIMGR_API / {
  is_setter = /uint64_t wifimgr_lib_set_[A-Za-z0-9_]*\(uint32_t wifi_type, int32_t [a-z_]+, const char\* value\);/
  name = $0
  sub(/\(.*/, "", name)
  sub(/.*[ *]/, "", name)
  if (is_setter) setters[name] = 1
  around[name] = section
  contract[name] = comment ~ /^---- / ? "" : comment
  next
}
files == 1 { next }

function complain(what) { print key ": the contract of " setter " does not tell " what; failed = 1 }
function tells(text) { return index(told, text) > 0 }

# The number as a word by itself.
function tells_number(number) { return match(told, "(^|[^0-9])" number "([^0-9]|$)") > 0 }

# A range behind its key, where one contract tells of several, or else in the contract of a single key.
function tells_range(low, high) {
  if (several) return tells(name " " low " to " high) || tells(name " " low " or " high)
  return tells(low " to " high) || tells(low " or " high) || tells("\"" low "\" or \"" high "\"") || \
    tells("\"" low "\" hexadecimal or \"" high "\"")
}

{
  delete setters[$8]
  key = $1; setter = $8; accepts = $9; low = $10; high = $11; words = $12; refusal = $13; unit = $15
  name = key
  sub(/%d/, "", name)
  # The four WEP keys have one contract, that of the function that takes the key's number.
  if (setter ~ /_set_key[1-4]/) {
    sub(/key[1-4]/, "key", setter)
    sub(/Key[1-4]/, "Key%d", key)
    sub(/Key[1-4]/, "Key%d", name)
  }
  ++rows
  if (!(setter in contract)) { complain("anything: there is none"); next }
  told = contract[setter]
  several = match(told, "[:;] " name " ([0-9]|any number)") > 0
  if (!tells(key) && !tells(name)) complain("its key")
  if (refusal != "" && !index(around[setter] " " told, "\"" refusal "\"")) complain("\"" refusal "\"")
  if (unit != "" && !tells(unit)) complain("its unit, " unit)
  if (accepts ~ /^(NUMBER|TEN_DIGITS|ONE_DIGIT|LEADING_NUMBER)$/ && !tells_range(low, high)) complain(low " to " high)
  if (accepts == "DIGITS" && !tells(several ? name " any number" : "digits, however many")) complain("digits, however many")
  if (accepts == "TEXT" && !tells("any text") && !tells("Any text")) complain("any text")
  if (accepts == "LENGTH" && !tells("at most " high " characters")) complain("at most " high " characters")
  if (accepts == "ADDRESS" && !tells("IPV4check")) complain("IPV4check")
  if (accepts == "NOTHING" && !tells("Accepts nothing")) complain("that nothing is accepted")
  if (accepts ~ /^(WORDS|RULE|PASSPHRASE|KEY_FORMAT)$/) {
    count = split(words, list, /[^A-Z0-9]+/)
    for (i = 1; i <= count; ++i) {
      # Numbers and words in capitals; those of one letter belong to the sentence.
      if (list[i] ~ /^[0-9]+$/ && !tells_number(list[i])) complain(list[i])
      if (list[i] ~ /^[A-Z0-9]+$/ && length(list[i]) > 2 && !tells(list[i])) complain(list[i])
    }
  }
}

END {
  # These only send: nothing of theirs is in a dat file.
  delete setters["wifimgr_lib_set_wscMode"]
  delete setters["wifimgr_lib_set_wscPinCode"]
  delete setters["wifimgr_lib_set_wscGenPinCode"]
  for (setter in setters) { print "no row has " setter; failed = 1 }
  if (rows < 100) { print "only " rows + 0 " rows"; failed = 1 }
  exit failed
}
