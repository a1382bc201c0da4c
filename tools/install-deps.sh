#!/usr/bin/env bash
# Installs the Debian 12 packages Quillmere needs to build, run and test.
# Safe to run again: apt-get skips what is already there.
set -euo pipefail

packages=(
  build-essential cmake ninja-build ccache pkg-config clang-format
  qt6-base-dev qt6-base-dev-tools qt6-declarative-dev qt6-declarative-dev-tools
  qt6-charts-dev qt6-tools-dev libgl-dev libvulkan-dev
  qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-layouts
  qml6-module-qtquick-window qml6-module-qtquick-templates qml6-module-qtquick-dialogs
  qml6-module-qtqml-workerscript qml6-module-qtcharts qml6-module-qtquick-shapes
  qt6-qpa-plugins libqt6svg6
  qt6-translations-l10n # Qt's own dialogs in Chinese
  libsdl2-dev libsndfile1-dev
  libpulse-dev # the ambient output speaks to the sound server directly
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  pulseaudio pulseaudio-utils dbus dbus-x11 xvfb xauth
  xdotool # bench/ui/measure.sh clicks and unmaps the real window
  dbus-daemon # the music tests start a private session bus of their own
  fonts-noto-cjk fonts-material-design-icons-iconfont
  desktop-file-utils appstream # the packaging tests validate the desktop entry and metainfo
  openbox libxcb1-dev # the floating timer's test runs under a real window manager
  at-spi2-core python3-pyatspi # the accessibility test reads the app as a screen reader does
  qt6-declarative-private-dev # Qt Quick's accessible interfaces, corrected for screen readers
  # The compositor test runs the app under KWin, natively on Wayland and through XWayland;
  # the private headers let the window tests change a window's exposure as a compositor does.
  kwin-wayland xwayland qt6-wayland qt6-base-private-dev
  libwayland-dev wayland-protocols # the compositor test asks KWin for a token, as a launcher does
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done

if [ ${#missing[@]} -gt 0 ]; then
  sudo_cmd=()
  [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
  "${sudo_cmd[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
