"""vornelt.convert from Python against the library call from C++ on the same list and options.

python3 bench/python_vs_cpp.py BENCH_BINARY LIST [PAIRS]

The C++ figure is BM_ConvertFile of the benchmark binary (vornelt::Convert with the options'
defaults, the report included, on the list's bytes); the Python figure is vornelt.convert with
its defaults on the same bytes, timed the same way: one call to warm up, then calls for at
least half a second, the mean of one call. The two run in turn, pair by pair, so that a
machine that speeds up or slows down during the run moves both; the ratio is the median of
the pairs' ratios. `+ data` adds reading the result's bytes, which copies them into Python.
"""
import json
import os
import statistics
import subprocess
import sys
import time

import vornelt


def cpp(binary, folder):
    out = subprocess.run([binary, "--benchmark_filter=^BM_ConvertFile/100000$", "--benchmark_min_time=0.5",
                          "--benchmark_format=json"], env={**os.environ, "VORNELT_BENCH_LISTS": folder},
                         check=True, capture_output=True, text=True).stdout
    run = json.loads(out)["benchmarks"][0]
    scale = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}[run["time_unit"]]
    return run["real_time"] * scale, run["cpu_time"] * scale


def python(data, with_data):
    def once():
        result = vornelt.convert(data, 25)
        if with_data:
            result.data
    once()
    calls, wall, cpu = 0, 0.0, 0.0
    while wall < 0.5:
        w, c = time.perf_counter(), time.process_time()
        once()
        wall += time.perf_counter() - w
        cpu += time.process_time() - c
        calls += 1
    return wall / calls * 1e3, cpu / calls * 1e3


def main():
    binary, path = sys.argv[1], sys.argv[2]
    pairs = int(sys.argv[3]) if len(sys.argv) > 3 else 5
    data = open(path, "rb").read()
    rows = []
    for _ in range(pairs):
        rows.append((cpp(binary, os.path.dirname(path)), python(data, False), python(data, True)))
    med = lambda xs: statistics.median(xs)
    print(f"{os.path.basename(path)}, {pairs} pairs, milliseconds per call (wall / cpu), medians:")
    print(f"  vornelt::Convert from C++     {med(r[0][0] for r in rows):7.1f} / {med(r[0][1] for r in rows):7.1f}")
    for k, label in ((1, "vornelt.convert       "), (2, "vornelt.convert + data")):
        wall = med(r[k][0] / r[0][0] for r in rows)
        cpu = med(r[k][1] / r[0][1] for r in rows)
        print(f"  {label}        {med(r[k][0] for r in rows):7.1f} / {med(r[k][1] for r in rows):7.1f}"
              f"   ratio to C++ {wall:.3f} / {cpu:.3f}")


if __name__ == "__main__":
    main()
