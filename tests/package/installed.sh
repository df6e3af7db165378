#!/usr/bin/env bash
# tests/package/installed.sh PACKAGE.deb: installs the package as its users do, tries it, and removes it again. Run it as
# root, in a system that is there for it alone (tests/package/bare.sh makes one): it installs what it looks on with, too.
set -uo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
source "$root/tests/scripts/check.sh"
package=$(realpath "$1")
id=io.github.quillmark.Quillmark
export DEBIAN_FRONTEND=noninteractive

Apt() {
  apt-get -qq -y "$@" >"$work/apt.log" 2>&1 && return
  cat "$work/apt.log"
  return 1
}

# AsUser COMMAND...: as an ordinary user with a home of its own.
AsUser() {
  setpriv --reuid=65534 --regid=65534 --clear-groups env HOME="$work/home" XDG_RUNTIME_DIR="$work/home" "$@"
}

# Installed: the packages that are.
Installed() {
  dpkg-query -W -f '${db:Status-Status} ${Package}\n' | grep -v '^not-installed'
}

# Traces: what has our name or type outside of this folder and that of the sources.
Traces() {
  find / -xdev \( -path "$root" -o -path "$work" -o -path "$(dirname "$package")" -o -path /proc -o -path /sys \) -prune -o \
    -iname '*quillmark*' -print
  grep -rlsE 'quillmark|x-dvd-sup' /etc /usr/share/applications /usr/share/mime /usr/share/icons /var/lib/dpkg
}

# Windows: the program's that are shown, in the order in which they came up.
Windows() {
  xdotool search --onlyvisible --name '^Quillmark$' 2>/dev/null | sort -n
}

# WindowsAre COUNT: waits until so many are, a minute at most.
WindowsAre() {
  local tries
  for ((tries = 0; tries < 600; ++tries)); do
    if [ "$(Windows | wc -l)" -eq "$1" ]; then
      return
    fi
    sleep 0.1
  done
}

Apt update && Apt install --no-install-recommends desktop-file-utils libglib2.0-bin shared-mime-info x11-utils xdotool xvfb || exit
mkdir "$work/home"
cp "$root/samples/demo.sup" "$work/home/a film.sup"
chmod 0755 "$work"
chown -R 65534:65534 "$work/home"
before=$(Installed)
Check "nothing of it is there before" [ -z "$(Traces)" ]

Check "apt installs it" Apt install --no-install-recommends "$package"
Check "the command line is on the path" grep -q '^Found Subtitles: 20$' <(AsUser quillmark-cli report "$work/home/a film.sup")
Check "the file has our type" grep -q 'standard::content-type: application/x-dvd-sup$' \
  <(AsUser gio info -a standard::content-type "$work/home/a film.sup")
Check "which our desktop entry opens" grep -q "$id.desktop" <(AsUser gio mime application/x-dvd-sup)

other=/usr/local/share/mime
mkdir -p $other/packages
cat >$other/packages/other.xml <<'END'
<mime-info xmlns="http://www.freedesktop.org/standards/shared-mime-info">
  <mime-type type="application/x-other"><glob pattern="*.sup"/></mime-type>
</mime-info>
END
update-mime-database $other
printf 'PG\0\0\0\1\0\0\0\0' >"$work/home/other.sup"
Check "and another program's files keep theirs" grep -q 'standard::content-type: application/x-other$' \
  <(AsUser gio info -a standard::content-type "$work/home/other.sup")
rm -r $other

mkfifo "$work/display"
Xvfb -displayfd 3 -screen 0 1366x768x24 3>"$work/display" 2>/dev/null &
server=$!
read -r number <"$work/display"
export DISPLAY=:$number
AsUser gio open "$work/home/a film.sup"
WindowsAre 2
read -r window report <<<"$(Windows | paste -sd ' ')"
Check "opening the file brings up the window and the report" [ -n "$report" ]
process=$(xdotool getwindowpid "$window")
Check "of the program that was installed" [ "$(readlink "/proc/$process/exe")" = /usr/bin/quillmark ]
Check "with the file" [ "$(tail -z -n 1 "/proc/$process/cmdline" | tr -d '\0')" = "$work/home/a film.sup" ]
Check "desktops know whose window it is" grep -qi "\"$(sed -n 's/^StartupWMClass=//p' "/usr/share/applications/$id.desktop")\"" \
  <(xprop -id "$window" WM_CLASS)
Check "the window has the icon" grep -q 'Icon (128 x 128)' <(xprop -id "$window" _NET_WM_ICON)
xdotool windowfocus --sync "$report" key Return
WindowsAre 1
xdotool windowfocus --sync "$window" key ctrl+q
timeout 60 tail --pid="$process" -f /dev/null
Check "its keys close the report and end it" [ ! -e "/proc/$process" ]
Check "the stream was opened" grep -q 'a film.sup' "$work/home/.config/quillmark/quillmark.conf"
kill "$server"
wait "$server"

dpkg -L quillmark | while IFS= read -r path; do if [ ! -d "$path" ]; then echo "$path"; fi; done >"$work/files"
Check "it had files" [ -s "$work/files" ]
Check "apt removes it" Apt purge --autoremove quillmark
Check "with each of its files" [ -z "$(xargs -d '\n' ls -d <"$work/files" 2>/dev/null)" ]
Check "and the packages that came with it" [ "$(Installed)" = "$before" ]
left=$(Traces)
Check "nothing of it is left" [ -z "$left" ]
echo "$left"

exit $((failures > 0))
