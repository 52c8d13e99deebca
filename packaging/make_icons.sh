#!/bin/sh
# Paints the program's icon in all sizes from its drawing (needs rsvg-convert of librsvg2-bin).
set -eu
cd "$(dirname "$0")/icons"
for drawing in *.svg; do
    for size in 16 22 24 32 48 64 128 256 512; do
        rsvg-convert --width $size --height $size --output "${drawing%.svg}-$size.png" "$drawing"
    done
done
