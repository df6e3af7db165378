#!/usr/bin/env bash
# What ./run does on a machine without a display, and before it installs something. Needs samples/demo.sup and installs
# and builds as ./run does.
set -uo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
source "$root/tests/scripts/check.sh"

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

# An ordinary user on a machine where one package is missing until sudo was called, which does nothing else.
mkdir "$work/bin"
cat >"$work/bin/id" <<'END'
#!/bin/sh
echo 1000
END
cat >"$work/bin/dpkg-query" <<END
#!/bin/sh
shift 3
for name; do
  if [ "\$name" != zlib1g-dev ] || [ -e "$work/installed" ]; then
    echo "installed \$name"
  fi
done
END
cat >"$work/bin/sudo" <<END
#!/bin/sh
echo "\$*" >"$work/installed"
END
chmod +x "$work"/bin/*
PATH=$work/bin:$PATH

# Answer TEXT: ./run at a terminal at which TEXT is typed; leaves $status and $work/out.
Answer() {
  printf '%s\n' "$1" | script -qec "'$root/run' '$work/a film.sup'" /dev/null >"$work/out" 2>&1
  status=$?
}

Answer n
Check "at a terminal it asks before it installs" grep -q 'zlib1g-dev.*\[Y/n\]' "$work/out"
Check "a no installs nothing" [ ! -e "$work/installed" ]
Check "and ends it with 1" [ $status -eq 1 ]
Check "with the command that would" grep -q 'sudo apt-get install .*zlib1g-dev' "$work/out"

Answer ''
Check "Return installs what is missing" grep -q 'apt-get.* install .*zlib1g-dev$' "$work/installed"
Check "and goes on" [ $status -eq 0 ]

Answer n
Check "nothing is asked when nothing is missing" [ $status -eq 0 ]

rm "$work/installed"
Run "$work" "a film.sup"
Check "without a terminal it installs without a question" [ "$status $(wc -l <"$work/installed")" = "0 1" ]

exit $((failures > 0))
