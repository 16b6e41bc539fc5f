#!/usr/bin/env python3
"""Runs the program on stored cases and compares all that it leaves, byte for byte.

    run_case.py [--update] [--runner R --registry X] PROGRAM SAMPLES WORK CASE...

With --update what it leaves is stored as what is expected. A program for Windows comes with what runs
it here, and with the program that knows its settings.

A case is a folder with
    args         the arguments, one a line
    inputs       optional: names in samples/ to copy into the working folder, one a line
    outputs_of   optional: cases whose expected files are copied into it, one a line
    input/       optional: files and folders to copy into it
    settings     optional: the stored settings
    stdin        optional: the standard input; without it there is none
    expected/    every file that must be in the working folder afterwards, new or changed; all others
                 must be the inputs as they were
    expected_of  instead of expected/: the case whose expected files these are, to the byte
    settings_after  optional: the stored settings as the run must leave them
    stdout, stderr, status
"""

import argparse
import itertools
import os
import pathlib
import re
import shutil
import subprocess
import sys

EXPECTED = "expected/"


def lines(file):
    return file.read_bytes().splitlines() if file.exists() else []


def files(folder):
    """What stands below a folder: the files' names and bytes."""
    return {EXPECTED + p.relative_to(folder).as_posix(): p.read_bytes()
            for p in folder.rglob("*") if p.is_file()}


def copy(source, folder):
    if source.is_dir():
        shutil.copytree(source, folder, dirs_exist_ok=True)
    else:
        shutil.copy(source, folder)


def prepare(case, samples, run):
    for name in map(os.fsdecode, lines(case / "inputs")):
        copy(samples / name, run / name)
    for name in map(os.fsdecode, lines(case / "outputs_of")):
        copy(case.parent / name / "expected", run)
    if (case / "input").exists():
        copy(case / "input", run)


class Settings:
    """The program's settings: a file of the working folder's, or what stands in the registry."""

    def __init__(self, case, work, registry):
        self.file = work / "config/VexaSoft/Campiva.ini"
        self.before, self.after, self.registry = case / "settings", case / "settings_after", registry
        self.file.parent.mkdir(parents=True)

    def put(self):
        if self.registry:
            subprocess.run([*self.registry, "put", self.before], check=True)
        elif self.before.exists():
            shutil.copy(self.before, self.file)

    def left(self):
        """As the run left them; nothing where the case doesn't say how they must be."""
        if not self.after.exists():
            return {}
        if not self.registry:
            return {self.after.name: self.file.read_bytes() if self.file.exists() else b""}
        compared = subprocess.run([*self.registry, "compare", self.after], stderr=subprocess.PIPE,
                                  check=False)
        return {self.after.name: compared.stderr if compared.returncode else self.after.read_bytes()}


def outcome(case, options, work):
    """The files before the run, and all that it left, by the names that they have in the case."""
    shutil.rmtree(work, ignore_errors=True)
    run = work / "run"
    run.mkdir(parents=True)
    prepare(case, options.samples, run)
    before = files(run)
    settings = Settings(case, work, options.registry and [*options.runner, options.registry])
    settings.put()
    shutil.copy(case / "stdin" if (case / "stdin").exists() else os.devnull, work / "stdin")
    with open(work / "stdin", "rb") as stdin, open(work / "stdout", "wb") as stdout, \
            open(work / "stderr", "wb") as stderr:
        ended = subprocess.run([*options.runner, options.program, *lines(case / "args")], cwd=run,
                               env=os.environ | {"XDG_CONFIG_HOME": str(work / "config")},
                               stdin=stdin, stdout=stdout, stderr=stderr, check=False)
    streams = {name: (work / name).read_bytes() for name in ("stdout", "stderr")}
    if options.registry:  # Windows puts its own separator before the name of what is kept, and nowhere else
        streams["stderr"] = re.sub(rb"\\(?=[^\\\s]+\.anterior$)", b"/", streams["stderr"], flags=re.MULTILINE)
    status = {"status": f"{ended.returncode}\n".encode()}
    return before, files(run) | streams | status | settings.left()


def expected(case, before):
    others = [case.parent / os.fsdecode(name) for name in lines(case / "expected_of")]
    beside = ("stdout", "stderr", "status", "settings_after")
    return before | files((others or [case])[0] / "expected") | {
        name: (case / name).read_bytes() for name in beside if (case / name).exists()}


def difference(due, left):
    """What a person wants to know first of two contents that differ."""
    if left is None:
        return "isn't there"
    if due is None:
        return "was not to be left behind"
    both = itertools.zip_longest(due.splitlines(True), left.splitlines(True), fillvalue=b"")
    number, (was, is_now) = next(row for row in enumerate(both, 1) if row[1][0] != row[1][1])
    return f"line {number}\n  expected {was!r}\n  there is {is_now!r}"


def store(case, before, left):
    shutil.rmtree(case / "expected", ignore_errors=True)
    for name, data in left.items():
        in_folder = name.startswith(EXPECTED)
        if in_folder and (before.get(name) == data or (case / "expected_of").exists()):
            continue
        (case / name).parent.mkdir(parents=True, exist_ok=True)
        (case / name).write_bytes(data)


def holds(case, options, work):
    before, left = outcome(case, options, work)
    if options.update:
        store(case, before, left)
    due = expected(case, before)
    names = sorted(name for name in due.keys() | left.keys() if due.get(name) != left.get(name))
    for name in names:
        print(f"{case.name}: {name}: {difference(due.get(name), left.get(name))}", file=sys.stderr)
    return not names


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--update", action="store_true")
    parser.add_argument("--runner", default=[], nargs=1)
    parser.add_argument("--registry")
    parser.add_argument("program", type=os.path.abspath)  # it runs in a folder of its own
    for name in ("samples", "work"):
        parser.add_argument(name, type=pathlib.Path)
    parser.add_argument("cases", type=pathlib.Path, nargs="+")
    options = parser.parse_args()
    # Those that take what another case expects come behind it.
    cases = sorted(options.cases, key=lambda case: (case / "expected_of").exists()
                   or (case / "outputs_of").exists())
    held = [holds(case.resolve(), options, options.work.resolve() / case.name) for case in cases]
    return 0 if all(held) else 1


if __name__ == "__main__":
    sys.exit(main())
