#!/usr/bin/env bash
# scripts/coverage.sh [--branches]: what the tests reach of the layers below the window and the command line. Builds them with
# Clang's source-based coverage in build/coverage, runs the tests of build/coverage and tells, for each folder, how many lines
# and branches ran; then each line that did not, unless scripts/coverage-unreached.txt has it with the reason, and with
# --branches each branch that was never taken. Ends with 1 where a line is left that has no reason, a reason is left that no
# line needs, or fewer than 97 % of the branches ran.
#
# A line or a branch is a place in the source: what a template or an inline function does is added up over all that was made
# of it, since each of them alone has only the types and constants of its own. A condition has two branches, true and false;
# one that the compiler knows the answer of (`if constexpr`) has none.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
source "$root/scripts/tests.sh"
cd "$root"

branches=0
case ${1-} in
  '') ;;
  --branches) branches=1 ;;
  *) sed -n '2,/^set/{/^#/p}' "$0"; exit 2 ;;
esac

layers='base palette sup recipe render imaging files containers'
reasons=scripts/coverage-unreached.txt
build=build/coverage
jobs=$(nproc)

InstallMissing "${testPackages[@]}"
# Without ccache, which may give headers another path in each source that includes them, so that llvm-cov takes them for several
# files. Counts of a function that its source keeps to itself are kept under the name of what is compiled, which is the same for the
# sources of every folder that are compiled as one; so it is given the object's.
Say "building $build"
cmake --preset dev -B $build -DCMAKE_CXX_COMPILER=clang++-14 -DQUILLMARK_SANITIZE=OFF -DQUILLMARK_GUI=OFF \
  -DQUILLMARK_CCACHE=OFF \
  -DCMAKE_CXX_FLAGS_DEBUG='-O0 -g1 -fprofile-instr-generate -fcoverage-mapping -mllvm -runtime-counter-relocation' \
  -DCMAKE_CXX_COMPILE_OBJECT='<CMAKE_CXX_COMPILER> <DEFINES> <INCLUDES> <FLAGS> -Xclang -main-file-name -Xclang <OBJECT> -o <OBJECT> -c <SOURCE>' \
  >/dev/null
ninja -C $build >$build/build.log || { tail -n 40 $build/build.log; exit 1; }

Say "running the tests of $build"
rm -rf $build/profiles $build/again
mkdir -p $build/profiles $build/again
# %c: what ran is written down as it runs, so that what a killed process did counts.
chmod 1777 $build/profiles
export LLVM_PROFILE_FILE=$root/$build/profiles/%c%m-%p.profraw QT_QPA_PLATFORM=offscreen
ctest --test-dir $build --parallel "$jobs" --verbose >$build/tests.log ||
  # A program that may write nothing from its start on has no place for that, and says so where a test expects nothing.
  if grep '\[  FAILED  \].*ms)$' $build/tests.log | grep -v FullDisk; then
    exit 1
  fi
if [ "$(id -u)" -eq 0 ]; then
  awk -v counts=$build/again/all -f scripts/test-log.awk $build/tests.log >/dev/null
  RunAgain $build/again 'needs an ordinary user'
fi
llvm-profdata-14 merge $build/profiles/*.profraw -o $build/all.profdata

# The programs that the tests are, and the command line, which they start.
mapfile -t programs < <(find $build/bin $build/tests -type f -executable \( -name 'test_*' -o -name quillmark-cli \))
objects=()
for program in "${programs[@]:1}"; do
  objects+=(-object "$program")
done
# shellcheck disable=SC2086  # one folder each
llvm-cov-14 show -show-branches=count -show-instantiations=false -instr-profile=$build/all.profdata "${programs[0]}" \
  "${objects[@]}" $layers >$build/all.txt 2> >(grep -v "mismatched data" >&2)

# A file's name and a colon; then for each line of it `number|count|text`, with no count where nothing can run, and after it
# each of its branches, once for all that was made of the place: `|  Branch (line:column): [True: count, False: count]`.
# In the list a line is named by its file and its text, so that it stays the same when lines before it come and go.
awk -v root="$root/" -v reasons=$reasons -v tellBranches=$branches '
  function EndFile(  place, side, line) {
    for (i = 1; i <= places; ++i) {
      place = order[i]
      for (side = 0; side < 2; ++side) {
        ++branches[folder]
        if (answers[place, side]) {
          ++taken[folder]
        } else if (tellBranches) {
          line = place
          sub(/:.*/, "", line)
          print file ":" place ": never " (side ? "false" : "true") ": " text[line]
        }
      }
    }
    places = 0
    delete text
    delete answers
    delete known
  }
  BEGIN {
    while ((getline line < reasons) > 0) {
      if (line ~ /^(#|$)/) continue
      split(line, part, "\t")
      reason[part[1] "\t" part[2]] = part[3]
    }
  }
  /^\/.*:$/ {
    EndFile()
    file = substr($0, 1, length($0) - 1)
    sub("^" root, "", file)
    folder = file
    sub("/.*", "", folder)
    next
  }
  /^ *[0-9]+\|/ {
    split($0, part, "|")
    number = part[1] + 0
    count = part[2]
    gsub(/ /, "", count)
    line = substr($0, length(part[1]) + length(part[2]) + 3)
    gsub(/^[ \t]+|[ \t]+$/, "", line)
    text[number] = line
    if (count == "") next
    ++lines[folder]
    # A brace alone has the reason of the line that it ends, or is named with it.
    isExcused = isExcused && line == "}"
    key = file "\t" (line == "}" ? text[number - 1] " }" : line)
    if (count != "0") {
      ++reached[folder]
      isExcused = 0
    } else if (isExcused || key in reason) {
      used[key]
      ++excused[folder]
      isExcused = 1
    } else {
      missed[++misses] = file ":" number ": " line
    }
    next
  }
  /^ *(\|  )+Branch \([0-9]+:[0-9]+\): \[True: / {
    split($0, part, /[()]|: |, |\]/)
    place = part[2]
    if (!(place in known)) {
      known[place]
      order[++places] = place
    }
    # after the place: "", "[True", its count, "False", its count
    if (part[5] != "0") answers[place, 0] = 1
    if (part[7] != "0") answers[place, 1] = 1
  }
  function Tell(name, lines, reached, excused, branches, taken) {
    printf "%-11s %7.2f %% of %5d lines (%d more have a reason), %6.2f %% of %5d branches\n", name, 100 * reached / lines,
           lines, excused, branches ? 100 * taken / branches : 100, branches
  }
  END {
    EndFile()
    for (i = 1; i <= misses; ++i) print missed[i]
    for (key in reason) if (!(key in used)) { ++idle; print "a reason that no line needs: " key }
    for (folder in lines) {
      Tell(folder, lines[folder], reached[folder], excused[folder], branches[folder], taken[folder])
      allLines += lines[folder]; allReached += reached[folder]; allExcused += excused[folder]
      allBranches += branches[folder]; allTaken += taken[folder]
    }
    Tell("all", allLines, allReached, allExcused, allBranches, allTaken)
    exit misses > 0 || idle > 0 || allTaken < 0.97 * allBranches
  }' $build/all.txt
