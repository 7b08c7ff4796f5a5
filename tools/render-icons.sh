#!/usr/bin/env bash
# Renders the application icon, packaging/icons/quorvane.svg, into the PNG
# sizes of the hicolor theme that the install rules ship
# (packaging/icons/png/quorvane-<size>.png). Run it after changing the SVG
# and commit the PNGs; it needs rsvg-convert (Debian: librsvg2-bin).
set -euo pipefail
cd "$(dirname "$0")/.."

mkdir -p packaging/icons/png
for size in 16 24 32 48 64 128 256; do
    rsvg-convert -w "$size" -h "$size" packaging/icons/quorvane.svg \
        -o "packaging/icons/png/quorvane-$size.png"
done
