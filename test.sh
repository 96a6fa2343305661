#!/usr/bin/env bash
# Builds and runs every test once, without a display: ./test.sh, or ./test.sh --sanitize for a build with
# AddressSanitizer and UndefinedBehaviorSanitizer, where one evening stands for all that two copies play.
# ./test.sh --desktops plays the evening alone, under every desktop that tests/e2e/desk.py knows.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

folder=build
options=()
case "${1:-}" in
  "") ;;
  --sanitize)
    folder=build-sanitize
    options=(-DMORVA_SANITIZE=ON)
    ;;
  --desktops)
    need "${build_packages[@]}" "${run_packages[@]}" "${screen_packages[@]}" "${desktop_packages[@]}"
    cmake -B "$folder" -G Ninja >/dev/null
    cmake --build "$folder" --target morva
    MORVA="$folder/morva" exec python3 tests/e2e/evening.py
    ;;
  *)
    echo "usage: ./test.sh [--sanitize | --desktops]" >&2
    exit 2
    ;;
esac

need "${build_packages[@]}" "${run_packages[@]}" "${test_packages[@]}" "${screen_packages[@]}"
cmake -B "$folder" -G Ninja -DMORVA_WERROR=ON -DMORVA_TESTS=ON "${options[@]}" >/dev/null
cmake --build "$folder"

# The toolkit's own one-time allocations are not ours to judge; tests/leaks.supp names the libraries.
export LSAN_OPTIONS="suppressions=$PWD/tests/leaks.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1"
# Nothing is played on this computer's speakers, and no sound server is started for it.
export PULSE_SERVER="unix:/nonexistent"
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d)}"
ctest --test-dir "$folder" --output-on-failure
plays=("evening openbox xfwm4" keys hands leaving)
[ "$folder" = build ] || plays=("evening openbox")
for play in "${plays[@]}"; do
  read -r name desktops <<<"$play"
  echo "== tests/e2e/$name.py $desktops"
  # shellcheck disable=SC2086 # a word for each desktop
  MORVA="$folder/morva" python3 "tests/e2e/$name.py" $desktops
done
if [ "$folder" = build ]; then
  echo "== tests/installed.py"
  python3 tests/installed.py "$folder"
  echo "== tools/demonstrate.py"
  MORVA="$folder/morva" python3 tools/demonstrate.py "$folder/demonstration"
fi
echo "All tests passed."
