#!/usr/bin/env bash
# Copies the window pictures of the user guide from a build's screenshots
# into src/data/help/images/, and those of the README into docs/. The
# screenshot tests save one PNG per window,
# named after its data tag, into build/<preset>/screenshots/.
#
#   bash tools/update-help-pictures.sh [BUILD_DIR | SCREENSHOT_DIR]
#
# The default is build/dev. Run the screenshot tests there first, e.g.
#   ctest --test-dir build/dev -R test_screenshots_
#
# Every picture the guide shows must come from the mapping below; the script
# says which are missing, refuses pictures too large to commit, and ends with
# status 1 when anything was missing or refused (the others are copied).
set -euo pipefail
cd "$(dirname "$0")/.."

# Screenshot data tag -> picture name in the guide, or a path from the
# project's folder (the README's pictures in docs/).
mapping=(
    frmSplash:frmSplash.png
    dlgFirstRun:dlgFirstRun.png
    frmBots:frmBots.png
    dlgSaveAs:dlgSaveAs.png
    dlgOpen:dlgOpen.png
    dlgApply:dlgApply.png
    dlgImport:dlgImport.png
    dlgRestore:dlgRestore.png
    grdBots:grdBots.png
    frmBadFiles:frmBadFiles.png
    frmPattern:frmPattern.png
    dlgNewBoss:dlgNewBoss.png
    dlgOptionsPaths:dlgOptionsPaths.png
    dlgOptionsBoss:dlgOptionsBoss.png
    dlgOptionsOther:dlgOptionsOther.png
    dlgLaunchUT:dlgLaunchUT.png
    frmAbout:frmAbout.png
    frmBotsEditing:docs/main-window.png
    frmSplash:docs/splash.png
    dlgApply:docs/apply.png
    frmBadFiles:docs/unmatched-skins.png
    dlgOptionsPaths:docs/options.png
)
max_bytes=$((200 * 1024))
guide=src/data/help/index.html
images=src/data/help/images

source_dir=${1:-build/dev}
if [ "$#" -gt 1 ] || [ "$source_dir" = -h ] || [ "$source_dir" = --help ]; then
    echo "usage: bash tools/update-help-pictures.sh [BUILD_DIR | SCREENSHOT_DIR]" >&2
    exit 1
fi
if [ -d "$source_dir/screenshots" ]; then
    source_dir="$source_dir/screenshots"
fi
if [ ! -d "$source_dir" ]; then
    echo "No screenshots in $source_dir: run the screenshot tests of that build first." >&2
    exit 1
fi

mkdir -p "$images" docs
status=0
declare -A mapped=()
for entry in "${mapping[@]}"; do
    tag=${entry%%:*}
    picture=${entry#*:}
    mapped[$picture]=1
    shot="$source_dir/$tag.png"
    if [ ! -f "$shot" ]; then
        echo "missing:  $tag.png (for $picture)"
        status=1
        continue
    fi
    if [ "$(head -c 8 "$shot" | od -An -tx1 | tr -d ' \n')" != 89504e470d0a1a0a ]; then
        echo "refused:  $shot is not a PNG file"
        status=1
        continue
    fi
    size=$(wc -c < "$shot")
    if [ "$size" -gt "$max_bytes" ]; then
        echo "refused:  $shot is $((size / 1024)) KB, more than $((max_bytes / 1024)) KB"
        status=1
        continue
    fi
    target="$images/$picture"
    case "$picture" in */*) target=$picture ;; esac
    cp "$shot" "$target"
    echo "copied:   $tag.png -> $target ($((size / 1024)) KB)"
done

# A picture the guide shows but no screenshot provides would stay stale.
while read -r picture; do
    if [ -z "${mapped[$picture]:-}" ]; then
        echo "unmapped: $guide shows images/$picture, which no screenshot provides"
        status=1
    fi
done < <(grep -o 'images/[A-Za-z0-9_.-]*\.png' "$guide" | sed 's|^images/||' | sort -u)
while read -r picture; do
    if [ -z "${mapped[$picture]:-}" ]; then
        echo "unmapped: README.md shows $picture, which no screenshot provides"
        status=1
    fi
done < <(grep -o 'docs/[A-Za-z0-9_.-]*\.png' README.md | sort -u)

exit "$status"
