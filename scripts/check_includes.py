#!/usr/bin/env python3
"""Fails on an #include that runs against the order of the folders, and on sources that know one
another in a circle, each with its header.

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
OUTSIDE = ["tests", "bench", "fuzz"]
# So do these, which include the folders named and no others.
CORE = ["platform", "vexa_libs", "cadastre"]
EVIDENCE = [*CORE, "evidence"]
REPORT = [*EVIDENCE, "evidence/report/reading"]
BESIDE = {
    "evidence": CORE,
    "evidence/report/reading": [*EVIDENCE, "batch"],
    "evidence/report/findings": REPORT,
    "evidence/report/writing": [*REPORT, "evidence/report/findings"],
    "evidence/report": [*REPORT, "batch", "evidence/report/findings", "evidence/report/writing"],
    "evidence/gis/reading": [*EVIDENCE, "evidence/gis"],
    "evidence/gis/writing": [*EVIDENCE, "evidence/gis"],
    "evidence/gis": [*EVIDENCE, "evidence/gis/reading", "evidence/gis/writing"],
    "evidence/show_drawing": EVIDENCE,
    "generator": CORE,
    "batch": [*CORE, "resources"],
}
RANK = {folder: rank for rank, folders in enumerate(ORDER) for folder in folders}


def folder_of(path):
    """The listed folder that holds the path, the longest one that fits."""
    names = [f for f in [*RANK, *OUTSIDE, *BESIDE] if path.startswith(f + "/")]
    return max(names, key=len) if names else None


def includes(path):
    """The project's own files that a source includes, with the numbers of the lines."""
    with open(path, encoding="utf-8") as source:
        for number, line in enumerate(source, 1):
            if match := re.match(r'\s*#\s*include\s*"([^"]+)"', line):
                yield number, match.group(1)


def source_of(path):
    """A source with its header, and a record with its columns, are one."""
    return re.sub(r"(_columns)?\.(cpp|h)$", "", path)


def circles(paths):
    """The sources that reach themselves by their includes."""
    graph = {}
    for path in paths:
        known = {source_of(name) for _, name in includes(path)} - {source_of(path)}
        graph.setdefault(source_of(path), set()).update(known)
    done = set()
    for start in graph:
        trail = []

        def walk(source):
            if source in trail:
                yield " -> ".join([*trail[trail.index(source):], source])
            elif source not in done:
                trail.append(source)
                for name in sorted(graph.get(source, ())):
                    yield from walk(name)
                done.add(trail.pop())

        yield from walk(start)


def faults(path):
    folder = folder_of(path)
    # A program's main puts a front end, the resources and the shell together.
    main = path.startswith("shell/main_")
    for number, name in includes(path):
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
    found = [fault for path in sys.argv[1:] for fault in faults(path)] + [*circles(sys.argv[1:])]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


sys.exit(main())
