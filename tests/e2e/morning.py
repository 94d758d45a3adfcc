#!/usr/bin/python3
"""A morning with the real program: nothing is connected, a token is saved, an agent asks, a meeting nears, a review comes, a
focus period ends. Time passes by setting the clock forward.

Usage: script/with-desktop --own-network tests/e2e/morning.py VELTO [PICTURES]. With a folder for pictures it leaves one of each
step there (script/pictures). Ends with 77 if this machine can't try it.
"""

import json
import pathlib
import re
import shutil
import subprocess
import time

from velto_desktop import GUARD_SECONDS, PANEL, PEEK_ROW_HEIGHT, SCALE, Velto, check_machine, expect, run, screen_size, skip, until, write, xdotool

CLOCKS = ("/usr/lib/*/faketime/libfaketime.so.1", "/usr/lib64/faketime/libfaketime.so.1", "/usr/lib/faketime/libfaketime.so.1")
REVIEW = {"title": "Page by key, not by offset", "url": "https://github.com/acme/api/pull/12", "repository": {"name": "api"}}
MEETING = "https://meet.example.com/plan"

REFRESH = re.compile("Refresh.*")
LINEAR = "Linear API key"


class Morning(Velto):
    def __init__(self, program, pictures):
        super().__init__(program)
        self.pictures = pictures
        self.steps = 0
        clock = next((str(found) for each in CLOCKS for found in pathlib.Path("/").glob(each[1:])), None)
        if not clock:
            skip("no clock that can be set (the package libfaketime has it)")
        self.offset = self.home / "clock"
        self.minutes_pass(0)
        self.opened = self.home / "opened"
        self.reviews = self.home / "reviews.json"
        self.reviews.write_text("[]")
        self.stand_in("gh", f"[ \"$1\" = search ] && exec cat '{self.reviews}'; echo '[]'")
        self.stand_in("xdg-open", f"echo \"$1\" >>'{self.opened}'")
        self.environment |= {
            "LD_PRELOAD": clock,
            "FAKETIME_TIMESTAMP_FILE": str(self.offset),
            "FAKETIME_CACHE_DURATION": "1",
            "FAKETIME_DONT_FAKE_MONOTONIC": "1",
            "XDG_CURRENT_DESKTOP": "",
        }

    def stand_in(self, name, command):
        for folder in ("bin", ".local/bin"):
            file = self.home / folder / name
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(f"#!/bin/sh\n{command}\n")
            file.chmod(0o755)

    def minutes_pass(self, minutes):
        self.passed = getattr(self, "passed", 0) + minutes
        self.offset.write_text(f"+{self.passed * 60}\n")

    def settings(self):
        return json.loads((self.config / "velto/settings.json").read_text())

    def links(self):
        return self.opened.read_text().split() if self.opened.exists() else []

    def picture(self, width=840, height=560):
        self.steps += 1
        if self.pictures:
            time.sleep(0.8)  # what slides or fades comes to rest
            width, height = round(width * SCALE), round(height * SCALE)
            left = (screen_size()[0] - width) // 2
            file = pathlib.Path(self.pictures) / f"morning-{self.steps}.png"
            subprocess.run(["import", "-window", "root", "-crop", f"{width}x{height}+{left}+0", "+repage", str(file)], check=True)

    def open(self, tab):
        """Opens the panel with the keyboard, by a second start of the program."""
        subprocess.run([self.program, "--search"], env=self.environment, timeout=20)
        self.panel_opened()
        self.open_tab(tab)

    def close(self):
        self.leave()

        def closed():
            xdotool("key", "Escape")  # a field, a form and then the panel
            return self.geometry().height < PANEL[1]

        until("the panel to close", closed, pause=0.5)
        return self.settled(lambda at: at.height < 100, "the panel to close")


def has_keyring(velto):
    if not shutil.which("gnome-keyring-daemon") or not shutil.which("secret-tool"):
        return False
    started = subprocess.run(["gnome-keyring-daemon", "--unlock", "--components=secrets"], input="x", text=True,
                             env=velto.environment | {"LD_PRELOAD": ""}, capture_output=True, timeout=20)
    return started.returncode == 0


