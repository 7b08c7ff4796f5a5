#!/bin/sh
# Times the window program's start-up to the main window (bench_startup:
# splash, scan, report closed, editor filled) on a generated game of 5,000
# .int files against `quorvane-cli scan --json` on the same folder, and
# says whether start-up takes at most 1.5 times the bare scan.
#
#   bench/startup.sh BUILD_DIR [WORK_DIR]
#
# BUILD_DIR is a build configured with -DQUORVANE_BENCH=ON in which
# quorvane-cli and bench_startup have been built. Each measurement is the
# best of RUNS runs (default 5) with warm caches; the window program runs
# offscreen unless QT_QPA_PLATFORM says otherwise.
set -eu

build=${1:?usage: bench/startup.sh BUILD_DIR [WORK_DIR]}
work=${2:-}
. "$(dirname "$0")/common.sh"
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}

folder=$work/game5000
[ -d "$folder/game/System" ] || python3 "$bench_dir/gen_game.py" "$folder" 5000
mkdir -p "$folder/configs"
# A game folder has its user.ini.
[ -f "$folder/game/System/User.ini" ] \
    || printf '[URL]\r\nProtocol=unreal\r\n\r\n[Botpack.ChallengeBotInfo]\r\nBotNames[0]=Archon\r\n\r\n' \
        > "$folder/game/System/User.ini"
# The splash closes itself; not a first run.
printf '[SplashScreen]\r\n1\r\n\r\n[UTPath]\r\n0\r\n%s/\r\n%s/\r\n' \
    "$folder/configs" "$folder/game" > "$folder/program/options.ini"
cat "$folder"/game/System/*.int > /dev/null

set -- $(measure "$build/src/quorvane-cli" \
    --program-dir "$folder/program" --game-dir "$folder/game" scan --json)
scan_time=$1
set -- $(measure "$build/bench/bench_startup" "$folder/program")
startup_time=$1
startup_peak=$2
result=$(ratio "$startup_time" "$scan_time")
outcome=$(verdict "$result" 1.5)
echo "scan --json: $scan_time s; start-up to the main window: $startup_time s, $startup_peak KiB"
echo "start-up / scan: $result (target <= 1.5)  $outcome"
[ "$outcome" = PASS ]
