#!/usr/bin/env python3
"""Fails on an #include that runs against the order of the folders.

Each folder may include itself and what stands before it; the translations never one another.
"""

import re
import sys

ORDER = [
    ["platform"],
    ["vexa_libs"],
    ["cadastre"],
    ["resources"],
    ["shell/frame"],
    ["catastro_to_vexa", "vexa_to_catastro", "vexa_to_infograf"],
    ["shell"],
]
# These stand beside the order: they may include anything, and nothing of the program includes them.
OUTSIDE = ["tools", "tests", "bench", "fuzz"]
# So do these, which include the folders named and no others.
BESIDE = {
    "help/advice": [],
    "gis": ["platform", "vexa_libs", "cadastre", "help/advice"],
    "report": ["platform", "vexa_libs", "cadastre", "help/advice"],
}
RANK = {folder: rank for rank, folders in enumerate(ORDER) for folder in folders}


def folder_of(path):
    """The listed folder that holds the path, the longest one that fits."""
    names = [f for f in [*RANK, *OUTSIDE, *BESIDE] if path.startswith(f + "/")]
    return max(names, key=len) if names else None


def faults(path):
    folder = folder_of(path)
    # A program's main puts a front end, the resources and the shell together.
    main = path.startswith("shell/main_")
    with open(path, encoding="utf-8") as source:
        for number, line in enumerate(source, 1):
            match = re.match(r'\s*#\s*include\s*"([^"]+)"', line)
            if not match:
                continue
            name = match.group(1)
            where = f"{path}:{number}: {name}"
            other = folder_of(name)
            if ".." in name or other is None:
                yield where + ": an include names the file from the project's folder"
            elif folder in OUTSIDE or other == folder:
                continue
            elif folder in BESIDE:
                if other not in BESIDE[folder]:
                    yield where + f": {folder} may not include {other}"
            elif other in OUTSIDE or other in BESIDE or RANK[other] >= RANK[folder]:
                yield where + f": {folder} may not include {other}"
            elif any(front in name for front in ("/terminal/", "/desktop/", "/windows/")):
                if not main and not path.startswith(name.rsplit("/", 1)[0]):
                    yield where + ": only a program knows its front end"


def main():
    found = [fault for path in sys.argv[1:] for fault in faults(path)]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


sys.exit(main())
