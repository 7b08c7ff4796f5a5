#!/usr/bin/env bash
# Builds Quorvane and starts the window program on a copy of the bundled demo
# game, with a program directory of its own (options.ini, int.ini,
# pattern.ini and reports live there), so the first start shows the first-run
# setup and later starts remember what was chosen.
#
#   bash tools/run-demo.sh          the window program
#   bash tools/run-demo.sh --fresh  the same, starting over as a new install
#   bash tools/run-demo.sh --cli    quorvane-cli saves the default bot list and
#                                   applies it to both of the demo game's
#                                   user.ini files (System and System64)
#
# The demo lives in build/demo-run: program/ holds the executable and its
# files (the user guide in help/ among them), home/ stands in for the home
# folder (the path dialogs propose the game at home/UnrealTournament and its
# Configs folder), and cli/ is the command-line demo's own copy.
set -euo pipefail
cd "$(dirname "$0")/.."

mode=gui
for argument in "$@"; do
    case "$argument" in
        --fresh) rm -rf build/demo-run/program build/demo-run/home ;;
        --cli) mode=cli ;;
        *) echo "usage: bash tools/run-demo.sh [--fresh] [--cli]" >&2; exit 1 ;;
    esac
done

bash tools/setup.sh
cmake --preset default
cmake --build --preset default --target quorvane quorvane-cli

built="$PWD/build/default/src"
work="$PWD/build/demo-run"

run_cli_demo() {
    local cli="$built/quorvane-cli" demo="$work/cli"
    rm -rf "$demo"
    mkdir -p "$demo/program" "$demo/configs"
    cp -R demo/UnrealTournament "$demo/UnrealTournament"
    run() {
        echo "+ quorvane-cli $*"
        "$cli" --program-dir "$demo/program" --game-dir "$demo/UnrealTournament" \
            --config-dir "$demo/configs" "$@"
    }
    echo "Demo game copied to $demo/UnrealTournament"
    run save Default.qvn
    run describe Default.qvn
    run list
    # Names are bare file names in the configuration directory; anything
    # else is refused before a file is touched.
    local status=0
    run save ../UnrealTournament/System/User.ini --force || status=$?
    if cmp -s demo/UnrealTournament/System/User.ini "$demo/UnrealTournament/System/User.ini"; then
        echo "(exit status $status; System/User.ini is untouched)"
    else
        echo "(exit status $status; System/User.ini was overwritten!)"
    fi
    echo
    # The game reads System/User.ini, and its 64-bit build System64/User.ini:
    # apply changes both and prints each one it changed.
    run apply Default.qvn --backup
    local ini changed
    for ini in System/User.ini System64/User.ini; do
        echo
        changed=$(diff <(tr -d '\r' < "demo/UnrealTournament/$ini") \
            <(tr -d '\r' < "$demo/UnrealTournament/$ini") | grep -c '^[<>]' || true)
        echo "$ini: $changed lines changed; its bot list section now begins:"
        grep -i -A 4 '^\[Botpack.ChallengeBotInfo\]' "$demo/UnrealTournament/$ini" | sed 's/\r$//; s/^/  /'
    done
    echo
    echo "The configuration directory now holds the list and a backup per user.ini:"
    ls -1 "$demo/configs" | sed 's/^/  /'
}

if [ "$mode" = cli ]; then
    run_cli_demo
    exit 0
fi

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    echo "No display to show the window program on; running the command-line demo instead."
    echo "(Run it again on a desktop to get the window program.)"
    echo
    run_cli_demo
    exit 0
fi

# The program's directory is the executable's: give the demo its own copy.
mkdir -p "$work/program" "$work/home"
cp "$built/quorvane" "$work/program/"
for file in int.ini pattern.ini; do
    [ -e "$work/program/$file" ] || cp "$built/$file" "$work/program/"
done
# The guide that Help opens is the program's own: always the latest.
rm -rf "$work/program/help"
cp -R "$built/help" "$work/program/help"
if [ ! -d "$work/home/UnrealTournament" ]; then
    cp -R demo/UnrealTournament "$work/home/UnrealTournament"
elif [ ! -e "$work/home/UnrealTournament/System64" ]; then
    # A demo game copied before it had the 64-bit game's user.ini.
    cp -R demo/UnrealTournament/System64 "$work/home/UnrealTournament/System64"
fi

if [ -e "$work/program/options.ini" ]; then
    echo "Starting Quorvane (program directory $work/program)."
else
    echo "Starting Quorvane for the first time: the setup dialogs propose"
    echo "  the game:           $work/home/UnrealTournament/"
    echo "  the configurations: $work/home/UnrealTournament/Configs/"
fi
# The X server's key stays where it was while HOME points at the demo.
export XAUTHORITY="${XAUTHORITY:-$HOME/.Xauthority}"
HOME="$work/home" exec "$work/program/quorvane"
