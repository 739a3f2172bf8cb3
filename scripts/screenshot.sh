#!/bin/sh
# Regenerates docs/design-*.png: the design screen at 1200 x 900 in each layout case, rendered offscreen with
# the default design by the design screen's screenshot test.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
build="${VARO_BUILD_DIR:-$root/build/screenshot}"
# An existing build directory keeps its own settings.
if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
fi
cmake --build "$build" --target varo_design_qt_tests -j2
QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 VARO_SCREENSHOT_DIR="$root/docs" \
    "$build/tests/varo_design_qt_tests" --gtest_filter='FrmDesignTest.EveryLayoutCaseKeepsTextsAndControlsApart'
echo "Wrote $root/docs/design-*.png"
