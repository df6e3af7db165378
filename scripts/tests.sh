# Shared by the stages of ./test that run tests: what failed is shown, the rest is counted.

# What the sanitizers need; nothing else reads it.
# One frame behind the operator tells where memory came from: a stack of thirty takes a fifth of a window test. What fails
# can be run alone with more.
# Where a library has its thread-local memory would be guessed: a block that the C library allocated at the start of a page
# is taken for one with a head in front, and the search for leaks ends with a fault of its own. It finds the block without.
export ASAN_OPTIONS=malloc_context_size=2:intercept_tls_get_addr=0
export ASAN_SYMBOLIZER_PATH=/usr/bin/llvm-symbolizer-14
export LSAN_OPTIONS=suppressions=$root/tests/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1

# ConfigureDev: with the compiler that brings libFuzzer and the sanitizers' runtimes that the tests are run with.
ConfigureDev() {
  Configure dev -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld -DQUILLMARK_FUZZ=ON \
    -DQUILLMARK_BENCH=ON
}

# TestFolder: a new folder for what tests write, open to all users as /tmp is, where the system has memory for it: many
# of them sync what they write, and file dialogs watch the folder above.
TestFolder() {
  local memory=/dev/shm folder
  if [ -w $memory ] && [ "$(df --output=avail -k $memory | tail -n 1)" -gt 2000000 ]; then
    folder=$(mktemp -d -p $memory quillmark-test.XXXXXX)
  else
    folder=$(mktemp -d)
  fi
  chmod 1777 "$folder"
  echo "$folder"
}

# RunTests PRESET OPTIONS...: runs every test of build/PRESET, or those that the options of ctest name, and leaves a line
# on them in $note. Tests that the user at hand cannot run are run once more as the one that they need.
RunTests() {
  local preset=$1 logs=build/$1/logs-$stage status=0 folder
  shift
  Say "running the tests of build/$preset"
  rm -rf "$logs"
  mkdir -p "$logs"
  folder=$(TestFolder)
  # One more than there are cores, since some wait for programs that they have started.
  TMPDIR=$folder TEST_TMPDIR=$folder/ ctest --preset "$preset" --parallel $((jobs + 1)) --no-tests=error --verbose "$@" \
    >"$logs/all.log" 2>&1 || status=1
  rm -rf "$folder"
  awk -v counts="$logs/all" -f scripts/test-log.awk "$logs/all.log"
  if [ "$(id -u)" -eq 0 ]; then
    RunAgain "$logs" 'needs an ordinary user' || status=1
  elif sudo -n true 2>/dev/null; then
    RunAgain "$logs" 'needs root' || status=1
  fi
  local passed failed skipped
  read -r passed failed skipped <"$logs/all"
  if [ $status -ne 0 ] && [ "$failed" -eq 0 ]; then
    tail -n 20 "$logs/all.log"
  fi
  note+="$((passed + failed + skipped)) tests"
  if [ "$failed" -gt 0 ]; then
    note+=", $failed failed"
  fi
  if [ "$skipped" -gt 0 ]; then
    note+=", $skipped skipped: $(tail -n +2 "$logs/all" | cut -f3 | sort | uniq -c | sort -rn |
      sed -E 's/^ *([0-9]+) (.*)/\2 (\1)/' | paste -sd';' | sed 's/;/; /g')"
  fi
  return $status
}

# OtherUser PROGRAM: sets otherUser to what runs PROGRAM as another user: as one without rights where this is root,
# else as root. Where only root gets at the program, root without its privileges is bound by permissions as well.
OtherUser() {
  if [ "$(id -u)" -ne 0 ]; then
    otherUser=(sudo -n)
    return
  fi
  otherUser=(setpriv --reuid=65534 --regid=65534 --clear-groups)
  if ! "${otherUser[@]}" test -x "$1" -a -r "$root/tests/data" 2>/dev/null; then
    otherUser=(setpriv --bounding-set=-all --inh-caps=-all)
  fi
}

# RunAgain LOGS REASON: the tests skipped for that reason, as the other user; LOGS/all counts them as what they came to.
RunAgain() {
  local logs=$1 reason=$2 program names home otherUser status=0
  local passed failed skipped againPassed againFailed againSkipped
  home=$(mktemp -d)
  chmod 0777 "$home"
  for program in $(grep -F "$reason" "$logs/all" | cut -f1 | sort -u); do
    names=$(grep -F "$reason" "$logs/all" | awk -F'\t' -v program="$program" '$1 == program { print $2 }' | paste -sd:)
    OtherUser "$program"
    {
      printf '0: Test command: %s\n' "$program"
      if "${otherUser[@]}" env HOME="$home" TMPDIR="$home" TEST_TMPDIR="$home/" XDG_CACHE_HOME="$home" \
        QT_QPA_PLATFORM=offscreen LANGUAGE=en ASAN_OPTIONS="${ASAN_OPTIONS:-}" LSAN_OPTIONS="$LSAN_OPTIONS" \
        UBSAN_OPTIONS="$UBSAN_OPTIONS" "$program" --gtest_filter="$names" 2>&1; then
        printf 'Test #0: Passed \n'
      else
        printf 'Test #0: Failed \n'
      fi
    } | sed '2,$ { /^Test #0/! s/^/0: / }' >"$logs/again.log"
    awk -v counts="$logs/again" -f scripts/test-log.awk "$logs/again.log"
    read -r passed failed skipped <"$logs/all"
    read -r againPassed againFailed againSkipped <"$logs/again"
    {
      printf '%d %d %d\n' $((passed + againPassed)) $((failed + againFailed)) \
        $((skipped - againPassed - againFailed))
      tail -n +2 "$logs/all" | awk -F'\t' -v program="$program" -v reason="$reason" \
        '!($1 == program && index($3, reason))'
      tail -n +2 "$logs/again"
    } >"$logs/sum"
    mv "$logs/sum" "$logs/all"
    if [ "$againFailed" -gt 0 ] || ! grep -q 'Test #0: Passed' "$logs/again.log"; then
      status=1
    fi
  done
  rm -rf "$home"
  return $status
}
