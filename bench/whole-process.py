#!/usr/bin/python3
"""Velto as a whole beside a bare QML window of the strip's size, in one run: start, memory, rest, the panel, a question.

Usage: script/with-desktop --own-network bench/whole-process.py [--quick] VELTO FLOOR WATCHER. Figures are medians of alternating
runs; what counts is the ratio, since machines differ. Ceilings are printed beside the figures and never fail the run.
"""

import argparse
import json
import pathlib
import queue
import signal
import statistics
import subprocess
import sys
import threading
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/e2e"))
from velto_desktop import AGENTS_TAB, DENY, GUARD_SECONDS, PEEK_ROW_HEIGHT, Failure, Velto, screen_size, until, xdotool  # noqa: E402

PANEL_HEIGHT = 520
MANY_SESSIONS = 500
SCROLL_NOTCHES = 120
SCROLL_PAUSE_MS = 25
REST_AFTER_SECONDS = 5


class Floor(Velto):
    """The bare window, started and stopped the same way."""

    def find_window(self):
        return next(iter(xdotool("search", "--onlyvisible", "--name", "^Bare window$").split()), None)


class Watcher:
    """What bench/watch-window sees, as (what, seconds, width, height)."""

    def __init__(self, program):
        self.process = subprocess.Popen([program], stdout=subprocess.PIPE, text=True)
        self.events = queue.Queue()
        threading.Thread(target=self.read, daemon=True).start()
        self.wait_for("ready")

    def read(self):
        for line in self.process.stdout:
            what, stamp, _, _, _, width, height = line.split()
            self.events.put((what, int(stamp) / 1e9, int(width), int(height)))

    def wait_for(self, *kinds, since=0.0, seconds=20.0):
        end = time.monotonic() + seconds
        while True:
            try:
                event = self.events.get(timeout=max(0.01, end - time.monotonic()))
            except queue.Empty:
                raise Failure(f"the window was never {' or '.join(kinds)}") from None
            if event[0] in kinds and event[1] >= since:
                return event

    def frames(self, since):
        """Drawings since then, those within 4 ms counted as one frame."""
        stamps = []
        while not self.events.empty():
            what, stamp, _, _ = self.events.get()
            if what == "drawn" and stamp >= since and (not stamps or stamp - stamps[-1] > 0.004):
                stamps.append(stamp)
        return len(stamps)

    def stop(self):
        self.process.send_signal(signal.SIGTERM)
        self.process.wait(5)


def threads(pid):
    return [task for task in pathlib.Path(f"/proc/{pid}/task").iterdir()]


def cpu_seconds(pid):
    return sum(int((task / "schedstat").read_text().split()[0]) for task in threads(pid)) / 1e9


def switches(pid):
    lines = (line for task in threads(pid) for line in (task / "status").read_text().splitlines())
    return sum(int(line.split()[1]) for line in lines if "ctxt_switches" in line)


def memory_mb(pid):
    text = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text()
    values = {line.split()[0]: int(line.split()[1]) / 1024 for line in text.splitlines() if line.endswith("kB")}
    return values["Rss:"], values["Pss:"]


def first_paint_ms(make, watcher_program):
    watcher = Watcher(watcher_program)
    with make() as program:
        start = time.monotonic()
        program.launch()
        try:
            return (watcher.wait_for("painted")[1] - start) * 1000
        finally:
            watcher.stop()


