#!/usr/bin/python3
"""Velto on a desktop in use: it takes the keyboard from nobody unasked, gives it back, gets what is typed into it, asks above a
full-screen window, opens its menu, follows its output, hides behind a lock and leaves a question to the terminal that the user is in.
The same on X11 and on Wayland; what only a compositor can do is tried there.

Usage: script/with-desktop --own-network tests/e2e/walk.py VELTO
       script/with-sway --own-network tests/e2e/walk.py VELTO WAYLAND-HAND
Ends with 77 if this machine can't try it.
"""

import signal
import subprocess
import time

from desks import WaylandDesk, desk
from velto_desktop import ALLOW, DENY, GUARD_SECONDS, PANEL, PEEK_ROW_HEIGHT, PEEK_WIDTH, PORT, Velto, expect, port_is_taken, run, skip, until

ASIDE = (300, 700)


def is_open(now):
    return now.width > PANEL[0] - 40


class Walk:
    def __init__(self, velto, here):
        self.velto = velto
        self.here = here

    def strip_comes(self):
        here = self.here
        here.move(*ASIDE)
        self.typed = here.open("notes", *here.editor)
        here.type("one")
        self.velto.launch()
        self.strip = here.settled(lambda now: now.width < PANEL[0] / 2, "the strip")
        width, _, _ = here.picture()
        expect("the strip stands in the centre", abs(self.strip.x + self.strip.width / 2 - width / 2) <= 2, True)
        until("the listener", port_is_taken)
        here.type(" two")
        expect("the start takes nobody's keyboard", self.typed(), "one two")

    def closed(self, what):
        self.strip = self.here.settled(lambda now: now.width < PANEL[0] / 2 and now.height == self.strip.height, what)

    def close_by_keys(self):
        """Presses Escape step by step: the first may only clear a text or a selection, and one too many would go to the window below."""
        for _ in range(3):
            self.here.key("Escape")
            time.sleep(1.5)
            if not is_open(self.here.strip()):
                break
        self.closed("the panel to close by a key")

    def resting_opens(self):
        here = self.here
        here.move(self.strip.x + self.strip.width // 2, 8)
        here.settled(is_open, "the panel to open under the pointer")
        here.type(" three")
        expect("who only looks goes on typing in the window", self.typed(), "one two three")
        middle = self.strip.x + self.strip.width // 2
        here.click(middle, 480)
        plain = here.picture()[2]
        time.sleep(0.5)
        expect("a press beside everything opens nothing", here.picture()[2] == plain, True)
        here.click(middle, 480, 3)
        until("the menu", lambda: here.picture()[2] != plain)
        time.sleep(0.5)  # some desktops hand over the keyboard only at a second request
        here.key("Escape")
        here.move(*ASIDE)
        self.closed("the panel to close behind the pointer")

    def key_opens(self):
        here, velto = self.here, self.velto
        todos = velto.home / ".local/share/Velto/todos.json"
        subprocess.run([velto.program, "--search"], env=velto.environment, check=True, timeout=30)
        here.settled(is_open, "the panel to open by its key")
        here.key("ctrl+n")
        time.sleep(0.5)
        here.type("buy milk")
        here.key("Return")
        until("the todo on disk", lambda: todos.exists() and "buy milk" in todos.read_text())
        self.close_by_keys()
        here.type(" back")
        expect("what is typed goes to the panel, and afterwards to the window again", self.typed(), "one two three back")

    def asks(self, place, command):
        """Asks, presses that pill, and returns whether the answer allows or denies."""
        here, strip = self.here, self.strip
        curl = self.velto.ask(command=command)
        try:
            at = here.settled(
                lambda now: now.width >= PEEK_WIDTH - 40 and now.height > strip.height, f"the question {command!r} to slide out"
            )
            time.sleep(GUARD_SECONDS + 0.1)
            # Places are relative to the window's edges, which are the outline's flare beyond the black.
            middle = at.x + at.width / 2
            window_width = max(PEEK_WIDTH, strip.width)
            here.click(int(middle + window_width / 2 - place[0]), strip.height + PEEK_ROW_HEIGHT - place[1])
            answer, _ = curl.communicate(timeout=15)
        finally:
            curl.kill()
            curl.wait()
        here.move(*ASIDE)
        return "allow" if '"allow"' in answer else "deny" if '"deny"' in answer else answer

    def questions_over_full_screen(self):
        here = self.here
        here.fill_screen()
        expect("Allow over a full screen", self.asks(ALLOW, "make allow"), "allow")
        expect("Deny over a full screen", self.asks(DENY, "make deny"), "deny")
        here.type(" end")
        expect("a press on the strip takes nobody's keyboard", self.typed(), "one two three back end")
        here.close_last()

    def terminal_answers_itself(self):
        here = self.here
        typed = here.open("terminal", *here.terminal)
        here.type("in front")
        expect("the terminal has the keyboard", typed(), "in front")
        curl = self.velto.ask(command="make nothing")
        printed, _ = curl.communicate(timeout=10)
        expect("a question is left to the terminal in front", printed, "")

    def link_is_noticed(self):
        here, velto = self.here, self.velto
        here.copy("https://github.com/velto/velto/pull/12")
        subprocess.run([velto.program, "--expanded"], env=velto.environment, check=True, timeout=30)
        here.settled(is_open, "the panel")
        until("the copied link on Home", lambda: "GitHub link" in " ".join(velto.names()))
        self.close_by_keys()

    def output_changes(self):
        here = self.here
        for scale in (2, 1.5, 1):
            here.swaymsg("output", "HEADLESS-1", "scale", scale)
            at = here.settled(lambda now: abs(now.width - self.strip.width * scale) <= 3 * scale, f"the strip at a scale of {scale}")
            width, _, _ = here.picture()
            expect(f"it is in the centre at a scale of {scale}", abs(at.x + at.width / 2 - width / 2) <= 2, True)
        here.swaymsg("create_output")
        until("the second output", lambda: len(here.outputs()) == 2)
        second = next(name for name in here.outputs() if name != "HEADLESS-1")
        here.swaymsg("output", second, "position", 0, 0)
        here.swaymsg("output", "HEADLESS-1", "position", here.outputs()[second]["rect"]["width"], 0)
        here.show("HEADLESS-1")
        self.closed("the strip on its output, which has moved")
        here.show(second)
        expect("nothing of it is on the other output", here.strip(), None)
        if here.can_unplug():
            here.swaymsg("output", "HEADLESS-1", "unplug")
            self.closed("the strip on the output that is left")
        else:
            here.show("HEADLESS-1")

    def lock_hides(self):
        here = self.here
        locker = here.lock()
        if not locker:
            return
        until("the strip to hide behind the lock", lambda: here.strip() is None)
        locker.send_signal(signal.SIGUSR1)  # as if the password had been typed
        locker.wait()
        self.closed("the strip after the lock")


def main(program, hand=None):
    if port_is_taken():
        skip(f"port {PORT} is taken, and this machine gives no network of its own")
    with desk(hand) as here, Velto(program) as velto:
        walk = Walk(velto, here)
        walk.strip_comes()
        walk.resting_opens()
        if isinstance(here, WaylandDesk):
            walk.link_is_noticed()
        walk.key_opens()
        walk.questions_over_full_screen()
        walk.terminal_answers_itself()
        if isinstance(here, WaylandDesk):
            walk.output_changes()
            walk.lock_hides()


if __name__ == "__main__":
    run(main, __doc__, 2)
