#!/usr/bin/env python3
"""Sums the coverage that llvm-cov exports up by folder of the project.

    llvm-cov export -summary-only ... | lines_by_folder.py PROJECT
"""

import collections
import json
import pathlib
import sys

BESIDE = {"tests", "fuzz", "bench"}


def main():
    project = pathlib.Path(sys.argv[1])
    folders = collections.defaultdict(lambda: [0, 0])
    for entry in json.load(sys.stdin)["data"][0]["files"]:
        path = pathlib.Path(entry["filename"])
        if not path.is_relative_to(project) or path.is_relative_to(project / "build"):
            continue
        folder = path.relative_to(project).parent
        if folder.parts[0] not in BESIDE:
            lines = entry["summary"]["lines"]
            folders[str(folder)][0] += lines["covered"]
            folders[str(folder)][1] += lines["count"]
    for folder, (covered, count) in sorted(folders.items()):
        print(f"{folder:18} {covered:5} of {count:5} lines, {100 * covered / count:5.1f} %")


main()
