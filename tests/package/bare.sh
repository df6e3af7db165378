#!/usr/bin/env bash
# tests/package/bare.sh SUITE FOLDER: makes a bare system of Debian's SUITE (bookworm, trixie) below FOLDER, makes the
# package of what is committed in one copy of it, with that Debian's compiler and Qt, and tries it in another
# (installed.sh). Needs root, debootstrap and 4 GB; what is there already is used again.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
suite=$1
mkdir -p "$2"
folder=$(realpath "$2")

# In SYSTEM COMMAND...: runs it in that system, as on a machine of its own; what it has started ends with it.
In() {
  unshare --mount --pid --fork --kill-child bash -c '
    for kind in dev sys; do mount --rbind "/$kind" "$1/$kind"; done
    mount -t proc proc "$1/proc"
    exec chroot "$@"' In "$folder/$1" env -i HOME=/root LANG=C.UTF-8 \
    PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin "${@:2}"
}

# Sources SYSTEM: /quillmark is what is committed here.
Sources() {
  mkdir -p "$folder/$1/quillmark"
  git -C "$root" archive HEAD | tar -x -C "$folder/$1/quillmark"
}

if [ ! -e "$folder/base" ]; then
  debootstrap --variant=minbase "$suite" "$folder/new"
  mv "$folder/new" "$folder/base"
fi
if [ ! -e "$folder/build" ]; then
  cp -a "$folder/base" "$folder/build"
fi
Sources build
In build /quillmark/package

rm -rf --one-file-system "$folder/bare"
cp -a "$folder/base" "$folder/bare"
Sources bare
mkdir "$folder/bare/package"
cp "$folder"/build/quillmark/build/package/quillmark_*.deb "$folder/bare/package"
In bare bash -c '/quillmark/tests/package/installed.sh /package/*.deb'
