#!/usr/bin/env python3
"""Times whole processes and prints one table: medians as ratios to the first two calls, and the peak memory of each.

    whole_process.py [--rounds N] "shared floor=PROGRAM ARGUMENT..." "static floor=..." "NAME=..." ...

The calls take turns in rounds of a few runs each, so that a machine that is busy for a while slows all of them.
"""

import argparse
import json
import shlex
import statistics
import subprocess
import tempfile

RUNS_A_ROUND = 20


def seconds_of_round(command):
    with tempfile.NamedTemporaryFile(suffix=".json") as result:
        subprocess.run(["hyperfine", "--shell=none", "--warmup=2", "--runs=%d" % RUNS_A_ROUND, "--style=none",
                        "--export-json", result.name, command],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return json.load(result)["results"][0]["times"]


def peak_kilobytes(command):
    """By a small program: this one's own memory would count as its children's."""
    with tempfile.NamedTemporaryFile(mode="r") as result:
        subprocess.run(["time", "--format=%M", "--output=" + result.name] + shlex.split(command), check=True,
                       stdout=subprocess.DEVNULL)
        return int(result.read())


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--rounds", type=int, default=10)
    parser.add_argument("calls", nargs="+")
    options = parser.parse_args()
    calls = dict(call.split("=", 1) for call in options.calls)
    seconds = {name: [] for name in calls}
    for _ in range(options.rounds):
        for name, command in calls.items():
            seconds[name] += seconds_of_round(command)
    medians = {name: statistics.median(times) for name, times in seconds.items()}
    shared, static = list(medians.values())[:2]
    print("%-24s %9s %11s %11s %9s" % ("", "median", "of shared", "of static", "memory"))
    for name, median in medians.items():
        print("%-24s %6.2f ms %11.2f %11.2f %6.1f MB" % (name, median * 1000, median / shared, median / static,
                                                        peak_kilobytes(calls[name]) / 1024))


main()
