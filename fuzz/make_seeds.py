#!/usr/bin/env python3
"""Makes the fuzzers' first inputs from the samples and the stored cases.

    make_seeds.py MAKE_MUNICIPALITY FOLDER

Each target gets a folder in FOLDER. What is long is cut to a few lines of each kind, so that a run
takes a moment; drawings are those of a few parcels, made by MAKE_MUNICIPALITY.
"""

import itertools
import pathlib
import subprocess
import sys
import tempfile

SAMPLES = pathlib.Path("samples")
GOLDEN = pathlib.Path("tests/golden")
SEPARATOR = b"%%%\n"
TABLES = ["Parajes", "Modulos", "Titulares", "Parcelas", "Subparcelas", "Cotitulares"]
DRAWINGS = ["poligonos.txt", "001.BIN", "001.PAR", "001.SUB", "001.POL", "ortos.BIN", "ortos.TOP"]
PLAIN = b"0  "
ALL_OPTIONS = b"?  "


def lines(path):
    return path.read_bytes().splitlines(keepends=True)


def slices(path, count=3):
    """Heads of a file: a few lines of each type together, and the lines of its end."""
    all_lines = lines(path)
    by_type = {}
    for line in all_lines:
        by_type.setdefault(line[:2], []).append(line)
    yield b"".join(itertools.chain(*(group[:count] for group in by_type.values())))
    yield b"".join(itertools.chain(*(group[-count:] for group in by_type.values())))
    yield b"".join(all_lines[-12:])


def seeds_of_exchange():
    for name in ["villanueva.txt", "villanueva_con_faltas.txt"]:
        for text in slices(SAMPLES / name):
            yield PLAIN + text
    for text in slices(SAMPLES / "villanueva_lista.txt", 5):
        yield b"1  " + text
    yield b"1  " + b"".join(lines(SAMPLES / "villanueva_lista.txt")[:40])
    for path in sorted(p for p in GOLDEN.glob("*/input/*.txt") if p.is_file()):
        yield PLAIN + b"".join(lines(path)[:30])


def few_parcels(folder, count=5):
    """The first parcels of the tables with what hangs on them."""
    rows = {table: lines(folder / f"{table}.txt") for table in TABLES}

    def field(row, number):
        return row.split(b"\t")[number].strip()

    def keep(table, number, values):
        head, *rest = rows[table]
        rows[table] = [head] + [row for row in rest if field(row, number) in values]

    rows["Parcelas"] = rows["Parcelas"][: count + 1]
    parcels = rows["Parcelas"][1:]
    for table in ["Subparcelas", "Cotitulares"]:
        keep(table, 3, {b"1"})
        keep(table, 4, {field(row, 4) for row in parcels})
    holders = {field(row, 8) for row in parcels}
    holders |= {field(row, 5) for row in rows["Cotitulares"][1:]}
    keep("Titulares", 2, holders)
    return [b"".join(rows[table][:25]) for table in TABLES]


def seeds_of_tables(tables):
    faulty = SAMPLES / "villanueva_tablas_con_faltas"
    ends = [b"".join(lines(faulty / f"{t}.txt")[:4] + lines(faulty / f"{t}.txt")[-5:]) for t in TABLES]
    good = few_parcels(tables)
    for head in [PLAIN, ALL_OPTIONS, b"7  "]:
        yield head + SEPARATOR.join(ends)
        yield head + SEPARATOR.join(good)


def seeds_of_drawings(folders):
    for folder in folders:
        pieces = [(folder / name).read_bytes() for name in DRAWINGS]
        for head in [PLAIN, b"7  ", b"8  "]:
            yield head + SEPARATOR.join(pieces)


def seeds_of_show_drawing(folders):
    for folder in folders:
        for topology in ["001.PAR", "001.SUB"]:
            pieces = [(folder / name).read_bytes() for name in ["001.BIN", topology]]
            yield PLAIN + SEPARATOR.join(pieces)
        yield b"1  " + (folder / "001.BIN").read_bytes()


def seeds_of_dialog():
    texts = b"".join(lines(pathlib.Path("help/Ayuda IDC.txt"))[:24])
    runs = [
        b"1009\n1\n1000=entrada.txt\n?\n? 1013\n1\n2\n",
        b"1010\n1\n1003=poligonos.txt\n1005=ortos.TOP\n1013=Modulos.txt\n1014=Titulares.txt\n"
        b"1015=Subparcelas.txt\n1016=Parajes.txt\n1017=Parcelas.txt\n1020=Cotitulares.txt\n1028\n"
        b"1\n1022\nfuera.txt\n57670\n2\n",
        b"1011\n1\n1003=poligonos.txt\n1005=ortos.TOP\n1\n? 1003\n1001\n1\n",
    ]
    runs += [path.read_bytes() for path in sorted(GOLDEN.glob("*/stdin"))]
    settings = [path.read_bytes() for path in sorted(GOLDEN.glob("*/settings*"))]
    tables = "Modulos.txt Titulares.txt Parcelas.txt Subparcelas.txt Parajes.txt Cotitulares.txt"
    batch = ["0 entrada.txt " + tables, f"1 {tables} poligonos.txt ortos.TOP 1 1 1", "2" + " a" * 11]
    for commands, stored in itertools.zip_longest(runs, settings, fillvalue=b""):
        yield PLAIN + SEPARATOR.join([stored, commands, texts, b" un nombre.txt ", b""])
    for line in batch:
        tokens = line.replace(" ", "\t").encode()
        yield PLAIN + SEPARATOR.join([b"", b"", texts, b"=", tokens])
    mark = b"campiva: salidas en curso"
    told = [mark, b"1", b"Titulares.txt.~conjunto", b"Parcelas.txt", b"1", b"7", b"nuevo.txt", b"0", b"8"]
    for diary in [told + [mark], told]:
        yield PLAIN + SEPARATOR.join([b"", b"", b"", b"", b"", b"\0".join(diary) + b"\0"])


def write(folder, seeds):
    folder.mkdir(parents=True)
    for number, seed in enumerate(seeds):
        (folder / f"{number:03}").write_bytes(seed)


def main():
    make, target = sys.argv[1], pathlib.Path(sys.argv[2])
    with tempfile.TemporaryDirectory() as work:
        folders = []
        for parcels, seed in [(1, 2), (2, 3), (4, 7)]:
            folder = pathlib.Path(work) / str(seed)
            folder.mkdir()
            sizes = ["--parcels", str(parcels), "--polygons", "1", "--seed", str(seed)]
            subprocess.run([make, *sizes, "--drawings", folder], check=True)
            folders.append(folder)
        write(target / "exchange", seeds_of_exchange())
        write(target / "tables", seeds_of_tables(GOLDEN / "clean_municipality/expected"))
        write(target / "drawings", seeds_of_drawings(folders))
        write(target / "show_drawing", seeds_of_show_drawing(folders))
        write(target / "dialog", seeds_of_dialog())


main()
