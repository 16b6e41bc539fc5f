"""Changes parcels of an exchange file, and says how many rows of each kind tell of it.

    change_municipality.py EXCHANGE_FILE CHANGED_FILE

In each polygon one parcel is split in three, two are joined, one is gone and one gets another surface.
"""

import collections
import sys


def key(line):
    return int(line[13:16]), int(line[16:21])


def surface(line):
    return int(line[21:26]) * 10000 + int(line[26:28]) * 100 + int(line[28:30])


def with_surface(line, metres):
    return line[:21] + b"%05d%02d%02d" % (metres // 10000, metres // 100 % 100, metres % 100) + line[30:]


def change(parcels):
    """The parcels of a polygon, in order: gives what stands for them, by their keys, and new ones."""
    number = max(key(line)[1] for line in parcels)
    split, one, other, gone, other_surface = parcels[:5]
    third, fourth = surface(split) // 3 + 7, surface(split) // 4 + 3
    new = []
    for of, metres in ((split, third), (split, fourth), (split, surface(split) - third - fourth),
                       (one, surface(one) + surface(other))):
        number += 1
        new.append(with_surface(of[:16] + b"%05d" % number + of[21:], metres))
    instead = {key(line): None for line in (split, one, other, gone)}
    instead[key(other_surface)] = with_surface(other_surface, surface(other_surface) + 5)
    return instead, new


def main(before, after):
    with open(before, "rb") as file:
        lines = file.read().splitlines(keepends=True)
    polygons = collections.defaultdict(list)
    for line in lines:
        if line[:2] == b"PR":
            polygons[key(line)[0]].append(line)
    instead, new = {}, []
    for parcels in polygons.values():
        of_polygon = change(parcels)
        instead.update(of_polygon[0])
        new += of_polygon[1]
    with open(after, "wb") as file:
        for line in lines:
            if line[:2] in (b"PR", b"SP", b"SC") and key(line) in instead:
                line = instead[key(line)] if line[:2] == b"PR" else line if instead[key(line)] else None
            file.write(line or b"")
        file.writelines(new)
    for kind, rows in (("parcela desaparecida", 4), ("parcela nueva", 4), ("superficie", 1)):
        print(f"{rows * len(polygons):7} {kind}")


main(*sys.argv[1:])
