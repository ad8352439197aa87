#!/usr/bin/env bash
# Installs what is missing, builds, and shows vlchart at work on the default environment in
# Data/: the settings, what check finds, a look-up, colours and the palette picture.
# With arguments, runs vlchart with them instead. Works from any directory.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=$(nproc 2>/dev/null || echo 2)

"$root/scripts/setup.sh"
mkdir -p "$root/out"
cmake -S "$root" -B "$root/out/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >"$root/out/build.configure.log" 2>&1 ||
  { cat "$root/out/build.configure.log"; exit 1; }
cmake --build "$root/out/build" --target vlchart -j "$jobs" >"$root/out/build.log" 2>&1 ||
  { tail -50 "$root/out/build.log"; exit 1; }

vlchart=$root/out/build/bin/vlchart
export VLCHART_HOME="$root/Data"
if [ "$#" -ne 0 ]; then exec "$vlchart" "$@"; fi

step() { printf '\n== %s\n$ vlchart %s\n' "$1" "${*:2}"; }
# Exit status 1 only says that something was found; the tour goes on.
show() { "$vlchart" "$@" || [ "$?" -eq 1 ]; }

step "The environment: settings file, styles and their tables, dictionaries" env
show env
step "What the loaders skip in the S-52 data (counts only; drop the tail for every finding)" "check | tail -5"
show check | tail -5
step "A lateral buoy, can-shaped, banded red-green-red: the style it gets" \
  "lookup BOYLAT --geometry point --attr BOYSHP=2 --attr COLOUR=3,4,3"
show lookup BOYLAT --geometry point --attr BOYSHP=2 --attr COLOUR=3,4,3 | grep '^=>'
step "A lateral buoy described by its category instead: port hand, green" \
  "lookup BOYLAT --geometry point --attr CATLAM=1 --attr COLOUR=4"
show lookup BOYLAT --geometry point --attr CATLAM=1 --attr COLOUR=4 | grep '^=>'
step "The styles of lights on a paper chart" "lookup LIGHTS --geometry point --symbols paperchart"
show lookup LIGHTS --geometry point --symbols paperchart
step "A colour token, chart red, by day and by night" "color CHRED; colors --mode Night | grep CHRED"
show color CHRED
show colors --mode Night | grep CHRED
mkdir -p "$root/out"
step "Every colour of style S52 in one picture" "colors --svg out/palette.svg"
show colors --svg "$root/out/palette.svg"
echo "open $root/out/palette.svg in a browser to see the palette"
