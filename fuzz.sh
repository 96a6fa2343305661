#!/usr/bin/env bash
# Fuzzes what comes from outside: ./fuzz.sh SECONDS, for each target. Prints the executions of each and fails on a
# finding, which stays in build-fuzz/findings; what the runs learn stays in build-fuzz/corpus.
set -euo pipefail
seconds=${1:?usage: ./fuzz.sh SECONDS}
cd "$(dirname "$0")"
source tools/packages.sh
need "${build_packages[@]}" clang libclang-rt-dev

# What the toolkit never frees is not the program's.
export ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1
targets=(reader dispatch game_file)
cmake -B build-fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DMORVA_FUZZ=ON -DMORVA_TESTS=OFF >/dev/null
cmake --build build-fuzz --target "${targets[@]/#/fuzz_}"

status=0
mkdir -p build-fuzz/findings
for target in "${targets[@]}"; do
  corpus=build-fuzz/corpus/$target
  log=build-fuzz/$target.log
  mkdir -p "$corpus"
  "build-fuzz/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=10 -print_final_stats=1 \
    -artifact_prefix="build-fuzz/findings/$target-" "$corpus" "fuzz/seeds/$target" >"$log" 2>&1 || { status=1; tail -40 "$log"; }
  echo "$target: $(awk '/^stat::number_of_executed_units/ {print $2}' "$log") executions"
done
exit "$status"
