#!/bin/sh
# Installs what is missing, builds the release programs and imports the manifest of a build directory:
#   ./demo.sh [BUILD_DIR] [TARGET...]
# Without BUILD_DIR it is that of the example firmware, whose manifest CMake writes on the spot. The TARGETs are the
# words of manifest_import: targets whose projects stay visible.
set -eu
called_from=$PWD
cd "$(dirname "$0")"
scripts/build-packages
cmake --preset release >/dev/null
cmake --build --preset release
programs=$PWD/build/release/bin
if [ $# -gt 0 ]; then
    build=$(cd "$called_from" && cd "$1" && pwd)
    shift
else
    build=$PWD/build/demo
    scripts/write-manifest examples/firmware "$build"
    set -- all
fi
cd "$build"
"$programs/atelis" manifest build.ninja
"$programs/manifest_import" "$@"
echo "imported into $build/build.qxProject:"
cat build.qxProject
