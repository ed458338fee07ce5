"""A batch of lists through vornelt-convert with -j 1 and -j 2, against the same lists converted
one after the other in-process.

python3 bench/batch.py BIN_DIR BATCH_DIR WORK_DIR [ROUNDS]

BATCH_DIR holds the lists that `vornelt-genlist 1000 cmx mixed SEED` writes for the seeds 1 to
1,000, the lists BM_ConvertBatch of the benchmark binary converts in-process (its time is the
sum of the single conversions). Each round times the three one after the other, the order of
the two runs of the converter turned about every other round; the ratios are the medians of
the rounds' ratios, so that a machine that changes speed during the run moves both sides.
Each run of the converter writes into a new folder of WORK_DIR, once what earlier runs wrote
is on the disk.
"""
import json
import os
import statistics
import subprocess
import sys
import tempfile
import time


def in_process(binary):
    out = subprocess.run([binary, "--benchmark_filter=^BM_ConvertBatch$", "--benchmark_min_time=2",
                          "--benchmark_format=json"], check=True, capture_output=True, text=True).stdout
    run = json.loads(out)["benchmarks"][0]
    return run["real_time"] * {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[run["time_unit"]]


def converter(binary, lists, work, jobs):
    folder = tempfile.mkdtemp(dir=work)
    os.sync()  # the files of the run before are on the disk: their writing does not fall into this one
    start = time.perf_counter()
    subprocess.run([binary, *lists, "--fps", "25", "-o", folder + "/", "-j", str(jobs), "--quiet"], check=True)
    return time.perf_counter() - start


def main():
    bin_dir, batch, work = sys.argv[1:4]
    rounds = int(sys.argv[4]) if len(sys.argv) > 4 else 5
    lists = [os.path.join(batch, f"l{i}.edl") for i in range(1, 1001)]
    convert, bench = os.path.join(bin_dir, "vornelt-convert"), os.path.join(bin_dir, "vornelt-bench")
    rows = []
    for r in range(rounds):
        summed = in_process(bench)
        order = (1, 2) if r % 2 == 0 else (2, 1)
        wall = {j: converter(convert, lists, work, j) for j in order}
        rows.append((summed, wall[1], wall[2]))
    med = statistics.median
    n = len(lists)
    summed, one, two = (med(r[k] for r in rows) for k in range(3))
    print(f"{n} lists, {rounds} rounds, medians:")
    print(f"  single conversions in-process, summed  {summed:6.3f} s  {n / summed:6.0f} lists/s")
    print(f"  vornelt-convert -j 1                   {one:6.3f} s  {n / one:6.0f} lists/s"
          f"   {med(r[1] / r[0] for r in rows):.2f} times the sum")
    print(f"  vornelt-convert -j 2                   {two:6.3f} s  {n / two:6.0f} lists/s"
          f"   {med(r[1] / r[2] for r in rows):.2f} times the lists per second of -j 1")


if __name__ == "__main__":
    main()
