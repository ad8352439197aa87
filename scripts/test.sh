#!/usr/bin/env bash
# Installs what is missing, builds, runs every test; then builds again with AddressSanitizer
# and UndefinedBehaviorSanitizer and runs every test there too. Works from any directory.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=$(nproc 2>/dev/null || echo 2)

"$root/scripts/setup.sh"

run_suite() {
  local dir=$1; shift
  echo "== configure $dir"
  cmake -S "$root" -B "$dir" -DVLCHART_BUILD_TESTS=ON "$@" >"$dir.configure.log" 2>&1 ||
    { cat "$dir.configure.log"; return 1; }
  echo "== build $dir"
  cmake --build "$dir" -j "$jobs"
  echo "== test $dir"
  (cd "$dir" && ctest --output-on-failure -j "$jobs" --timeout 600)
}

# The repository's formatting (.clang-format) and the size of the tests against the code are
# checked first: both are cheap, and a failure says exactly what to fix.
echo "== format"
(cd "$root" && git ls-files -z -- '*.cpp' '*.h' | xargs -0 clang-format --dry-run --Werror) ||
  { echo "format: run clang-format -i on the files above"; exit 1; }
if [ -x "$root/../shared/tools/test-ratio.sh" ]; then
  echo "== test ratio"
  "$root/../shared/tools/test-ratio.sh" "$root"
fi

mkdir -p "$root/out"
run_suite "$root/out/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  run_suite "$root/out/build-sanitize" -DCMAKE_BUILD_TYPE=Debug -DVLCHART_SANITIZE=ON
echo "== all tests passed in both builds"
