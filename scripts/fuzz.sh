#!/usr/bin/env bash
# scripts/fuzz.sh [HOURS [TARGET...]]: fuzzes all targets, or those named, on all cores for so long together (1; 0.1 will
# do), each of them for its part of the time. build/fuzz/corpus holds what they found so far: it starts with the inputs in
# fuzz/corpus, grows, and is minimised in the end. Then the coverage of it is told: edges that it reaches, of those that the
# target was linked with. What failed stands in build/fuzz/failed; the script then ends with 1.
# scripts/fuzz.sh keep TARGET...: takes over into fuzz/corpus, which ./test starts from, those inputs that it takes to reach
# every edge again that build/fuzz/corpus reaches. Inputs of more than 8 KB are left out.
set -uo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$root" || exit

source scripts/tests.sh
# Small inputs need no long memory of what was freed, nor one of who allocated it (what fails tells that where it is run
# alone), and what is allocated is not filled: all of this takes time from each of them.
export ASAN_OPTIONS=malloc_context_size=0:quarantine_size_mb=1:thread_local_quarantine_size_kb=16:max_malloc_fill_size=0:detect_leaks=0
found=build/fuzz/corpus failed=build/fuzz/failed logs=build/fuzz/logs
export found failed logs

# Fuzz TARGET SECONDS
Fuzz() {
  local log
  mkdir -p "$found/$1" "$failed"
  log=$logs/$1-$(date +%Y%m%d-%H%M%S).log
  # Weighing inputs by rare features takes most of the time of a quick target.
  if ! "build/fuzz/bin/fuzz_$1" -max_total_time="$2" -timeout=10 -entropic=0 -reload=0 -print_final_stats=1 \
    -artifact_prefix="$failed/$1-" "$found/$1" "fuzz/corpus/$1" >"$log" 2>&1; then
    tail -n 30 "$log"
  fi
  sed -n "s/^stat::number_of_executed_units: */$1 /p; s/^stat::average_exec_per_sec: */$1 a second: /p" "$log"
}

# Minimise TARGET: what reaches nothing new goes.
Minimise() {
  rm -rf "$found/$1.new"
  mkdir -p "$found/$1.new"
  "build/fuzz/bin/fuzz_$1" -merge=1 "$found/$1.new" "$found/$1" "fuzz/corpus/$1" >"$logs/$1-merge.log" 2>&1 || return
  rm -rf "${found:?}/$1"
  mv "$found/$1.new" "$found/$1"
}

# Coverage TARGET
Coverage() {
  "build/fuzz/bin/fuzz_$1" -runs=0 "$found/$1" "fuzz/corpus/$1" 2>&1 | awk -v target="$1" '
    match($0, /\(([0-9]+) inline 8-bit counters/) { edges = substr($0, RSTART + 1) + 0 }
    / cov: / { for (i = 1; i < NF; ++i) { if ($i == "cov:") reached = $(i + 1); if ($i == "corp:") inputs = $(i + 1) } }
    END { sub(/\/.*/, "", inputs); printf "%-16s %6d of %6d edges, %5d inputs\n", target, reached, edges, inputs }'
}

# Keep TARGET: one file for each edge at most.
Keep() {
  local small=build/fuzz/small/$1
  rm -rf "$small"
  mkdir -p "$small"
  find "$found/$1" -type f -size -9k -exec cp -t "$small" {} +
  "build/fuzz/bin/fuzz_$1" -set_cover_merge=1 -use_counters=0 "fuzz/corpus/$1" "$small" >"$logs/$1-keep.log" 2>&1
}
export -f Fuzz Minimise Coverage Keep

# Each FUNCTION ARGUMENTS...: for all targets, on all cores.
Each() {
  printf '%s\n' "${targets[@]}" | xargs -I{} -P "$jobs" bash -c '"$0" {} "${@}"' "$@"
}

jobs=$(nproc)
task=fuzz
if [ "${1:-}" = keep ]; then
  task=keep
else
  hours=${1:-1}
fi
shift
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  mapfile -t targets < <(ls fuzz/corpus)
fi
InstallMissing "${testPackages[@]}" || exit
Configure fuzz -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld &&
  Build fuzz "${targets[@]/#/fuzz_}" || exit
mkdir -p "$logs"
if [ $task = keep ]; then
  Each Keep
  exit
fi
seconds=$(awk -v hours="$hours" -v jobs="$jobs" -v targets="${#targets[@]}" \
  'BEGIN { seconds = int(hours * 3600 * jobs / targets); print seconds < 1 ? 1 : seconds }')
Say "fuzzing ${#targets[@]} targets for $seconds s each"
Each Fuzz "$seconds"
Each Minimise
Each Coverage
if [ -n "$(ls -A "$failed" 2>/dev/null)" ]; then
  Say "failed:" "$failed"/*
  exit 1
fi
