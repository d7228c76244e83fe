#!/bin/sh
# SPDX-FileCopyrightText: The project's authors
# SPDX-License-Identifier: MIT

# Renders every picture at its own size and at twice that size. The results are committed, so that
# a build needs no renderer (Debian: librsvg2-bin); run this after a change of an SVG file.
set -eu
cd "$(dirname "$0")"
mkdir -p png
for svg in *.svg; do
    name=${svg%.svg}
    rsvg-convert "$svg" -o "png/$name.png"
    rsvg-convert --zoom 2 "$svg" -o "png/$name@2x.png"
done

# The application's icon exists in the sizes that desktops ask for, and needs no second scale.
rm "png/workbench@2x.png"
for size in 16 32 48 64 128; do
    rsvg-convert --width $size --height $size workbench.svg -o "png/workbench-$size.png"
done
