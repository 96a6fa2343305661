#!/usr/bin/env bash
# Measures Morva beside windows with nothing in them, and its routines one by one.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

need "${build_packages[@]}" "${run_packages[@]}" "${screen_packages[@]}" libbenchmark-dev
cmake -B build-bench -G Ninja -DMORVA_TESTS=OFF -DMORVA_BENCH=ON >/dev/null
cmake --build build-bench
# As users have it: of a file that the linker has just written, more or less of it is in memory, as it happens.
cmake --install build-bench --prefix build-bench/installed >/dev/null
python3 bench/measure.py build-bench
QT_QPA_PLATFORM=offscreen build-bench/bench/routines
