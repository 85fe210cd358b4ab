# Prints the settings' table, include/wifimgr_settings.h, in another form; see settings.sh.
#
#   awk -v as=FORM -f settings.awk include/wifimgr_settings.h
#
# FORM is rows, markdown, man, dictionary, dat_2_4g or dat_5g.

BEGIN {
  split("rows markdown man dictionary dat_2_4g dat_5g", forms, " ")
  for (i in forms) known[forms[i]] = 1
  if (!(as in known)) { failed = 1; print "settings.awk: no such form: " as | "cat >&2"; exit 2 }
  columns = split("key scope numbering bands reads getter writes setter accepts low high words refusal meaning unit " \
    "on_2_4g on_5g secrecy effect", column, " ")
}

# The arguments of a row: commas inside texts do not count.
function split_row(text, words,    count, c, quoted, i) {
  split("", words)
  count = 1
  for (i = 1; i <= length(text); ++i) {
    c = substr(text, i, 1)
    if (c == "\\" && quoted) { words[count] = words[count] c substr(text, ++i, 1); continue }
    if (c == "\"") quoted = !quoted
    if (c == "," && !quoted) { ++count; while (substr(text, i + 1, 1) == " ") ++i; continue }
    words[count] = words[count] c
  }
  return count
}

# A text without its quotes; NULL stays.
function bare(text) { return text ~ /^"/ ? substr(text, 2, length(text) - 2) : text }

# The same name for all SSIDs or links.
function name_of(key) { sub(/%d/, "", key); return key }

# A value as it is for one SSID or link.
function value_of(default, number,    list, count, value) {
  count = split(default, list, ";")
  value = list[number < count ? number : count]
  sub(/%d/, number, value)
  return value
}

function accepted() {
  if (row["accepts"] == "TEXT") return "any text"
  if (row["accepts"] == "DIGITS") return "digits"
  if (row["accepts"] == "LENGTH") return "at most " row["high"] " characters"
  if (row["accepts"] == "NOTHING") return "nothing: read-only"
  if (row["accepts"] == "WORDS") { words = row["words"]; gsub(/ /, ", ", words); return "one of " words }
  if (row["words"] != "") return row["words"]
  return row["low"] (row["high"] == row["low"] + 1 ? " or " : " to ") row["high"]
}

# The unit follows what is measured.
function meaning(    text) {
  text = row["meaning"]
  if (row["unit"] == "") return text
  if (text ~ /;/) { sub(/;/, " in " row["unit"] ";", text); return text }
  return text " in " row["unit"]
}

function scope() { return row["scope"] == "BAND" ? "band" : row["scope"] == "SSID" ? "SSID" : "WDS link" }

function bands() { return row["bands"] == "BOTH" ? "both" : row["bands"] == "ONLY_5G" ? "5G" : "2.4G" }

function effect() {
  if (row["effect"] == "SAVED") return "commit"
  if (row["effect"] == "AT_ONCE") return "at once"
  if (row["effect"] == "REBOOT") return "reboot"
  if (row["effect"] == "RADIO_ON_5G") return "radio, on 5G"
  if (row["effect"] == "RADIO_WITH_WDS") return "radio, while WDS is on"
  return row["scope"] == "BAND" ? "radio" : "radio, of number 1"
}

function shown(default) { return default == "NULL" ? "" : default }

function defaults() {
  if (row["secrecy"] == "SECRET") return "(not told)"
  if (row["on_2_4g"] == row["on_5g"]) return row["on_2_4g"]
  if (row["on_2_4g"] == "NULL") return row["on_5g"]
  return row["on_2_4g"] " (5G: " row["on_5g"] ")"
}

function code(text) { gsub(/\|/, "\\|", text); return text == "" ? "" : "`" text "`" }

function roff(text) { gsub(/\\/, "\\e", text); gsub(/-/, "\\-", text); gsub(/;/, ";\\:", text); sub(/^['.]/, "\\\\\\&&", text); return text }

function getter() { return row["getter"] == "NULL" ? "" : row["getter"] }

function print_lines(default,    i, count, line) {
  if (default == "NULL") return
  if (heading != "") { print "\n# " heading; heading = "" }
  if (row["numbering"] != "SHARED") {
    count = row["scope"] == "LINK" ? 4 : 8
    for (i = 1; i <= count; ++i) {
      line = row["key"]
      sub(/%d/, row["numbering"] == "FROM_ZERO" ? i - 1 : i, line)
      print line "=" value_of(default, i)
    }
    return
  }
  line = row["scope"] == "SSID" ? value_of(default, 1) : default
  for (i = 2; i <= 8 && row["scope"] == "SSID"; ++i) line = line ";" value_of(default, i)
  print row["key"] "=" line
}

# In the words of libFuzzer: a text per line, quoted.
function print_word(word) { if (!(word in told)) { told[word] = 1; print "\"" word "\"" } }

function print_dictionary(    i, count, list) {
  if (row["numbering"] != "SHARED") sub(/%d/, row["numbering"] == "FROM_ZERO" ? "0" : "1", row["key"])
  print_word(row["key"])
  if (row["accepts"] ~ /NUMBER|DIGIT$/) { print_word(row["low"]); print_word(row["high"]) }
  if (row["accepts"] == "WORDS") {
    count = split(row["words"], list, " ")
    for (i = 1; i <= count; ++i) print_word(list[i])
  }
  if (row["on_2_4g"] != "NULL" && row["on_2_4g"] != "" && row["secrecy"] != "SECRET") print_word(value_of(row["on_2_4g"], 1))
}

function print_markdown() {
  if (heading != "") {
    print "\n## " heading "\n"
    print "| Key | Of | Bands | Accepts | Meaning | Default | A change wants | Functions |"
    print "| --- | --- | --- | --- | --- | --- | --- | --- |"
    heading = ""
  }
  print "| " code(row["key"]) " | " scope() " | " bands() " | " accepted() " | " meaning() " | " code(defaults()) " | " \
    effect() " | " code(getter()) (getter() == "" ? "" : " ") code(row["setter"]) " |"
}

function print_man() {
  if (heading != "") { print ".SH " toupper(heading); heading = "" }
  print ".TP\n.B " roff(row["key"])
  print roff(meaning()) "."
  print "Of each " roff(scope()) (row["bands"] == "BOTH" ? "" : ", on " bands() " only") "; accepts " roff(accepted()) \
    (defaults() == "" || row["secrecy"] == "SECRET" ? "" : "; default " roff(defaults())) "."
  print "A change wants: " roff(effect()) "."
  if (getter() != "") print ".BR " getter() " (3),"
  print ".BR " row["setter"] " (3)"
}

function take_row(    i) {
  if (as == "rows") {
    for (i = 1; i <= columns; ++i) printf "%s%s", row[column[i]], i < columns ? "\t" : "\n"
  }
  else if (as == "markdown") print_markdown()
  else if (as == "man") print_man()
  else if (as == "dictionary") print_dictionary()
  else print_lines(row["on_" substr(as, 5)])
}

function start() {
  if (started++) return
  if (as == "markdown") {
    print "# Settings\n\nEvery setting of the two radios: its key in the dat file, whose it is, on which bands it is set, what its setter"
    print "accepts, and what a change wants to be complete: nothing but a commit, a restart of the radio's interfaces, or"
    print "a reboot, as `wifimgr_lib_wifi_config_oper` answers; `at once` is sent to the driver by the setter itself. `%d` is the"
    print "number of an SSID or link. Defaults are those of the simulated gateway. A management process lists the same by"
    print "including `wifimgr_settings.h`."
  }
  if (as == "man") {
    print ".TH WIFIMGR_SETTINGS 3 \"\" \"wifimgr\" \"WLAN manager library\"\n.ad l\n.nh\n.SH NAME\nwifimgr_settings \\- every setting of the two radios"
    print ".SH SYNOPSIS\n.nf\n.B #define WIFIMGR_SETTING(key, ...) key,\n.B #include <wifimgr_settings.h>\n.fi\n.SH DESCRIPTION"
    print "The settings by what they are about. A change wants nothing but a commit, a restart of the radio's interfaces, or a reboot"
    print "to be complete, as\n.BR wifimgr_lib_wifi_config_oper (3)\nanswers;"
    print "\\(lqat once\\(rq is sent to the driver by the setter itself. %d is the number of an SSID or link."
    print "Defaults are those of the simulated gateway."
  }
  if (as ~ /^dat/) {
    print "Default\n# WLAN driver settings of the " (as == "dat_5g" ? "5" : "2.4") \
      " GHz radio. Lists separated by ';' hold one value for each SSID."
  }
}

/^WIFIMGR_(SETTING_GROUP|DAT_KEY|SETTING)\(.*\)$/ {
  start()
  text = $0
  sub(/^[A-Z_]*\(/, "", text)
  count = split_row(substr(text, 1, length(text) - 1), given)
  for (i = 1; i <= count; ++i) given[i] = bare(given[i])
}
/^WIFIMGR_SETTING_GROUP\(/ { heading = given[1] }
/^WIFIMGR_DAT_KEY\(/ {
  split("", row)
  row["key"] = given[1]; row["numbering"] = "SHARED"; row["scope"] = "BAND"; row["on_2_4g"] = given[3]; row["on_5g"] = given[4]
  if (as == "dictionary") print_dictionary()
  if (as ~ /^dat/) print_lines(row["on_" substr(as, 5)])
}
/^WIFIMGR_SETTING\(/ {
  if (count != columns) { failed = 1; print "settings.awk: line " NR " has " count " columns" | "cat >&2"; exit 1 }
  for (i = 1; i <= columns; ++i) row[column[i]] = given[i]
  take_row()
  ++rows
}

END {
  if (failed) exit 1
  if (!rows) { print "settings.awk: no row" | "cat >&2"; exit 1 }
  if (as == "man") print ".SH SEE ALSO\n.BR wifimgr_lib (3)"
}
