#!/usr/bin/env bash
# Builds Morva where needed and starts it. Where there is no display it plays a short game between two copies on a
# virtual one and says where the pictures of it are.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

need "${build_packages[@]}" "${run_packages[@]}"
[ -f build/build.ninja ] || cmake -B build -G Ninja -DMORVA_TESTS=OFF >/dev/null
cmake --build build --target morva

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec build/morva
fi
echo "There is no display here: two copies play a short game on a virtual one."
need "${screen_packages[@]}"
exec python3 tools/demonstrate.py "${1:-demonstration}"
