#!/bin/sh
# Times `quorvane-cli scan --json` over generated game folders of 5,000 and
# 10,000 .int files against the plain cost of reading the same bytes, and
# over one .int file that is a single 12.6 MB line against the same bytes on
# 900 lines, and says whether the scan meets its targets:
#   - at 5,000 files the scan takes at most twice the plain read;
#   - from 5,000 to 10,000 files its time at most 2.2 times as long;
#   - the single line takes at most twice as long as the 900 lines.
#
#   bench/run.sh PATH/TO/quorvane-cli [WORK_DIR]
#
# Builds nothing. The folders are generated into WORK_DIR (default: a
# temporary directory, removed afterwards) and reused when already there.
# Each measurement is the best of RUNS runs (default 5) with warm caches.
set -eu

cli=${1:?usage: bench/run.sh PATH/TO/quorvane-cli [WORK_DIR]}
work=${2:-}
. "$(dirname "$0")/common.sh"


for count in 5000 10000; do
    folder=$work/game$count
    [ -d "$folder/game/System" ] || python3 "$bench_dir/gen_game.py" "$folder" "$count"
    bytes=$(cat "$folder"/game/System/*.int | wc -c)
    # Warm the caches for both sides.
    cat "$folder"/game/System/*.int > /dev/null
    set -- $(measure sh -c 'cat "$0"/game/System/*.int > /dev/null' "$folder")
    read_time=$1
    set -- $(measure "$cli" --program-dir "$folder/program" --game-dir "$folder/game" scan --json)
    scan_time=$1
    scan_peak=$2
    eval "read_$count=$read_time scan_$count=$scan_time peak_$count=$scan_peak bytes_$count=$bytes"
done


# A bot class followed by 900,000 ",Class=Texture": on one line, then 1,000
# to a line.
for shape in line:900000 lines:1000; do
    name=${shape%%:*}
    folder=$work/long-$name
    [ -d "$folder/game/System" ] || python3 "$bench_dir/gen_long_line.py" "$folder" 900000 "${shape#*:}"
    set -- $(measure "$cli" --program-dir "$folder/program" --game-dir "$folder/game" scan --json)
    eval "long_$name=$1 longpeak_$name=$2"
done

read_ratio=$(ratio "$scan_5000" "$read_5000")
growth=$(ratio "$scan_10000" "$scan_5000")
long_ratio=$(ratio "$long_line" "$long_lines")
printf '%-8s %12s %12s %12s %12s\n' files bytes "read (s)" "scan (s)" "peak (KiB)"
printf '%-8s %12s %12s %12s %12s\n' 5000 "$bytes_5000" "$read_5000" "$scan_5000" "$peak_5000"
printf '%-8s %12s %12s %12s %12s\n' 10000 "$bytes_10000" "$read_10000" "$scan_10000" "$peak_10000"
echo "scan / plain read at 5,000 files: $read_ratio (target <= 2)  $(verdict "$read_ratio" 2)"
echo "scan at 10,000 / at 5,000 files:  $growth (target <= 2.2)  $(verdict "$growth" 2.2)"
echo "one 12.6 MB line: $long_line s, $longpeak_line KiB; on 900 lines: $long_lines s, $longpeak_lines KiB"
echo "one line / 900 lines:             $long_ratio (target <= 2)  $(verdict "$long_ratio" 2)"
[ "$(verdict "$read_ratio" 2)" = PASS ] && [ "$(verdict "$growth" 2.2)" = PASS ] \
    && [ "$(verdict "$long_ratio" 2)" = PASS ]
