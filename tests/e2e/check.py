#!/usr/bin/python3
"""The report of what works here: complete and well formed with a display and without, right about the port, and without secrets.

Usage: script/with-desktop --own-network tests/e2e/check.py VELTO. Ends with 77 if this machine can't try it.
"""

import os
import re
import socket
import subprocess

from velto_desktop import PORT, Velto, check_machine, expect, run, until

LINE = re.compile(r"(.{20}) (works|missing|denied)( +(.*))?")


def report(velto, status=0, without=()):
    """The content of each line: its state and its text."""
    environment = {name: value for name, value in velto.environment.items() if name not in without}
    done = subprocess.run([velto.program, "--check"], env=environment, capture_output=True, text=True, timeout=60)
    expect(f"the report ends with {status}", done.returncode, status)
    first, *lines = done.stdout.splitlines()
    expect("the first line names the version", bool(re.fullmatch(r"velto \d+(\.\d+)*", first)), True)
    expect("lines that don't fit the columns", [line for line in lines if not LINE.fullmatch(line)], [])
    found = (LINE.fullmatch(line) for line in lines)
    return done.stdout, {each[1].strip(): (each[2], each[4] or "") for each in found}


def main(program):
    check_machine()
    port = f"port {PORT}"
    with Velto(program) as velto:
        _, lines = report(velto)
        expect("the display", lines["display"][0], "works")
        expect("nobody listens", lines[port][0], "missing")
        expect("Claude Code", lines["Claude Code"][0], "works")
        expect("its hooks", lines["its hooks"][0], "missing")

        with socket.create_server(("127.0.0.1", PORT)):
            _, lines = report(velto)
            expect("another program listens", lines[port][0], "denied")
            expect("it is named", str(os.getpid()) in lines[port][1], True)

        velto.start()
        token = until("the token", velto.token)
        text, lines = report(velto)
        expect("Velto listens", lines[port][0], "works")
        expect("the token stays out of it", token in text, False)
        _, lines = report(velto, 1, ("DISPLAY", "WAYLAND_DISPLAY"))
        expect("there is no display", lines["display"][0], "missing")
        expect("the rest is told all the same", lines[port][0], "works")


if __name__ == "__main__":
    run(main, __doc__)
