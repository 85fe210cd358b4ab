# Reads the public header into arrays, for the programs that make pages of it. The header stays a plain C header; what
# its comments have to look like is in CONTRIBUTING.md, and what does not is refused with its line.
#
#   head                       the comment that opens the file
#   groups, title[g], intro[g] the rulers, and the comments that no declaration follows
#   items, name[i], declaration[i], kind[i], cluster[i], group[i]
#                              kind is function, object, type or constant
#   clusters, contract[c]      one comment and the declarations up to the next blank line
#   known[name]                the number of the item

function refuse(text) {
  print FILENAME ":" FNR ": " text >"/dev/stderr"
  refused = 1
}

function append(text, line) { return text == "" ? line : text "\n" line }

function add_item(kind_of_it, name_of_it, text) {
  ++items
  name[items] = name_of_it
  declaration[items] = text
  kind[items] = kind_of_it
  group[items] = groups
  if (contract_is_new) contract[++clusters] = pending
  contract_is_new = 0
  cluster[items] = clusters
  known[name_of_it] = items
}

# The name that a declaration declares: the last word before its parameters or dimensions.
function declared(text, word, count) {
  sub(/[(\[;].*/, "", text)
  count = split(text, word, /[ *\n]+/)
  return word[count]
}

function end_comment() {
  in_comment = 0
  if (head == "") {
    head = comment
  } else if (comment ~ /^---- /) {
    ++groups
    title[groups] = comment
    sub(/\n.*/, "", title[groups])
    gsub(/^-+ | -+$/, "", title[groups])
    intro[groups] = comment ~ /\n/ ? comment : ""
    sub(/^[^\n]*\n+/, "", intro[groups])
  } else {
    if (!begins_after_blank) refuse("a comment follows a declaration without a blank line")
    pending = comment
    has_pending = contract_is_new = 1
  }
  comment = ""
}

function comment_line(line) {
  sub(/^\/\* ?/, "", line)
  sub(/ *\*\/$/, "", line)
  sub(/^ \* ?/, "", line)
  comment = started ? comment "\n" line : line
  started = 1
}

!in_comment && /^\/\*/ {
  in_comment = 1
  started = 0
  begins_after_blank = blank_before
}
in_comment {
  last = /\*\/$/
  comment_line($0)
  if (last) {
    sub(/\n$/, "", comment)
    end_comment()
  }
  blank_before = 0
  next
}

open_declaration == "" && /^$/ {
  # A comment that nothing follows belongs to the group.
  if (contract_is_new && groups) intro[groups] = intro[groups] == "" ? pending : intro[groups] "\n\n" pending
  has_pending = contract_is_new = 0
  blank_before = 1
  next
}
{ blank_before = 0 }

/^#define WIFIMGR_[A-Z_0-9]+ [0-9]/ {
  if (groups == 0) next
  text = $0
  if (!has_pending) { pending = ""; contract_is_new = 1 }
  if (match(text, /\/\* .* \*\/$/)) {
    pending = substr(text, RSTART + 3, RLENGTH - 6)
    contract_is_new = 1
    text = substr(text, 1, RSTART - 1)
  }
  sub(/ +$/, "", text)
  if (pending == "") refuse($2 " has no comment")
  add_item("constant", $2, text)
  next
}

/^typedef struct / { structure = 1 }
/^WIFIMGR_API / || /^typedef / || open_declaration != "" {
  open_declaration = append(open_declaration, $0)
  if (structure ? $0 !~ /^}.*;$/ : $0 !~ /;/) next
  text = open_declaration
  open_declaration = ""
  if (!has_pending) refuse("a declaration without a contract")
  sub(/^WIFIMGR_API /, "", text)
  gsub(/WIFIMGR_ANYTHING/, "...", text)
  gsub(/WIFIMGR_PACKED /, "", text)
  if (structure) {
    what = text
    sub(/^.*} */, "", what)
    sub(/;$/, "", what)
    add_item("type", what, text)
  } else if (text ~ /^typedef /) {
    what = text
    sub(/^[^(]*\(\*/, "", what)
    sub(/\).*/, "", what)
    add_item("type", what, text)
  } else {
    sub(/ WIFIMGR_PRINTF\([^)]*\)/, "", text)
    add_item(text ~ /\(.*\)/ && text !~ /^extern/ ? "function" : "object", declared(text), text)
  }
  structure = 0
}

# The parts of a comment, one call each: part(what, text, term), where what is text, term, item, code, heading or end.
# A term stands in front of two blanks or more and its text is indented to where it begins; what is indented otherwise is
# kept as it is; an item begins with a dash.
function parts(text, headings, line, count, i, now, what, width, term, value) {
  count = split(text, line, /\n/)
  what = ""
  for (i = 1; i <= count; ++i) {
    now = line[i]
    if (now == "") {
      part_ends(what, value, term)
      what = ""
    } else if (headings && now ~ /^[A-Z][a-zA-Z, ]*$/ && (i == 1 || line[i - 1] == "") && line[i + 1] == "") {
      part_ends(what, value, term)
      part("heading", now, "")
      what = ""
    } else if (now ~ /^- /) {
      part_ends(what, value, term)
      what = "item"
      value = substr(now, 3)
    } else if (what == "item" && now ~ /^  [^ ]/) {
      value = value " " substr(now, 3)
    } else if (match(now, /^[A-Za-z_][A-Za-z_0-9.]*(, [a-z_]+)*  +/)) {
      width = RLENGTH
      part_ends(what, value, term)
      what = "term"
      term = substr(now, 1, width)
      sub(/ +$/, "", term)
      value = substr(now, width + 1)
    } else if (what == "term" && match(now, /^ +/) && RLENGTH == width) {
      value = value " " substr(now, width + 1)
    } else if (now ~ /^  /) {
      if (what != "code") {
        part_ends(what, value, term)
        value = now
      } else {
        value = value "\n" now
      }
      what = "code"
    } else if (what == "text" && now !~ /^(Returns?|Refusals?|Prints?|Accepts)[ :]/) {
      value = value " " now
    } else {
      part_ends(what, value, term)
      what = "text"
      value = now
    }
  }
  part_ends(what, value, term)
  part("end", "", "")
}

function part_ends(what, text, term) { if (what != "") part(what, text, term) }

# The first sentence of a contract.
function first_sentence(text) {
  sub(/\n\n.*/, "", text)
  sub(/\n[a-z_0-9.]+(, [a-z_]+)*  +.*/, "", text)
  gsub(/\n/, " ", text)
  if (match(text, /[.:] +[A-Z"]/) && RSTART > 24) text = substr(text, 1, RSTART - 1)
  else if (match(text, /\. /)) text = substr(text, 1, RSTART - 1)
  sub(/[.:]$/, "", text)
  return text
}

# As much of it as fits into a list.
function summary(text, cut, part_of_it, opening, closing) {
  text = first_sentence(text)
  if (length(text) <= 100) return text
  for (cut = 100; cut > 24; --cut) {
    part_of_it = substr(text, 1, cut - 1)
    opening = part_of_it
    closing = part_of_it
    if (substr(text, cut) ~ /^([;:,] | \()/ && gsub(/\(/, "", opening) == gsub(/\)/, "", closing)) return part_of_it
  }
  return text
}
