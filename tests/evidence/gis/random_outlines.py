#!/usr/bin/env python3
"""Outlines on whole hundredths that cross, touch and lie in one another, by seeds, made into drawings by ogr2ogr.

What comes out must be what the outlines say: the surface of each parcel on the way back and for Infograf, and the
overlaps that the driver tells. All is reckoned in whole numbers and fractions.
  random_outlines.py CAMPIVA FOLDER_OF_PLUGIN [FIRST_SEED [SEEDS]]
"""

import json
import os
import random
import re
import subprocess
import sys
import tempfile
from fractions import Fraction

TABLES = ["Modulos.txt", "Titulares.txt", "Parcelas.txt", "Subparcelas.txt", "Parajes.txt", "Cotitulares.txt"]
OUTLINES = 12  # of a drawing
UNITS = 10000  # square hundredths in a square metre
CORRECTED = 5  # square metres that the way back takes from what a parcel's subparcels come to, of which there are none


def turn(a, b, c):
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])


def hull(points):
    """The convex hull, counterclockwise, without points on its edges."""
    def half(points):
        chain = []
        for point in points:
            while len(chain) > 1 and turn(chain[-2], chain[-1], point) <= 0:
                chain.pop()
            chain.append(point)
        return chain[:-1]

    points = sorted(set(points))
    return half(points) + half(points[::-1])


def area(ring):
    """In square hundredths, exact."""
    return sum(Fraction(a[0] * b[1] - b[0] * a[1]) for a, b in zip(ring, ring[1:] + ring[:1])) / 2


def common(one, other):
    """What two convex rings share, as a ring; empty for none."""
    for a, b in zip(other, other[1:] + other[:1]):
        kept = []
        for p, q in zip(one, one[1:] + one[:1]):
            at_p, at_q = turn(a, b, p), turn(a, b, q)
            if at_p >= 0:
                kept.append(p)
            if at_p * at_q < 0:
                part = Fraction(at_p) / (at_p - at_q)
                kept.append((p[0] + (q[0] - p[0]) * part, p[1] + (q[1] - p[1]) * part))
        one = kept
    return one


def shared(one, other):
    """The surface that two outlines share: their own less that of their holes, which lie in them."""
    total = area(common(one[0], other[0]))
    for hole in one[1:]:
        total -= area(common(hole, other[0]))
    for hole in other[1:]:
        total -= area(common(hole, one[0]))
    if one[1:] and other[1:]:
        total += area(common(one[1], other[1]))
    return total


def outlines(seed):
    """Convex outlines, some with a hole. Points of others are taken again, so that they touch."""
    chance, side = random.Random(seed), (40, 500, 3000, 20000)[seed % 4]
    made, known = [], []
    while len(made) < OUTLINES:
        points = [chance.choice(known) if known and chance.random() < 0.4 else
                  (chance.randrange(side), chance.randrange(side)) for _ in range(chance.randrange(3, 8))]
        ring = hull(points)
        if chance.random() < 0.3:
            left, low, right, top = (f(p[i] for p in points) for f in (min, max) for i in (0, 1))
            ring = hull([(left, low), (right, low), (right, top), (left, top)])
        if len(ring) < 3 or area(ring) == 0:
            continue
        known += ring
        inside = [p for p in ((chance.randrange(side), chance.randrange(side)) for _ in range(40))
                  if all(turn(a, b, p) > 0 for a, b in zip(ring, ring[1:] + ring[:1]))]
        hole = hull(inside[:4]) if chance.random() < 0.3 else []
        made.append([ring, hole] if len(hole) > 2 else [ring])
    return made


def feature(seed, number, rings):
    place = [[[400000 + x / 100, 4420000 + y / 100] for x, y in ring + ring[:1]] for ring in rings]
    return {"type": "Feature", "properties": {"poligono": seed, "parcela": number},
            "geometry": {"type": "Polygon", "coordinates": place}}


def expect(name, found, wanted, slack=0):
    if found is None or abs(found - wanted) > slack:
        sys.exit(f"{name}: {found} instead of {float(wanted)}")


def main(campiva, plugins, first=1, seeds=120):
    # A list has three digits for a polygon.
    drawings = {seed: outlines(seed) for seed in range(int(first), min(int(first) + int(seeds), 1000))}
    with open("parcelas.geojson", "w", encoding="ascii") as source:
        json.dump({"type": "FeatureCollection", "name": "parcelas",
                   "crs": {"type": "name", "properties": {"name": "urn:ogc:def:crs:EPSG::25830"}},
                   "features": [feature(seed, i + 1, rings) for seed, made in drawings.items()
                                for i, rings in enumerate(made)]}, source)
    told = subprocess.run(["ogr2ogr", "-f", "Vexa", "-dsco", "GER=45", "-dsco", "MUN=155", "lista.txt",
                           "parcelas.geojson"], env={**os.environ, "GDAL_DRIVER_PATH": plugins, "CPL_LOG": ""},
                          stderr=subprocess.PIPE, check=True, encoding="utf-8").stderr
    # Of more than a hundred the rest is told by its number.
    overlaps = {int(polygon): (int(count), float(metres)) for count, polygon, metres in re.findall(
        r"(\d+) solapes de parcelas en el polígono (\d+): ([\d.]+) m2 en total", told)}
    expect("drawings whose overlaps are told", len(overlaps), min(len(drawings), 100))
    for seed, (count, metres) in overlaps.items():
        surfaces = [shared(one, other) for i, one in enumerate(drawings[seed]) for other in drawings[seed][:i]]
        expect(f"overlaps of {seed}", metres, sum(surfaces) / UNITS, 0.0051)
        expect(f"number of overlaps of {seed}", count, sum(surface > 0 for surface in surfaces))

    for table in TABLES:
        with open(table, "w", encoding="ascii") as file:
            file.write("Ger\tMun\r\n")
    # No table knows the parcels, so that the drawing makes them all. Such errors in the data end with 0.
    subprocess.run([campiva, "1", *TABLES, "lista.txt", "ortos.TOP", "0", "1", "1"], stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, check=False)
    subprocess.run([campiva], input="1011\n1\n1003=lista.txt\n1005=ortos.TOP\n1\n", encoding="ascii",
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    back, infograf = {}, {}
    with open("045155.R", encoding="latin-1") as records:
        for line in records:
            if line[9:11] == "PR":
                back[int(line[13:16]), int(line[16:21])] = int(line[21:30])
    with open("045155.CSP", encoding="latin-1") as records:
        for line in records:
            if line.startswith("12 "):
                infograf[int(line[8:11]), int(line[11:16])] = float(line[55:71])
    for seed, made in drawings.items():
        for number, rings in enumerate(made, 1):
            metres = sum(area(ring) * (1 if i == 0 else -1) for i, ring in enumerate(rings)) / UNITS
            name = f"parcel {number} of {seed}"
            surface = int(metres + Fraction(1, 2))
            expect(name + " on the way back", back.pop((seed, number), None), surface if surface > CORRECTED else 0)
            expect(name + " for Infograf", infograf.pop((seed, number), None), metres, Fraction(51, 10000))
    expect("records of nobody", len(back) + len(infograf), 0)
    print(f"{len(drawings)} drawings of {OUTLINES} outlines")


if __name__ == "__main__":
    program, folder = (os.path.abspath(name) for name in sys.argv[1:3])
    with tempfile.TemporaryDirectory(prefix="campiva-") as work:
        os.chdir(work)
        os.environ["XDG_CONFIG_HOME"] = work
        main(program, folder, *sys.argv[3:5])
