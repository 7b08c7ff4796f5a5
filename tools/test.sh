#!/usr/bin/env bash
# Builds and runs every test twice: a debug build with warnings as errors,
# then the same under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/setup.sh

for preset in dev asan; do
    cmake --preset "$preset"
    cmake --build --preset "$preset"
    ctest --preset "$preset"
done
