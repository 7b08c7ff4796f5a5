# What the bench scripts share (POSIX sh). Each sets `work` to its optional
# WORK_DIR and sources this after `set -eu`; it sets bench_dir, runs (RUNS,
# default 5) and work (that folder, or a temporary one removed on exit).

bench_dir=$(cd "$(dirname "$0")" && pwd)
runs=${RUNS:-5}
if [ -n "$work" ]; then
    mkdir -p "$work"
else
    # In memory where there is a tmpfs: the figures are then the program's,
    # not the disk's.
    if [ -d /dev/shm ] && [ -w /dev/shm ]; then
        work=$(mktemp -d -p /dev/shm)
    else
        work=$(mktemp -d)
    fi
    trap 'rm -rf "$work"' EXIT
fi

# Best wall time in seconds and peak resident memory in KiB of a command,
# run RUNS times.
measure() {
    python3 "$bench_dir/measure.py" "$runs" "$@"
}
# PASS when $1 <= $2.
verdict() {
    python3 -c "import sys; print('PASS' if float(sys.argv[1]) <= float(sys.argv[2]) else 'FAIL')" "$1" "$2"
}
# $1 / $2 with two decimals.
ratio() {
    python3 -c "import sys; print('%.2f' % (float(sys.argv[1]) / float(sys.argv[2])))" "$1" "$2"
}
