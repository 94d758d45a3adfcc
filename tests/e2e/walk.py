#!/usr/bin/python3
"""A walk through a desktop with Velto on it: it takes nobody's keyboard, gives it back, asks over a full screen, and leaves a question
to the terminal that the user is in. The same on X11 and on Wayland.

Usage: script/with-desktop --own-network tests/e2e/walk.py VELTO
       script/with-sway --own-network tests/e2e/walk.py VELTO WAYLAND-HAND
Ends with 77 if this machine can't try it.
"""

import subprocess
import time

from desks import desk
from velto_desktop import ALLOW, DENY, GUARD_SECONDS, PANEL, PEEK_ROW_HEIGHT, PEEK_WIDTH, PORT, Velto, expect, port_is_taken, run, skip, until


def asks(velto, here, strip, place, command):
    """Asks, presses that pill, and tells whether the answer allows or denies."""
    curl = velto.ask(command=command)
    try:
        at = here.settled(
            lambda now: now.width >= PEEK_WIDTH - 40 and now.height > strip.height, f"the question {command!r} to slide out"
        )
        time.sleep(GUARD_SECONDS + 0.1)
        # Places are counted from the window's edges, which lie a flare of the outline beyond the black.
        middle = at.x + at.width / 2
        window_width = max(PEEK_WIDTH, strip.width)
        here.click(int(middle + window_width / 2 - place[0]), strip.height + PEEK_ROW_HEIGHT - place[1])
        answer, _ = curl.communicate(timeout=15)
    finally:
        curl.kill()
        curl.wait()
    here.move(300, 700)
    return "allow" if '"allow"' in answer else "deny" if '"deny"' in answer else answer


def main(program, hand=None):
    if port_is_taken():
        skip(f"port {PORT} is taken, and this machine gives no network of its own")
    with desk(hand) as here, Velto(program) as velto:
        here.move(300, 700)
        typed = here.open("notes", *here.editor)
        here.type("one")
        velto.launch()
        strip = here.settled(lambda now: now.width < PANEL[0] / 2, "the strip")
        width, _, _ = here.picture()
        expect("the strip stands in the centre", abs(strip.x + strip.width / 2 - width / 2) <= 2, True)
        until("the listener", port_is_taken)
        here.type(" two")
        expect("the start takes nobody's keyboard", typed(), "one two")

        for round in ("once", "again"):
            subprocess.run([velto.program, "--search"], env=velto.environment, check=True, timeout=30)
            here.settled(lambda now: now.width > PANEL[0] - 40, f"the panel to open by its key, {round}")
            here.type("abc")
            here.key("Escape")
            here.key("Escape")
            here.settled(lambda now: now.width == strip.width, f"the panel to close, {round}")
        here.type(" back")
        expect("what is typed goes to the panel, and afterwards to the window again", typed(), "one two back")

        here.fill_screen()
        expect("Allow over a full screen", asks(velto, here, strip, ALLOW, "make allow"), "allow")
        expect("Deny over a full screen", asks(velto, here, strip, DENY, "make deny"), "deny")
        here.type(" end")
        expect("a press on the strip takes nobody's keyboard", typed(), "one two back end")
        here.close_last()

        typed = here.open("terminal", *here.terminal)
        here.type("in front")
        expect("the terminal has the keyboard", typed(), "in front")
        curl = velto.ask(command="make nothing")
        printed, _ = curl.communicate(timeout=10)
        expect("a question is left to the terminal in front", printed, "")


if __name__ == "__main__":
    run(main, __doc__, 2)
