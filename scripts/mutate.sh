#!/usr/bin/env bash
# scripts/mutate.sh [--sample N] [--seed S] [FOLDER...]: whether the tests notice small changes of the code. Makes one
# change after another (scripts/mutants.py says which) in a copy of the sources, builds it and runs the tests of its folder,
# then, where they pass, all others. What no test notices is told, unless scripts/mutants-survived.txt has it with the reason.
# All changes of all folders take many hours; --sample makes N of them, chosen by the seed. FOLDERs are those below the
# window where none is named; app and cli may be. Ends with 1 where fewer than 97 % of the changes that compile are noticed.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$root"

sample=0
seed=1
folders=()
while [ $# -gt 0 ]; do
  case $1 in
    --sample) sample=$2; shift ;;
    --seed) seed=$2; shift ;;
    -*) sed -n '2,/^set/{/^#/p}' "$0"; exit 2 ;;
    *) folders+=("$1") ;;
  esac
  shift
done
if [ ${#folders[@]} -eq 0 ]; then
  folders=(base palette sup recipe render imaging files containers)
fi
export work=$root/build/mutate jobs
jobs=$(nproc)
InstallMissing "${testPackages[@]}"
mkdir -p "$work"

# List: the changes to make, in an order that the seed chooses.
List() {
  git ls-files -- "${folders[@]/%//*.cpp}" "${folders[@]/%//*.h}" | grep -v 'Windows[.]cpp$' |
    xargs -d '\n' python3 scripts/mutants.py | shuf --random-source=<(yes "$seed") |
    if [ "$sample" -gt 0 ]; then head -n "$sample"; else cat; fi
}

# Copy N: the sources that are changed, and their build.
Copy() {
  local copy=$work/$1
  mkdir -p "$copy/source"
  git ls-files -z | tar --null -cf - -T - | tar -xf - -C "$copy/source"
  cmake -S "$copy/source" -B "$copy/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++-14 \
    -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld -DQUILLMARK_CCACHE=ON -DQUILLMARK_TESTS=ON >/dev/null
}

# Tests FOLDER: the test programs that may notice a change of it, its own one first.
Tests() {
  local tests=(base palette sup recipe imaging files containers render authoring cli)
  case $1 in
    app) echo app ;;
    *) printf '%s\n' "$1" "${tests[@]}" | awk '!seen[$0]++' | paste -sd' ' ;;
  esac
}
export -f Tests

# Judge N: makes the changes of $work/N.list one by one and adds to $work/N.told, for each, what became of it.
Judge() {
  set -u
  local copy=$work/$1 file line column length other folder test state
  export QT_QPA_PLATFORM=offscreen LANGUAGE=en TMPDIR=$work/$1/tmp
  export TEST_TMPDIR=$TMPDIR/
  ulimit -v 16000000
  while IFS=$'\t' read -r file line column length other; do
    cp "$copy/source/$file" "$copy/whole"
    LC_ALL=C LINE=$line AT=$column LENGTH=$length OTHER=$other perl -i -pe \
      'substr($_, $ENV{AT}, $ENV{LENGTH}) = $ENV{OTHER} if $. == $ENV{LINE}' "$copy/source/$file"
    folder=${file%%/*}
    state=survived
    for test in $(Tests "$folder"); do
      rm -rf "$TMPDIR"
      mkdir -p "$TMPDIR"
      if ! ninja -C "$copy/build" "test_$test" >"$copy/build.log" 2>&1; then
        state=uncompiled
        break
      fi
      if ! timeout 300 "$copy/build/bin/test_$test" --gtest_brief=1 --gtest_fail_fast </dev/null >"$copy/test.log" 2>&1; then
        state=noticed
        break
      fi
    done
    cp "$copy/whole" "$copy/source/$file"
    printf '%s\t%s\t%s\t%s\t%s\t%s\n' "$state" "$file" "$line" \
      "$(sed -n "${line}p" "$copy/source/$file" | sed 's/^[ \t]*//; s/[ \t]*$//')" \
      "$(sed -n "${line}p" "$copy/source/$file" | LC_ALL=C cut -b $((column + 1))-$((column + length)))" "$other" \
      >>"$work/$1.told"
  done <"$work/$1.list"
}
export -f Judge

List >"$work/all.list"
Say "$(wc -l <"$work/all.list") changes"
copies=$jobs
for ((copy = 1; copy <= copies; ++copy)); do
  awk -v n=$copies -v k=$copy 'NR % n == k % n' "$work/all.list" >"$work/$copy.list"
  rm -f "$work/$copy.told"
  Copy $copy
  Say "building copy $copy"
  for folder in "${folders[@]}"; do
    # shellcheck disable=SC2046  # one test each
    ninja -C "$work/$copy/build" $(Tests "$folder" | sed 's/[^ ]*/test_&/g') >"$work/$copy/build.log" ||
      { tail -n 40 "$work/$copy/build.log"; exit 1; }
  done
done
Say "making the changes"
seq $copies | xargs -P "$copies" -I{} bash -c 'Judge {}'

cat "$work"/*.told >"$work/all.told"
awk -F'\t' -v reasons=scripts/mutants-survived.txt '
  BEGIN {
    while ((getline line < reasons) > 0) {
      split(line, part, "\t")
      if (line !~ /^(#|$)/) reason[part[1] "\t" part[2] "\t" part[3] "\t" part[4]]
    }
  }
  {
    ++count[$1]
    if ($1 == "survived" && ($2 "\t" $4 "\t" $5 "\t" $6) in reason) ++explained
    else if ($1 == "survived") print $2 ":" $3 ": " $4 "\n    " $5 " -> " $6
  }
  END {
    compiled = count["noticed"] + count["survived"]
    share = compiled ? 100 * count["noticed"] / compiled : 100
    printf "%d of %d changes that compile were noticed, %.1f %%; %d of the others have a reason; %d do not compile\n",
           count["noticed"], compiled, share, explained, count["uncompiled"]
    exit share < 97
  }' "$work/all.told"
