"""What the panel, a question and long lists cost in the real program on a virtual desktop. Each function returns rows of figures."""

import json
import statistics
import time

from watching import PANEL_HEIGHT, Watcher, cpu_seconds, memory_mb, rest, worst
from velto_desktop import DENY, GUARD_SECONDS, PEEK_ROW_HEIGHT, PEEK_WIDTH, xdotool  # watching puts it on the path

SCROLL_NOTCHES = 120
SCROLL_PAUSE_MS = 25
SETTLED_SECONDS = 1
MOTION_SECONDS = 1.3  # a panel that was left closes after 0.4 s, and moves for half a second
REST_SECONDS = 10
MANY_TODOS = 100_000


def motion(velto, watcher, act, fits):
    """The frames of opening or closing, the time it began at, and its CPU seconds. Nothing is asked meanwhile: on two processors
    that would make frames late."""
    watcher.frames()
    before, start = cpu_seconds(velto.process.pid), time.monotonic()
    act()
    time.sleep(MOTION_SECONDS)
    frames = watcher.frames(start)
    cpu = cpu_seconds(velto.process.pid) - before
    velto.settled(fits, "the panel to open or close")
    return frames, start, cpu


def panel_figures(make, watcher_program, rounds):
    with Watcher(watcher_program) as watcher, make() as velto:
        strip = velto.start()
        pid = velto.process.pid
        first_frames, per_frame, rss, opening, closing = [], [], [], [], []
        for turn in range(rounds + 1):
            frames, start, cpu = motion(velto, watcher, velto.point_at_strip, lambda at: at.height >= PANEL_HEIGHT)
            if turn > 0:  # the first opening builds the panel
                first_frames.append((frames[0].stamp - start) * 1000)
                per_frame.append(cpu * 1000 / len(frames))
                opening.append(worst(frames))
            closing.append(worst(motion(velto, watcher, velto.leave, lambda at: at.height <= strip.height)[0]))
            rss.append(memory_mb(pid)[0])
        figures = {
            "panel: first frame, ms after the pointer": statistics.median(first_frames),
            "panel: CPU a frame, ms": statistics.median(per_frame),
            f"panel: MB more after {rounds} openings than after 1": rss[-1] - rss[0],
        }
        for name, motions in (("opening", opening), ("closing", closing)):
            pauses, cpus = zip(*motions)
            figures[f"{name}: worst frame, ms since the one before, median"] = statistics.median(pauses)
            figures[f"{name}: worst frame, CPU ms, median"] = statistics.median(cpus)
            figures[f"{name}: worst frame of {len(motions)}, CPU ms"] = max(cpus)
        return figures


def sessions(count, working):
    """What `claude agents --json` prints with so many sessions, of which so many work."""
    now = int(time.time() * 1000)
    return [{"id": f"s{i}", "name": f"session {i}", "state": "working" if i < working else "blocked", "cwd": f"/home/me/p{i}",
             "startedAt": now - i} for i in range(count)]


def scroll(velto, watcher):
    """Frames per second and CPU ms per frame, on average and for the worst frame, while the wheel turns down the page and back."""
    velto.point_at_page()
    time.sleep(SETTLED_SECONDS)  # what was turned back before
    watcher.frames()
    before, start = cpu_seconds(velto.process.pid), time.monotonic()
    xdotool("click", "--repeat", SCROLL_NOTCHES, "--delay", SCROLL_PAUSE_MS, 5)
    seconds = time.monotonic() - start
    time.sleep(SETTLED_SECONDS)
    frames = watcher.frames(start)
    cpu = (cpu_seconds(velto.process.pid) - before) * 1000
    xdotool("click", "--repeat", SCROLL_NOTCHES, "--delay", 2, 4)
    return len(frames) / seconds, cpu / max(1, len(frames)), worst(frames)[1]


