#!/usr/bin/env bash
# scripts/tidy.sh: clang-tidy on every source that ships, with the compile commands and the precompiled headers
# of build/dev, which must be built. Sources that are compiled as one are checked as one: parsing what they include is
# most of the time. clang-tidy still takes about as long as the compiler, so what passed is left alone until one of its
# sources, a header of ours that they include, or .clang-tidy changes: build/tidy holds an empty file for each state
# that passed. `scripts/tidy.sh prepare` makes what it runs with, before build/dev is there.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$root"

export layers='(base|palette|sup|recipe|imaging|render|files|containers|translations|app|cli)'

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

# CompiledSources: lines "what is compiled TAB source of ours in it" of build/dev; from the root of the project.
CompiledSources() {
  awk -v root="$root/" -v layers="^$layers/[^/]*[.]cpp$" '
    function Tell(file) {
      sub(root, "", file)
      if (file ~ layers) print unit "\t" file
    }
    /^  "file": / {
      split($0, part, "\"")
      unit = part[4]
      if (unit !~ /\/Unity\/unity_[^\/]*$/) { Tell(unit); next }
      while ((getline line <unit) > 0)
        if (split(line, part, "\"") == 3 && line ~ /^#include /) Tell(part[2])
    }' build/dev/compile_commands.json
}

# The check quillmark-own-code keeps clang-tidy from walking through the headers of the system.
BuildOwnCode() {
  local made=build/tidy/OwnCode.$$.so
  mkdir -p build/tidy
  if [ scripts/OwnCode.cpp -nt build/tidy/OwnCode.so ]; then
    clang++-14 -std=c++17 -O1 -shared -fPIC -fno-rtti -isystem /usr/lib/llvm-14/include scripts/OwnCode.cpp -o "$made"
    mv "$made" build/tidy/OwnCode.so
  fi
}

# CheckOne UNIT KEY: sources that are compiled as one are included, which is no mistake of theirs.
CheckOne() {
  if clang-tidy-14 --quiet --load build/tidy/OwnCode.so --checks=quillmark-own-code,-bugprone-suspicious-include \
    --header-filter="/$layers/[^/]+[.](h|cpp)\$" -p build/dev "$1" 2> >(grep -v 'warnings\? generated' >&2); then
    touch "build/tidy/$2"
  else
    return 1
  fi
}
export -f CheckOne

BuildOwnCode
if [ "${1:-}" = prepare ]; then
  exit
fi
compiled=$(CompiledSources)
if ! missed=$(diff <(OwnFiles | grep '[.]cpp$' | sort) <(cut -f2 <<<"$compiled" | sort -u)); then
  Say "not the sources that build/dev was made of:"
  echo "$missed"
  exit 1
fi

included=$(IncludedFiles | sort)
declare -A digest state units
while read -r sum file; do
  digest[$file]=$sum
done < <(cut -f2 <<<"$included" | sort -u | xargs -d '\n' sha256sum)
while IFS=$'\t' read -r name file; do
  state[$name]+=${digest[$file]}
done <<<"$included"
while IFS=$'\t' read -r unit name; do
  units[$unit]+=$name${state[$name]}
done <<<"$compiled"

settings=$(cat .clang-tidy)
todo=()
for unit in "${!units[@]}"; do
  read -r key _ < <(sha256sum <<<"$settings${units[$unit]}")
  if [ ! -e "build/tidy/$key" ]; then
    todo+=("$unit" "$key")
  fi
done
Say "${#state[@]} sources compiled as ${#units[@]}, of which $((${#todo[@]} / 2)) to check"
if [ ${#todo[@]} -gt 0 ]; then
  printf '%s\n' "${todo[@]}" | xargs -d '\n' -n 2 -P "$(nproc)" bash -c 'CheckOne "$@"' CheckOne
fi
