#!/usr/bin/env bash
# Builds every harness under Fuzz/ with clang, libFuzzer, AddressSanitizer and
# UndefinedBehaviorSanitizer, and runs each for SECONDS (default 60) on a copy of its committed
# corpus with the dictionaries of Fuzz/dict. Fails on the first finding (the input is left in
# out/fuzz/findings/). Usage: scripts/fuzz.sh [SECONDS] [HARNESS...]
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
seconds=${1:-60}
shift || true
build=$root/out/fuzz
"$root/scripts/setup.sh" --fuzz
cxx=$(command -v clang++ || command -v clang++-14 || true)
if [ -z "$cxx" ] || ! echo 'extern "C" int LLVMFuzzerTestOneInput(const char*, unsigned long) { return 0; }' |
    "$cxx" -x c++ -fsanitize=fuzzer -o /dev/null - 2>/dev/null; then
  echo "fuzz: needs clang with libFuzzer (apt-get install clang-14 libclang-rt-14-dev)" >&2
  exit 1
fi
cmake -S "$root" -B "$build" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DVLCHART_BUILD_FUZZERS=ON -DVLCHART_BUILD_TESTS=OFF -DVLCHART_BUILD_TOOLS=OFF >"$build.configure.log" 2>&1 ||
  { cat "$build.configure.log"; exit 1; }
harnesses=("$@")
if [ "${#harnesses[@]}" -eq 0 ]; then
  for src in "$root"/Fuzz/*_fuzz.cpp; do harnesses+=("$(basename "$src" .cpp)"); done
fi
cmake --build "$build" -j "$(nproc 2>/dev/null || echo 2)" --target "${harnesses[@]}"

mkdir -p "$build/findings"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export VLCHART_HOME=$build/no-home/ VLCHART_LOG=$build/fuzz.log
export VLFUZZ_ATTRIBUTES=$root/Data/Dictionary/S57Attributes.xml
for name in "${harnesses[@]}"; do
  work=$build/corpus/$name
  mkdir -p "$work"
  cp -n "$root/Fuzz/corpus/$name"/* "$work"/ 2>/dev/null || true
  dict=()
  case $name in
    *Instruction* | *LookupTable*) dict=(-dict="$root/Fuzz/dict/instructions.dict") ;;
    *) dict=(-dict="$root/Fuzz/dict/xml.dict") ;;
  esac
  echo "== $name for ${seconds}s"
  "$build/Fuzz/$name" "${dict[@]}" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="$build/findings/$name-" -print_final_stats=1 "$work" 2>"$build/$name.log" ||
    { tail -40 "$build/$name.log"; echo "fuzz: $name found a fault"; exit 1; }
  grep -E '^#[0-9]+.*(DONE|pulse)|stat::number_of_executed_units|cov:' "$build/$name.log" | tail -2
done
echo "== no findings"
