# What tests of scripts share: each rule is a line of what they print, `failures` counts those that do not hold, and the
# folder $work is their own.

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# Check RULE CONDITION...
Check() {
  local rule=$1
  shift
  if "$@"; then
    printf 'ok      %s\n' "$rule"
  else
    printf 'FAILED  %s\n' "$rule"
    failures=$((failures + 1))
  fi
}
