#!/bin/sh
# Builds VARO optimised and starts the desktop program.
set -eu
cd "$(dirname "$0")/.."
scripts/deps.sh
cmake --preset release
cmake --build --preset release --target varo
exec build/release/app/varo "$@"
