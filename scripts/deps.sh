#!/bin/sh
# Installs what VARO needs to build, test and run on Debian 12 (as root, or through sudo).
# usage: scripts/deps.sh [--ci]   (--ci adds the formatting check, the GUI check's display and
#                                  the package's tools)
set -eu
SUDO=""
if [ "$(id -u)" != "0" ]; then SUDO="sudo"; fi
# The compiler, CMake, Ninja, Qt 6, GoogleTest, Google Benchmark, nlohmann-json (design files, JSON reports), CLI11 (options)
# and the fonts the screens use;
# ngspice, scikit-rf and pdftotext check the written files independently of VARO.
PACKAGES="g++ cmake ninja-build qt6-base-dev qt6-svg-dev libgl-dev libgtest-dev libgmock-dev libbenchmark-dev nlohmann-json3-dev libcli11-dev dpkg-dev fonts-liberation2 fonts-dejavu-core locales ngspice python3-scikit-rf poppler-utils"
if [ "${1:-}" = "--ci" ]; then
  PACKAGES="$PACKAGES clang-format git xvfb xauth dbus-x11 at-spi2-core python3-pyatspi desktop-file-utils appstream"
fi
missing=""
for p in $PACKAGES; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing="$missing $p"
done
if [ -n "$missing" ]; then
  $SUDO apt-get update
  $SUDO env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing
fi
# The tests check that a locale with a decimal comma changes no written number.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  $SUDO localedef -i de_DE -f UTF-8 de_DE.UTF-8 || echo "deps: could not add the de_DE.UTF-8 locale; its tests will be skipped"
fi
