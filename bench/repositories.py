"""Repositories for the benches."""

import os
import shutil
import subprocess

COUNT = 201  # the last one isn't read
GIT = {"GIT_CONFIG_GLOBAL": os.devnull, "GIT_CONFIG_NOSYSTEM": "1", "GIT_AUTHOR_NAME": "Sam", "GIT_AUTHOR_EMAIL": "sam@acme.example",
       "GIT_COMMITTER_NAME": "Sam", "GIT_COMMITTER_EMAIL": "sam@acme.example"}



def environment():
    """An environment in which git ignores the user's settings."""
    return {name: value for name, value in os.environ.items() if not name.startswith("GIT_")} | GIT


def make(place):
    """Makes small repositories of a few files each, two levels below place/code, which is returned."""
    first = place / "template"
    (first / "src").mkdir(parents=True)
    for number in range(20):
        (first / "src" / f"file{number}.txt").write_text(f"{number}\n" * 50)
    for command in (["init", "-q"], ["add", "."], ["commit", "-qm", "first"]):
        subprocess.run(["git", "-C", first, *command], check=True, env=environment())
    root = place / "code"
    for number in range(COUNT):
        copy = root / f"group{number % 10}" / f"repo{number:03}"
        shutil.copytree(first, copy)
        (copy / "src" / "file0.txt").write_text("changed\n")
        subprocess.run(["git", "-C", copy, "status"], check=True, env=environment(), stdout=subprocess.DEVNULL)
    return root
