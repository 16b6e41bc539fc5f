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
import zlib

SAMPLES = pathlib.Path("samples")
GOLDEN = pathlib.Path("tests/golden")
SEPARATOR = b"%%%\n"
TABLES = ["Parajes", "Modulos", "Titulares", "Parcelas", "Subparcelas", "Cotitulares"]
DRAWINGS = ["poligonos.txt", "001.BIN", "001.PAR", "001.SUB", "001.POL", "ortos.BIN", "ortos.TOP"]
PLAIN = b"0  "
ALL_OPTIONS = b"?  "
# Columns of the first character: how a call to the system fails, the first one not at all.
WAYS_TO_FAIL = [("0", 223), ("@", 223), ("P", 223), ("`", 14), ("p", 223)]


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


def failing(seed, step=1):
    """The same input with calls to the system that fail, early and late, in each of the ways."""
    for way, calls in WAYS_TO_FAIL:
        for call in range(1, calls + 1, step):
            head = ord(way) + seed[0] % 16
            yield bytes([head, ord(" ") + call]) + seed[2:]


def seeds_of_exchange():
    for name in ["villanueva.txt", "villanueva_con_faltas.txt"]:
        for text in slices(SAMPLES / name):
            yield PLAIN + text
    for text in slices(SAMPLES / "villanueva_lista.txt", 5):
        yield b"1  " + text
    yield b"1  " + b"".join(lines(SAMPLES / "villanueva_lista.txt")[:40])
    few = PLAIN + next(slices(SAMPLES / "villanueva.txt", 1))
    for place in range(2, 16, 2):  # what stands where a table goes
        yield b"%c" % (ord("0") + place) + few[1:]
    yield from failing(few)
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


def wound(topology, times):
    """The same polygons, their boundaries so many times around: long rings in few bytes."""
    stretches = 80  # where they begin in a record
    records = []
    while topology:
        end = 8 + int.from_bytes(topology[4:8], "little")
        count = int.from_bytes(topology[stretches : stretches + 4], "little")
        behind = stretches + 4 + 4 * count
        around = topology[stretches + 4 : behind] * times
        body = topology[8:stretches] + (count * times).to_bytes(4, "little") + around
        body += topology[behind:end]
        record = topology[:4] + len(body).to_bytes(4, "little") + body
        records.append(record + zlib.crc32(record).to_bytes(4, "little"))
        topology = topology[end + 4 :]
    return b"".join(records)


def seeds_of_drawings(folders):
    for folder in folders:
        pieces = [(folder / name).read_bytes() for name in DRAWINGS]
        long_rings = [
            piece if name.endswith((".txt", ".BIN")) else wound(piece, 17)
            for name, piece in zip(DRAWINGS, pieces)
        ]
        for head in [PLAIN, b"7  ", b"8  "]:
            yield head + SEPARATOR.join(pieces)
            yield head + SEPARATOR.join(long_rings)


def seeds_of_show_drawing(folders):
    for folder in folders:
        for topology in ["001.PAR", "001.SUB"]:
            pieces = [(folder / name).read_bytes() for name in ["001.BIN", topology]]
            yield PLAIN + SEPARATOR.join(pieces)
        yield b"1  " + (folder / "001.BIN").read_bytes()
    yield b"2  "
    yield b"4  "
    # Marks that claim all that follows, so that what is read in vain grows with their square.
    count = 800
    marks = [b"VPOL" + (8 * left - 12).to_bytes(4, "little") for left in range(count, 1, -1)]
    yield PLAIN + SEPARATOR.join([b"", b"".join(marks) + 8 * b" "])


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
    # Somebody at a terminal, who is asked, stops a run, and reads the help.
    stored = b"[CampivaAVexa]\nArchivoEntrada=entrada.txt\n" + b"".join(
        b"Archivo%s=%s.txt\n" % (name.encode(), name.encode()) for name in TABLES
    )
    keys = [runs[0], runs[1], b"1009\n1\n1\nn\n\n\n57670\n2\n", b"1009\r\n1\n1\n\ns\n\n1\n\n\x04",
            b"1009\n1\n1001\nfuera.txt\n1001\nentrada.txt\n1007\n1\n57670\n? 1000\n? 9\n1\n2\n"]
    for head in ["1  ", "3  ", "7  ", ";  ", "?  ", "2  ", '3 "', "3 !", "3 $", "3 *", '0 "', "0 $"]:
        for typed in keys:
            for columns in [b"0", b"24", b"79"]:
                pieces = [stored, typed, texts, b"x", b"", b"", columns]
                yield head.encode() + SEPARATOR.join(pieces)
    long_name = stored.replace(b"Titulares.txt", b"T" * 240 + b".txt")
    yield b"3  " + SEPARATOR.join([long_name, keys[2], texts, b"x"])
    yield PLAIN + SEPARATOR.join([b"\xef\xbb\xbf" + stored, keys[2], b"", b"x"])
    yield from failing(b"3  " + SEPARATOR.join([stored, keys[2], texts, b"x", b"", b"", b"40"]), 3)
    for line in [b"--help", b"--version", b"0\tcon\0tab" + b"\ta" * 6]:
        yield PLAIN + SEPARATOR.join([b"", b"", texts, b"", line])
    mark = b"campiva: salidas en curso"
    told = [mark, b"1", b"Titulares.txt.~conjunto", b"Parcelas.txt", b"1", b"7", b"nuevo.txt", b"0", b"8"]
    for diary in [told + [mark], told]:
        yield PLAIN + SEPARATOR.join([b"", b"", b"", b"", b"", b"\0".join(diary) + b"\0"])


def seeds_of_municipality():
    for options in "0137":
        for numbers in ["0 0 0 1 0", "12 1 2 7 0", "60 2 0 3 0", "60 0 0 4 1", "79 79 4 5 0"]:
            yield options.encode() + b"  " + numbers.replace(" ", "\n").encode()
    yield b"8  20\n5\n0\n3\n0"
    yield b"?  20\n5\n0\n3\n1"


def write(folder, seeds):
    folder.mkdir(parents=True)
    for number, seed in enumerate(seeds):
        (folder / f"{number:03}").write_bytes(seed)


def main():
    make, target = sys.argv[1], pathlib.Path(sys.argv[2])
    with tempfile.TemporaryDirectory() as work:
        folders = []
        for parcels, seed in [(1, 2), (2, 3), (4, 7), (8, 5)]:
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
        write(target / "municipality", seeds_of_municipality())


main()
