#!/usr/bin/python3
"""A permission question from asking to answer: curl asks, the question slides out, a click or the keyboard answers, curl prints the
answer. Before that, the whole question unfolds under a resting pointer.

Usage: script/with-desktop --own-network tests/e2e/permission.py VELTO. Ends with 77 if this machine can't try it.
"""

import json
import re
import time

import velto_desktop
from velto_desktop import GUARD_SECONDS, PEEK_ROW_HEIGHT, Failure, Velto, check_machine, expect, run

ALLOWED = {"hookSpecificOutput": {"hookEventName": "PermissionRequest", "decision": {"behavior": "allow"}}}
DENIED = {
    "hookSpecificOutput": {
        "hookEventName": "PermissionRequest",
        "decision": {"behavior": "deny", "message": "Denied from Velto"},
    }
}


def answer_of(curl):
    """What the session would read: parsed JSON, or None for an empty answer."""
    printed, _ = curl.communicate(timeout=10)
    if curl.returncode != 0:
        raise Failure(f"curl ended with {curl.returncode}")
    try:
        return json.loads(printed) if printed else None
    except ValueError:
        raise Failure(f"curl printed {printed!r}") from None


def ask_and_press(velto, strip, name, command):
    curl = velto.ask(command=command)
    try:
        velto.settled(
            lambda at: at.height == strip.height + PEEK_ROW_HEIGHT,
            f"the question to slide out under a strip of {strip}",
        )
        time.sleep(GUARD_SECONDS + 0.1)
        if curl.poll() is not None:
            raise Failure("the question was answered before anybody pressed anything")
        velto.press(name)
        return answer_of(curl)
    finally:
        if curl.poll() is None:
            curl.kill()
        curl.wait()


def read_whole_and_answer_by_keys(velto, strip):
    curl = velto.ask(command="make all\nmake install")
    try:
        row = velto.settled(lambda at: at.height == strip.height + PEEK_ROW_HEIGHT, "the question to slide out")
        velto_desktop.xdotool("mousemove", row.x + row.width // 2, row.y + 4)
        time.sleep(0.6)
        expect("who passes over the strip opens nothing", velto.geometry(), row)
        velto_desktop.xdotool("mousemove", row.x + 200, row.y + row.height - 18)
        whole = velto.settled(lambda at: at.height > row.height + 40, "the question to unfold under the pointer")
        expect("it unfolds downwards", (whole.x, whole.y, whole.width), (row.x, row.y, row.width))
        velto.leave()
        velto.settled(lambda at: at == row, f"the question to fold up to {row}")

        velto_desktop.xdotool("key", "ctrl+alt+n")
        velto.panel_opened()
        for key in ("Return", "space"):
            velto_desktop.xdotool("key", key)
        time.sleep(0.5)
        expect("Return and Space alone answer nothing", curl.poll(), None)
        velto_desktop.xdotool("key", "--delay", 100, "Tab", "Right", "Return")
        answer = answer_of(curl)
        velto_desktop.xdotool("key", "Escape")
        return answer
    finally:
        if curl.poll() is None:
            curl.kill()
        curl.wait()


def window_under(x, y):
    velto_desktop.xdotool("mousemove", x, y)
    return dict(line.split("=", 1) for line in velto_desktop.xdotool("getmouselocation", "--shell").split())["WINDOW"]


def main(program):
    check_machine()
    with Velto(program) as velto:
        strip = velto.start()
        screen_width, _ = velto_desktop.screen_size()
        expect("the strip stands at the top", strip.y, 0)
        expect("the strip stands in the centre", abs(strip.x + strip.width / 2 - screen_width / 2) <= 1, True)
        velto_desktop.until("presses beside the strip to reach what is there", lambda: window_under(screen_width // 2 - 160, 4) != velto.window)
        expect("those on it reach it", window_under(screen_width // 2, 4), velto.window)
        velto.leave()
        mode = (velto.config / velto_desktop.SETTINGS).stat().st_mode & 0o777 if velto.token() else None
        expect("the settings are the owner's alone", mode, 0o600)

        for word, answer in (("Allow", ALLOWED), ("Deny", DENIED)):
            pill = re.compile(f"{word}: .*make {word}.*")
            expect(f"a press on {word} goes back to the session", ask_and_press(velto, strip, pill, f"make {word}"), answer)
            velto.leave()
            velto.settled(lambda at: at == strip, f"the strip to be back at {strip} after {word}")

        expect("the keyboard's Allow goes back", read_whole_and_answer_by_keys(velto, strip), ALLOWED)
        velto.settled(lambda at: at == strip, f"the strip to be back at {strip} after the keyboard")
        first = velto.ask(command="make first")
        velto.settled(lambda at: at.height == strip.height + PEEK_ROW_HEIGHT, "the first of two questions")
        second = velto.ask(command="make second", session="bbbbbbbb-131d-43a7-b83d-daf04de24178")
        time.sleep(0.5)
        velto.hang_up(first)
        time.sleep(0.5 + GUARD_SECONDS)  # from the asker's end to the next one's turn, and for it to be read
        velto.press(re.compile("Allow: .*make second.*"))
        expect("the one that still waits gets the answer", answer_of(second), ALLOWED)
        velto.leave()
        velto.settled(lambda at: at == strip, f"the strip to be back at {strip} after two questions")
        alone = velto.ask(command="make nothing")
        velto.settled(lambda at: at.height == strip.height + PEEK_ROW_HEIGHT, "a question to slide out")
        velto.hang_up(alone)
        velto.settled(lambda at: at == strip, "a question to leave with its asker")

        expect("a press on the row answers nothing", ask_and_press(velto, strip, re.compile("(?!Allow: |Deny: ).*make nothing.*"), "make nothing"), None)
        velto.leave()
        velto.settled(lambda at: at == strip, f"the strip to be back at {strip} after the row")


if __name__ == "__main__":
    run(main, __doc__)
