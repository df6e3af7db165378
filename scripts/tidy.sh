#!/usr/bin/env bash
# scripts/tidy.sh: clang-tidy on every source that ships, with the compile commands and the precompiled headers
# of build/dev, which must be built. clang-tidy takes longer than the compiler, so a source that passed is left alone
# until it, a header of ours that it includes, or .clang-tidy changes: build/tidy holds an empty file for each state
# that passed.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$root"

layers='(base|palette|sup|recipe|imaging|render|files|containers|app|cli)'

# OwnFiles: the sources that ship and their headers, as git names them, but for those of another system, which are not
# compiled here.
OwnFiles() {
  git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h' | grep -E "^$layers/" | grep -v 'Windows[.]cpp$'
}

# IncludedFiles: lines "source TAB file of ours that it reads": itself, and what it includes through any number of
# headers. Ours are named from the root of the project.
IncludedFiles() {
  OwnFiles | xargs -d '\n' awk '
    function Tell(source, file,   i) {
      if (told[source, file]++) return
      print source "\t" file
      for (i = 1; i <= count[file]; ++i) if (includes[file, i] in seen) Tell(source, includes[file, i])
    }
    FNR == 1 { seen[FILENAME] }
    /^#include "/ { split($0, part, "\""); includes[FILENAME, ++count[FILENAME]] = part[2] }
    END { for (file in seen) if (file ~ /[.]cpp$/) Tell(file, file) }'
}

# CompileCommands: those of build/dev with one for each source, also where several are compiled as one.
CompileCommands() {
  awk '
    function Entry(command, file) {
      printf "%s{\n%s\n%s\n  \"file\": \"%s\"\n}", separator, directory, command, file
      separator = ",\n"
    }
    /^  "directory": / { directory = $0 }
    /^  "command": / { command = $0 }
    /^  "file": / {
      split($0, part, "\"")
      unit = part[4]
      if (unit !~ /\/Unity\/unity_[^\/]*$/) { Entry(command, unit); next }
      place = index(command, " -c " unit)
      while ((getline line <unit) > 0)
        if (split(line, part, "\"") == 3 && line ~ /^#include /)
          Entry(substr(command, 1, place + 3) part[2] substr(command, place + 4 + length(unit)), part[2])
    }
    BEGIN { print "[" }
    END { print "\n]" }' build/dev/compile_commands.json
}

# The check quillmark-own-code keeps clang-tidy from walking through the headers of the system.
BuildOwnCode() {
  if [ scripts/OwnCode.cpp -nt build/tidy/OwnCode.so ]; then
    clang++-14 -std=c++17 -O1 -shared -fPIC -fno-rtti -isystem /usr/lib/llvm-14/include scripts/OwnCode.cpp \
      -o build/tidy/OwnCode.so
  fi
}

CheckOne() {
  if clang-tidy-14 --quiet --load build/tidy/OwnCode.so --checks=quillmark-own-code -p build/tidy "$1" 2> >(grep -v 'warnings\? generated' >&2); then
    touch "build/tidy/$2"
  else
    return 1
  fi
}
export -f CheckOne

mkdir -p build/tidy
CompileCommands >build/tidy/compile_commands.json
included=$(IncludedFiles | sort)
declare -A digest state
while read -r sum file; do
  digest[$file]=$sum
done < <(cut -f2 <<<"$included" | sort -u | xargs -d '\n' sha256sum)
while IFS=$'\t' read -r name file; do
  state[$name]+=${digest[$file]}
done <<<"$included"

if ! missed=$(diff <(printf '%s\n' "${!state[@]}" | sort) \
  <(sed -nE "s#^  \"file\": \"$root/($layers/[^/]*[.]cpp)\"#\\1#p" build/tidy/compile_commands.json | sort)); then
  Say "not the sources that build/dev was made of:"
  echo "$missed"
  exit 1
fi

settings=$(cat .clang-tidy)
todo=()
for name in "${!state[@]}"; do
  read -r key _ < <(sha256sum <<<"$settings${state[$name]}")
  if [ ! -e "build/tidy/$key" ]; then
    todo+=("$name" "$key")
  fi
done
Say "${#state[@]} sources, $((${#todo[@]} / 2)) to check"
if [ ${#todo[@]} -gt 0 ]; then
  BuildOwnCode
  printf '%s\n' "${todo[@]}" | xargs -d '\n' -n 2 -P "$(nproc)" bash -c 'CheckOne "$@"' CheckOne
fi
