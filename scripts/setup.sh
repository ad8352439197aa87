#!/usr/bin/env bash
# Installs what building and testing libVlChartBase needs on Debian, skipping what is there.
# Needs root (or sudo) only when something is missing.
set -euo pipefail

packages=(
  build-essential cmake pkg-config clang-format
  libpugixml-dev libcli11-dev nlohmann-json3-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  locales
)

# scripts/fuzz.sh alone needs clang and its libFuzzer runtime: "setup.sh --fuzz" adds them.
if [ "${1:-}" = "--fuzz" ]; then
  packages+=(clang-14 libclang-rt-14-dev)
fi

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"
  elif command -v sudo >/dev/null 2>&1; then sudo "$@"
  else echo "setup: '$*' needs root; run this script as root" >&2; exit 1
  fi
}

if [ "${#missing[@]}" -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# A German locale lets the tests prove that number parsing ignores LC_NUMERIC.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  echo "setup: generating the de_DE.UTF-8 locale"
  as_root localedef -i de_DE -f UTF-8 de_DE.UTF-8 || echo "setup: could not generate de_DE.UTF-8; the locale test will be skipped" >&2
fi
