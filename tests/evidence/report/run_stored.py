#!/usr/bin/env python3
"""Holds all that the report writes of some runs to what is stored, byte for byte.

    run_stored.py [--update] PROGRAMS SAMPLES WORK STORED

With --update what it writes now is stored; look at the difference before you commit it. Style and scripts of a page
are left out, and what hangs on the day: the version, when it was made. Files have a time of their own.
"""

import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys

TABLES = ["Modulos.txt", "Titulares.txt", "Parcelas.txt", "Subparcelas.txt", "Parajes.txt", "Cotitulares.txt"]
DRAWN = ["poligonos.txt", "ortos.TOP"]
OUT = ["0", "entrada.txt", *TABLES]
BACK = ["1", *TABLES, *DRAWN]
FAULTY = ["villanueva_dibujos_con_faltas", "villanueva_tablas_con_faltas"]
TO_INFOGRAF = "1011\n1\n1003=poligonos.txt\n1005=ortos.TOP\n1\n"
BEFORE, AFTER = 1_700_000_000, 1_700_003_600  # when the inputs were written, and what a run writes

# Cases that lose lines of files that a run wrote.
LOST = {
    "out_loses": [*TABLES, "entrada.ERR"],
    "back_loses": ["045127.R", "045127.M", "045127.ERR"],
    "infograf_loses": ["045127.CSP"],
}
EVERY = 23
# name, samples (a file becomes entrada.txt), runs, log (a hyphen takes the way back's by a pipe), what is written of
# it, more options
CASES = [
    ("out", ["villanueva_con_faltas.txt"], [OUT], "entrada.ERR", "html csv json geojson", []),
    ("out_without_tables", ["villanueva.txt"], [], "entrada.ERR", "html json", []),
    ("back", FAULTY, [[*BACK, "0", "0", "0"]], "045127.ERR", "html csv json geojson", []),
    ("back_and_drops", FAULTY, [[*BACK, "0", "1", "1"]], "045127.ERR", "json", []),
    ("back_rewrites", FAULTY, [[*BACK, "1", "0", "0"]], "045127.ERR", "json", []),
    ("back_stopped", FAULTY, [[*BACK, "0", "0", "0"]], "045127.ERR", "json", ["--detenido"]),
    ("back_piped", FAULTY, [[*BACK, "0", "0", "0"]], "-", "json", ["--lista", "poligonos.txt"]),
    ("infograf", FAULTY, [TO_INFOGRAF], "045127.ERR", "html json", []),
    ("out_loses", ["villanueva_con_faltas.txt"], [OUT], "entrada.ERR", "html json", []),
    ("back_loses", FAULTY, [[*BACK, "0", "0", "0"]], "045127.ERR", "json", []),
    ("infograf_loses", FAULTY, [TO_INFOGRAF], "045127.ERR", "json", []),
    ("nothing_beside", [], [], "entrada.ERR", "html json", []),
]
STRANGE_LOG = ("E206: La parcela    1      2 ya existe\r\nhola\r\n"
               "E105: Titular      7 no encontrado en el fichero de cotitulares.\r\n")


def prepare(folder, samples):
    folder.mkdir(parents=True)
    for sample in samples:
        if sample.is_dir():
            shutil.copytree(sample, folder, dirs_exist_ok=True)
        else:
            shutil.copy(sample, folder / "entrada.txt")
    (folder / "entrada.ERR").write_text(STRANGE_LOG, encoding="cp1252", newline="")
    for path in folder.iterdir():
        os.utime(path, (BEFORE, BEFORE))


