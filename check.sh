#!/usr/bin/env bash
# Checks the form of the code: every file by clang-format, and by clang-tidy those of the program that changed since a
# commit, by default the last but one: ./check.sh [COMMIT], or ./check.sh --all for every one.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh
need "${build_packages[@]}" "${test_packages[@]}" "${check_packages[@]}"

echo "== clang-format"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror

echo "== clang-tidy"
base=$(git rev-parse --verify -q "${1:-HEAD~1}^{commit}" || true) # none: all files
if [ -n "$base" ]; then changed=$(git diff --name-only --diff-filter=d "$base" -- src); else changed=$(git ls-files src); fi
# A header is seen through the file of its name, or through one that includes it.
files=$(for file in $changed; do
  case $file in
    *.cpp) echo "$file" ;;
    *.h) { ls "${file%.h}.cpp" 2>/dev/null || git grep -l "\"${file#src/}\"" -- 'src/*.cpp'; } | head -1 ;;
  esac
done | sort -u)
cmake -B build -G Ninja >/dev/null # says how each file is compiled
[ -z "$files" ] || xargs -P "$(nproc)" -n 2 clang-tidy -p build --quiet --warnings-as-errors='*' 2>/dev/null <<<"$files"
echo "Checked $(wc -w <<<"$files") files."
