#!/usr/bin/env bash
# Builds and runs every test twice: a debug build with warnings as errors,
# then the same under AddressSanitizer and UndefinedBehaviorSanitizer; then
# builds the fuzz targets with clang and gives each a short run from its
# seeds under the same sanitizers; last, builds the Debian package and
# checks it installed into a scratch folder (tools/check-package.sh).
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/setup.sh

for preset in dev asan fuzz; do
    cmake --preset "$preset"
    cmake --build --preset "$preset"
    ctest --preset "$preset"
done

bash tools/check-package.sh
