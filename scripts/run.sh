#!/usr/bin/env bash
# Installs what is missing, builds, and runs vlchart on the default environment in Data/.
# Extra arguments go to vlchart (default: env). Works from any directory.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=$(nproc 2>/dev/null || echo 2)

"$root/scripts/setup.sh"
mkdir -p "$root/out"
cmake -S "$root" -B "$root/out/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >"$root/out/build.configure.log" 2>&1 ||
  { cat "$root/out/build.configure.log"; exit 1; }
cmake --build "$root/out/build" --target vlchart -j "$jobs" >"$root/out/build.log" 2>&1 ||
  { tail -50 "$root/out/build.log"; exit 1; }

if [ "$#" -eq 0 ]; then set -- env; fi
VLCHART_HOME="$root/Data" exec "$root/out/build/bin/vlchart" "$@"
