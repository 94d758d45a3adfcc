"""Drives the real program on a virtual desktop, from outside, as a person and a coding session would.

Used by the end-to-end tests and the whole-process benches. Python's standard library, xdotool and curl; every wait is bounded.
"""

import json
import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import typing

try:
    import gi

    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib
except (ImportError, ValueError):
    Atspi = None

PORT = 4747
WINDOW_NAME = "^Velto$"
SETTINGS = "velto/settings.json"  # under $XDG_CONFIG_HOME
TOKEN_KEY = "hookToken"
SCALE = float(os.environ.get("QT_SCALE_FACTOR", "1"))  # of the display: all places and sizes are in its pixels
PEEK_ROW_HEIGHT = round(36 * SCALE)
PEEK_WIDTH = round(520 * SCALE)  # at least
GUARD_SECONDS = 0.3  # a press sooner than this after the question slid in doesn't answer it

# For desktops that can't be asked what is on the screen: the middle of each pill, from the window's right and lower edges.
ALLOW = (46, 18)
DENY = (104, 18)
PANEL = (round(780 * SCALE), round(520 * SCALE))
TABS = ("Home", "Todos", "Agents", "Connect")


class Failure(Exception):
    """What went wrong, in plain words."""


def skip(why):
    print(f"skipped: {why}")
    sys.exit(77)


def port_is_taken():
    with socket.socket() as attempt:
        return attempt.connect_ex(("127.0.0.1", PORT)) == 0


def run(main, usage, most=1):
    """Runs a test: calls main(VELTO) with the command line's arguments, at most so many."""
    if not 2 <= len(sys.argv) <= most + 1:
        sys.exit(usage)
    try:
        main(*sys.argv[1:])
    except Failure as failure:
        sys.exit(f"failed: {failure}")


def expect(what, seen, wanted):
    if seen != wanted:
        raise Failure(f"{what}: saw {seen!r}, wanted {wanted!r}")
    print(f"ok: {what}")


def check_machine():
    """Exits with 77 if this machine can't try it."""
    for tool in ("xdotool", "curl"):
        if not shutil.which(tool):
            skip(f"{tool} is missing (script/bootstrap installs it)")
    if not Atspi:
        skip("no way to ask what is on the screen (python3-gi and gir1.2-atspi-2.0 are missing)")
    if not os.environ.get("DISPLAY"):
        skip("no display (run it through script/with-desktop)")
    if port_is_taken():
        skip(f"port {PORT} is taken, and this machine gives no network of its own")


def until(what, condition, seconds=20.0, pause=0.05):
    """Polls until condition() is true and returns its value; fails with `what` after so many seconds."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise Failure(f"waited {seconds:g} s in vain: {what}")
        time.sleep(pause)


def xdotool(*words):
    done = subprocess.run(["xdotool", *map(str, words)], capture_output=True, text=True, timeout=20)
    return done.stdout if done.returncode == 0 else ""


def write(text):
    xdotool("type", "--delay", 20, text)


def screen_size():
    width, height = xdotool("getdisplaygeometry").split()
    return int(width), int(height)


def fits(name, wanted):
    """Whether this is the wanted control's name: an exact name, or a compiled pattern."""
    return bool(wanted.fullmatch(name)) if isinstance(wanted, re.Pattern) else name == wanted


class Geometry(typing.NamedTuple):
    x: int
    y: int
    width: int
    height: int

    def __str__(self):
        return f"{self.width}x{self.height}+{self.x}+{self.y}"

    def holds(self, other):
        return (other.width > 0 and other.height > 0 and self.x <= other.x and other.x + other.width <= self.x + self.width
                and self.y <= other.y and other.y + other.height <= self.y + self.height)


def geometry_of(window):
    """All zero if the window is gone."""
    text = xdotool("getwindowgeometry", "--shell", window)
    values = dict(line.split("=", 1) for line in text.splitlines() if "=" in line)
    return Geometry(*(int(values.get(key, 0)) for key in ("X", "Y", "WIDTH", "HEIGHT")))


