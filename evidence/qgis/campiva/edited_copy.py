"""The copies of a municipality's outlines that are edited: their names, and what was drawn when each was made.

Needs no QGIS.
"""

import itertools
import json
import os
import re
import zlib

APUNTE = "CAMPIVA_DIBUJOS"  # what a copy calls its note of the drawings that it was made from
_NOMBRE = re.compile(r"-edicion(?:-(\d+))?\.gpkg", re.IGNORECASE)
_DEL_FICHERO = ("", "-wal", "-journal")  # what of a copy would be taken for a part of another one by its name


def _numero(municipio, fichero):
    """Of a copy, from 1; 0 for another file."""
    suyo = _NOMBRE.fullmatch(fichero, len(municipio.nombre)) if fichero.startswith(municipio.nombre) else None
    return int(suyo.group(1) or 1) if suyo else 0


def ultima(municipio):
    """Path of the copy made last; empty where there is none."""
    ficheros = os.listdir(municipio.carpeta or ".")
    fichero = max(ficheros, key=lambda otro: _numero(municipio, otro), default="")
    return os.path.join(municipio.carpeta, fichero) if _numero(municipio, fichero) else ""


def coloca(hecha, municipio):
    """Gives a finished copy the next name and tells it. Raises OSError.

    One that was there stays, under its name: another QGIS may have it open, and edits would go into whatever file
    stands there.
    """
    previa = ultima(municipio)
    primero = _numero(municipio, os.path.basename(previa)) + 1
    for numero in itertools.count(primero):
        copia = os.path.join(municipio.carpeta, f"{municipio.nombre}-edicion{f'-{numero}' * (numero > 1)}.gpkg")
        if any(os.path.exists(copia + parte) for parte in _DEL_FICHERO):
            continue
        try:
            os.close(os.open(copia, os.O_CREAT | os.O_EXCL | os.O_WRONLY))
        except FileExistsError:  # somebody else's, of this moment
            continue
        break
    try:
        os.replace(hecha, copia)
    except OSError:
        os.remove(copia)
        raise
    return copia


def sumas(municipio):
    """What each drawing holds, by its name: a sum of its bytes. The list counts as none: no writing takes from it."""
    hay = {}
    for ruta in municipio.dibujos()[1:]:
        with open(ruta, "rb") as dibujo:
            hay[os.path.basename(ruta)] = zlib.crc32(dibujo.read())
    return hay


def apunte(hay):
    return json.dumps(hay)


def lee_apunte(texto):
    """None of a copy without one, as older ones are, and where nobody can read it."""
    try:
        hay = json.loads(texto or "null")
    except ValueError:
        return None
    return hay if isinstance(hay, dict) else None


def pisados(al_copiar, antes, despues):
    """The drawings that changed since the copy was made and that a writing changes, by their sums of these moments."""
    if al_copiar is None:
        return []
    return sorted(fichero for fichero in {*al_copiar, *antes, *despues}
                  if al_copiar.get(fichero) != antes.get(fichero) != despues.get(fichero))