def list_figures(make, watcher_program, count, working, rounds):
    """The Agents tab without a session, with many, and without any again."""
    with Watcher(watcher_program) as watcher, make() as velto:
        listing = velto.home / "listing.json"

        def list_sessions(*numbers):
            """An opening reads the listing."""
            listing.write_text(json.dumps(sessions(*numbers)))
            if velto.geometry().height >= PANEL_HEIGHT:
                close()
            velto.open_panel()
            time.sleep(5)

        def close():
            xdotool("key", "Escape")
            velto.leave()
            return velto.settled(lambda at: at.height < PANEL_HEIGHT, "the panel to close")

        listing.write_text("[]")
        velto.tool("claude", f"case $1 in agents) exec cat '{listing}' ;; *) echo '[]' ;; esac")
        velto.start("--search")
        pid = velto.process.pid
        velto.panel_opened()
        velto.open_tab("Agents")
        strip = close()
        list_sessions(0, 0)
        without = memory_mb(pid)[0]
        list_sessions(count, working)
        many = memory_mb(pid)[0]
        name = f"{count} sessions, {working} working: "
        open_rest = rest(pid, REST_SECONDS)
        turns = [scroll(velto, watcher) for _ in range(rounds)]
        most = memory_mb(pid)[0]
        figures = {
            name + "MB above none": many - without,
            name + "MB above none, scrolled": most - without,
            name + "CPU with the panel open, ms a second": open_rest["CPU at rest, ms a minute"] / 60,
            name + "frames a second while scrolling": statistics.median(turn[0] for turn in turns),
            name + "CPU a frame while scrolling, ms": statistics.median(turn[1] for turn in turns),
            name + "worst frame while scrolling, CPU ms": max(turn[2] for turn in turns),
        }
        close()
        time.sleep(3)
        closed_rest = rest(pid, REST_SECONDS)
        figures[name + "CPU at rest, ms a second"] = closed_rest["CPU at rest, ms a minute"] / 60
        first_frames = []
        for _ in range(rounds):
            watcher.frames()
            start = velto.open_panel()
            first_frames.append((watcher.wait_for("drawn", since=start).stamp - start) * 1000)
            velto.settled(what="the open panel to stand still")
            velto.close_panel(strip)
        figures[name + "panel's first frame, ms after the pointer"] = statistics.median(first_frames)
        list_sessions(0, 0)
        figures[name + "MB above none, once they are gone"] = memory_mb(pid)[0] - without
        return figures


def todo_figures(make, watcher_program, count):
    """Velto's own file with many todos: on show, searched, and scrolled."""
    with Watcher(watcher_program) as watcher, make() as velto:
        file = velto.home / ".local/share/Velto/todos.json"
        file.parent.mkdir(parents=True)
        file.write_text(json.dumps([
            {"id": i + 1, "title": f"Answer the letter of customer {i}", "details": "In writing, please.", "who": "me",
             "due": "2020-01-01", "project": f"p{i % 20}", "scope": "office", "prio": 1 + i % 3, "comments": []}
            for i in range(count)]))
        velto.start("--search")
        pid = velto.process.pid
        velto.panel_opened()
        velto.open_tab("Todos")
        time.sleep(10)
        shown = memory_mb(pid)[0]
        xdotool("key", "ctrl+f")
        xdotool("type", "--delay", 150, "customer 99")
        time.sleep(2)
        searched = memory_mb(pid)[0]
        turns = [scroll(velto, watcher) for _ in range(2)]
        return {
            f"{count} todos: MB on show": shown,
            f"{count} todos: MB, searched": searched,
            f"{count} todos: CPU a frame while scrolling, ms": statistics.median(turn[1] for turn in turns),
        }


def question_figures(make, watcher_program, rounds):
    with Watcher(watcher_program) as watcher, make() as velto:
        strip = velto.start()
        coming, going = [], []
        for number in range(rounds):
            watcher.frames()
            velto.token()
            start = time.monotonic()
            curl = velto.ask(command=f"make {number}")
            coming.append((watcher.wait_for("drawn", "configured", since=start).stamp - start) * 1000)
            velto.settled(lambda at: at.height == strip.height + PEEK_ROW_HEIGHT, "the question to slide out")
            time.sleep(GUARD_SECONDS + 0.1)
            if number % 2:
                at = velto.geometry()
                xdotool("mousemove", "--sync", at.x + (at.width + PEEK_WIDTH) // 2 - DENY[0], at.y + at.height - DENY[1], "click", 1)
                curl.communicate(timeout=10)
            else:
                watcher.frames()
                start = time.monotonic()
                velto.hang_up(curl)
                going.append((watcher.wait_for("drawn", since=start).stamp - start) * 1000)
            velto.leave()
            velto.settled(lambda at: at == strip, "the strip to be back")
        return {
            "question: first frame, ms after curl's start": statistics.median(coming),
            "question: row begins to leave, ms after its asker's end": statistics.median(going),
            "question: the same, the slowest": max(going),
        }


def measures(make, watcher_program, quick):
    """The measurements by name, as functions."""
    openings, questions, turns = (10, 6, 2) if quick else (60, 16, 3)
    return (
        ("panel", lambda: panel_figures(make, watcher_program, openings)),
        ("500 sessions", lambda: list_figures(make, watcher_program, 500, 500, turns)),
        ("5000 sessions", lambda: list_figures(make, watcher_program, 5000, 2500, turns)),
        ("todos", lambda: todo_figures(make, watcher_program, MANY_TODOS)),
        ("questions", lambda: question_figures(make, watcher_program, questions)),
    )