def nothing_is_connected(velto):
    velto.open("Home")
    velto.place_of("Connect")
    velto.picture()


def a_token_is_saved(velto):
    velto.open_tab("Connect")
    velto.scroll_to("Manage: Work and outreach")
    velto.press("Manage: Work and outreach")
    velto.fill(LINEAR, "  lin_'$(id)` ")
    velto.picture()
    velto.press(f"Save {LINEAR}")

    def kept():
        found = subprocess.run(["secret-tool", "lookup", "service", "Velto.linear"], capture_output=True, text=True, timeout=10)
        return found.stdout

    expect("the keyring holds the token, trimmed", until("the token in the keyring", kept), "lin_'$(id)`")
    expect("no file of ours holds it", "lin_" in (velto.config / "velto/settings.json").read_text(), False)
    expect("its module is on", "work" in velto.settings().get("modulesOff", ["work"]), False)


def an_agent_asks(velto):
    strip = velto.close()
    asked = velto.ask(command="npm run build")
    velto.settled(lambda at: at.height >= strip.height + PEEK_ROW_HEIGHT, "the question to slide out")
    time.sleep(GUARD_SECONDS + 0.1)
    velto.picture(640, 90)
    velto.press(re.compile("Allow: .*npm run build.*"))
    answer = asked.communicate(timeout=20)[0]
    expect("the session is allowed", json.loads(answer)["hookSpecificOutput"]["decision"]["behavior"], "allow")
    return velto.settled(lambda at: at.height == strip.height, "the question to be gone")


def a_meeting_nears(velto):
    velto.open("Connect")
    velto.scroll_to("Done: Work and outreach")
    velto.press("Done: Work and outreach")
    velto.scroll_to("Set up: Meetings")
    velto.press("Set up: Meetings")
    velto.scroll_to("Save the meeting")
    velto.fill("Meeting title", "Plan the release")
    velto.fill("Join link", MEETING)
    velto.press("Save the meeting")
    until("the meeting in the settings", lambda: velto.settings().get("meetingTitle") == "Plan the release")
    until("its link too", lambda: velto.settings().get("meetingURL") == MEETING)
    strip = velto.close()
    velto.minutes_pass(56)  # the form offers an hour from now
    velto.settled(lambda at: at.height >= strip.height + PEEK_ROW_HEIGHT, "word of the meeting", 40)
    velto.picture(640, 90)
    velto.settled(lambda at: at.height == strip.height, "word of the meeting to go")


def a_review_comes(velto):
    velto.reviews.write_text(json.dumps([REVIEW]))
    velto.open("Home")
    velto.press(REFRESH)
    until("the review in the brief", lambda: any(REVIEW["title"] in name for name in velto.names()))
    velto.picture()
    velto.press("Don't show this again")
    velto.press(re.compile("Join: .*"))
    expect("Join goes to the meeting", until("the browser", velto.links), [MEETING])
    velto.press(re.compile("Review: .*"))
    until("the browser again", lambda: len(velto.links()) == 2)
    expect("Review goes to the pull request", velto.links()[1], REVIEW["url"])


def a_focus_period_ends(velto):
    velto.scroll_to("Start 25 min: Focus timer")
    velto.press("Start 25 min: Focus timer")
    until("the timer to run", lambda: "Start 25 min: Focus timer" not in velto.names())
    velto.picture()
    strip = velto.close()
    velto.minutes_pass(26)
    velto.settled(lambda at: at.height >= strip.height + PEEK_ROW_HEIGHT, "word that the time is up", 40)
    velto.picture(640, 90)


def main(program, pictures=None):
    check_machine()
    with Morning(program, pictures) as velto:
        if not has_keyring(velto):
            skip("no keyring (gnome-keyring and secret-tool are missing)")
        velto.start()
        nothing_is_connected(velto)
        a_token_is_saved(velto)
        an_agent_asks(velto)
        a_meeting_nears(velto)
        a_review_comes(velto)
        a_focus_period_ends(velto)


if __name__ == "__main__":
    run(main, __doc__, 2)
