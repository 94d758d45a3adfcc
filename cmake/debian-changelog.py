#!/usr/bin/env python3
"""Writes CHANGELOG.md in Debian's format, gzipped: debian-changelog.py CHANGELOG.md MAINTAINER OUT.gz"""

import datetime
import email.utils
import gzip
import re
import sys
import textwrap

source, maintainer, target = sys.argv[1:]
lines = []
trailer = None
for line in open(source, encoding="utf-8").read().splitlines():
    heading = re.fullmatch(r"## ([0-9.]+), (\d+)-(\d+)-(\d+)", line)
    if heading:
        if trailer:
            lines += ["", trailer, ""]
        date = datetime.datetime(*map(int, heading.groups()[1:]), 12, tzinfo=datetime.timezone.utc)
        trailer = f" -- {maintainer}  {email.utils.format_datetime(date)}"
        lines += [f"velto ({heading[1]}) unstable; urgency=medium", ""]
    elif trailer and line.startswith("- "):
        lines += textwrap.wrap(line[2:], 76, initial_indent="  * ", subsequent_indent="    ")
if not trailer:
    sys.exit(f"{source} names no version")
with open(target, "wb") as file, gzip.GzipFile(fileobj=file, mode="wb", compresslevel=9, filename="", mtime=0) as packed:
    packed.write("\n".join([*lines, "", trailer, ""]).encode())
