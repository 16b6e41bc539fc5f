#!/usr/bin/env python3
"""Fails on a function or file that is too long to be seen whole, and on tests out of proportion.

    check_sizes.py FILE...

The files are all C++ sources of the project, as clang-format leaves them: a function's braces stand at the
depth of what it is in.
"""

import re
import sys

LINES_OF_A_FUNCTION = 45  # of the program; a test may be one long table
LINES_OF_A_FILE = 400
SHARE_OF_TESTS = (25, 33)  # per cent of all lines but the benchmarks'


def functions(lines):
    """First line and number of lines of each function that stands by itself or in a class."""
    for number, line in enumerate(lines):
        opened = re.match(r"( *)\{$", line)
        if not opened or number == 0 or re.match(r"^ *(namespace|class|struct|enum|extern)\b",
                                                 lines[number - 1]):
            continue
        end = opened.group(1) + "}"
        for last in range(number + 1, len(lines)):
            if lines[last].rstrip(";") == end:
                yield number, last - number + 1
                break


def main(paths):
    found, sizes = [], {"tests/": 0, "": 0}
    for path in paths:
        with open(path, encoding="utf-8") as source:
            lines = source.read().splitlines()
        if not path.startswith("bench/"):
            sizes["tests/" if path.startswith("tests/") else ""] += len(lines)
        if len(lines) > LINES_OF_A_FILE and not path.startswith("tests/"):
            found.append(f"{path}: {len(lines)} lines")
        for first, count in functions(lines):
            if count > LINES_OF_A_FUNCTION and not path.startswith("tests/"):
                found.append(f"{path}:{first}: a function of {count} lines")
    share = 100 * sizes["tests/"] / (sizes["tests/"] + sizes[""])
    if not SHARE_OF_TESTS[0] <= share <= SHARE_OF_TESTS[1]:
        found.append(f"the tests are {share:.1f} % of the lines, not {SHARE_OF_TESTS[0]} to "
                     f"{SHARE_OF_TESTS[1]}")
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


sys.exit(main(sys.argv[1:]))
