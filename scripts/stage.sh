#!/bin/sh
# Runs a command as a stage of the tests: says when it begins, and keeps in build/stages what it took.
#
#   stage.sh "STAGE" COMMAND...   runs the command
#   stage.sh --forget             begins a new table
#   stage.sh --table              prints the table in Markdown
#   stage.sh --into FILE          puts it between the lines "<!-- stages -->" and "<!-- end of stages -->" of a file
#
# The processor's seconds are those of all processes that the command waited for.
set -eu
cd "$(dirname "$0")/.."
kept=build/stages

table() {
  [ -s "$kept" ] || { echo "stage: nothing was run yet; make test does" >&2; exit 1; }
  echo "| Stage | Seconds | Processor seconds |"
  echo "| --- | ---: | ---: |"
  awk -F '\t' '{ printf "| %s | %d | %d |\n", $1, $2, $3; wall += $2; work += $3 }
    END { printf "| in all | %d | %d |\n", wall, work }' "$kept"
}

case ${1:-} in
  --forget)
    rm -f "$kept"
    exit 0
    ;;
  --table)
    table
    exit 0
    ;;
  --into)
    table >"$kept.md"
    awk -v table="$kept.md" '
      /^<!-- stages -->$/ { print; print ""; while ((getline line < table) > 0) print line; print ""; inside = 1; next }
      /^<!-- end of stages -->$/ { inside = 0; found = 1 }
      !inside { print }
      END { exit !found }' "$2" >"$kept.new" || { echo "stage: $2 has no place for the table" >&2; exit 1; }
    cat "$kept.new" >"$2"
    rm -f "$kept.new" "$kept.md"
    exit 0
    ;;
  '' | -*)
    sed -n '4,7s/^# *//p' "$0" >&2
    exit 2
    ;;
esac

stage=$1
shift
mkdir -p build
echo "== $stage"
start=$(date +%s)
status=0
"$@" || status=$?
seconds=$(($(date +%s) - start))
# The second line of times is that of the children: minutes and seconds, once for programs and once for the kernel.
times >"$kept.times"
work=$(awk 'NR == 2 { gsub(/[ms]/, " "); print int($1 * 60 + $2 + $3 * 60 + $4 + 0.5) }' "$kept.times")
rm -f "$kept.times"
[ $status -eq 0 ] || { echo "== $stage failed after $seconds seconds" >&2; exit $status; }
printf '%s\t%s\t%s\n' "$stage" "$seconds" "$work" >>"$kept"
