# Manual pages of section 3 from the public header, into the folder `out`: one per exported name (the names of one
# contract share a page, to which the others point), one per group, and wifimgr_conventions with what all have in common.
#
#   awk -v out=FOLDER -f docs/header.awk -f docs/man3.awk include/wifimgr_lib.h

function roff(text) {
  gsub(/\\/, "\\e", text)
  gsub(/-/, "\\-", text)
  gsub(/~/, "\\(ti", text)
  gsub(/\^/, "\\(ha", text)
  gsub(/`/, "\\(ga", text)
  if (text ~ /^[.']/) text = "\\&" text
  return text
}

# Sentences begin on lines of their own, and no line is long.
function say(text, width, cut) {
  while (length(text) > 110) {
    for (cut = 110; cut > 1 && substr(text, cut, 1) != " "; --cut) { }
    if (cut == 1) break
    print roff(substr(text, 1, cut - 1)) >page
    text = substr(text, cut + 1)
  }
  print roff(text) >page
}

function part(what, text, term, line, count, i) {
  if (what == "heading") print ".SS " roff(text) >page
  if (what == "text") {
    if (!begins) print ".PP" >page
    say(text)
  }
  if (what == "item") { print ".IP \\(bu 2" >page; say(text) }
  if (what == "term") { print ".TP\n.I " roff(term) >page; say(text) }
  if (what == "code") {
    print (begins ? ".nf" : ".PP\n.nf") >page
    count = split(text, line, /\n/)
    for (i = 1; i <= count; ++i) print roff(line[i]) >page
    print ".fi" >page
  }
  begins = 0
}

# The first paragraph of a section needs no macro of its own.
function section(title_of_section) {
  print ".SH " title_of_section >page
  begins = 1
}

function begin(title_of_page) {
  page = out "/" title_of_page ".3"
  # Texts that callers match stand in the pages: neither padded nor hyphenated.
  print ".TH " roff(title_of_page) " 3\n.ad l\n.nh\n.SH NAME" >page
}

function see_also(rest) {
  print ".SH SEE ALSO" >page
  print rest >page
  close(page)
}

function reference(title_of_page) { return ".BR " roff(title_of_page) " (3)" }

function group_page(g, slug) {
  slug = tolower(title[g])
  gsub(/[^a-z0-9]+/, "_", slug)
  return "wifimgr_" slug
}

function contract_page(c, first, i, names, shown) {
  begin(name[first])
  for (i = first; i <= items && cluster[i] == c; ++i) {
    if (kind[i] == "type" || kind[i] == "constant") continue
    names = names (names == "" ? "" : ", ") name[i]
  }
  print roff(names) " \\- " roff(summary(contract[c])) >page
  print ".SH SYNOPSIS\n.nf\n.B #include <wifimgr_lib.h>\n.PP" >page
  for (i = first; i <= items && cluster[i] == c; ++i) print roff(declaration[i]) >page
  print ".fi" >page
  section("DESCRIPTION")
  parts(contract[c], 0)
  if (intro[group[first]] != "") {
    section("\"" roff(toupper(title[group[first]])) "\"")
    parts(intro[group[first]], 0)
  }
  see_also(reference("wifimgr_lib") " ,\n" reference("wifimgr_conventions") " ,\n" reference(group_page(group[first])))
}

END {
  if (refused) exit 1
  for (i = 1; i <= items; ++i) {
    if (kind[i] == "type" || kind[i] == "constant") continue
    if (!(cluster[i] in page_of)) {
      page_of[cluster[i]] = name[i]
      contract_page(cluster[i], i)
    } else {
      page = out "/" name[i] ".3"
      print ".so man3/" page_of[cluster[i]] ".3" >page
      close(page)
    }
  }
  for (g = 1; g <= groups; ++g) {
    begin(group_page(g))
    print roff(group_page(g)) " \\- " roff(title[g]) ", of the WLAN manager library" >page
    print ".SH SYNOPSIS\n.nf\n.B #include <wifimgr_lib.h>" >page
    for (i = 1; i <= items; ++i)
      if (group[i] == g && (kind[i] == "type" || kind[i] == "constant")) print ".PP\n" roff(declaration[i]) >page
    print ".fi" >page
    section("DESCRIPTION")
    if (intro[g] != "") parts(intro[g], 0)
    for (i = 1; i <= items; ++i) {
      if (group[i] != g || kind[i] == "type" || kind[i] == "constant") continue
      print ".TP\n.BR " roff(name[i]) " (3)" >page
      print roff(summary(contract[cluster[i]])) >page
    }
    see_also(reference("wifimgr_lib") " ,\n" reference("wifimgr_conventions"))
  }
  begin("wifimgr_conventions")
  print "wifimgr_conventions \\- what all functions of the WLAN manager library have in common, and its sharp edges" >page
  section("DESCRIPTION")
  parts(head, 1)
  see_also(reference("wifimgr_lib"))
}
