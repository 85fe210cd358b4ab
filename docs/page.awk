# A page in Markdown for the reference: its links lead to the reference's pages, or are plain text where it has none.
{
  while (match($0, /\[[^]]*\]\([^)]*\)/)) {
    link = substr($0, RSTART, RLENGTH)
    text = link
    sub(/^\[/, "", text)
    sub(/\]\(.*/, "", text)
    target = link
    sub(/^.*\]\(/, "", target)
    sub(/\)$/, "", target)
    if (target ~ /^https?:/) replacement = "<a href=\"" target "\">" text "</a>"
    else if (target == "include/wifimgr_lib.h") replacement = "@ref header_conventions \"" text "\""
    else if (target == "sim/README.md") replacement = "@ref page_sim_README \"" text "\""
    else if (target ~ /^(README|ARCHITECTURE|INTEGRATION|CONTRIBUTING)\.md$/) {
      sub(/\.md$/, "", target)
      replacement = "@ref page_" target " \"" text "\""
    } else if (target ~ /^examples\/.*\.[ch]$/) {
      gsub(/[^A-Za-z0-9]/, "_", target)
      replacement = "@ref page_" target " \"" text "\""
    } else replacement = text
    $0 = substr($0, 1, RSTART - 1) replacement substr($0, RSTART + RLENGTH)
  }
  # Doxygen takes a percent sign in front of a word away, but in an example.
  if (/^(    |```)/) { if (/^```/) example = !example } else if (!example) gsub(/%/, "%%")
  # The title has the label that links use.
  if (!titled && /^# /) {
    $0 = $0 " {#" label "}"
    titled = 1
  }
  print
}
