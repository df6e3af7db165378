#!/usr/bin/env bash
# scripts/tidy.sh: clang-tidy on every source that ships, with the compile commands and the precompiled headers
# of build/dev, which must be built. clang-tidy takes longer than the compiler, so a source that passed is left alone until it, a header
# of ours that it includes, or .clang-tidy changes: build/tidy holds an empty file for each state that passed.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$root"

# Sources: every source that ships.
Sources() {
  git ls-files --cached --others --exclude-standard -- \
    {base,palette,sup,imaging,render,files,app,cli}/'*.cpp' | sed "s#^#$root/#"
}

# IncludedFiles: lines "source TAB file of ours that it reads", from the dependencies that ninja recorded. The
# precompiled header may come before the source.
IncludedFiles() {
  ninja -C build/dev -t deps | awk -v root="$root/" '
    function Tell(  i) {
      for (i = 1; source != "" && i <= count; ++i) print source "\t" read[i]
      source = ""
      count = 0
    }
    /^[^ ]/ { Tell(); next }
    sub(/^ +/, "") {
      sub(/^[.][.]\/[.][.]\//, root)  # as ccache leaves it where it makes paths relative
      if (index($0, root "build/") == 1 || index($0, root) != 1) next
      read[++count] = $0
      if ($0 ~ "^" root "(base|palette|sup|imaging|render|files|app|cli)/[^/]*[.]cpp$") source = $0
    }
    END { Tell() }'
}

# The check quillmark-own-code keeps clang-tidy from walking through the headers of the system.
BuildOwnCode() {
  if [ scripts/OwnCode.cpp -nt build/tidy/OwnCode.so ]; then
    clang++-14 -std=c++17 -O1 -shared -fPIC -fno-rtti -isystem /usr/lib/llvm-14/include scripts/OwnCode.cpp \
      -o build/tidy/OwnCode.so
  fi
}

CheckOne() {
  if clang-tidy-14 --quiet --load build/tidy/OwnCode.so --checks=quillmark-own-code -p build/dev "$1" 2> >(grep -v 'warnings\? generated' >&2); then
    touch "build/tidy/$2"
  else
    return 1
  fi
}
export -f CheckOne

mkdir -p build/tidy
included=$(IncludedFiles | sort -u)
declare -A digest state
while read -r sum file; do
  digest[$file]=$sum
done < <(cut -f2 <<<"$included" | sort -u | xargs -d '\n' sha256sum)
while IFS=$'\t' read -r name file; do
  state[$name]+=${digest[$file]}
done <<<"$included"

if ! missed=$(diff <(Sources | sort) <(printf '%s\n' "${!state[@]}" | sort)); then
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
