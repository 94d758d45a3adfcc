"""Drives the real program on a virtual desktop, from outside, as a person and a coding session would.

Used by the end-to-end tests and the whole-process benches. Python's standard library, xdotool and curl; every wait is bounded.
"""

import json
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import typing

PORT = 4747
WINDOW_NAME = "^Velto$"
SETTINGS = "velto/settings.json"  # under $XDG_CONFIG_HOME
TOKEN_KEY = "hookToken"
PEEK_ROW_HEIGHT = 36
PEEK_WIDTH = 520  # at least
GUARD_SECONDS = 0.3  # a press earlier than this after the question slid in is no answer

# Middle of each pill: pixels from the window's right edge and from its lower edge, in a peeking window.
ALLOW = (46, 18)
DENY = (104, 18)
ROW_TEXT = (260, 18)
PANEL = (780, 520)
AGENTS_TAB = 3


class Failure(Exception):
    """What a person would say went wrong."""


def skip(why):
    print(f"skipped: {why}")
    sys.exit(77)


def port_is_taken():
    with socket.socket() as attempt:
        return attempt.connect_ex(("127.0.0.1", PORT)) == 0


def run(main, usage, most=1):
    """The program of a test: main(VELTO) with its arguments, of which there are so many at most."""
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
    """Ends with 77 where this can't be tried."""
    for tool in ("xdotool", "curl"):
        if not shutil.which(tool):
            skip(f"{tool} is missing (script/bootstrap installs it)")
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


def press_keys(*keys):
    """One after the other, each given time to work."""
    for key in keys:
        xdotool("key", key)
        time.sleep(0.5)


def write(text):
    xdotool("type", "--delay", 30, text)
    time.sleep(0.4)


def screen_size():
    width, height = xdotool("getdisplaygeometry").split()
    return int(width), int(height)


class Geometry(typing.NamedTuple):
    x: int
    y: int
    width: int
    height: int

    def __str__(self):
        return f"{self.width}x{self.height}+{self.x}+{self.y}"


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
        """Returns once the strip is on the screen and stands still."""
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
        """The topmost visible window of that name: settings or other windows stand lower."""
        if self.process.poll() is not None:
            raise Failure(f"{self.program} ended with {self.process.returncode}")
        windows = xdotool("search", "--onlyvisible", "--name", WINDOW_NAME).split()
        return min(windows, key=lambda each: geometry_of(each).y, default=None)

    def geometry(self):
        if self.process.poll() is not None:
            raise Failure(f"{self.program} ended with {self.process.returncode}")
        return geometry_of(self.window)

    def settled(self, fits=lambda _: True, what="the window to stand still", seconds=10.0):
        """The geometry, once it fits and hasn't changed for a quarter of a second."""
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

    def press(self, place):
        """A real click at a place given from the window's right and lower edges."""
        at = self.geometry()
        xdotool("mousemove", "--sync", at.x + at.width - place[0], at.y + at.height - place[1])
        time.sleep(0.1)
        xdotool("click", 1)

    def press_in_panel(self, x, y):
        """A real click at a place of the open panel."""
        at = self.geometry()
        xdotool("mousemove", "--sync", at.x + x, at.y + y)
        time.sleep(0.3)
        xdotool("click", 1)

    def open_tab(self, place):
        """In a panel that has the keyboard."""
        xdotool("key", f"ctrl+{place}")
        time.sleep(0.7)

    def leave(self):
        width, height = screen_size()
        xdotool("mousemove", width // 2, height - 40)
