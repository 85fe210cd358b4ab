# The public header with its comments as Doxygen wants them: its filter. A contract stands before each declaration that
# it is for, a ruler becomes a group, and names are references.
#
#   awk -f docs/header.awk -f docs/doxygen.awk include/wifimgr_lib.h

function plain(text) {
  gsub(/[\\@<>#%"]/, "\\\\&", text)
  gsub(/&/, "\\&amp;", text)
  gsub(/\*/, "\\&lowast;", text)
  gsub(/--/, "-\\&zwj;-", text)
  return text
}

# References, but not in what stands between quotation marks. `quoted` goes on from one text of a comment to the next.
function linked(text, done, word) {
  done = ""
  while (match(text, /"|`[^`]*`|[A-Za-z_][A-Za-z_0-9]*/)) {
    word = substr(text, RSTART, RLENGTH)
    done = done plain(substr(text, 1, RSTART - 1))
    if (word == "\"") {
      quoted = !quoted
      done = done "\\\""
    } else if (word ~ /^`/) {
      done = done "<code>" plain(substr(word, 2, RLENGTH - 2)) "</code>"
    } else if (!quoted && word in known && word != self && word ~ /_|[a-z][A-Z]/) {
      done = done "\\ref " word " \"" word "\""
    } else {
      done = done plain(word)
    }
    text = substr(text, RSTART + RLENGTH)
  }
  return done plain(text)
}

# Lists of terms are tables, which a narrow window can show as well.
function part(what, text, term) {
  if (what != "term" && in_table) print "</table>"
  if (what != "item" && in_list) print "</ul>"
  if (what == "term" && !in_table) print "<table class=\"terms\">"
  if (what == "item" && !in_list) print "<ul>"
  in_table = what == "term"
  in_list = what == "item"
  if (what == "text") print "\n" linked(text) "\n"
  if (what == "term") print "<tr><td>" linked(term) "</td><td>" linked(text) "</td></tr>"
  if (what == "item") print "<li>" linked(text) "</li>"
  if (what == "code") print "\\verbatim\n" text "\n\\endverbatim"
  if (what == "heading") heading(text)
}

function heading(text, label) {
  label = text
  sub(/,.*/, "", label)
  if (label == "Sharp edges") {
    print "*/\n/** \\page sharp_edges " label
    return
  }
  label = tolower(label)
  gsub(/[^a-z]+/, "_", label)
  print "\\section " label " " text
}

function contract_of(text, of) {
  quoted = 0
  self = of
  parts(text, 0)
}

# A trailing comment of a member belongs to it.
function members(text) {
  gsub(/\/\* /, "/**< ", text)
  return text
}

function identifier(text) {
  text = tolower(text)
  gsub(/[^a-z0-9]+/, "_", text)
  return "group_" text
}

END {
  if (refused) exit 1
  print "/** \\file wifimgr_lib.h"
  print "The contract of every function; \\ref header_conventions \"what all have in common\" comes first. */"
  print "/** \\page header_conventions Conventions"
  quoted = 0
  parts(head, 1)
  print "*/"
  for (g = 1; g <= groups; ++g) {
    print "/** \\defgroup " identifier(title[g]) " " title[g]
    contract_of(intro[g], "")
    print "\\{ */"
    for (i = 1; i <= items; ++i) {
      if (group[i] != g) continue
      quoted = 0
      self = name[i]
      print "/** \\brief " linked(summary(contract[cluster[i]])) "\n"
      contract_of(contract[cluster[i]], name[i])
      print "*/"
      print kind[i] == "type" ? members(declaration[i]) : declaration[i]
    }
    print "/** \\} */"
  }
}
