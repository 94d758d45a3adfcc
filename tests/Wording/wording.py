#!/usr/bin/python3
"""Finds texts that would speak to a Linux user of things that a Linux desktop doesn't have.

Usage: wording.py LUPDATE SOURCES CATALOGUE. lupdate takes all texts out of the sources; each one that names such a thing needs
an entry in the catalogue (src/Platform/Linux/velto_linux.ts) that doesn't. Entries that nothing uses do no harm.
"""

import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

FOREIGN = re.compile(
    r"\bMacs?\b|macOS|Keychain|\bTrash\b|\b[Bb]rew\b|Homebrew|Xcode|[⌘⌃⌥]|[Mm]enu bar|\bFinder\b|\bApple\b|AppleScript|\bDock\b"
    r"|System Settings|Touch ID|[Ll]ogin item|the camera"
)
PLACEHOLDER = re.compile(r"%(?:L?\d+|n)")
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
ENTRY = """
    <message>
        <source>{}</source>
        <translation>…</translation>
    </message>"""


def messages(path):
    for message in xml.etree.ElementTree.parse(path).iter("message"):
        yield message.findtext("source") or "", message.findtext("translation") or ""


def texts_of(lupdate, sources):
    with tempfile.TemporaryDirectory() as folder:
        extracted = pathlib.Path(folder) / "all.ts"
        subprocess.run([lupdate, "-silent", "-locations", "none", "-extensions", "cpp,h,qml", "-recursive", sources, "-ts", extracted],
                       check=True, timeout=100, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return {source for source, _ in messages(extracted)}


def foreign_literals(sources):
    """Where, and what: literals that name such a thing, outside includes and comments."""
    for path in sorted(pathlib.Path(sources).rglob("*")):
        if path.suffix not in (".cpp", ".h", ".qml"):
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            if line.lstrip().startswith(("#include", "//", "/*", "*")):
                continue
            for literal in LITERAL.findall(line):
                if FOREIGN.search(literal):
                    yield f"{path}:{number}", literal.replace('\\"', '"')


def escaped(text):
    return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")


def faults_in(texts, catalogue, sources, path):
    for text in sorted(texts):
        if FOREIGN.search(text) and text not in catalogue:
            yield f"This text needs an entry in {path}:{ENTRY.format(escaped(text))}"
    for text, words in catalogue.items():
        if not words or FOREIGN.search(words):
            yield f"{path} has no words of Linux for: {text}\n    but: {words}"
        if sorted(PLACEHOLDER.findall(text)) != sorted(PLACEHOLDER.findall(words)):
            yield f"{path} loses or adds a placeholder in: {text}"
    for where, literal in foreign_literals(sources):
        if not any(literal in text for text in texts):
            yield f"{where}: this text isn't in tr(), so that nothing can reword it: {literal}"


def main(lupdate, sources, path):
    texts = texts_of(lupdate, sources)
    if len(texts) < 50:
        sys.exit(f"failed: only {len(texts)} texts found in {sources}")
    catalogue = {}
    for text, words in messages(path):
        if text in catalogue:
            sys.exit(f"failed: twice in {path}: {text}")
        catalogue[text] = words
    faults = list(faults_in(texts, catalogue, sources, path))
    if faults:
        sys.exit("\n\n".join(faults) + f"\n\nfailed: {len(faults)}")
    print(f"ok: {len(texts)} texts, {sum(text in catalogue for text in texts)} of them in other words")


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
