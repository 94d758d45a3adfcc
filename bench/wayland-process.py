#!/usr/bin/python3
"""Velto under Wayland beside a bare layer surface with a small QML file, in one run: start, memory, rest, the keyboard.

Usage: script/with-sway --own-network bench/wayland-process.py [--quick] [--json FILE] VELTO BARE-LAYER HAND. Moments are those at
which the toolkit hands messages over, as libwayland tells them (WAYLAND_DEBUG). Figures are medians of alternating runs; what counts
is the ratio. Goals are printed beside the figures and never fail the run."""

import argparse
import json
import os
import pathlib
import queue
import re
import statistics
import subprocess
import sys
import threading
import time

from watching import Failure, Velto, memory_mb, rest

REST_AFTER_SECONDS = 5
LETTER = 33  # evdev's number of F, a letter that the field takes
ESCAPE = 1
DRAWN = re.compile(r"-> wl_surface[@#]\d+\.attach\(wl_buffer")
KEYBOARD = re.compile(r"(?<!> )wl_keyboard[@#]\d+\.enter\(")
KEY = re.compile(r"(?<!> )wl_keyboard[@#]\d+\.key\(.*, 1\)")
GOALS = {"first frame, ms": "1.3 times", "PSS at rest, MB": "1.4 times", "switches a second": "1",
         "from the start of velto --search to the keyboard, ms": "50", "from a key to its frame, ms": "50"}


class Talk:
    """A program with what it says to the compositor and hears from it, line by line, with the moment. Use it in a with statement."""

    def __init__(self, program):
        self.velto = Velto(program)
        self.lines = queue.Queue()

    def __enter__(self):
        environment = {**self.velto.environment, "WAYLAND_DEBUG": "1"}
        self.start = time.monotonic()
        self.process = subprocess.Popen([self.velto.program], env=environment, stdin=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        threading.Thread(target=self.read, daemon=True).start()
        return self

    def __exit__(self, *_):
        self.velto.process = self.process
        self.velto.__exit__()

    def read(self):
        for line in self.process.stderr:
            self.lines.put((time.monotonic(), line))

    def moment(self, pattern, seconds=20.0):
        end = time.monotonic() + seconds
        while True:
            try:
                stamp, line = self.lines.get(timeout=max(0.01, end - time.monotonic()))
            except queue.Empty:
                raise Failure(f"{self.velto.program} never came to {pattern.pattern}") from None
            if pattern.search(line):
                return stamp

    def forget(self):
        while not self.lines.empty():
            self.lines.get()


def first_frame_ms(program):
    with Talk(program) as talk:
        return (talk.moment(DRAWN) - talk.start) * 1000


def at_rest(program, seconds):
    with Velto(program) as velto:
        velto.launch()
        time.sleep(REST_AFTER_SECONDS)
        rss, pss = memory_mb(velto.process.pid)
        return {"RSS at rest, MB": rss, "PSS at rest, MB": pss, **rest(velto.process.pid, seconds)}


def keyboard(program, hand, rounds):
    """The panel opened by a command, as a key of the desktop's gives it, and letters typed into its field."""
    opened, typed = [], []
    with Talk(program) as talk, subprocess.Popen([hand], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True) as keys:

        def press(code):
            keys.stdin.write(f"keys {code}\n")
            keys.stdin.flush()
            keys.stdout.readline()

        talk.moment(DRAWN)
        time.sleep(3)
        for _ in range(rounds):
            talk.forget()
            start = time.monotonic()
            subprocess.run([talk.velto.program, "--search"], env=talk.velto.environment, check=True, timeout=30)
            opened.append((talk.moment(KEYBOARD) - start) * 1000)
            time.sleep(1)
            for _ in range(3):
                talk.forget()
                press(LETTER)
                heard = talk.moment(KEY)
                typed.append((talk.moment(DRAWN) - heard) * 1000)
                time.sleep(0.5)
            for _ in range(2):  # the first is for what was typed
                press(ESCAPE)
                time.sleep(1)
        keys.kill()
    return {
        "from the start of velto --search to the keyboard, ms": statistics.median(opened),
        "from a key to its frame, ms": statistics.median(typed),
        "from a key to its frame, the slowest, ms": max(typed),
    }


def goal(name):
    return f"goal {GOALS[name]}" if name in GOALS else ""


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--quick", action="store_true", help="fewer and shorter runs")
    parser.add_argument("--json", help="write the figures there too")
    for name in ("velto", "floor", "hand"):
        parser.add_argument(name)
    args = parser.parse_args()
    starts, rest_seconds, rounds = (5, 30, 2) if args.quick else (15, 120, 5)
    figures, frames = {}, {args.velto: [], args.floor: []}
    for _ in range(starts):
        for program, each in frames.items():
            each.append(first_frame_ms(program))
    for program, each in frames.items():
        figures[program] = {"first frame, ms": statistics.median(each), **at_rest(program, rest_seconds)}
    alone = keyboard(args.velto, args.hand, rounds)
    velto, floor = figures[args.velto], figures[args.floor]
    print(f"load {os.getloadavg()[0]:.1f} on {os.cpu_count()} cores\n{'':66}{'velto':>10}{'floor':>10}{'ratio':>8}")
    for name, figure in velto.items():
        ratio = f"{figure / floor[name]:.2f}" if floor[name] >= 0.01 else "-"
        print(f"{name:66}{figure:10.2f}{floor[name]:10.2f}{ratio:>8}  {goal(name)}")
    for name, figure in alone.items():
        print(f"{name:66}{figure:10.2f}{'':18}  {goal(name)}")
    if args.json:
        pathlib.Path(args.json).write_text(json.dumps({"velto": velto, "floor": floor, "alone": alone}, indent=4) + "\n")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"failed: {failure}")
