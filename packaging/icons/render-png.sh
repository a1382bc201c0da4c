#!/usr/bin/env bash
# Renders the committed PNG sizes of the application icon from its SVG (Debian: librsvg2-bin).
# The PNGs are committed rather than rendered at build time: the build then needs no SVG
# renderer, and each size is looked at once, by eye, when the drawing changes.
set -euo pipefail
cd "$(dirname "$0")"
id=io.github.quillmere.Quillmere
for size in 16 24 32 48 64 128 256; do
  mkdir -p "png/${size}x${size}"
  rsvg-convert -w "$size" -h "$size" "$id.svg" -o "png/${size}x${size}/$id.png"
done
