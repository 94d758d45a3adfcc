"""A desktop as a person uses it: a pointer, a keyboard, windows to type in, and a picture of the screen.

The same on X11 (xdotool, xterm, ImageMagick) and on Wayland (sway, foot, grim and the program `wayland-hand`)."""

import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import time

from velto_desktop import Failure, Geometry, skip, until, xdotool

# evdev's codes (linux/input-event-codes.h) of the keys and buttons pressed here, by X11's names and numbers.
KEYS = {"Escape": 1, "Return": 28, "ctrl": 29, "n": 49}
BUTTONS = {1: 272, 3: 273}
BLACK = 6  # of 255: the strip is no brighter than this


class Desk:
    """Use it in a with statement."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="velto-desk."))
        self.windows = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for window in self.windows:
            window.kill()
            window.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def open(self, name, *command):
        """A window that records what is typed into it; returns a function that returns the text."""
        file = self.folder / name
        script = f"stty raw -echo; exec cat > {file}"
        self.windows.append(subprocess.Popen([*command, "sh", "-c", script], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        until(f"the window {name}", file.exists)
        time.sleep(0.5)
        return file.read_text

    def close_last(self):
        window = self.windows.pop()
        window.kill()
        window.wait()
        time.sleep(0.5)

    def strip(self):
        """Where the black at the top centre is; None if there is none."""
        width, height, pixels = self.picture()

        def dark(x, y):
            at = 3 * (y * width + x)
            return max(pixels[at : at + 3]) <= BLACK

        def reach(step):
            x = width // 2
            while 0 <= x + step < width and dark(x + step, 1):
                x += step
            return x

        if not dark(width // 2, 1):
            return None
        left, right = reach(-1), reach(1)
        column, bottom = left + 24, 1
        while bottom + 1 < height and dark(column, bottom + 1):
            bottom += 1
        return Geometry(left, 0, right - left + 1, bottom + 1)

    def settled(self, fits, what):
        """The strip's place once it meets the condition and has stopped moving."""
        last = [None]

        def check():
            now, before = self.strip(), last[0]
            last[0] = now
            return now if now and now == before and fits(now) else None

        try:
            return until(what, check, 20, 0.3)
        except Failure as failure:
            raise Failure(f"{failure} (the strip is at {last[0]})") from None

    def click(self, x, y, button=1):
        self.move(x, y)
        time.sleep(0.3)
        self.button(button)


def read_ppm(data):
    """Width, height and the bytes of an image as grim and ImageMagick write it, after a header of three lines."""
    kind, size, _, pixels = data.split(b"\n", 3)
    if kind != b"P6":
        raise Failure(f"a picture of the kind {kind!r}")
    width, height = map(int, size.split())
    return width, height, pixels


class X11Desk(Desk):
    terminal = ("xterm", "-geometry", "120x40+80+120", "-bg", "white", "-e")
    editor = ("xterm", "-class", "Notes", "-name", "notes", "-geometry", "120x40+80+120", "-bg", "white", "-e")

    def __init__(self):
        super().__init__()
        for tool in ("xdotool", "xterm", "import"):
            if not shutil.which(tool):
                skip(f"{tool} is missing (script/bootstrap installs it)")

    def picture(self):
        return read_ppm(subprocess.run(["import", "-window", "root", "-depth", "8", "ppm:-"], capture_output=True, check=True).stdout)

    def move(self, x, y):
        xdotool("mousemove", x, y)

    def button(self, button=1):
        xdotool("click", button)

    def key(self, name):
        xdotool("key", name)

    def type(self, text):
        xdotool("type", "--delay", 30, text)
        time.sleep(0.5)

    def fill_screen(self):
        xdotool("getactivewindow", "windowsize", "100%", "100%", "windowmove", 0, 0)
        subprocess.run(["xdotool", "getactivewindow", "windowstate", "--toggle", "FULLSCREEN"], check=False)
        time.sleep(1)


class WaylandDesk(Desk):
    terminal = ("foot", "-o", "colors.background=ffffff")
    editor = ("foot", "--app-id=notes", "-o", "colors.background=ffffff")

    def __init__(self, hand):
        super().__init__()
        self.hand = subprocess.Popen([hand], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.output = "HEADLESS-1"
        self.corner = (0, 0)
        self.show(self.output)

    def __exit__(self, *rest):
        self.hand.kill()
        self.hand.wait()
        super().__exit__(*rest)

    def do(self, line):
        self.hand.stdin.write(line + "\n")
        self.hand.stdin.flush()
        if self.hand.stdout.readline() != "ok\n":
            raise Failure(f"the hand can't {line!r}")

    def picture(self):
        picture = ["grim", "-o", self.output, "-t", "ppm", "-"]
        return read_ppm(subprocess.run(picture, capture_output=True, check=True).stdout)

    def move(self, x, y):
        # Some surfaces notice a pointer only when it moves within them.
        x, y = x + self.corner[0], y + self.corner[1]
        self.do(f"move {max(0, x - 1)} {y}")
        self.do(f"move {x} {y}")

    def button(self, button=1):
        self.do(f"press {BUTTONS[button]}")
        time.sleep(0.1)
        self.do(f"release {BUTTONS[button]}")

    def key(self, name):
        self.do("keys " + " ".join(str(KEYS[each]) for each in name.split("+")))

    def type(self, text):
        self.do(f"text {text}")
        time.sleep(0.5)

    def fill_screen(self):
        self.swaymsg("fullscreen", "enable")
        time.sleep(1)

    @staticmethod
    def swaymsg(*words):
        done = subprocess.run(["swaymsg", "-r", *map(str, words)], capture_output=True, text=True, check=True, timeout=20)
        return json.loads(done.stdout)

    @staticmethod
    def copy(text):
        subprocess.run(["wl-copy", text], check=True, timeout=20)

    @staticmethod
    def lock():
        """Locks the screen and returns the locker; None if none is installed."""
        return subprocess.Popen(["swaylock", "--color", "224422"]) if shutil.which("swaylock") else None

    def can_unplug(self):
        version = self.swaymsg("-t", "get_version")
        return (version["major"], version["minor"]) >= (1, 8)

    def outputs(self):
        return {each["name"]: each for each in self.swaymsg("-t", "get_outputs")}

    def show(self, name):
        """From here on, pictures and the pointer belong to this output."""
        self.output = name
        if name not in self.outputs():
            raise Failure(f"there is no output {name}")
        everything = [each["rect"] for each in self.outputs().values()]
        place = self.outputs()[name]["rect"]
        self.corner = place["x"], place["y"]
        width = max(each["x"] + each["width"] for each in everything)
        height = max(each["y"] + each["height"] for each in everything)
        self.do(f"size {width} {height}")


def desk(hand=None):
    """The desktop of the session that this runs in."""
    return WaylandDesk(hand) if os.environ.get("WAYLAND_DISPLAY") else X11Desk()
