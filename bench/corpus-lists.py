#!/usr/bin/env python3
"""The speed goals of the corpus figures (docs/word-list-options.md), on their own so that
bench/run.sh stays as it is:
  bench/corpus-lists.py BUILD_DIR [MEGABYTES]

1. A combined list of 2,000 files with range and dispersion against the same list without
   them (tallyvox_bench_corpus, the application's side; goal 1.2x), with its peak memory
   against 64 MB + 100 bytes per distinct word + 8 bytes per word and file.
2. A keyword list of MEGABYTES (100) of English against another MEGABYTES, the whole
   program in console mode against `wc -w` over both files (goal 2.5x), with its peak
   memory against 64 MB + 100 bytes per distinct word of either side.
Times are medians of three paired runs, alternating which goes first. `make bench` runs
both; BENCH_ROWS=corpus-range or corpus-keywords runs one."""
import os
import random
import runpy
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

HERE = Path(__file__).resolve().parent
RUNS = 3
MB = 1_000_000


def timed(command, env=None, stdout=subprocess.DEVNULL):
    with tempfile.NamedTemporaryFile("r") as report:
        start = time.perf_counter()
        result = subprocess.run(["/usr/bin/time", "-f", "%M", "-o", report.name, *command],
                                env=env, stdout=stdout, stderr=subprocess.DEVNULL, check=True)
        seconds = time.perf_counter() - start
        rss = int(report.read().split("\n")[-2]) * 1024
    return seconds, rss, result.stdout


def combined_list(build):
    program = build / "bench" / "tallyvox_bench_corpus"
    figures = {"plain": [], "range": []}
    for run in range(RUNS):
        for mode in (("plain", "range") if run % 2 == 0 else ("range", "plain")):
            out = subprocess.run([str(program), "2000", "3000", mode], check=True,
                                 capture_output=True, text=True).stdout.split()
            figures[mode].append(dict(zip(out[1::2], out[2::2])))
    plain = statistics.median(float(f["seconds"]) for f in figures["plain"])
    spread = statistics.median(float(f["seconds"]) for f in figures["range"])
    last = figures["range"][-1]
    budget = 64 * 2**20 + 100 * int(last["distinct"]) + 8 * int(last["pairs"])
    peak = max(int(f["peak_kb"]) for f in figures["range"]) * 1024
    print(f"combined list, 2,000 files of 3,000 words ({last['distinct']} distinct words, "
          f"{last['pairs']} word-file pairs)")
    print(f"  without range {plain:.3f} s, with range and dispersion {spread:.3f} s: "
          f"{spread / plain:.2f}x (goal 1.2x)")
    print(f"  peak memory {peak / 2**20:.1f} MiB, budget {budget / 2**20:.1f} MiB")


def write_english(path, megabytes, seed):
    # The generator's own functions, with a seed of our own for a second, different text.
    generator = runpy.run_path(str(HERE / "generate-text.py"))
    with open(path, "wb") as out:
        stdout = sys.stdout
        sys.stdout = type("Out", (), {"buffer": out})()
        try:
            generator["english"](megabytes, False, random.Random(seed))
        finally:
            sys.stdout = stdout


def keyword_list(build, megabytes, work):
    files, reference = work / "files.txt", work / "reference.txt"
    write_english(files, megabytes, 1964)
    write_english(reference, megabytes, 2026)
    root = work / "sandbox"
    config = root / "config" / "Okaluna Software"
    config.mkdir(parents=True)
    for folder in ("data", "tmp", "home"):
        (root / folder).mkdir(mode=0o700)
    # Every word of either side is listed: the threshold 0 writes the most.
    (config / "Tallyvox.plist").write_text(
        '<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><dict>'
        f"<key>ReferencePath</key><string>{reference}</string>"
        "<key>KeynessThreshold</key><real>0</real>"
        "<key>ListFormat</key><integer>1</integer></dict></plist>\n")
    env = {"PATH": os.environ.get("PATH", "/usr/bin:/bin"), "HOME": str(root / "home"),
           "LC_ALL": "C.UTF-8", "XDG_CONFIG_HOME": str(root / "config"),
           "XDG_DATA_HOME": str(root / "data"), "TMPDIR": str(root / "tmp")}
    app = build / "bin" / "tallyvox"
    wc = ["wc", "-w", str(files), str(reference)]
    timed(wc, {"PATH": env["PATH"], "LC_ALL": "C.UTF-8"})  # the page cache
    times = {"wc": [], "app": []}
    peak = 0
    for run in range(RUNS):
        order = [("wc", wc, {"PATH": env["PATH"], "LC_ALL": "C.UTF-8"}),
                 ("app", [str(app), "--console", str(files)], env)]
        for name, command, environment in order if run % 2 == 0 else reversed(order):
            seconds, rss, _ = timed(command, environment)
            times[name].append(seconds)
            if name == "app":
                peak = max(peak, rss)
    lists = list((root / "data").rglob("*.csv"))
    distinct = sum(1 for _ in open(lists[0], encoding="utf-8")) - 1 if lists else 0
    budget = 64 * 2**20 + 100 * distinct
    app_time, wc_time = statistics.median(times["app"]), statistics.median(times["wc"])
    print(f"keyword list, {megabytes} MB of English against {megabytes} MB "
          f"({distinct} distinct words of either side)")
    print(f"  wc -w over both {wc_time:.3f} s, tallyvox {app_time:.3f} s: "
          f"{app_time / wc_time:.2f}x (goal 2.5x)")
    print(f"  peak memory {peak / 2**20:.1f} MiB, budget {budget / 2**20:.1f} MiB")


def main():
    build = Path(sys.argv[1]).resolve()
    megabytes = int(sys.argv[2]) if len(sys.argv) > 2 else 100
    subprocess.run(["cmake", "--build", str(build), "--target", "tallyvox", "SearchKitIndexer",
                    "SearchKitIndexer32", "tallyvox_bench_corpus"], check=True,
                   stdout=subprocess.DEVNULL)
    only = set(filter(None, os.environ.get("BENCH_ROWS", "").split(",")))
    if not only or "corpus-range" in only:
        combined_list(build)
    if not only or "corpus-keywords" in only:
        with tempfile.TemporaryDirectory(dir=build) as work:
            keyword_list(build, megabytes, Path(work))


if __name__ == "__main__":
    main()
