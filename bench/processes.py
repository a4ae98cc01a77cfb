#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""processes.py BIN DATA [--small]

Times whole programs in turns: the start of a program with and without the library; the workbench's main job (decode,
analyse, reduce to 0.25, write a JPEG) beside other programs that reduce pictures; and calls with idle pauses between
them. Appends lines to DATA in the format of imageutils-bench, with the peak memory in bytes, summed over processes that
run at the same time.
"""
import concurrent.futures
import glob
import json
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

BIN, DATA = sys.argv[1:3]
SMALL = "--small" in sys.argv[3:]
CORES = len(os.sched_getaffinity(0))
PHOTOGRAPHS = sorted(path for folder in ("abstract", "nature")
                     for path in glob.glob(f"/usr/share/backgrounds/mate/{folder}/*.jpg"))
MAGICK = next(filter(None, map(shutil.which, ("magick", "convert-im6.q16", "convert"))))


def run(command, output=subprocess.DEVNULL):
    """Runs one process and returns its begin, its end and its peak memory."""
    begin = time.perf_counter()
    process = subprocess.Popen(command, stdout=output, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"processes.py: {process.returncode} from {' '.join(command)}")
    return begin, time.perf_counter(), usage.ru_maxrss * 1024


def run_all(commands):
    """Runs as many commands at a time as there are cores and returns their seconds and peak memory."""
    with concurrent.futures.ThreadPoolExecutor(CORES) as pool:
        runs = list(pool.map(run, commands))
    seconds = max(end for _, end, _ in runs) - min(begin for begin, _, _ in runs)
    peak = max(sum(memory for begin, end, memory in runs if begin <= moment < end) for moment, _, _ in runs)
    return seconds, peak


def compare(workload, size, implementations, rounds, seconds_each):
    """Runs each (name, role, call) in turn; a call returns its seconds and its peak memory."""
    samples = {name: [] for name, _, _ in implementations}
    for _ in range(rounds):
        for name, _, call in implementations:
            if len(samples[name]) < 2 or sum(s for s, _ in samples[name]) < seconds_each:
                samples[name].append(call())
    ours = min(seconds for seconds, _ in samples[implementations[0][0]])
    print(f"{workload}, {size}")
    for name, role, _ in implementations:
        seconds = sorted(s for s, _ in samples[name])
        peak = max(p for _, p in samples[name])
        write(workload, size, name, role, len(seconds), seconds[0], statistics.median_high(seconds), peak)
        print(f"  {name:34} {seconds[0] * 1e3:11.4f} ms, median {statistics.median_high(seconds) * 1e3:11.4f} "
              f"{seconds[0] / ours:9.3g} x ours  {peak / 1e6:.0f} MB", flush=True)


def write(workload, size, name, role, rounds, least, median, peak=0):
    """One line of figures; the columns are those of imageutils-bench."""
    with open(DATA, "a", encoding="utf-8") as data:
        print(workload, size, CORES, "process", name, role, 0, 0, rounds, least, median, peak, sep="\t", file=data)


def starting():
    def call(program):
        def seconds_and_peak():
            begin, end, peak = run([os.path.join(BIN, program)])
            return end - begin, peak
        return seconds_and_peak

    compare("start of a program", "whole process",
            [("ours", "ours", call("start_ours")),
             ("Qt and OpenCV's core", "yardstick", call("start_peers")),
             ("nothing", "yardstick", call("start_nothing"))], 2 if SMALL else 101, 4)


def check_sizes(photographs, folder, program):
    """Checks that all outputs exist and have a quarter of the width and height, rounded up or to nearest."""
    def sizes(paths):
        lines = subprocess.check_output(["vipsheader", *paths], text=True).splitlines()
        return [tuple(map(int, line.rsplit(": ", 1)[1].split(" ")[0].split("x"))) for line in lines]

    outputs = [os.path.join(folder, os.path.basename(path)) for path in photographs]
    for path, source, result in zip(photographs, sizes(photographs), sizes(outputs)):
        if any(abs(r - 0.25 * s) >= 1 for s, r in zip(source, result)):
            sys.exit(f"processes.py: {program} made {result} of {source}: {path}")


def main_job(size, photographs):
    """Runs the job on photographs: ours in one process, peers in one process each, as many at a time as cores."""
    milliseconds = []

    def call(name, commands):
        def seconds_and_peak():
            with tempfile.TemporaryDirectory() as folder:
                result = run_all(commands(folder))
                check_sizes(photographs, folder, name)
                return result
        return seconds_and_peak

    def ours():
        with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryFile("w+") as report:
            begin, end, peak = run([os.path.join(BIN, "imageutils-workbench"), "--headless", "--json", "--scale",
                                    "0.25", "--format", "jpg", "--quality", "95", "--output", folder, *photographs],
                                   report)
            check_sizes(photographs, folder, "the workbench")
            report.seek(0)
            milliseconds.append([json.loads(line)["milliseconds"] for line in report])
            return end - begin, peak

    def peer(name, command):
        def commands(folder):
            return [command(path, os.path.join(folder, os.path.basename(path))) for path in photographs]
        return name, "peer", call(name, commands)

    def thumbnail(path, output):
        width = round(0.25 * int(subprocess.check_output(["vipsheader", "-f", "width", path])))
        return ["vipsthumbnail", path, "--size", f"{width}x", "-o", output + "[Q=95]"]

    compare("main job", size, [
        ("ours", "ours", ours),
        peer("vips resize", lambda path, output: ["vips", "resize", path, output + "[Q=95]", "0.25", "--kernel",
                                                  "mitchell"]),
        peer("vipsthumbnail (decodes less, Lanczos)", thumbnail),
        peer("ImageMagick", lambda path, output: [MAGICK, path, "-filter", "Mitchell", "-resize", "25%", "-quality",
                                                  "95", output]),
        peer("oiiotool", lambda path, output: ["oiiotool", path, "--resize:filter=mitchell", "25%", "--quality", "95",
                                               "-o", output]),
    ], 1 if SMALL else 3, 6)
    steps = min(milliseconds, key=lambda run: sum(sum(photograph.values()) for photograph in run))
    for part, names in (("decode", ["decode"]), ("encode", ["write"]),
                        ("the library", ["header", "split", "analyse", "resample", "join"])):
        seconds = sum(photograph.get(name, 0) for photograph in steps for name in names) / 1e3
        write("main job", size, f"ours: {part}, summed over photographs", "part", 1, seconds, seconds)
        print(f"  of ours, summed over photographs: {part} {seconds * 1e3:.0f} ms", flush=True)


def pausing():
    """Makes one call in each second, with as many threads as cores. The slowest call is reported as well."""
    rounds, pause = (2, 0) if SMALL else (100, 1)
    workload = "resize times 2, a second after the last"
    print(f"{workload}, to 12 MP")
    for name, role, program in (("ours", "ours", "after_pause"),
                                ("without prefaulting", "yardstick", "after_pause_unprefaulted")):
        lines = subprocess.check_output([os.path.join(BIN, program), str(rounds), str(pause)], text=True).split()
        seconds = sorted(map(float, lines))
        median = statistics.median_high(seconds)
        write(workload, "to 12 MP", name, role, rounds, seconds[0], median)
        write(workload, f"slowest of {rounds} calls", name, role, rounds, seconds[-1], seconds[-1])
        print(f"  {name:34} {seconds[0] * 1e3:11.4f} ms, median {median * 1e3:11.4f}, slowest {seconds[-1] * 1e3:.4f}",
              flush=True)


starting()
pausing()
if SMALL:
    main_job("2 photographs", sorted(PHOTOGRAPHS, key=os.path.getsize)[:2])
else:
    main_job(f"{len(PHOTOGRAPHS)} photographs", PHOTOGRAPHS)
    main_job("18 MP alone", [path for path in PHOTOGRAPHS if "5640x3172" in path])
