#!/usr/bin/python3
"""Moves through everything by Tab: the panel, its forms, sheets and menus, each pane of the settings, and the welcome. The accessibility
tree lists what there is: each control in it has a name of its own and gets the focus, in reading order, with a visible mark; nothing
traps the keyboard, and Escape leads back out, step by step.

Usage: script/with-desktop --own-network tests/e2e/keyboard.py VELTO. Ends with 77 if this machine can't try it.
"""

import json
import subprocess
import time
import typing

from velto_desktop import SCALE, Atspi, Failure, Geometry, GLib, Velto, check_machine, expect, run, until, write, xdotool

State = Atspi.StateType if Atspi else None
# Tab stops only at the selected one of these; the arrow keys go to the others.
ROVING = ("radio button", "list item", "page tab")
AROUND = ("panel", "frame", "window", "dialog")
ROWS = ("Mark done: ", "Shows details: ", "Hides details: ")
MOST = 90  # steps, on any page
SESSION = "aefe0d0b-131d-43a7-b83d-00000000000"


class Control(typing.NamedTuple):
    role: str
    name: str

    def __str__(self):
        return f"{self.role} “{self.name}”"


def fill(velto):
    """A home in which every tab has something to show."""
    now = int(time.time() * 1000)
    sessions = [
        {"id": str(each), "name": name, "state": state, "cwd": str(velto.home), "startedAt": now - 60000 * each, "sessionId": f"{SESSION}{each}"}
        for each, (name, state) in enumerate((("docs", "working"), ("api", "blocked"), ("search", "blocked")))
    ]
    (velto.home / "bin/claude").write_text(
        f"#!/bin/sh\n[ \"$1\" = mcp ] || exec echo '{json.dumps(sessions)}'\necho 'tickets: https://mcp.example.com/sse (SSE) - ! Needs authentication'\n")
    (velto.home / ".claude").mkdir()
    (velto.config / "velto/settings.json").write_text('{"onboarded": true, "modulesOff": []}')
    data = velto.home / ".local/share/Velto"
    data.mkdir(parents=True)
    data.joinpath("todos.json").write_text(json.dumps([
        {"id": each, "title": title, "details": "", "due": "2020-01-01", "who": "me", "project": "", "scope": scope, "prio": 2, "comments": []}
        for each, (title, scope) in enumerate((("Water the plants", "personal"), ("Send the notes", "office"), ("Book a room", "office")), 1)]))


def all_nodes(velto):
    """(control, place, node) of everything that can be pressed or typed into."""
    shown = velto.controls()
    frames = [index for index, each in enumerate(shown) if each[4].get_role() == Atspi.Role.FRAME]
    begin = next((index for index in frames if shown[index][0] == velto.frame), 0)
    shown = shown[begin : next((index for index in frames if index > begin), None)]
    over = [index for index, each in enumerate(shown) if each[4].get_role() in (Atspi.Role.DIALOG, Atspi.Role.POPUP_MENU)]
    for _, _, at, _, node in shown[over[-1] if over else 0:]:  # what is below a sheet is out of reach
        states = node.get_state_set()
        wanted = states.contains(State.SENSITIVE) and states.contains(State.FOCUSABLE)
        if at.width > 0 and at.height > 0 and wanted and node.get_role() != Atspi.Role.LABEL:  # Qt calls every text focusable
            yield control_of(node), at, node


class Focus:
    """The focused control, as reported to screen readers."""

    def __init__(self):
        self.node = None
        self.listener = Atspi.EventListener.new(self.heard)
        self.listener.register("object:state-changed:focused")

    def heard(self, event):
        if event.detail1:
            self.node = event.source

    def now(self):
        """(control, place, node); None until something was reported."""
        while GLib.MainContext.default().iteration(False):
            pass
        if not self.node or self.node.get_role_name() in AROUND:
            return None
        return control_of(self.node), Geometry(*place(self.node)), self.node


def control_of(node):
    role = node.get_role_name()
    # The toolkit gives a field for secrets no name; screen readers speak its description.
    name = node.get_description() if role == "password text" else node.get_name()
    return Control(role, name.split(" · updated ")[0])


def kind(control):
    if control.role in ROVING:
        return control.role
    return control.name.split(": ")[0] if control.name.startswith(ROWS) else control


def look(at):
    """The pixels of a place on the screen and around it, since a text is inside a box."""
    edge = round(12 * SCALE)
    crop = f"{at.width + 2 * edge}x{at.height + 2 * edge}+{max(0, at.x - edge)}+{max(0, at.y - edge)}"
    return subprocess.run(["import", "-window", "root", "-crop", crop, "-depth", "8", "rgb:-"], capture_output=True, timeout=20).stdout


def reads_on(before, after):
    """Whether the eye goes from one place to the other: down, or to the right."""
    above = after.y + after.height <= before.y
    left = after.x + after.width <= before.x
    right = after.x >= before.x + before.width
    return right if above else not left or after.y >= before.y + before.height


