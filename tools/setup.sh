#!/usr/bin/env bash
# Installs what building and testing Quorvane needs, and only what is
# missing: a machine that has everything is left alone (no apt-get update).
# clang and its runtime libraries (libFuzzer, the sanitizers) build the fuzz
# targets; help2man writes the manual pages, dpkg-dev and file let cpack
# work out the Debian package's dependencies, desktop-file-utils and
# appstream check the desktop entry and the AppStream data; GNU time reads
# the benchmarks' memory.
set -euo pipefail

packages=(cmake ninja-build g++ qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins libgl-dev xvfb xauth python3
    clang libclang-rt-14-dev
    help2man dpkg-dev file desktop-file-utils appstream
    time)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "Installing: ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
    sudo=()
else
    sudo=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update
"${sudo[@]}" apt-get install -y --no-install-recommends "${missing[@]}"
