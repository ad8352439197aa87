#!/usr/bin/env bash
# Regenerates the default presentation environment with vlchart's importers: the look-up and
# colour tables of the styles "S52" (ENC) and "Paper" (paper chart) from the S-52 presentation
# library's exchange file, and the S-57 dictionaries from GDAL's catalogue tables.
#
#   scripts/make-default-data.sh [DIR]     (default: Data/ of this checkout)
#
# PRESLIB names the exchange file (default ../shared/data/preslib/S52RAZDS.RLE beside the
# checkout), GDAL_DATA_DIR the catalogue tables (default /usr/share/gdal, package gdal-data),
# VLCHART a built tool (default: build it as scripts/run.sh does).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
target=${1:-$root/Data}
preslib=${PRESLIB:-$root/../shared/data/preslib/S52RAZDS.RLE}
gdal=${GDAL_DATA_DIR:-/usr/share/gdal}
vlchart=${VLCHART:-}

if [ -z "$vlchart" ]; then
  mkdir -p "$root/out"
  cmake -S "$root" -B "$root/out/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >"$root/out/build.configure.log" 2>&1 ||
    { cat "$root/out/build.configure.log"; exit 1; }
  cmake --build "$root/out/build" --target vlchart -j "$(nproc 2>/dev/null || echo 2)" >"$root/out/build.log" 2>&1 ||
    { tail -50 "$root/out/build.log"; exit 1; }
  vlchart=$root/out/build/bin/vlchart
fi

[ -f "$preslib" ] || { echo "no presentation library exchange file at $preslib (set PRESLIB)" >&2; exit 1; }
preslib=$(realpath "$preslib")
mkdir -p "$target"
export VLCHART_HOME="$target"
"$vlchart" --home "$target" import-preslib "$preslib" --style S52 --paper Paper --out "$target"
"$vlchart" --home "$target" import-s57 --from "$gdal" --out "$target/Dictionary"