class Velto:
    """The program in a home folder of its own, past its welcome, without a `claude` that could answer. Use it in a with
    statement."""

    def __init__(self, program):
        self.program = str(pathlib.Path(program).resolve())
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="velto-home."))
        self.config = self.home / ".config"
        settings = self.config / SETTINGS
        settings.parent.mkdir(parents=True)
        settings.write_text('{"onboarded": true}')
        tools = self.home / "bin"
        tools.mkdir()
        (tools / "claude").write_text("#!/bin/sh\necho '[]'\n")
        (tools / "claude").chmod(0o755)
        self.environment = {
            **os.environ,
            "HOME": str(self.home),
            "XDG_CONFIG_HOME": str(self.config),
            "XDG_DATA_HOME": str(self.home / ".local/share"),
            "XDG_CACHE_HOME": str(self.home / ".cache"),
            "PATH": f"{tools}:/usr/bin:/bin",
            "LC_ALL": "C.UTF-8",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        }
        self.process = None
        self.window = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()
        shutil.rmtree(self.home, ignore_errors=True)

    def launch(self, *arguments):
        self.process = subprocess.Popen([self.program, *arguments], env=self.environment, stdin=subprocess.DEVNULL)

    def start(self, *arguments):
        """Returns once the strip is on the screen and has stopped moving."""
        xdotool("mousemove", screen_size()[0] // 2, screen_size()[1] - 40)
        self.launch(*arguments)
        self.window = until("the strip's window", self.find_window, 20)
        return self.settled()

    def stop(self):
        if self.process and self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            try:
                self.process.wait(5)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()

    def find_window(self):
        """The highest visible window of that name on the screen: settings and other windows are lower."""
        if self.process.poll() is not None:
            raise Failure(f"{self.program} ended with {self.process.returncode}")
        windows = xdotool("search", "--onlyvisible", "--name", WINDOW_NAME).split()
        return min(windows, key=lambda each: geometry_of(each).y, default=None)

    def geometry(self):
        if self.process.poll() is not None:
            raise Failure(f"{self.program} ended with {self.process.returncode}")
        return geometry_of(self.window)

    def settled(self, fits=lambda _: True, what="the window to stand still", seconds=10.0):
        """The geometry, once it meets the condition and hasn't changed for a quarter of a second."""
        still = {"geometry": None, "since": 0.0}

        def check():
            now = self.geometry()
            if now != still["geometry"]:
                still.update(geometry=now, since=time.monotonic())
            return now if fits(now) and time.monotonic() - still["since"] > 0.25 else None

        return until(what, check, seconds)

    def panel_opened(self, what="the panel to open"):
        return self.settled(lambda at: (at.width, at.height) == PANEL, what)

    def token(self):
        def read():
            try:
                return json.loads((self.config / SETTINGS).read_text()).get(TOKEN_KEY)
            except (OSError, ValueError):
                return None

        return until(f"{TOKEN_KEY} in {SETTINGS}", read)

    def ask(self, tool="Bash", command="touch made-by-bash.txt", session="aefe0d0b-131d-43a7-b83d-daf04de24178"):
        """Posts a permission question as the installed hook does; returns curl, still running."""
        body = {
            "session_id": session,
            "transcript_path": str(self.home / "session.jsonl"),
            "cwd": str(self.home / "proj"),
            "permission_mode": "default",
            "hook_event_name": "PermissionRequest",
            "tool_name": tool,
            "tool_input": {"command": command, "description": "Run the scripted command"},
        }
        line = (
            f"curl -s -m 35 -X POST -H 'X-Velto-Token: {self.token()}' --data-binary @- "
            f"http://127.0.0.1:{PORT}/permission 2>/dev/null || true"
        )
        curl = subprocess.Popen(["sh", "-c", line], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, start_new_session=True)
        curl.stdin.write(json.dumps(body))
        curl.stdin.close()
        curl.stdin = None
        return curl

    @staticmethod
    def hang_up(curl):
        """The session ends its question: in its terminal, or by ending itself."""
        os.killpg(curl.pid, signal.SIGKILL)
        curl.communicate(timeout=10)

    # What is on the screen, as reported to screen readers.

    def controls(self):
        """(name, description, place, is focused, object) of everything visible, in the tree's order."""
        found = []

        def walk(node):
            states = node.get_state_set()
            if node.get_role() != Atspi.Role.APPLICATION:
                if not states.contains(Atspi.StateType.SHOWING):
                    return
                at = Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN)  # in points
                found.append((node.get_name(), node.get_description(),
                              Geometry(*(round(each * SCALE) for each in (at.x, at.y, at.width, at.height))),
                              states.contains(Atspi.StateType.FOCUSED), node))
            for index in range(node.get_child_count()):
                child = node.get_child_at_index(index)
                if child:
                    walk(child)

        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            try:
                if application and application.get_process_id() == self.process.pid:
                    application.set_cache_mask(Atspi.Cache.NONE)  # nothing here listens to the events that would keep a cache up to date
                    walk(application)
            except GLib.Error:  # the object disappeared meanwhile
                pass
        return found

    def names(self):
        return [control[0] for control in self.controls()]

    def place_of(self, name, seconds=20.0):
        """Where the control of that name is, once it is fully inside the window and has stopped moving."""
        before = {"place": None}

        def look():
            place = next((each[2] for each in self.controls() if fits(each[0], name) and self.geometry().holds(each[2])), None)
            still = place is not None and place == before["place"]
            before["place"] = place
            return place if still else None

        return until(f"{name!r} to be on the screen", look, seconds, 0.1)

    def press(self, name, seconds=20.0):
        """A real click in the middle of the control of that name."""
        at = self.place_of(name, seconds)
        xdotool("mousemove", at.x + at.width // 2, at.y + at.height // 2, "sleep", 0.1, "click", 1)

    def focused(self):
        """The name of the focused control."""
        return next((each[0] for each in reversed(self.controls()) if each[3]), "")

    def key(self, key, then):
        """Presses a key and waits for its effect: `then` is the name of the control that gets the focus, or a condition."""
        xdotool("key", key)
        until(f"{key} to lead to {then}", then if callable(then) else lambda: fits(self.focused(), then))

    def fill(self, name, text):
        """Moves the focus to the field of that name and types into it."""
        if self.focused() != name:
            self.press(name)
            until(f"the keyboard in \"{name}\"", lambda: self.focused() == name)
        write(text)

    def open_tab(self, name):
        """For a panel that has the keyboard."""
        xdotool("key", f"ctrl+{TABS.index(name) + 1}")

    def scroll_to(self, name):
        """Turns the wheel over the page, to its end and back, until the control of that name is in sight."""
        at = self.geometry()
        xdotool("mousemove", at.x + at.width // 2, at.y + at.height * 3 // 4)
        for button in [5] * 12 + [4] * 24:
            if any(fits(each[0], name) and at.holds(each[2]) for each in self.controls()):
                return
            xdotool("click", button)
        raise Failure(f"\"{name}\" is nowhere on the page")

    def leave(self):
        width, height = screen_size()
        xdotool("mousemove", width // 2, height - 40)
