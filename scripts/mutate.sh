#!/usr/bin/env bash
# scripts/mutate.sh [--sample N] [--seed S] [--again] [FOLDER...]: whether the tests notice small changes of the code. Makes
# one change after another (scripts/mutants.py says which) in copies of the sources, builds them and runs the tests that reach
# what is changed (scripts/mutation.py). What no test notices is told, unless scripts/mutants-survived.txt has it with the
# reason. All changes take days; --sample makes N of each folder, chosen by the seed; --again makes those of the last run that
# nothing noticed. FOLDERs are all but samples where none is named. build/mutate/told grows while it runs. Ends with 1 where
# fewer than 97 % are noticed of the changes that compile, that the optimised code shows and that have no reason.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$root"

sample=0
seed=1
again=false
folders=()
while [ $# -gt 0 ]; do
  case $1 in
    --sample) sample=$2; shift ;;
    --seed) seed=$2; shift ;;
    --again) again=true ;;
    -*) sed -n '2,/^set/{/^#/p}' "$0"; exit 2 ;;
    *) folders+=("$1") ;;
  esac
  shift
done
if [ ${#folders[@]} -eq 0 ]; then
  folders=(base palette sup recipe render imaging files containers app cli)
fi
work=$root/build/mutate
copies=$(nproc)
InstallMissing "${testPackages[@]}"
mkdir -p "$work"
export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

# List FOLDER: the changes to make, file by file.
List() {
  git ls-files -- "$1/*.cpp" "$1/*.h" | grep -v 'Windows[.]cpp$' |
    xargs -d '\n' python3 scripts/mutants.py "$sample" "$seed"
}

if $again; then
  awk -F'\t' -v OFS='\t' '$1 == "survived" { print $2, $3, $8, $9, $6 }' "$work/told" >"$work/list"
else
  for folder in "${folders[@]}"; do
    List "$folder"
  done >"$work/list"
fi
Say "$(wc -l <"$work/list") changes"

for ((copy = 1; copy <= copies; ++copy)); do
  Say "building copy $copy"
  python3 scripts/mutation.py copy "$work" $copy
  cmake -S "$work/$copy" -B "$work/$copy/build/quick" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++-14 \
    -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld -DQUILLMARK_CCACHE=ON -DQUILLMARK_TESTS=ON \
    -DQUILLMARK_REACHED=ON >/dev/null
  ninja -C "$work/$copy/build/quick" >"$work/$copy/build/log" || { tail -n 40 "$work/$copy/build/log"; exit 1; }
done
Say "looking which test reaches what"
python3 scripts/mutation.py reach "$work" 1

Say "making the changes"
rm -f "$work/told"
python3 scripts/mutation.py judge "$work" "$copies" "$work/list" "$work/told"

awk -F'\t' -v reasons=scripts/mutants-survived.txt '
  BEGIN {
    while ((getline line < reasons) > 0) {
      split(line, part, "\t")
      if (line !~ /^(#|$)/) reason[part[1] "\t" part[2] "\t" part[3] "\t" part[4]]
    }
  }
  {
    folder = $2
    sub("/.*", "", folder)
    ++count[folder, $1]
    ++count["all", $1]
    folders[folder]
    if ($1 == "survived" && ($2 "\t" $4 "\t" $5 "\t" $6) in reason) {
      ++explained[folder]
      ++explained["all"]
    } else if ($1 == "survived") {
      print $2 ":" $3 ": " $4 "\n    " $5 " -> " $6
    }
  }
  function Share(noticed, of) { return of ? 100 * noticed / of : 100 }
  function Tell(folder, noticed, compiled) {
    noticed = count[folder, "noticed"]
    compiled = noticed + count[folder, "survived"]
    share = Share(noticed, compiled - explained[folder])
    printf "%-10s %4d of %4d changes were noticed, %5.1f %%; %5.1f %% without the %d that have a reason; %d change no code, %d do not compile\n",
           folder, noticed, compiled, Share(noticed, compiled), share, explained[folder], count[folder, "same"], count[folder, "uncompiled"]
  }
  END {
    for (folder in folders) Tell(folder)
    Tell("all")
    exit share < 97
  }' "$work/told"
