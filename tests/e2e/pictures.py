#!/usr/bin/python3
"""Draws all pictures without a display and without a session bus, and checks them.

Usage: tests/e2e/pictures.py VELTO.
"""

import datetime
import json
import os
import pathlib
import struct
import subprocess
import sys
import tempfile
import time

PANEL = (780, 520)
PICTURES = {"collapsed": (289, 32), "peek": (520, 68)} | dict.fromkeys(
    ("home", "todos", "todo-open", "add", "agents", "quillbox"), PANEL)


def check(what, got, wanted):
    if got != wanted:
        sys.exit(f"failed: {what}: {got!r}, wanted {wanted!r}")
    print(f"ok: {what}")


def size_of(png):
    header = png.read_bytes()[:24]
    return struct.unpack(">II", header[16:]) if header.startswith(b"\x89PNG") else None


def contents_of(folder):
    return {path.relative_to(folder): path.read_bytes() for path in folder.rglob("*") if path.is_file() and ".cache" not in path.parts}


class Machine:
    """A user's home with one todo and one waiting session, and nothing to draw on."""

    def __init__(self, program, folder):
        self.program = program
        self.home = folder / "home"
        tools = self.home / ".local/bin"
        data = self.home / ".local/share/Velto"
        for each in (tools, data):
            each.mkdir(parents=True)
        session = {"id": "1", "name": "api", "state": "blocked", "cwd": "/src/api", "startedAt": int(time.time() * 1000)}
        claude = tools / "claude"
        claude.write_text(f"#!/bin/sh\necho '{json.dumps([session])}'\n")
        claude.chmod(0o755)
        (data / "todos.json").write_text(json.dumps([{
            "id": 1, "title": "Send the notes", "details": "To all.", "due": datetime.date.today().isoformat(), "who": "me",
            "project": "", "scope": "office", "prio": 1, "comments": []}]))
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.home), "XDG_RUNTIME_DIR": str(folder / "none")}

    def run(self, *arguments, **more):
        return subprocess.run([self.program, *map(str, arguments)], env=self.environment | more, cwd=self.home.parent,
                              capture_output=True, text=True, timeout=60)


def main(program):
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(temporary)
        machine = Machine(program, folder)

        for name in ("one.png", "two.png"):
            check(f"{name} is drawn", machine.run("--site-preview", name).returncode, 0)
        check("the site preview has its size", size_of(folder / "one.png"), PANEL)
        check("and is the same each time", (folder / "one.png").read_bytes(), (folder / "two.png").read_bytes())

        before = contents_of(machine.home)
        done = machine.run("--snapshot", "all", "--site-preview", "never.png")
        check(f"all views are drawn {done.stderr}", done.returncode, 0)
        found = {path.stem: size_of(path) for path in (folder / "all").iterdir()}
        check("each by its name and in its size", found, PICTURES)
        check("no two alike", len({path.read_bytes() for path in (folder / "all").iterdir()}), len(PICTURES))
        check("the site preview is left out then", (folder / "never.png").exists(), False)
        check("nothing of the user's was touched", contents_of(machine.home), before)

        check("twice the size is drawn", machine.run("--site-preview", "big.png", QT_SCALE_FACTOR="2").returncode, 0)
        check("with twice the pixels", size_of(folder / "big.png"), (1560, 1040))

        for flag, place in (("--site-preview", "one.png/a.png"), ("--snapshot", "one.png/a")):
            failed = machine.run(flag, place)
            check(f"{flag} fails where nothing can be written", failed.returncode, 1)
            check("and says why", f"{folder}/{place}" in failed.stderr and "Not a directory" in failed.stderr, True)
        alone = machine.run("--snapshot")
        check("without a folder it is an ordinary start", "graphical session" in alone.stderr, True)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