def walk(velto, where, key="Tab"):
    """Goes round by Tab; returns the controls in the order in which they got the focus."""
    seen, order, places, faults, last, jumps = {}, [], {}, [], None, 0
    for step in range(MOST):
        if step % 8 == 0:
            seen |= {control: at for control, at, _ in all_nodes(velto)}
        here = velto.focus.now()
        if here and order and here[0] == order[0]:
            break
        if here and here[0] not in order:
            control, at, node = here
            if not control.name.strip() or control.name.strip().startswith(":"):
                faults.append(f"{control} at {at} has no whole name")
            if last and not reads_on(Geometry(*place(last)), at):
                jumps += 1
                # Once: from the end of the page to its start, if the walk began in the middle.
                if jumps > 1:
                    faults.append(f"{control} comes after {order[-1]}, against the order of reading")
            order.append(control)
            places[control] = at
            lit = look(at)
        elif here:
            faults.append(f"the keyboard is on {here[0]} again, and {len(seen)} controls are there")
            break
        xdotool("key", key)
        time.sleep(0.12)
        moved = velto.focus.now()
        still = here and places.get(here[0]) == Geometry(*place(here[2]))
        if still and moved and moved[0] != here[0] and look(at) == lit:
            faults.append(f"nothing shows that {here[0]} has the keyboard")
        last = here[2] if here else last
    else:
        faults.append(f"no way round in {MOST} steps")
    seen |= {control: at for control, at, _ in all_nodes(velto)}
    reached = set(order)
    # The arrow keys reach the controls in each row of a list: one control of each kind is enough.
    kinds = {kind(control) for control in reached}
    faults += [f"{control} can't be reached" for control in seen if control not in reached and kind(control) not in kinds]
    names = [control for control, _, node in all_nodes(velto)]
    faults += [f"there are two of {control}" for control in set(names) if names.count(control) > 1]
    if faults:
        raise Failure(f"{where}:\n  " + "\n  ".join(faults) + "\n  the way was: " + ", ".join(map(str, order)))
    print(f"ok: {where}: {len(order)} controls")
    return order


def place(node):
    at = Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN)
    return [round(each * SCALE) for each in (at.x, at.y, at.width, at.height)]


def go_to(velto, name):
    """By Tab, to the control of that name."""
    for _ in range(MOST):
        here = velto.focus.now()
        if here and here[0].name == name:
            return
        xdotool("key", "Tab")
        time.sleep(0.08)
    raise Failure(f"Tab doesn't come to \"{name}\", only to {sorted(velto.names())}")


def out_again(velto, opener, key, inside, where):
    """Opens something with a key on its control, walks through it, and returns by Escape."""
    go_to(velto, opener)
    velto.key(key, lambda: inside in velto.names())
    order = walk(velto, where)
    for _ in range(3):
        if inside not in velto.names():
            break
        xdotool("key", "Escape")
        time.sleep(0.3)
    until(f"{where} to be closed by Escape", lambda: inside not in velto.names())
    until(f"the keyboard back on \"{opener}\"", lambda: velto.focus.now()[0].name == opener)
    return order


def panel(velto):
    velto.frame = "Velto"
    velto.start("--search")
    velto.panel_opened()
    xdotool("key", "Escape")
    for tab in ("Home", "Todos", "Agents", "Connect"):
        velto.open_tab(tab)
        time.sleep(1.5)
        if tab == "Todos":
            xdotool("key", "Down")  # the list is one stop; the arrow keys go through it
        walk(velto, tab)
    for opener, first in (("Manage: Work and outreach", "Linear API key"), ("Set up: Meetings", "Add meetings manually"), ("Set up: MCP server health", "Retry all")):
        go_to(velto, opener)
        velto.key("space", lambda first=first: velto.focus.now()[0].name == first)
        time.sleep(0.6)
    walk(velto, "Connect with its forms")

    velto.open_tab("Agents")
    sheet = out_again(velto, "Connect…", "Return", "Add hooks", "the sheet of the hooks")
    expect("the sheet keeps the keyboard", {control.name for control in sheet}, {"What is added", "Cancel", "Add hooks"})
    out_again(velto, "More: docs", "space", "Open folder", "a session's menu")

    velto.open_tab("Todos")
    time.sleep(1)
    xdotool("key", "ctrl+n")
    until("the form of a todo", lambda: "Add todo" in velto.names())
    write("Order keyboards")
    walk(velto, "the form of a todo")
    go_to(velto, "Choose a date")
    velto.key("Return", lambda: "Next month" in velto.names())
    velto.key("Escape", lambda: "Next month" not in velto.names())
    for what in ("Add todo", "Refresh"):  # the form first, then the panel
        until(f"{what} to go by Escape", lambda what=what: xdotool("key", "Escape") == "" and not any(name.startswith(what) for name in velto.names()), pause=0.5)
    velto.settled(lambda at: at.height < 100 * SCALE, "the panel to close")


def windows(velto):
    velto.frame = "Velto Settings"
    subprocess.run([velto.program, "--settings"], env=velto.environment, timeout=20)
    for pane in ("General", "Modules", "Claude Code", "Work tools", "Quillbox", "About"):
        go_to(velto, pane)
        xdotool("key", "space")
        time.sleep(0.6)
        walk(velto, f"the settings, {pane}")


def main(program):
    check_machine()
    with Velto(program) as velto:
        fill(velto)
        velto.focus = Focus()
        panel(velto)
        windows(velto)
    with Velto(program) as velto:
        (velto.config / "velto/settings.json").unlink()
        velto.focus = Focus()
        velto.launch("--welcome")
        until("the welcome", lambda: "Start using Velto" in velto.names())
        velto.frame = "Welcome to Velto"
        time.sleep(0.5)
        xdotool("key", "Tab")  # where a window opens with the keyboard there is no ring yet
        time.sleep(0.3)
        walk(velto, "the welcome")


if __name__ == "__main__":
    run(main, __doc__)
