#!/usr/bin/python3
"""Velto as a whole compared with a bare QML window of the strip's size, in one run: start, memory, idling, pictures, the panel, a
question, long lists.

Usage: script/with-desktop --own-network bench/whole-process.py [--quick] [--only NAME] VELTO FLOOR WATCHER. Figures are medians of
alternating runs; what counts is the ratio and the processor time, since machines differ. Goals are printed beside the figures and
never fail the run.
"""

import argparse
import json
import os
import pathlib
import resource
import statistics
import subprocess
import sys
import tempfile
import time

from panel_figures import measures
from watching import Failure, Floor, Velto, children_cpu_ms, first_paint_ms, memory_mb, rest

REST_AFTER_SECONDS = 5
GOALS = {
    "first paint, ms": "1.15 times",
    "RSS at rest, MB": "1.2 times",
    "CPU at rest, ms a minute": "2",
    "switches a second": "0.2",
    "CPU of its tools at rest, ms in three minutes": "50",
    "eight pictures, s": "3",
    "panel: CPU a frame, ms": "1.5",
    "CPU a frame while scrolling, ms": "4",
    "worst frame while scrolling, CPU ms": "16.7",
    "5000 sessions, 2500 working: MB above none, scrolled": "40",
    "100000 todos: MB, searched": "150",
    "question: the same, the slowest": "500",
}


def paints(makes, watcher, count):
    each = {make: [] for make in makes}
    for _ in range(count):
        for make in makes:
            each[make].append(first_paint_ms(make, watcher))
    return {make: {"first paint, ms": statistics.median(paint for paint, _ in runs),
                   "first paint, CPU ms of the main thread": statistics.median(cpu for _, cpu in runs)}
            for make, runs in each.items()}


def at_rest(make, seconds):
    """Nothing is connected, `claude` has no sessions, and the machine's own `gh`, if any, is signed out. If other programs start
    meanwhile, the check whether they are recorders is included."""
    with make() as program:
        program.start()
        time.sleep(REST_AFTER_SECONDS)
        pid = program.process.pid
        rss, pss = memory_mb(pid)
        before = children_cpu_ms(pid)
        figures = rest(pid, seconds)
        tools = (children_cpu_ms(pid) - before) * 180 / seconds
        return {"RSS at rest, MB": rss, "PSS at rest, MB": pss, **figures, "CPU of its tools at rest, ms in three minutes": tools}


def pictures(velto, rounds):
    """The eight pictures of --snapshot, each round in a new home."""
    times, cpus = [], []
    for _ in range(rounds):
        with Velto(velto) as program, tempfile.TemporaryDirectory() as folder:
            start, before = time.monotonic(), resource.getrusage(resource.RUSAGE_CHILDREN)
            subprocess.run([velto, "--snapshot", folder], env=program.environment, check=True, stdout=subprocess.DEVNULL)
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            times.append(time.monotonic() - start)
            cpus.append(after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)
            if len(os.listdir(folder)) != 8:
                raise Failure(f"{len(os.listdir(folder))} pictures instead of eight")
    return {"eight pictures, s": statistics.median(times), "eight pictures, CPU s": statistics.median(cpus)}


def goal(name):
    return next((f"goal {what}" for key, what in GOALS.items() if name.endswith(key)), "")


def report(velto, floor, alone):
    print(f"\n{'':70}{'velto':>10}{'floor':>10}{'ratio':>8}")
    for name, figure in velto.items():
        ratio = f"{figure / floor[name]:.2f}" if floor.get(name, 0) >= 0.01 else "-"
        print(f"{name:70}{figure:10.2f}{floor[name]:10.2f}{ratio:>8}  {goal(name)}")
    for name, figure in alone.items():
        print(f"{name:70}{figure:10.2f}{'':18}  {goal(name)}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--quick", action="store_true", help="fewer and shorter runs")
    parser.add_argument("--only", help="what has this in its name: start, rest, pictures, panel, sessions, todos, questions")
    parser.add_argument("--json", help="write the figures there too")
    for name in ("velto", "floor", "watcher"):
        parser.add_argument(name)
    args = parser.parse_args()
    starts, rest_seconds, rounds = (5, 30, 1) if args.quick else (15, 180, 3)

    def make_velto():
        return Velto(args.velto)

    def make_floor():
        return Floor(args.floor)

    def wanted(name):
        return not args.only or args.only in name

    figures = {make_velto: {}, make_floor: {}}
    if wanted("start"):
        figures = paints(list(figures), args.watcher, starts)
    if wanted("rest"):
        for make, each in figures.items():
            each.update(at_rest(make, rest_seconds))
    alone = {}
    whole = [("pictures", lambda: pictures(args.velto, rounds)), *measures(make_velto, args.watcher, args.quick)]
    for name, measure in whole:
        if not wanted(name):
            continue
        try:
            alone.update(measure())
        except Failure as failure:
            print(f"{name}: {failure}", file=sys.stderr)
    report(figures[make_velto], figures[make_floor], alone)
    if args.json:
        everything = {"velto": figures[make_velto], "floor": figures[make_floor], "alone": alone}
        pathlib.Path(args.json).write_text(json.dumps(everything, indent=4) + "\n")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"failed: {failure}")
