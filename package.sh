#!/usr/bin/env bash
# Builds the Debian package into dist/ and has lintian judge it. What it is built from is what git knows, as it lies here.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

need "${build_packages[@]}" "${run_packages[@]}" "${test_packages[@]}" "${package_packages[@]}"
version=$(sed -n 's/^project(morva VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
[ "$version" = "$(dpkg-parsechangelog -S Version)" ] || { echo "debian/changelog is not of $version" >&2; exit 1; }
grep -q "^## $version " CHANGELOG.md || { echo "CHANGELOG.md does not tell of $version" >&2; exit 1; }

# Whoever called it by sudo owns what it makes.
[ -z "${SUDO_UID:-}" ] || trap 'chown -R "$SUDO_UID:$SUDO_GID" dist' EXIT
tree=dist/build/morva-$version
rm -rf dist
mkdir -p "$tree"
git -c safe.directory="$PWD" ls-files -z --deduplicate | xargs -0 cp --parents -t "$tree"
echo "Building morva $version, with its tests; dist/build.log tells how far it is."
if ! (cd "$tree" && dpkg-buildpackage -us -uc) >dist/build.log 2>&1; then
  tail -n 40 dist/build.log >&2
  exit 1
fi
find dist/build -maxdepth 1 -type f -exec mv -t dist {} +
rm -rf dist/build
# What newer releases ask beyond the policy of the oldest that the package is made on.
lintian --allow-root --display-info --pedantic --suppress-tags out-of-date-standards-version \
  --fail-on error,warning dist/*.changes
ls -1 "$PWD"/dist/morva_*.deb
