#!/usr/bin/env python3
"""Fails on a file of the project that a document names and that isn't there.

    check_documents.py FILE...

The files are documents in Markdown. Looked at are names of sources in backticks, each of which must be the end
of the path of a file that git knows, and the targets of links, from the document's own folder.
"""

import fnmatch
import os
import re
import subprocess
import sys

NAME = re.compile(r"`((?:[\w*-]+/)*[\w*]+\.(?:h|cpp|py|sh|md|css|js|nsi|cmake))`")
LINK = re.compile(r"\]\(([^)#:]+)\)")


def faults(document, known):
    with open(document, encoding="utf-8") as text:
        for number, line in enumerate(text, 1):
            for name in NAME.findall(line):
                if not fnmatch.filter(known, "*/" + name):
                    yield f"{document}:{number}: {name} isn't there"
            for link in LINK.findall(line):
                if not os.path.exists(os.path.join(os.path.dirname(document), link)):
                    yield f"{document}:{number}: {link} leads nowhere"


def main():
    listed = subprocess.run(["git", "ls-files"], capture_output=True, text=True, check=True).stdout
    known = ["/" + path for path in listed.splitlines()]
    found = [fault for document in sys.argv[1:] for fault in faults(document, known)]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


sys.exit(main())
