#!/usr/bin/env python3
"""Fails on a link of the manual that leads nowhere, and on a text of a box that its page of messages lacks.

    check_manual.py

Looked at are the links of the pages, of the contents and of the index, with the places in the pages, and the texts
of shell/frame/box_texts.h, each line of them by itself; what is put in for a %s or a %d may be anything, or any number.
"""

import html
import pathlib
import re
import sys

HELP = pathlib.Path("help")
TEXTS = pathlib.Path("shell/frame/box_texts.h")
PLACE = re.compile(r'<a name="([^"]+)"')
LINK = re.compile(r'(?:href|name="Local" value)="([^"]+)"')
TEXT = re.compile(r'const char\* (k\w+) =\s*((?:"(?:[^"\\]|\\.)*"\s*)+)')
PIECE = re.compile(r'"((?:[^"\\]|\\.)*)"')
VALUE = {"s": ".{1,60}?", "d": r"\d+"}


def read(path):
    return path.read_text(encoding="utf-8")


def dead_links():
    places = {page.name: set(PLACE.findall(read(page))) for page in HELP.glob("*.html")}
    for page in sorted(HELP.glob("*.h??*")):
        for link in LINK.findall(read(page)):
            name, _, place = link.partition("#")
            name = name or page.name
            if name not in places or (place and place not in places[name]):
                yield f"{page}: {link} leads nowhere"


def form(line):
    """What finds a line of a text with any values."""
    parts = re.split(r"%\d*([sd])", line.strip())
    return re.compile("".join(VALUE[part] if i % 2 else re.escape(part) for i, part in enumerate(parts)))


def untold_texts():
    page = " ".join(html.unescape(re.sub("<[^>]*>", "", read(HELP / "mensajes.html").replace("<br>", " "))).split())
    for name, pieces in TEXT.findall(read(TEXTS)):
        for line in "".join(PIECE.findall(pieces)).split(r"\n"):
            if not form(line).search(page):
                yield f"{TEXTS}: {name} isn't in {HELP / 'mensajes.html'}"


def main():
    found = [*dead_links(), *untold_texts()]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


sys.exit(main())
