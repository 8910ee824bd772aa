#!/bin/sh
# Installs what is missing, builds with the sanitizers and runs every test.
set -eu
cd "$(dirname "$0")"
scripts/build-packages
scripts/packages libgtest-dev libgmock-dev googletest binutils make srecord
cmake --preset sanitize
cmake --build --preset sanitize
ctest --preset sanitize "$@"
