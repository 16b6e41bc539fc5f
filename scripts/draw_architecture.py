#!/usr/bin/env python3
"""Prints the folders of the program and who includes whom, for dot to draw.

    draw_architecture.py FILE...

The files are the C++ sources of the project. An include that another one leads to anyway isn't drawn.
"""

import re
import sys
from collections import defaultdict

# What stands by itself although a folder holds it, the longest name first.
FOLDERS = ["platform/terminal", "platform/desktop", "platform/windows", "shell/frame",
           "evidence/report", "evidence/gis", "evidence/show_drawing"]
LEFT_OUT = {"tests", "bench", "fuzz"}
KINDS = {  # of folders that are more than a part of the program: shape and colour
    "platform/terminal": "front", "platform/desktop": "front", "platform/windows": "front",
    "evidence": "beside", "evidence/report": "beside", "evidence/gis": "beside",
    "evidence/show_drawing": "beside", "batch": "beside", "generator": "beside",
}
STYLES = {"front": 'fillcolor="#e8f0e4"', "beside": 'fillcolor="#f4ead8"', "core": 'fillcolor="#e4ecf5"'}


def folder_of(path):
    for folder in FOLDERS:
        if path.startswith(folder + "/"):
            return folder
    return path.split("/")[0]


def includes(paths):
    """For each folder the folders that its sources include."""
    graph = defaultdict(set)
    for path in paths:
        folder = folder_of(path)
        if folder in LEFT_OUT:
            continue
        graph[folder] |= set()
        with open(path, encoding="utf-8") as source:
            for name in re.findall(r'^\s*#\s*include\s*"([^"]+)"', source.read(), re.M):
                graph[folder].add(folder_of(name))
        graph[folder].discard(folder)
    return graph


def reach(graph, start):
    seen, left = set(), [start]
    while left:
        for other in graph[left.pop()]:
            if other not in seen:
                seen.add(other)
                left.append(other)
    return seen


def main(paths):
    graph = includes(paths)
    print("digraph campiva {")
    print("  rankdir=BT; ranksep=0.45; nodesep=0.25;")
    print('  node [shape=box, style="rounded,filled", fontname="DejaVu Sans", fontsize=11, color="#6b7785"];')
    print('  edge [color="#6b7785", arrowsize=0.7];')
    for folder in sorted(graph):
        print(f'  "{folder}" [{STYLES[KINDS.get(folder, "core")]}];')
    for folder in sorted(graph):
        for other in sorted(graph[folder]):
            if not any(other in reach(graph, between) for between in graph[folder] - {other}):
                print(f'  "{folder}" -> "{other}";')
    print("}")


main(sys.argv[1:])
