#!/bin/sh
# Times `quorvane-cli apply` on user.ini files of 1 MiB and 50 MiB against
# `cp` of the same file, reads the apply's peak memory, and says whether it
# meets its targets:
#   - the apply's time for the file, beyond what any apply costs, is at most
#     3 times cp's beyond what any cp costs;
#   - its peak resident memory beyond that of any apply is at most 3 times
#     the file's size.
# "Any apply" is an apply to a user.ini of three lines, "any cp" a copy of a
# file of three bytes: starting a Qt program and reading its options take
# about 5 ms and 11 MiB, starting cp 1 ms and 2 MiB, whatever the file. The
# absolute figures are printed beside them.
#
#   bench/apply.sh PATH/TO/quorvane-cli [WORK_DIR]
#
# Builds nothing. Each time is the best of RUNS runs (default 15: at 1 MiB
# the differences are fractions of a millisecond) with warm
# caches; the apply is made again and again on the same file, which replaces
# the section with the same bytes each time. Without WORK_DIR the files are
# made on a tmpfs where there is one: the apply waits for its user.ini to
# reach the disk and cp does not, which on a disk measures the disk.
set -eu

cli=${1:?usage: bench/apply.sh PATH/TO/quorvane-cli [WORK_DIR]}
work=${2:-}
RUNS=${RUNS:-15}
. "$(dirname "$0")/common.sh"

apply() {
    measure "$cli" --program-dir "$work" --config-dir "$work" apply --target "$1" --force Bench.qvn
}

"$cli" --program-dir "$work" --config-dir "$work" save --force Bench.qvn > /dev/null
small=$work/UserSmall.ini
printf '[URL]\r\nProtocol=unreal\r\n\r\n' > "$small"
printf 'x\r\n' > "$work/tiny"
set -- $(apply "$small")
fixed_time=$1
fixed_peak=$2
set -- $(measure cp "$work/tiny" "$work/copy.ini")
cp_fixed_time=$1
echo "any apply (user.ini of 3 lines): $fixed_time s, $fixed_peak KiB; any cp: $cp_fixed_time s"
status=0
printf '%-8s %10s %9s %9s %8s %10s %10s %8s\n' size bytes "cp (s)" "apply (s)" ratio \
    "+ratio" "peak (KiB)" "+/ file"
for mib in 1 50; do
    ini=$work/User$mib.ini
    [ -f "$ini" ] || python3 "$bench_dir/gen_user_ini.py" "$ini" "$mib"
    bytes=$(wc -c < "$ini")
    set -- $(measure cp "$ini" "$work/copy.ini")
    copy_time=$1
    set -- $(apply "$ini")
    apply_time=$1
    apply_peak=$2
    time_ratio=$(ratio "$apply_time" "$copy_time")
    added_time_ratio=$(python3 -c "import sys; a, f, c, cf = map(float, sys.argv[1:]);
print('%.2f' % ((a - f) / max(c - cf, 1e-4)))" "$apply_time" "$fixed_time" "$copy_time" "$cp_fixed_time")
    memory_ratio=$(ratio "$(((apply_peak - fixed_peak) * 1024))" "$bytes")
    printf '%-8s %10s %9s %9s %8s %10s %10s %8s\n' "$mib MiB" "$bytes" "$copy_time" "$apply_time" \
        "$time_ratio" "$added_time_ratio" "$apply_peak" "$memory_ratio"
    time_verdict=$(verdict "$added_time_ratio" 3)
    memory_verdict=$(verdict "$memory_ratio" 3)
    echo "$mib MiB: apply / cp for the file $added_time_ratio (target <= 3)  $time_verdict;" \
        "added peak memory / file $memory_ratio (target <= 3)  $memory_verdict"
    [ "$time_verdict" = PASS ] && [ "$memory_verdict" = PASS ] || status=1
done
rm -f "$work/copy.ini"
exit $status