def run(campiva, folder, what):
    line, said = ([], what) if isinstance(what, str) else (what, "")
    subprocess.run([campiva, *line], cwd=folder, input=said, text=True, check=False,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    for path in folder.iterdir():
        if path.stat().st_mtime != BEFORE:
            os.utime(path, (AFTER, AFTER))


def lose(path):
    """Takes lines out of a file, and puts one in twice."""
    lines = path.read_bytes().splitlines(keepends=True)
    left = [line for i, line in enumerate(lines) if (i + 1) % EVERY]
    path.write_bytes(b"".join(left + left[-1:]))
    os.utime(path, (AFTER, AFTER))


JOBS = {  # what a batch wrote of each; nothing of one that wasn't done
    "ida\tout": "0\t32\t2\t0.25",
    "vuelta\tback": "1\t420\t3\t1.50",
    "infograf\tinfograf": "1\t0\t0\t0.75",
    "ida\tout_loses": "0\t32\t2\t1000.25",
    "vuelta\tback_rewrites\tmodificar=1": "0\t420\t3\t0.01",
    "vuelta\tback_stopped": "137\t420\t3\t0.01",
    "ida\tout_without_tables": "0\t1\t0\t0.01",
    "ida\tgone": "0\t0\t0\t0.01",
    "infograf\tout": "",
}


def batch(programs, work):
    """What is written of a batch over the folders of the cases."""
    results = work / "batch.resultados"
    (results / "salidas").mkdir(parents=True)
    (results / "salidas/2.err").write_text("002.BIN no existe\n", encoding="utf-8")
    (results / "trabajos.tsv").write_text("".join(f"{job}\n" for job in JOBS), encoding="utf-8")
    (results / "trabajos.log").write_text("".join(f"{done}\t{job}\n" for job, done in JOBS.items() if done) + "0\t1",
                                          encoding="utf-8")
    written = {kind: work / f"batch.{kind}" for kind in ("html", "csv", "json")}
    options = [part for kind, path in written.items() for part in (f"--{kind}", path.name)]
    yield "batch.txt", say(programs, work, [*options, "--resumen", results.name])
    for path in written.values():
        yield path.name, undated(path.read_bytes().decode("utf-8"))


def say(programs, folder, line):
    with open(folder / "045127.ERR" if line[-1] == "-" else os.devnull, "rb") as log:
        return subprocess.run([programs / "campiva-informe", *line], cwd=folder, text=True, encoding="utf-8",
                              stdin=log, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False).stdout


def undated(text):
    text = re.sub(r"<(style|script)>.*?</\1>\n", "", text, flags=re.DOTALL)
    text = re.sub(r"Hecho el [\d/]+ [\d:]+ por campiva-informe [\d.]+", "Hecho", text)
    text = re.sub(r'"version": "[^"]*"', '"version": ""', text)
    return re.sub(r'^ "hecho": "[^"]*"', ' "hecho": ""', text, flags=re.MULTILINE)


def reports(programs, samples, work):
    """What is written of each case, by the names under which it is stored."""
    for name, inputs, runs, log, kinds, more in CASES:
        folder = work / name
        prepare(folder, [samples / sample for sample in inputs])
        for what in runs:
            run(programs / "campiva", folder, what)
        for lost in LOST.get(name, []):
            lose(folder / lost)
        options = [part for kind in kinds.split() for part in (f"--{kind}", f"{name}.{kind}")]
        yield f"{name}.txt", say(programs, folder, [*options, *more, log])
        for kind in kinds.split():
            path = folder / f"{name}.{kind}"
            yield path.name, undated(path.read_bytes().decode("utf-8") if path.exists() else "(no file)")
    yield from batch(programs, work)


def compare(name, told, stored):
    expected = stored.read_bytes().decode("utf-8") if stored.exists() else ""
    if told == expected:
        return True
    print(f"{name} isn't what is stored:")
    lines = difflib.unified_diff(expected.splitlines(), told.splitlines(), "stored", "now", lineterm="", n=0)
    for line, _ in zip(lines, range(20)):
        print(line[:300])
    return False


def main(arguments):
    update = arguments[0] == "--update"
    programs, samples, work, stored = map(pathlib.Path, arguments[update:])
    shutil.rmtree(work, ignore_errors=True)
    os.environ |= {"TZ": "UTC", "XDG_CONFIG_HOME": str(work / "config")}
    whole = True
    for name, told in reports(programs.resolve(), samples.resolve(), work):
        if update:
            (stored / name).write_bytes(told.encode("utf-8"))
        else:
            whole = compare(name, told, stored / name) and whole
    return 0 if whole else 1


sys.exit(main(sys.argv[1:]))
