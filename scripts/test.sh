#!/bin/sh
# Builds VARO with its developer preset and runs every test.
set -eu
cd "$(dirname "$0")/.."
scripts/deps.sh
cmake --preset dev
cmake --build --preset dev
ctest --preset dev
