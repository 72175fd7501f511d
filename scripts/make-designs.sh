#!/usr/bin/env bash
# Draws the design pictures of the seating notes anew and writes them as GIFs into design/.
# The GIFs are kept in the repository, so building Velmora never needs this script; run it
# from the repository's root after changing tools/draw_designs.cpp. Needs a configured
# build/ folder and ImageMagick's convert (apt-get install imagemagick).
set -euo pipefail

cmake --build build --target velmora-draw-designs
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
QT_QPA_PLATFORM=offscreen build/velmora-draw-designs "$work"
for png in "$work"/*.png; do
  name=$(basename "$png" .png)
  # A palette of the picture's 254 main colours and pure white, so the paper stays white,
  # with error diffusion to keep the soft shades free of bands.
  convert "$png" -background white -flatten -colors 254 -unique-colors "$work/palette.png"
  convert "$work/palette.png" xc:white +append "$work/palette.png"
  convert "$png" -background white -flatten -dither FloydSteinberg -remap "$work/palette.png" "design/$name.gif"
done
ls -l design/
