# The page of each exported name, in the folder man3: its name stands where apropos looks, its declaration and a contract
# follow. Reads tests/abi/exported_names.def.

function complain(text) {
  print text
  failed = 1
}

function check(name, page, line, section, named, declared, told) {
  page = "man3/" name ".3"
  if ((getline line <page) <= 0) {
    complain(name " has no page")
    return
  }
  close(page)
  if (line ~ /^\.so /) page = substr(line, 5)
  while ((getline line <page) > 0) {
    if (line ~ /^\.SH /) {
      section = line
      continue
    }
    if (section == ".SH NAME" && index(", " line, ", " name ",") + index(", " line, ", " name " \\- ")) named = 1
    if (section == ".SH SYNOPSIS" && match(line, "[ *]" name "[[(;]")) declared = 1
    if (section == ".SH DESCRIPTION" && line !~ /^\./) told = 1
  }
  close(page)
  if (!named) complain("the page of " name " does not name it")
  if (!declared) complain("the page of " name " does not declare it")
  if (!told) complain("the page of " name " does not say what it does")
}

/^(FUNCTION|OBJECT)\(/ {
  gsub(/^[A-Z]*\(|\)$/, "")
  ++names
  check($0)
}

END {
  if (names == 0) complain("no exported names")
  exit failed
}
