#!/usr/bin/env bash
# What ./run does on a machine without a display. Needs samples/demo.sup and installs and builds as ./run does.
set -uo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# Check RULE CONDITION...
Check() {
  local rule=$1
  shift
  if "$@"; then
    printf 'ok      %s\n' "$rule"
  else
    printf 'FAILED  %s\n' "$rule"
    failures=$((failures + 1))
  fi
}

# Run DIRECTORY ARGUMENTS...: ./run from that directory; leaves $status, $work/out and $work/err.
Run() {
  local directory=$1
  shift
  (cd "$directory" && "$root/run" "$@") >"$work/out" 2>"$work/err" </dev/null
  status=$?
}

Lines() {
  grep -c '' "$1"
}

Run "$work"
Check "without a file it exits 2" [ $status -eq 2 ]
Check "and says why in one line" [ "$(Lines "$work/err") $(Lines "$work/out")" = "1 0" ]
Check "which names the display" grep -q 'no display' "$work/err"

Run "$work" one.sup two.sup
Check "two files are wrong usage" [ $status -eq 2 ]

cp "$root/samples/demo.sup" "$work/a film.sup"
Run "$work" "a film.sup"
Check "with a file it exits 0" [ $status -eq 0 ]
Check "and says what it does instead" grep -q 'no display.*report and export' "$work/err"
Check "the report comes first" cmp -s <(head -n "$("$root/build/release/bin/quillmark-cli" report "$work/a film.sup" | wc -l)" \
  "$work/out") <("$root/build/release/bin/quillmark-cli" report "$work/a film.sup")
Check "the pictures lie beside the file" [ -n "$(find "$work/a film_SubPng" -name '*.png' 2>/dev/null)" ]
Check "the list lies beside the file" [ -s "$work/a film_spu.xml" ]

Run "$work" missing.sup
Check "a file that is not there exits 1" [ $status -eq 1 ]
Check "and is named" grep -q 'missing.sup' "$work/err"

exit $((failures > 0))
