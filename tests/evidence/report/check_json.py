"""Holds a report for programs to its schema and to the log that it is of, a batch's summary to its own sums.

    check_json.py SCHEMA REPORT [LOG]
    check_json.py SCHEMA SUMMARY

The schema may use type, const, enum, required, properties, additionalProperties, items and $ref.
"""

import collections
import json
import sys

TYPES = {"object": dict, "array": list, "string": str, "boolean": bool, "null": type(None),
         "integer": int, "number": (int, float)}


def is_a(value, kind):
    return isinstance(value, TYPES[kind]) and (kind == "boolean" or not isinstance(value, bool))


def faults(value, schema, root, where):
    if "$ref" in schema:
        schema = root["$defs"][schema["$ref"].rsplit("/", 1)[1]]
    kinds = schema.get("type", list(TYPES))
    if not any(is_a(value, kind) for kind in ([kinds] if isinstance(kinds, str) else kinds)):
        yield f"{where}: {value!r} is no {kinds}"
    if value != schema.get("const", value) or value not in schema.get("enum", [value]):
        yield f"{where}: {value!r}"
    if isinstance(value, dict):
        known = schema.get("properties", {})
        yield from (f"{where}: no {name}" for name in schema.get("required", []) if name not in value)
        for name, member in value.items():
            inner = known.get(name, schema.get("additionalProperties", {}))
            if inner is False:
                yield f"{where}: {name} is unknown"
            else:
                yield from faults(member, inner, root, f"{where}.{name}")
    if isinstance(value, list):
        for i, item in enumerate(value):
            yield from faults(item, schema.get("items", {}), root, f"{where}[{i}]")


def of_a_run(told, log_name):
    with open(log_name, encoding="cp1252") as log:
        codes = collections.Counter(line[:4] for line in log)
    messages = told["mensajes"]
    if {m["codigo"]: m["cuantos"] for m in messages["porNumero"]} != codes:
        yield "the messages aren't the log's"
    if messages["errores"] != sum(n for code, n in codes.items() if code[0] == "E"):
        yield "the errors aren't the log's"
    if any(sum(line["cuantos"] for line in part["entra"]) !=
           sum(line["cuantos"] for line in part["sale"]) for part in told["balance"]):
        yield "the balance doesn't balance"
    surfaces = told["superficies"]
    if surfaces and not (surfaces["perdida"] == sum(p["m2"] for p in surfaces["parcelasQuePierden"])
                         == sum(p["perdida"] for p in surfaces["difieren"])):
        yield "the surface that is lost isn't the sum of the parcels'"


def of_a_batch(told):
    figures = [job["cifras"] for job in told["trabajos"] if job["cifras"]]
    for name, total in told["suma"].items():
        if figures and name in figures[0]:
            values = [f[name] for f in figures if f[name] is not None]
            if total != (sum(values) if values else None):
                yield f"{name} isn't the sum of the jobs'"
    kinds = collections.Counter(job["suerte"] for job in told["trabajos"])
    if kinds != +collections.Counter({"falló": told["suma"]["fallaron"], "sin leer": told["suma"]["sinLeer"],
                                      "sin hacer": told["suma"]["sinHacer"], "hecho": told["suma"]["hechos"]}):
        yield "the jobs aren't counted by what became of them"


def of_changes(changes):
    before, now = changes["antes"], changes["ahora"]
    gone, new = changes["desaparecidas"], changes["nuevas"]
    if before["parcelas"] - gone["parcelas"] + new["parcelas"] != now["parcelas"]:
        yield "the parcels don't add up to the newer state's"
    if before["m2"] - gone["m2"] + new["m2"] + changes["crecen"]["m2"] - changes["menguan"]["m2"] != now["m2"]:
        yield "nor do the surfaces"
    if sum(parcel["diferencia"] for parcel in changes["parcelas"]) != now["m2"] - before["m2"]:
        yield "the differences of the parcels don't add up"
    kinds = collections.Counter(parcel["que"] for parcel in changes["parcelas"])
    if (kinds["desaparecida"], kinds["nueva"]) != (gone["parcelas"], new["parcelas"]):
        yield "the parcels aren't those that the sums count"
    if kinds["cambiada"] + kinds["nueva"] + changes["iguales"] != now["parcelas"]:
        yield "not all parcels of the newer state are told of"


def main(schema_name, report_name, log_name=None):
    with open(schema_name, encoding="utf-8") as schema, open(report_name, encoding="utf-8") as report:
        root, told = json.load(schema), json.load(report)
    found = list(faults(told, root, root, "report"))
    if log_name:
        found += of_a_run(told, log_name)
    if told.get("cambios"):
        found += of_changes(told["cambios"])
    if "trabajos" in told:
        found += of_a_batch(told)
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


sys.exit(main(*sys.argv[1:]))
