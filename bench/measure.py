"""Best wall time in seconds of RUNS runs of a command, and the peak resident
memory in KiB of one more run. What the command prints is dropped; a failing
run stops the measurement.

    python3 bench/measure.py RUNS COMMAND [ARGUMENT...]

The memory comes from GNU time, which starts the command from its own small
process: a child forked from Python would report Python's 14 MiB as its own
peak, whatever the command used.
"""
import subprocess
import sys
import tempfile
import time

runs, command = int(sys.argv[1]), sys.argv[2:]
quiet = dict(check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
best = None
for _ in range(runs):
    start = time.perf_counter()
    subprocess.run(command, **quiet)
    elapsed = time.perf_counter() - start
    best = elapsed if best is None else min(best, elapsed)
with tempfile.NamedTemporaryFile(mode="r") as report:
    subprocess.run(["/usr/bin/time", "-f", "%M", "-o", report.name] + command, **quiet)
    peak = int(report.read().split()[-1])
print("%.4f %d" % (best, peak))
