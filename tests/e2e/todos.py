#!/usr/bin/python3
"""Todos by keys alone, and a press or two: add, comment, finish, undo, search, a quit inside the undo, a second start.

Usage: script/with-desktop --own-network tests/e2e/todos.py VELTO. Ends with 77 if this machine can't try it.
"""

import json
import time

from velto_desktop import PANEL, Failure, Velto, check_machine, expect, press_keys, run, until, write

TODOS_TAB = 2
UNDO_SECONDS = 5

# Places in the open panel.
SEARCH = (560, 108)
UNDO = (715, 170)


class Todos:
    """The file of the todos."""

    def __init__(self, velto):
        self.path = velto.home / ".local/share/Velto/todos.json"

    def read(self):
        return json.loads(self.path.read_text()) if self.path.exists() else []

    def titles(self):
        return sorted(todo["title"] for todo in self.read())

    def become(self, what, wanted, seconds=3.0):
        try:
            until(what, lambda: self.titles() == sorted(wanted), seconds)
        except Failure:
            pass
        expect(what, self.titles(), sorted(wanted))


def by_keys(todos):
    for title in ("First thing", "Second <b>thing</b>", "Third thing"):
        press_keys("ctrl+n")
        write(title)
        press_keys("Return")
    todos.become("three todos are on the disk", ["First thing", "Second <b>thing</b>", "Third thing"])
    expect("nobody else reads them", todos.path.stat().st_mode & 0o777, 0o600)
    expect("a new one is due today", {todo["due"] for todo in todos.read()}, {time.strftime("%Y-%m-%d")})

    press_keys("ctrl+f")
    write("third")
    press_keys("Down", "Return")
    for _ in range(3):  # done, fold, comment
        press_keys("Tab")
    write("a comment")
    press_keys("Return")
    comments = {todo["title"]: [comment["text"] for comment in todo["comments"]] for todo in todos.read()}
    expect("the comment is with what the search found", comments["Third thing"], ["a comment"])

    press_keys("Escape")  # out of the field
    press_keys("ctrl+d", "ctrl+z")
    time.sleep(UNDO_SECONDS + 1)
    expect("an undone todo stays", "Third thing" in todos.titles(), True)
    press_keys("Up", "ctrl+d")
    todos.become("a finished one goes", ["First thing", "Second <b>thing</b>"], UNDO_SECONDS + 2)


def by_pointer(velto, todos):
    velto.press_in_panel(*SEARCH)
    press_keys("ctrl+a")
    write("second")
    press_keys("Down", "ctrl+d")
    velto.press_in_panel(*UNDO)
    time.sleep(UNDO_SECONDS + 1)
    expect("a press on Undo brings it back", todos.titles(), ["First thing", "Second <b>thing</b>"])
    velto.press_in_panel(*SEARCH)
    press_keys("ctrl+a", "BackSpace")


def main(program):
    check_machine()
    with Velto(program) as velto:
        todos = Todos(velto)
        velto.start("--search")
        velto.panel_opened()
        velto.open_tab(TODOS_TAB)
        by_keys(todos)
        by_pointer(velto, todos)

        press_keys("ctrl+n")
        write("Never saved")
        press_keys("Escape")  # out of the field
        press_keys("Escape")  # out of the form
        expect("a form that was left saves nothing", "Never saved" in todos.titles(), False)
        press_keys("Down", "ctrl+d")
        time.sleep(1)
        velto.stop()
        expect("a quit inside the undo finishes nothing", todos.titles(), ["First thing", "Second <b>thing</b>"])

        velto.start("--search")
        velto.panel_opened()
        velto.open_tab(TODOS_TAB)
        press_keys("Down", "ctrl+d")
        todos.become("the next start has them all", ["Second <b>thing</b>"], UNDO_SECONDS + 2)
        press_keys("Escape")
        velto.settled(lambda at: at.height < PANEL[1], "the panel to close")


if __name__ == "__main__":
    run(main, __doc__)
