#!/usr/bin/env bash
# Builds the Debian package and the .tar.gz, installs the package into a
# scratch root (its own folder tree, not the system) and checks it from
# there: apt-get would install it, both installed programs answer
# --version with the project's version, the installed quorvane-cli scans the demo game with the int.ini
# and pattern.ini that its first start copies into the per-user data folder
# (a scratch HOME), the manual pages are there, and the desktop entry, the
# AppStream data and the .qvn file type pass their validators.
#
#   bash tools/check-package.sh [BUILD_DIR]
#
# BUILD_DIR is build/package (the package preset) unless given; another
# folder is configured the same way. The packages stay in it.
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build/package}
if [ "$build" = build/package ]; then
    cmake --preset package
else
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
        -DQUORVANE_BUILD_TESTS=OFF
fi
cmake --build "$build"
rm -f "$build"/quorvane_*.deb "$build"/quorvane-*.tar.gz
cpack --config "$build/CPackConfig.cmake" -B "$build"

version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
debs=("$build"/quorvane_"$version"-*.deb)
tarballs=("$build"/quorvane-"$version"-*.tar.gz)
deb=${debs[0]}
tarball=${tarballs[0]}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
root="$scratch/root"
failures=0
check() { # description, command...
    local description=$1
    shift
    if "$@"; then
        echo "ok: $description"
    else
        echo "FAILED: $description" >&2
        failures=$((failures + 1))
    fi
}

echo "Checking $deb"
dpkg-deb -x "$deb" "$root"
depends=$(dpkg-deb -f "$deb" Depends)
check "the package depends on Qt's widgets and platform plugins ($depends)" \
    grep -q 'libqt6widgets6.*qt6-qpa-plugins\|qt6-qpa-plugins.*libqt6widgets6' <<<"$depends"
check "apt-get would install it beside what is installed" \
    bash -c 'apt-get install --simulate --no-install-recommends "$1" > /dev/null' _ "$(realpath "$deb")"
check "the .tar.gz holds quorvane-cli and the shipped files" \
    bash -c 'tar -tzf "$1" | grep -q "/bin/quorvane-cli$" && tar -tzf "$1" | grep -q "/share/quorvane/int.ini$"' \
    _ "$tarball"

# The installed programs, as a user with an empty home folder runs them.
export HOME="$scratch/home"
unset XDG_DATA_HOME XDG_CONFIG_HOME
mkdir -p "$HOME"
user_dir="$HOME/.local/share/quorvane"
check "quorvane-cli --version" test "$("$root/usr/bin/quorvane-cli" --version)" = "quorvane-cli $version"
check "quorvane --version" test "$("$root/usr/bin/quorvane" --version)" = "quorvane $version"
check "the installed quorvane-cli scans the demo game" \
    bash -c '"$1" --game-dir demo/UnrealTournament scan > "$2"' _ "$root/usr/bin/quorvane-cli" "$scratch/scan.txt"
check "the scan found the demo game's models without errors" \
    bash -c 'grep -q "^Classes: [1-9]" "$1" && grep -qx "Errors: 0" "$1"' _ "$scratch/scan.txt"
for file in int.ini pattern.ini; do
    check "the first start put $file into $user_dir" cmp -s "$user_dir/$file" "src/data/$file"
done
check "nothing was written beside the installed executables" \
    test "$(ls "$root/usr/bin")" = "$(printf 'quorvane\nquorvane-cli')"
check "the user guide is installed" test -f "$root/usr/share/quorvane/help/index.html"
for program in quorvane quorvane-cli; do
    check "the manual page of $program" \
        bash -c 'zcat "$1" | grep -q "^\.SH FILES"' _ "$root/usr/share/man/man1/$program.1.gz"
done

check "desktop-file-validate" desktop-file-validate "$root"/usr/share/applications/*.desktop
check "appstreamcli validate" appstreamcli validate --no-net "$root"/usr/share/metainfo/*.metainfo.xml
check "appstreamcli validate-tree (the AppStream data, desktop entry and icon agree)" \
    appstreamcli validate-tree --no-net "$root"
check "the icon in every size the desktop entry needs" \
    test "$(find "$root/usr/share/icons/hicolor" -name '*.png' | wc -l)" -eq 7
cp -R "$root/usr/share/mime" "$scratch/mime"
check "the .qvn type" \
    bash -c 'update-mime-database "$1" > /dev/null 2>&1 && grep -q "x-quorvane-botlist:\*\.qvn" "$1/globs2"' \
    _ "$scratch/mime"

if [ "$failures" -ne 0 ]; then
    echo "$failures package checks failed" >&2
    exit 1
fi
echo "The package $deb passed its checks."
