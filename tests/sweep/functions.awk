# Lists the functions of a C header for the sweep, with the names of their parameters: FUNCTION(name, "first", "second")
/^WIFIMGR_API / && !/ extern / {
  prototype = $0
  while (prototype !~ /;/ && (getline line) > 0) prototype = prototype line
  sub(/\) *WIFIMGR_PRINTF.*/, ")", prototype)
  name = prototype
  sub(/\(.*/, "", name)
  sub(/.*[ *]/, "", name)
  sub(/^[^(]*\(/, "", prototype)
  sub(/\)[^)]*;.*/, "", prototype)
  gsub(/\(\*out\)\[[A-Z_]+\]/, "out", prototype)
  count = split(prototype, parameters, /,/)
  names = ""
  for (i = 1; i <= count; ++i) {
    sub(/.*[ *]/, "", parameters[i])
    if (parameters[i] !~ /void|[.][.][.]/) names = names ", \"" parameters[i] "\""
  }
  print "FUNCTION(" name names ")"
}
