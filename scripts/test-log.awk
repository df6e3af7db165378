# The log of ctest --verbose: prints what failed, with all that it said; to the file `counts` go the numbers of tests
# passed, failed and skipped, and after them, parted by tabs, each skipped test's program, name and reason.
# Tests that are no GoogleTest programs count as one each.

function Finish(entry) {
  delete said[entry]
  delete running[entry]
}

{ line = $0 }

# The lines of an entry begin with its number.
match(line, /^[0-9]+: /) {
  entry = substr(line, 1, RLENGTH - 2)
  text = substr(line, RLENGTH + 1)
  if (text ~ /^Test command: /) {
    program[entry] = text
    sub(/^Test command: /, "", program[entry])
    sub(/ .*/, "", program[entry])
    gsub(/"/, "", program[entry])
  } else if (text ~ /^\[ RUN      \]/) {
    suites[entry] = 1
    said[entry] = ""
    running[entry] = substr(text, 14)
  } else if (text ~ /^\[       OK \]/) {
    passed++
    Finish(entry)
  } else if (text ~ /^\[  SKIPPED \] .* ms\)$/) {
    skipped++
    reason = said[entry]
    sub(/^.*: Skipped\n/, "", reason)
    gsub(/\n+$/, "", reason)
    gsub(/\n/, " ", reason)
    skips = skips program[entry] "\t" running[entry] "\t" reason "\n"
    Finish(entry)
  } else if (text ~ /^\[  FAILED  \] .* ms\)$/) {
    failed++
    print running[entry]
    printf "%s", said[entry]
    Finish(entry)
  } else {
    said[entry] = said[entry] text "\n"
  }
  next
}

# "3/9 Test #3: name ....   Passed    0.01 sec"
match(line, /Test +#[0-9]+: /) && line !~ /^ +Start/ {
  entry = substr(line, RSTART, RLENGTH)
  gsub(/[^0-9]/, "", entry)
  if (line ~ / Passed /) {
    if (!(entry in suites)) passed++
  } else if (entry in running || !(entry in suites)) {
    failed++
    print line
    if (entry in running) print running[entry] " did not end"
    printf "%s", said[entry]
  }
}

END {
  printf "%d %d %d\n%s", passed, failed, skipped, skips >counts
}
