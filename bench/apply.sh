#!/bin/sh
# Times `quorvane-cli apply` on user.ini files of 1 MiB and 50 MiB against
# `cp` of the same file, and reads the apply's peak memory, and says whether
# it meets its targets:
#   - the apply takes at most 3 times as long as the copy;
#   - its peak resident memory is at most 3 times the file's size.
#
#   bench/apply.sh PATH/TO/quorvane-cli [WORK_DIR]
#
# Builds nothing. Each measurement is the best of RUNS runs (default 5) with
# warm caches; the apply is made again and again on the same file, which
# replaces the section with the same bytes each time.
set -eu

cli=${1:?usage: bench/apply.sh PATH/TO/quorvane-cli [WORK_DIR]}
work=${2:-}
. "$(dirname "$0")/common.sh"


"$cli" --program-dir "$work" --config-dir "$work" save --force Bench.qvn > /dev/null
# The fixed cost of any apply (starting the process, reading the
# configuration), on a user.ini of a few lines, for reading the figures.
small=$work/UserSmall.ini
printf '[URL]\r\nProtocol=unreal\r\n\r\n' > "$small"
set -- $(measure "$cli" --program-dir "$work" --config-dir "$work" apply --target "$small" --force Bench.qvn)
echo "fixed cost of an apply (user.ini of 3 lines): $1 s, $2 KiB"
status=0
printf '%-8s %12s %10s %10s %8s %12s %8s\n' size bytes "cp (s)" "apply (s)" ratio "peak (KiB)" "/ file"
for mib in 1 50; do
    ini=$work/User$mib.ini
    [ -f "$ini" ] || python3 "$bench_dir/gen_user_ini.py" "$ini" "$mib"
    bytes=$(wc -c < "$ini")
    set -- $(measure cp "$ini" "$work/copy.ini")
    copy_time=$1
    set -- $(measure "$cli" --program-dir "$work" --config-dir "$work" apply --target "$ini" --force Bench.qvn)
    apply_time=$1
    apply_peak=$2
    time_ratio=$(ratio "$apply_time" "$copy_time")
    memory_ratio=$(ratio "$((apply_peak * 1024))" "$bytes")
    printf '%-8s %12s %10s %10s %8s %12s %8s\n' "$mib MiB" "$bytes" "$copy_time" "$apply_time" \
        "$time_ratio" "$apply_peak" "$memory_ratio"
    echo "$mib MiB: apply / cp $time_ratio (target <= 3)  $(verdict "$time_ratio" 3);" \
        "peak memory / file $memory_ratio (target <= 3)  $(verdict "$memory_ratio" 3)"
    [ "$(verdict "$time_ratio" 3)" = PASS ] && [ "$(verdict "$memory_ratio" 3)" = PASS ] || status=1
done
rm -f "$work/copy.ini"
exit $status
