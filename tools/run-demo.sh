#!/usr/bin/env bash
# Builds quorvane-cli and runs its main job against a copy of the bundled
# demo game: the default bot list is saved as a configuration and applied to
# the game's user.ini.
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/setup.sh
cmake --preset default
cmake --build --preset default --target quorvane-cli

cli="$PWD/build/default/src/quorvane-cli"
work="$PWD/build/demo-run"
rm -rf "$work"
mkdir -p "$work/program" "$work/configs"
cp -R demo/UnrealTournament "$work/UnrealTournament"
user_ini="$work/UnrealTournament/System/User.ini"

run() {
    echo "+ quorvane-cli $*"
    "$cli" --program-dir "$work/program" --game-dir "$work/UnrealTournament" \
        --config-dir "$work/configs" "$@"
}

echo "Demo game copied to $work/UnrealTournament"
run save Default.qvn
run describe Default.qvn
run list
run apply Default.qvn --backup

echo
echo "The bot list section of $user_ini now begins:"
grep -i -A 4 '^\[Botpack.ChallengeBotInfo\]' "$user_ini"
echo
changed=$(diff <(tr -d '\r' < demo/UnrealTournament/System/User.ini) <(tr -d '\r' < "$user_ini") \
    | grep -c '^[<>]' || true)
echo "$changed lines of user.ini changed; the configuration directory now holds:"
ls -1 "$work/configs" | sed 's/^/  /'
