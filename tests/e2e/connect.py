#!/usr/bin/python3
"""Connecting Claude Code with real clicks, resuming a session from a row, and disconnecting again.

Usage: script/with-desktop --own-network tests/e2e/connect.py VELTO. Ends with 77 if this machine can't try it.
"""

import json
import time

from velto_desktop import Velto, check_machine, expect, run, until

SESSION = "aefe0d0b-131d-43a7-b83d-daf04de24178"
FOREIGN = {"model": "opus", "hooks": {"Stop": [{"hooks": [{"type": "command", "command": "notify-send done"}]}]}}

def main(program):
    check_machine()
    with Velto(program) as velto:
        settings = velto.home / ".claude/settings.json"
        settings.parent.mkdir()
        settings.write_text(json.dumps(FOREIGN))
        resumed = velto.home / "resumed"
        project = velto.home / "it's a project"
        project.mkdir()
        listing = [{"id": "a", "name": "docs", "state": "blocked", "cwd": str(project), "startedAt": int(time.time() * 1000), "sessionId": SESSION}]
        claude = velto.home / "bin/claude"
        claude.write_text(f"""#!/bin/sh
if [ "$1" = --resume ]; then (pwd; echo "$2") >'{resumed}.new' && mv '{resumed}.new' '{resumed}'; exit; fi
cat <<'JSON'
{json.dumps(listing)}
JSON
""")
        # The terminal's login shell builds its own PATH.
        (velto.home / ".profile").write_text(f"PATH='{velto.home}/bin':$PATH\n")
        (velto.home / ".bashrc").write_text(f"PATH='{velto.home}/bin':$PATH\n")

        velto.start("--search")
        velto.panel_opened()
        velto.open_tab("Agents")
        velto.press("Connect…")
        velto.place_of("Add hooks")
        expect("looking at the preview changes nothing", json.loads(settings.read_text()), FOREIGN)
        velto.press("Add hooks")
        until("the hooks in Claude Code's settings", lambda: "127.0.0.1:4747/permission" in settings.read_text())
        written = json.loads(settings.read_text())
        expect("the user's own settings stay", (written["model"], written["hooks"]["Stop"][0]), ("opus", FOREIGN["hooks"]["Stop"][0]))
        expect("the secret is in the commands", velto.token() in written["hooks"]["PermissionRequest"][0]["hooks"][0]["command"], True)
        backups = list(settings.parent.glob("settings.json.velto-backup-*"))
        expect("a backup holds the file as it was", [json.loads(each.read_text()) for each in backups], [FOREIGN])

        velto.press("View session: docs")
        until("the session to be resumed in a terminal", resumed.exists, 15)
        expect("in its folder, by its id", resumed.read_text().splitlines(), [str(project), SESSION])

        velto.press("Disconnect")
        until("the hooks to be gone", lambda: "127.0.0.1:4747" not in settings.read_text())
        expect("disconnecting leaves what was there before", json.loads(settings.read_text()), FOREIGN)


if __name__ == "__main__":
    run(main, __doc__)
