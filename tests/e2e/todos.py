#!/usr/bin/python3
"""Todos, almost by keys alone: add, comment, finish, undo, search, a quit while an undo is possible, a second start.

Usage: script/with-desktop --own-network tests/e2e/todos.py VELTO. Ends with 77 if this machine can't try it.
"""

import json
import re
import time

from velto_desktop import PANEL, Failure, Velto, check_machine, expect, run, until, write, xdotool

UNDO_SECONDS = 5
ROW = ", due Today"  # a row's name is its title and when it is due


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


def by_keys(velto, todos):
    titles = []
    for title in ("First thing", "Second <b>thing</b>", "Third thing"):
        velto.key("ctrl+n", "Todo title")
        write(title)
        titles.append(title)
        velto.key("Return", lambda: todos.titles() == sorted(titles))
    expect("nobody else reads them", todos.path.stat().st_mode & 0o777, 0o600)
    expect("a new one is due today", {todo["due"] for todo in todos.read()}, {time.strftime("%Y-%m-%d")})

    velto.key("ctrl+f", "Search todos")
    write("third")
    velto.place_of(re.compile("Third thing.*"))
    until("the others to be out of the list", lambda: "First thing" + ROW not in velto.names())
    velto.key("Down", "Third thing" + ROW)
    velto.key("Return", lambda: "Add a comment" in velto.names())
    for name in ("Mark done: Third thing", "Hides details: Third thing", "Add a comment"):
        velto.key("Tab", name)
    write("a comment")
    xdotool("key", "Return")
    until("the comment is with what the search found", lambda: [comment["text"] for todo in todos.read()
                                                                if todo["title"] == "Third thing" for comment in todo["comments"]] == ["a comment"])

    velto.key("Escape", lambda: velto.focused() != "Add a comment")  # out of the field
    velto.key("ctrl+d", lambda: "Undo" in velto.names())
    velto.key("ctrl+z", lambda: "Undo" not in velto.names())
    time.sleep(UNDO_SECONDS + 1)
    expect("an undone todo stays", "Third thing" in todos.titles(), True)
    velto.key("Up", re.compile("Third thing.*"))
    xdotool("key", "ctrl+d")
    todos.become("a finished one goes", ["First thing", "Second <b>thing</b>"], UNDO_SECONDS + 5)


def by_pointer(velto, todos):
    velto.press("Search todos")
    velto.key("ctrl+a", "Search todos")
    write("second")
    until("the search to find it", lambda: "First thing" + ROW not in velto.names())
    velto.key("Down", "Second <b>thing</b>" + ROW)
    xdotool("key", "ctrl+d")
    velto.press("Undo", UNDO_SECONDS)
    time.sleep(UNDO_SECONDS + 1)
    expect("a press on Undo brings it back", todos.titles(), ["First thing", "Second <b>thing</b>"])
    velto.press("Clear")
    velto.place_of("First thing" + ROW)


def main(program):
    check_machine()
    with Velto(program) as velto:
        todos = Todos(velto)
        velto.start("--search")
        velto.panel_opened()
        velto.open_tab("Todos")
        velto.place_of("New todo")
        by_keys(velto, todos)
        by_pointer(velto, todos)

        velto.key("ctrl+n", "Todo title")
        write("Never saved")
        velto.key("Escape", lambda: velto.focused() != "Todo title")  # out of the field
        velto.key("Escape", lambda: "Todo title" not in velto.names())  # out of the form
        expect("a form that was left saves nothing", "Never saved" in todos.titles(), False)
        velto.key("Down", re.compile(".*" + ROW))
        velto.key("ctrl+d", lambda: "Undo" in velto.names())
        velto.stop()
        expect("a quit inside the undo finishes nothing", todos.titles(), ["First thing", "Second <b>thing</b>"])

        velto.start("--search")
        velto.panel_opened()
        velto.open_tab("Todos")
        velto.place_of("First thing" + ROW)
        velto.key("Down", "First thing" + ROW)
        xdotool("key", "ctrl+d")
        todos.become("the next start has them all", ["Second <b>thing</b>"], UNDO_SECONDS + 5)
        xdotool("key", "Escape")
        velto.settled(lambda at: at.height < PANEL[1], "the panel to close")


if __name__ == "__main__":
    run(main, __doc__)
