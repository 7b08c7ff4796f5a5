"""Best wall time in seconds of RUNS runs of a command, and the peak resident
memory in KiB of its largest run. What the command prints is dropped; a
failing run stops the measurement.

    python3 bench/measure.py RUNS COMMAND [ARGUMENT...]
"""
import resource
import subprocess
import sys
import time

runs, command = int(sys.argv[1]), sys.argv[2:]
best = None
for _ in range(runs):
    start = time.perf_counter()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
    elapsed = time.perf_counter() - start
    best = elapsed if best is None else min(best, elapsed)
peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
print("%.4f %d" % (best, peak))