def at_rest(make, seconds):
    """Memory after a while; then processor time and switches, in seconds with and without a tick among them."""
    with make() as program:
        program.start()
        time.sleep(REST_AFTER_SECONDS)
        pid = program.process.pid
        rss, pss = memory_mb(pid)
        cpu, switched = [cpu_seconds(pid)], [switches(pid)]
        for _ in range(seconds):
            time.sleep(1)
            cpu.append(cpu_seconds(pid))
            switched.append(switches(pid))
        each = sorted((after - before) * 1000 for before, after in zip(cpu, cpu[1:]))
        quiet = each[: max(1, len(each) * 9 // 10)]
        return {
            "RSS at rest, MB": rss,
            "PSS at rest, MB": pss,
            "CPU at rest, ms a minute": sum(each) / len(each) * 60,
            "CPU between ticks, ms a minute": sum(quiet) / len(quiet) * 60,
            "switches a second": (switched[-1] - switched[0]) / seconds,
        }


def open_panel(velto):
    """The pointer arrives on the strip. Returns the moment."""
    start = time.monotonic()
    xdotool("mousemove", screen_size()[0] // 2, 4)
    until("the panel to open", lambda: velto.geometry().height >= PANEL_HEIGHT, pause=0.02)
    return start


def close_panel(velto, strip):
    velto.leave()
    until("the panel to close", lambda: velto.geometry().height <= strip.height, pause=0.02)


def panel_figures(make, watcher_program, rounds):
    watcher = Watcher(watcher_program)
    with make() as velto:
        strip = velto.start()
        pid = velto.process.pid
        first_frames, per_frame, rss = [], [], []
        for _ in range(rounds):
            watcher.frames(0)
            before = cpu_seconds(pid)
            start = open_panel(velto)
            first_frames.append((watcher.wait_for("drawn", since=start)[1] - start) * 1000)
            velto.settled(what="the open panel to stand still")
            per_frame.append((cpu_seconds(pid) - before) * 1000 / (1 + watcher.frames(start)))
            close_panel(velto, strip)
            time.sleep(0.2)
            rss.append(memory_mb(pid)[0])
        watcher.stop()
        return {
            "panel: first frame, ms after the pointer": statistics.median(first_frames),
            "panel: CPU a frame, ms": statistics.median(per_frame),
            f"panel: MB more after {rounds} openings than after 1": rss[-1] - rss[0],
        }


def working_sessions(count):
    """What `claude agents --json` prints with so many sessions at work."""
    now = time.time() * 1000
    each = ("id", "name", "state", "cwd", "startedAt")
    return [dict(zip(each, (f"s{i}", f"session {i}", "working", f"/home/me/p{i}", int(now) - i))) for i in range(count)]


def long_list_figures(make, watcher_program, rounds):
    """The Agents tab with many sessions: the panel opens on it, then the wheel turns through the list."""
    watcher = Watcher(watcher_program)
    with make() as velto:
        listing = velto.home / "listing.json"
        listing.write_text(json.dumps(working_sessions(MANY_SESSIONS)))
        (velto.home / "bin/claude").write_text(f"#!/bin/sh\ncase $1 in agents) cat '{listing}' ;; *) echo '[]' ;; esac\n")
        velto.start("--search")
        pid = velto.process.pid
        velto.settled(lambda at: at.height == PANEL_HEIGHT, "the panel to open")
        velto.open_tab(AGENTS_TAB)
        xdotool("key", "Escape")
        strip = velto.settled(lambda at: at.height < PANEL_HEIGHT, "the panel to close")
        first_frames, per_frame, per_second = [], [], []
        for _ in range(rounds):
            watcher.frames(0)
            start = open_panel(velto)
            first_frames.append((watcher.wait_for("drawn", since=start)[1] - start) * 1000)
            velto.settled(what="the open panel to stand still")
            at = velto.geometry()
            xdotool("mousemove", "--sync", at.x + at.width // 2, at.y + at.height * 2 // 3)
            watcher.frames(0)
            before, start = cpu_seconds(pid), time.monotonic()
            xdotool("click", "--repeat", SCROLL_NOTCHES, "--delay", SCROLL_PAUSE_MS, 5)
            frames = watcher.frames(start)
            per_second.append(frames / (time.monotonic() - start))
            per_frame.append((cpu_seconds(pid) - before) * 1000 / max(1, frames))
            close_panel(velto, strip)
        watcher.stop()
        return {
            f"{MANY_SESSIONS} sessions: panel's first frame, ms after the pointer": statistics.median(first_frames),
            f"{MANY_SESSIONS} sessions: frames a second while scrolling": statistics.median(per_second),
            f"{MANY_SESSIONS} sessions: CPU a frame while scrolling, ms": statistics.median(per_frame),
        }


def question_figures(make, watcher_program, rounds):
    watcher = Watcher(watcher_program)
    with make() as velto:
        strip = velto.start()
        times = []
        for number in range(rounds):
            watcher.frames(0)
            velto.token()
            start = time.monotonic()
            curl = velto.ask(command=f"make {number}")
            watcher.wait_for("drawn", "configured", since=start)
            times.append((time.monotonic() - start) * 1000)
            velto.settled(lambda at: at.height == strip.height + PEEK_ROW_HEIGHT, "the question to slide out")
            time.sleep(GUARD_SECONDS + 0.1)
            velto.press(DENY)
            curl.communicate(timeout=10)
            velto.leave()
            velto.settled(lambda at: at == strip, "the strip to be back")
        watcher.stop()
        return {"question: first frame, ms after curl's start": statistics.median(times)}


def report(velto, floor, alone):
    ceilings = {"first paint, ms": 1.4, "RSS at rest, MB": 1.4}
    print(f"\n{'':58}{'velto':>10}{'floor':>10}{'ratio':>8}  at most")
    for name, figure in velto.items():
        ratio = f"{figure / floor[name]:.2f}" if floor[name] >= 0.01 else "-"
        print(f"{name:58}{figure:10.2f}{floor[name]:10.2f}{ratio:>8}  {ceilings.get(name, '')}")
    for name, figure in alone.items():
        print(f"{name:58}{figure:10.2f}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--quick", action="store_true", help="fewer and shorter runs")
    parser.add_argument("--json", help="write the figures there too")
    for name in ("velto", "floor", "watcher"):
        parser.add_argument(name)
    args = parser.parse_args()
    starts, rest_seconds, openings, questions = (5, 15, 20, 5) if args.quick else (15, 60, 100, 15)

    def make_velto():
        return Velto(args.velto)

    def make_floor():
        return Floor(args.floor)

    paints = {make_velto: [], make_floor: []}
    for _ in range(starts):
        for make, each in paints.items():
            each.append(first_paint_ms(make, args.watcher))
    figures = {make: {"first paint, ms": statistics.median(each)} for make, each in paints.items()}
    for make, each in figures.items():
        each.update(at_rest(make, rest_seconds))

    alone = {}
    for measure, rounds in ((panel_figures, openings), (long_list_figures, 5), (question_figures, questions)):
        try:
            alone.update(measure(make_velto, args.watcher, rounds))
        except Failure as failure:
            print(f"{measure.__name__}: {failure}", file=sys.stderr)
    report(figures[make_velto], figures[make_floor], alone)
    if args.json:
        everything = {"velto": figures[make_velto], "floor": figures[make_floor], "alone": alone}
        pathlib.Path(args.json).write_text(json.dumps(everything, indent=4) + "\n")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"failed: {failure}")
