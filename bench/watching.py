"""Tools of the whole-process benches: programs in homes of their own, and their cost as the system counts it."""

import pathlib
import queue
import signal
import statistics
import subprocess
import sys
import threading
import time
import typing

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/e2e"))
import velto_desktop  # noqa: E402
from velto_desktop import Failure, screen_size, until, xdotool  # noqa: E402

PANEL_HEIGHT = velto_desktop.PANEL[1]
ONE_FRAME_MS = 4  # drawings closer together than this belong to one frame
MOTION_MS = 100  # a longer pause between two frames is the end of a motion, not a late frame


class Velto(velto_desktop.Velto):
    """Without a screen reader, as most people run it."""

    def __init__(self, program):
        super().__init__(program)
        del self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"]
        (self.home / "Downloads").mkdir()

    def tool(self, name, script):
        """A tool that Velto finds first, as a line for the shell."""
        path = self.home / ".local/bin" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(f"#!/bin/sh\n{script}\n")
        path.chmod(0o755)

    def point_at_strip(self):
        xdotool("mousemove", screen_size()[0] // 2, 4)

    def open_panel(self):
        """Moves the pointer onto the strip. Returns the time."""
        start = time.monotonic()
        self.point_at_strip()
        until("the panel to open", lambda: self.geometry().height >= PANEL_HEIGHT, pause=0.02)
        return start

    def close_panel(self, strip):
        start = time.monotonic()
        self.leave()
        until("the panel to close", lambda: self.geometry().height <= strip.height, pause=0.02)
        return start

    def point_at_page(self):
        at = self.geometry()
        xdotool("mousemove", at.x + at.width // 2, at.y + at.height * 2 // 3)


class Floor(Velto):
    """The bare window, started and stopped the same way."""

    def find_window(self):
        return next(iter(xdotool("search", "--onlyvisible", "--name", "^Bare window$").split()), None)


class Event(typing.NamedTuple):
    """An event from bench/watch-window; `cpu` is the processor time of the program's main thread by then, in seconds."""

    what: str
    stamp: float
    width: int
    height: int
    cpu: float


class Watcher:
    """Watches the first window that appears at the top of the screen, from before its program starts. Use it in a with statement."""

    def __init__(self, program):
        self.process = subprocess.Popen([program], stdout=subprocess.PIPE, text=True)
        self.events = queue.Queue()
        threading.Thread(target=self.read, daemon=True).start()
        self.wait_for("ready")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.send_signal(signal.SIGTERM)
        self.process.wait(5)

    def read(self):
        for line in self.process.stdout:
            what, stamp, _, _, _, width, height, cpu = line.split()
            self.events.put(Event(what, int(stamp) / 1e9, int(width), int(height), int(cpu) / 1e9))

    def wait_for(self, *kinds, since=0.0, seconds=20.0):
        end = time.monotonic() + seconds
        while True:
            try:
                event = self.events.get(timeout=max(0.01, end - time.monotonic()))
            except queue.Empty:
                raise Failure(f"the window was never {' or '.join(kinds)}") from None
            if event.what in kinds and event.stamp >= since:
                return event

    def frames(self, since=0.0):
        """The frames drawn since then, each by its last drawing."""
        frames = []
        while not self.events.empty():
            event = self.events.get()
            if event.what != "drawn" or event.stamp < since:
                continue
            if frames and (event.stamp - frames[-1].stamp) * 1000 < ONE_FRAME_MS:
                frames.pop()
            frames.append(event)
        return frames


def worst(frames):
    """For the frames of one motion: the longest pause between two in ms, and the cost of the most expensive."""
    pairs = [(after.stamp - before.stamp, after.cpu - before.cpu) for before, after in zip(frames, frames[1:])]
    moving = [(pause * 1000, cpu * 1000) for pause, cpu in pairs if pause * 1000 < MOTION_MS]
    return tuple(max((pair[i] for pair in moving), default=0.0) for i in (0, 1))


def threads(pid):
    return list(pathlib.Path(f"/proc/{pid}/task").iterdir())


def cpu_seconds(pid):
    return sum(thread_cpu(pid).values())


def thread_cpu(pid):
    return {task.name: int((task / "schedstat").read_text().split()[0]) / 1e9 for task in threads(pid)}


def children_cpu_ms(pid):
    """Processor time of the children that have ended, in the system's steps of 10 ms."""
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[13]) + int(fields[14])) * 10


def thread_switches(pid):
    return {
        task.name: sum(int(line.split()[1]) for line in (task / "status").read_text().splitlines() if "ctxt_switches" in line)
        for task in threads(pid)
    }


def memory_mb(pid):
    text = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text()
    values = {line.split()[0]: int(line.split()[1]) / 1024 for line in text.splitlines() if line.endswith("kB")}
    return values["Rss:"], values["Pss:"]


def first_paint_ms(make, watcher_program):
    with Watcher(watcher_program) as watcher, make() as program:
        start = time.monotonic()
        program.launch()
        event = watcher.wait_for("painted")
        return (event.stamp - start) * 1000, event.cpu * 1000


def rest(pid, seconds):
    """Processor time and context switches over so many seconds, for the seconds with and without a tick."""
    # Threads that end meanwhile stay counted.
    cpus, switched = thread_cpu(pid), thread_switches(pid)
    before = sum(switched.values())
    cpu = [sum(cpus.values())]
    for _ in range(seconds):
        time.sleep(1)
        cpus.update(thread_cpu(pid))
        switched.update(thread_switches(pid))
        cpu.append(sum(cpus.values()))
    each = sorted((after - before) * 1000 for before, after in zip(cpu, cpu[1:]))
    quiet = each[: max(1, len(each) * 9 // 10)]
    return {
        "CPU at rest, ms a minute": statistics.fmean(each) * 60,
        "CPU between ticks, ms a minute": statistics.fmean(quiet) * 60,
        "switches a second": (sum(switched.values()) - before) / seconds,
    }
