"""Counts the surfaces of a way back once more, out of the drawings' bytes, and holds the report to it.

    recount_surfaces.py LIST R REPORT

An outline's record says its square metres to half a square centimetre, and so do its islands'. They are summed as
whole numbers and rounded once a parcel, a half upwards: whoever sums numbers that were rounded before, as
show_drawing prints them, comes out a square metre above for each parcel that ends in between 0.495 and 0.5.
"""

import collections
import json
import pathlib
import re
import struct
import sys

HALF_CM2_PER_M2 = 20000
OUTLINE, TEXT, CODE_OF_PARCELS = 1, 2, b"125201"


def labels_of(drawing):
    """What stands at each place: the number of a parcel, 0 where it is no number, or no label."""
    data, place, found = drawing.read_bytes(), 16, {}
    while place < len(data):
        kind, deleted, code, points, length = struct.unpack_from("<BBHII", data, place + 4)
        start = place + 16 + code + 12 * points
        number = re.match(rb"\s*(\d+)", data[start:start + length])
        is_label = kind == TEXT and not deleted and data[place + 16:place + 16 + code] == CODE_OF_PARCELS
        found[place] = (int(number[1]) if number else 0) if is_label else None
        place = start + length + 4
    return found


def record(data, place):
    """A topology's record: its kind, its area with its islands' and its label's place, and where it ends."""
    kind, = struct.unpack_from("<h", data, place + 4)
    area, = struct.unpack_from("<d", data, place + 54)
    area = round(area * HALF_CM2_PER_M2)
    label, = struct.unpack_from("<i", data, place + 64)
    place += 72
    for _ in ("stretches", "indexes"):
        place += 4 + 4 * struct.unpack_from("<I", data, place)[0]
    islands, = struct.unpack_from("<I", data, place)
    place += 4
    for _ in range(islands):
        (_, own, _), place = record(data, place)
        area += own
    return (kind, area, label), place + 4


def outlines(topology, labels):
    """Parcel and area of each outline, as far as the labels are where they should be."""
    data, place, last = topology.read_bytes(), 0, None
    while place < len(data):
        length, = struct.unpack_from("<I", data, place + 4)
        (kind, area, label), _ = record(data, place + 8)
        place += 12 + length
        if kind != OUTLINE:
            if last:
                last[1] += area
        elif label > 0:
            if label - 1 not in labels:
                break
            if last:
                yield last
            last = [labels[label - 1], area] if labels[label - 1] is not None else None
    if last:
        yield last


def drawn(list_file):
    """The outlines of each parcel, in half square centimetres."""
    found = collections.defaultdict(list)
    for line in list_file.read_text("cp1252").splitlines()[1:]:
        entry = list_file.parent / line[1:].strip()
        drawing, topology = entry.with_suffix(".BIN"), entry.with_suffix(".PAR")
        if drawing.exists() and topology.exists():
            polygon = int(re.match(r"\d+", entry.name)[0])
            for parcel, area in outlines(topology, labels_of(drawing)):
                found[polygon, parcel].append(area)
    return found


def main(list_name, r_name, report_name):
    with open(r_name, encoding="cp1252") as r_file:
        written = {(int(line[13:16]), int(line[16:21])): int(line[21:30])
                   for line in r_file if line[9:11] == "PR"}
    found = drawn(pathlib.Path(list_name))
    metres = {parcel: (2 * sum(areas) + HALF_CM2_PER_M2) // (2 * HALF_CM2_PER_M2)
              for parcel, areas in found.items()}
    both = metres.keys() & written.keys()
    told = json.loads(pathlib.Path(report_name).read_text(encoding="utf-8"))["superficies"]
    faults = [f"{name}: {told[name]} instead of {count}" for name, count in {
        "parcelas": len(both),
        "dibujada": sum(metres[parcel] for parcel in both),
        "escrita": sum(written[parcel] for parcel in both),
        "perdida": sum(max(0, metres[parcel] - written[parcel]) for parcel in both if len(found[parcel]) > 1),
    }.items() if told[name] != count]
    alone = sum(metres[parcel] for parcel in metres.keys() - written.keys())
    if alone != sum(parcel["m2"] for parcel in told["dibujadasSinEscribir"]):
        faults.append(f"drawn and not written: not {alone}")
    print("\n".join(faults), end="\n" if faults else "")
    return 1 if faults else 0


sys.exit(main(*sys.argv[1:]))
