#!/usr/bin/python3
"""A second start opens the panel of the first and ends, or takes its place if the first is just ending; without a session bus it
says why it can't.

Usage: script/with-desktop --own-network tests/e2e/second_start.py VELTO. Ends with 77 if this machine can't try it.
"""

import fcntl
import os
import signal
import subprocess
import time

from velto_desktop import Velto, check_machine, expect, run, until


def start_again(velto, *arguments, **changes):
    environment = {**velto.environment, **changes}
    return subprocess.run([velto.program, *arguments], env=environment, capture_output=True, text=True, timeout=20)


def is_claimed(folder):
    """Whether a program holds the lock on this folder."""
    if not folder.exists():
        return False
    opened_folder = os.open(folder, os.O_RDONLY)
    try:
        fcntl.flock(opened_folder, fcntl.LOCK_EX | fcntl.LOCK_NB)
        return False
    except BlockingIOError:
        return True
    finally:
        os.close(opened_folder)


def main(program):
    check_machine()
    with Velto(program) as velto:
        # In quick succession: the first isn't on the bus yet.
        velto.launch()
        until("the first to claim its settings", lambda: is_claimed(velto.config / "velto"))
        expect("a second start ends well", start_again(velto).returncode, 0)
        velto.window = velto.find_window()
        velto.panel_opened("the panel of the first to open")
        velto.stop()

        velto.start()
        expect("a key that the desktop binds to it ends well", start_again(velto, "--search").returncode, 0)
        velto.panel_opened("the panel to open for that key")
        expect("the first still runs", velto.process.poll(), None)

        alone = start_again(velto, "--search", DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        expect("without a bus a second start gives up", alone.returncode, 1)
        expect("and says why", "running already" in alone.stderr, True)

        for milliseconds in (0, 20, 100):
            ending = velto.process
            ending.send_signal(signal.SIGTERM)
            time.sleep(milliseconds / 1000)
            velto.launch("--search")
            ending.wait(10)
            velto.window = until("the window of the one started meanwhile", velto.find_window)
            velto.panel_opened(f"the panel of one started {milliseconds} ms after the end began")


if __name__ == "__main__":
    run(main, __doc__)
