#!/usr/bin/env bash
# What ./package made: build/package must have the Debian package and the folder to unpack. Nothing is installed.
set -uo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
source "$root/tests/scripts/check.sh"
id=io.github.quillmark.Quillmark
deb=$(echo "$root"/build/package/quillmark_*.deb)
tar=$(echo "$root"/build/package/quillmark-*.tar.gz)

# Silent COMMAND...: what it says is shown when it fails, or says that something is wrong.
Silent() {
  "$@" >"$work/said" 2>&1 && return
  cat "$work/said"
  return 1
}

Check "lintian finds no error and no warning" Silent lintian --allow-root --fail-on error,warning "$deb"

dpkg-deb --extract "$deb" "$work/deb"
share=$work/deb/usr/share
Check "the desktop entry is valid" Silent desktop-file-validate "$share/applications/$id.desktop"
Check "the metainfo is valid" Silent appstreamcli validate --no-net --pedantic "$share/metainfo/$id.metainfo.xml"
Check "the file type is valid" Silent update-mime-database "$share/mime"
Check "another program's claim on *.sup is stronger" grep -qx '40:application/x-dvd-sup:\*.sup' "$share/mime/globs2"
for size in 16 22 24 32 48 64 128 256; do
  Check "there is an icon of $size pixels" grep -q "PNG image data, $size x $size," \
    <(file -b "$share/icons/hicolor/${size}x$size/apps/$id.png")
done
for file in bin/quillmark bin/quillmark-cli share/man/man1/quillmark.1.gz share/man/man1/quillmark-cli.1.gz \
  share/bash-completion/completions/quillmark-cli share/icons/hicolor/scalable/apps/$id.svg share/doc/quillmark/copyright; do
  Check "the package has $file" [ -s "$work/deb/usr/$file" ]
done
Check "it depends on Qt's widgets" grep -q 'libqt6widgets6' <(dpkg-deb --field "$deb" Depends)
Check "a Wayland session gets its plugin, and Qt's dialogs their translations" \
  [ "$(dpkg-deb --field "$deb" Recommends)" = "qt6-wayland, qt6-translations-l10n" ]

mkdir "$work/some where"
tar -xzf "$tar" -C "$work/some where"
folder=$(echo "$work/some where"/*)
Check "the folder is named for its version and system" [ "$(basename "$folder")" = "$(basename "$tar" .tar.gz)" ]
Check "its command line runs from anywhere" Silent "$folder/bin/quillmark-cli" report "$root/samples/demo.sup"
Check "it speaks the user's language there" \
  grep -q 'Gefundene Untertitel: 20' <(LANGUAGE=de "$folder/bin/quillmark-cli" report "$root/samples/demo.sup")
Check "its window does" Silent "$folder/bin/quillmark" --version
Check "it has its licence" [ -s "$folder/share/doc/quillmark/LICENSE" ]

exit $((failures > 0))
