#!/bin/sh
# The reference to browse, into build/docs/html: the public header, the documents, the settings, the manual pages of
# programs, and the examples. Whatever Doxygen warns of ends it.
set -eu
export LC_ALL=C.UTF-8
cd "$(dirname "$0")/.."
pages=build/docs/pages
rm -rf build/docs
mkdir -p "$pages"

awk -f docs/header.awk -f docs/doxygen.awk include/wifimgr_lib.h >build/docs/wifimgr_lib.h

# page SOURCE: a page of the reference, named after the file.
page() {
  label=page_$(echo "${1%.md}" | tr -c 'A-Za-z0-9\n' _)
  awk -v label="$label" -f docs/page.awk "$1" >"$pages/$label.md"
}

for document in README.md INTEGRATION.md ARCHITECTURE.md CONTRIBUTING.md sim/README.md; do page $document; done

sh scripts/settings.sh markdown >build/docs/settings.md
page build/docs/settings.md

# list TITLE LABEL: a page that leads to the pages whose labels are read.
list() {
  printf '# %s {#%s}\n\n' "$1" "$2" >"$pages/$2.md"
  sed 's/.*/- @subpage &/' >>"$pages/$2.md"
}

for manual in man/*.[13]; do
  name=$(basename "${manual%.*}")
  {
    printf '# %s(%s) {#man_%s}\n\n@htmlonly\n<div class="manual">\n' "$name" "${manual##*.}" "$(echo "$name" | tr - _)"
    mandoc -T html -O fragment "$manual"
    printf '</div>\n@endhtmlonly\n'
  } >"$pages/man_$name.md"
done

for example in examples/*.[ch]; do
  name=$(basename "$example")
  printf '# Example: %s {#page_examples_%s}\n\n@include %s\n' "$name" "$(echo "$name" | tr . _)" "$name" \
    >"$pages/example_$name.md"
done

sed -n 's/^# .*{#\(.*\)}$/\1/p' "$pages"/man_*.md | list "Manual pages of programs and overview" manuals
sed -n 's/^# .*{#\(.*\)}$/\1/p' "$pages"/example_*.md | list Examples examples

# The groups of the header come before the pages.
doxygen -l build/docs/layout.xml
sed -i -e '/<tab type="pages"/d' -e '/<tab type="modules"/c\
<tab type="modules" visible="yes" title="The header, group by group" intro=""/>\
<tab type="pages" visible="yes" title="" intro=""/>' build/docs/layout.xml
doxygen docs/Doxyfile
echo "docs: build/docs/html/index.html"
