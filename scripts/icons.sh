#!/usr/bin/env bash
# scripts/icons.sh: draws packaging/icons/*.png from the SVG files beside them, which is needed when these change. Needs
# rsvg-convert (librsvg2-bin). The pictures are kept, so that a build needs no program that draws.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../packaging/icons"

for size in 16 22 24 32 48 64 128 256; do
  drawing=quillmark.svg
  if [ "$size" -le 24 ]; then
    drawing=quillmark-small.svg
  fi
  rsvg-convert --width "$size" --height "$size" "$drawing" --output "$size.png"
done
