#!/bin/sh
# Applies the same settings in two simulated gateways, with the libraries of two builds, and compares what came of it: the
# dat files, and each command with what it changed.
#
#   same_outcome.sh GATEWAY-BUILD BUILD BUILD
set -eu
cd "$(dirname "$0")/.."
gateway=$1 first=$2 second=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

outcome() {
  "$gateway/bin/gateway-sim" --chips 7603,7612 -- sh -c "
    $1/bin/apply_settings >/dev/null 2>&1 || exit 1
    cat /etc/Wireless/*/*.dat
    cut -f 2,3 /run/gateway-sim/journal" || { echo "the settings cannot be applied with $1" >&2; exit 1; }
}

outcome "$first" >"$work/first"
outcome "$second" >"$work/second"
diff "$work/first" "$work/second" || { echo "$first and $second differ in what they did" >&2; exit 1; }
echo "$(wc -l <"$work/first") lines of dat files and commands, the same with $first and $second"
