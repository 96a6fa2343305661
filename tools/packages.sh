# Sourced by the scripts in the root of the tree: installs Debian packages that are missing, and says so.
# need PACKAGE...

need() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  echo "Installing: ${missing[*]}"
  local root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Please install these packages as root: ${missing[*]}" >&2; exit 1; }
    root=(sudo)
  fi
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive sh -c '
    apt-get update -qq && apt-get install -y -qq --no-install-recommends "$@" >/dev/null' sh "${missing[@]}" ||
    { echo "These packages could not be installed: ${missing[*]}" >&2; exit 1; }
}

build_packages=(g++ cmake ninja-build qt6-base-dev libpulse-dev libxcb1-dev)
run_packages=(fonts-liberation)
screen_packages=(xvfb openbox xfwm4 xfconf qt6-gtk-platformtheme xdotool x11-utils imagemagick python3 iproute2 dbus dbus-daemon at-spi2-core python3-pyatspi)
test_packages=(libgtest-dev pulseaudio desktop-file-utils appstream mandoc)
package_packages=(build-essential debhelper lintian)
check_packages=(clang-format clang-tidy)
desktop_packages=(mutter kwin-x11 kwin-wayland kwin-style-breeze marco mate-settings-daemon-common metacity icewm weston xwayland qt6-wayland)
