# Shared by ./run, ./test and ./package. Everything said goes to standard error, so that a program's output stays its own.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/scripts/packages.sh"

Say() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
}

# Apt ARGUMENTS...: apt-get without questions, as root or through sudo.
Apt() {
  local asRoot=()
  if [ "$(id -u)" -ne 0 ]; then
    asRoot=(sudo)
  fi
  "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -y -o DPkg::Lock::Timeout=120 "$@" >/dev/null
}

# Agreed QUESTION: whether the answer on the terminal is yes; an empty one is.
Agreed() {
  local answer
  read -r -p "${0##*/}: $1 [Y/n] " answer || return
  [[ ${answer,,} =~ ^(y|yes)?$ ]]
}

# InstallMissing PACKAGES...: installs those that are not there. The package lists are refreshed only when apt
# cannot install from the ones it has. With $askFirst set, an ordinary user at a terminal is asked before.
InstallMissing() {
  if ! command -v dpkg-query >/dev/null; then
    Say "no Debian package manager here; counting on these being installed: $*"
    return
  fi
  local installed missing
  installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p') || true
  mapfile -t missing < <(comm -23 <(printf '%s\n' "$@" | sort -u) <(sort -u <<<"$installed"))
  if [ ${#missing[@]} -eq 0 ]; then
    return
  fi
  if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
    Say "sudo is not here; as root, run: apt-get install --no-install-recommends ${missing[*]}"
    return 1
  fi
  if [ -n "${askFirst:-}" ] && [ "$(id -u)" -ne 0 ] && [ -t 0 ] && [ -t 2 ] &&
    ! Agreed "these packages are needed: ${missing[*]}. Install them with apt, as root?"; then
    Say "nothing was installed; when you want to, run: sudo apt-get install --no-install-recommends ${missing[*]}"
    return 1
  fi
  Say "installing with apt: ${missing[*]}"
  if ! Apt install --no-install-recommends "${missing[@]}" 2>/dev/null; then
    Say "refreshing the package lists of apt"
    Apt update
    Apt install --no-install-recommends "${missing[@]}"
  fi
}

# Configure PRESET OPTIONS...: once for the same options; the build itself looks whether one of its files has changed since.
declare -A configured=()
Configure() {
  local preset=$1 told="$*"
  if [ "${configured[$preset]:-}" = "$told" ]; then
    return
  fi
  shift
  Say "configuring build/$preset"
  (cd "$root" && cmake --preset "$preset" --log-level=NOTICE "$@" >&2) && configured[$preset]=$told
}

# Build PRESET TARGETS...
Build() {
  local preset=$1
  shift
  Say "building $* in build/$preset"
  cmake --build "$root/build/$preset" --target "$@" >&2
}
