#!/usr/bin/env bash
# scripts/coverage.sh: what the tests reach of the layers below the window and the command line. Builds them with Clang's
# source-based coverage in build/coverage, runs the tests of build/coverage and tells, for each folder, how many lines and
# branches ran; then each line that did not, unless scripts/coverage-unreached.txt has it with the reason. Ends with 1 where
# a line is left that has no reason, a reason is left that no line needs, or fewer than 97 % of the branches ran.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$root"

layers='base palette sup render imaging files containers'
reasons=scripts/coverage-unreached.txt
build=build/coverage
jobs=$(nproc)

InstallMissing "${testPackages[@]}"
Say "building $build"
cmake --preset dev -B $build -DCMAKE_CXX_COMPILER=clang++-14 -DQUILLMARK_SANITIZE=OFF -DQUILLMARK_GUI=OFF \
  -DCMAKE_CXX_FLAGS_DEBUG='-O0 -g1 -fprofile-instr-generate -fcoverage-mapping' >/dev/null
ninja -C $build >$build/build.log || { tail -n 40 $build/build.log; exit 1; }

Say "running the tests of $build"
rm -rf $build/profiles
mkdir -p $build/profiles
LLVM_PROFILE_FILE=$root/$build/profiles/%m-%p.profraw QT_QPA_PLATFORM=offscreen \
  ctest --test-dir $build --parallel "$jobs" --output-on-failure >$build/tests.log ||
  # A program that may write no more cannot write down what of it ran, and says so where a test expects nothing.
  if grep '\[  FAILED  \].*ms)$' $build/tests.log | grep -v FullDisk; then
    exit 1
  fi
llvm-profdata-14 merge -sparse $build/profiles/*.profraw -o $build/all.profdata

# The programs that the tests are, and the command line, which they start.
mapfile -t programs < <(find $build/bin $build/tests -type f -executable \( -name 'test_*' -o -name quillmark-cli \))
objects=()
for program in "${programs[@]:1}"; do
  objects+=(-object "$program")
done
# shellcheck disable=SC2086  # one folder each
llvm-cov-14 export -format=lcov -instr-profile=$build/all.profdata "${programs[0]}" "${objects[@]}" $layers >$build/all.lcov

# In the list a line is named by its file and its text, so that it stays the same when lines before it come and go.
awk -v root="$root/" -v reasons=$reasons '
  BEGIN {
    while ((getline line < reasons) > 0) {
      if (line ~ /^(#|$)/) continue
      split(line, part, "\t")
      reason[part[1] "\t" part[2]] = part[3]
    }
  }
  /^SF:/ {
    file = substr($0, 4)
    sub("^" root, "", file)
    folder = file
    sub("/.*", "", folder)
    delete text
    count = 0
    while ((getline line < file) > 0) {
      gsub(/^[ \t]+|[ \t]+$/, "", line)
      text[++count] = line
    }
    close(file)
  }
  /^DA:/ {
    split(substr($0, 4), part, ",")
    ++lines[folder]
    if (part[2] > 0) {
      ++reached[folder]
    } else if ((key = file "\t" text[part[1]]) in reason) {
      used[key]
      ++excused[folder]
    } else {
      missed[++misses] = file ":" part[1] ": " text[part[1]]
    }
  }
  /^BRF:/ { branches[folder] += substr($0, 5) }
  /^BRH:/ { taken[folder] += substr($0, 5) }
  function Tell(name, lines, reached, excused, branches, taken) {
    printf "%-11s %7.2f %% of %5d lines (%d more have a reason), %6.2f %% of %5d branches\n", name, 100 * reached / lines,
           lines, excused, branches ? 100 * taken / branches : 100, branches
  }
  END {
    for (i = 1; i <= misses; ++i) print missed[i]
    for (key in reason) if (!(key in used)) { ++idle; print "a reason that no line needs: " key }
    for (folder in lines) {
      Tell(folder, lines[folder], reached[folder], excused[folder], branches[folder], taken[folder])
      allLines += lines[folder]; allReached += reached[folder]; allExcused += excused[folder]
      allBranches += branches[folder]; allTaken += taken[folder]
    }
    Tell("all", allLines, allReached, allExcused, allBranches, allTaken)
    exit misses > 0 || idle > 0 || allTaken < 0.97 * allBranches
  }' $build/all.lcov
