#!/usr/bin/python3
"""Installs the program into an empty folder and looks at it as a desktop would.

Usage: installed.py BUILD_FOLDER VERSION. Ends with 77 if the validators are missing.
"""

import configparser
import gzip
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

APPLICATION = "dev.velto.Velto"
PREFIX = "/opt/a prefix"
VALIDATORS = ("desktop-file-validate", "appstreamcli", "rsvg-convert")


def output_of(*command):
    done = subprocess.run(command, capture_output=True, text=True, timeout=60)
    if done.returncode:
        sys.exit(f"failed: {' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout + done.stderr


def check(what, truth):
    if not truth:
        sys.exit(f"failed: {what}")
    print(f"ok: {what}")


def entry_of(path):
    parser = configparser.ConfigParser(interpolation=None)
    parser.optionxform = str
    parser.read(path)
    return parser


def main(build, version):
    for tool in VALIDATORS:
        if not shutil.which(tool):
            print(f"skipped: {tool} is missing (script/bootstrap installs it)")
            sys.exit(77)
    with tempfile.TemporaryDirectory() as staged:
        subprocess.run(["cmake", "--install", build, "--prefix", PREFIX], check=True, stdout=subprocess.DEVNULL,
                       env={**os.environ, "DESTDIR": staged}, timeout=60)
        root = pathlib.Path(staged + PREFIX)
        share = root / "share"

        help_text = output_of(root / "bin/velto", "--help")
        check("the program tells its version", output_of(root / "bin/velto", "--version") == f"velto {version}\n")

        desktop_file = share / f"applications/{APPLICATION}.desktop"
        check("the menu's entry is valid", not output_of("desktop-file-validate", desktop_file).strip())
        entry = entry_of(desktop_file)
        for group in entry.sections():
            program, *arguments = entry[group]["Exec"].split()
            check(f"[{group}] starts the program with what it knows", program == "velto" and all(each in help_text for each in arguments))
        service = entry_of(share / f"dbus-1/services/{APPLICATION}.service")["D-BUS Service"]
        check("the bus starts the installed program", service["Exec"] == f'"{PREFIX}/bin/velto" --activated')
        check("under the entry's name", service["Name"] == APPLICATION)

        icons = share / "icons/hicolor"
        for icon in (f"scalable/apps/{APPLICATION}.svg", f"symbolic/apps/{APPLICATION}-symbolic.svg"):
            output_of("rsvg-convert", "-w", "16", icons / icon, "-o", pathlib.Path(staged) / "icon.png")
        check("the icons can be drawn", entry["Desktop Entry"]["Icon"] == APPLICATION)

        metainfo = share / f"metainfo/{APPLICATION}.metainfo.xml"
        output_of("appstreamcli", "validate", "--no-net", metainfo)
        release = xml.etree.ElementTree.parse(metainfo).find("releases/release")
        check("the software centre's page is valid and of this version", release.get("version") == version)

        manual = gzip.decompress((share / "man/man1/velto.1.gz").read_bytes()).decode()
        check("the manual is of this version", f"Velto {version}" in manual)
        options = set(re.findall(r"--[a-z-]+", help_text)) - {"--activated"}  # only the bus service uses that one
        missing = {each for each in options if each.replace("-", r"\-") not in manual}
        check(f"the manual knows all options {missing or ''}", options and not missing)
        check("what folders are chosen with comes along", os.access(root / "libexec/velto/velto-folders", os.X_OK))
        video = pathlib.Path(build) / "velto-video"
        check("what plays videos comes along where it was built", video.exists() == (root / "libexec/velto/velto-video").exists())
        check("the licences come along", "Apache-2.0" in (share / "doc/velto/copyright").read_text())


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
