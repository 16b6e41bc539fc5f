"""What a writing changes in a municipality's drawings, by what stood there and what stands. Needs no QGIS."""

import collections

# An outline: square metres, a shape that `iguales` can compare, and all that its label is.
Recinto = collections.namedtuple("Recinto", "capa poligono parcela letra rotulo area forma etiqueta")
# A row of what changes; square metres, None where there is nothing.
Cambio = collections.namedtuple("Cambio", "clase nombre antes despues")

NUEVO, BORRADO, CONTORNO, ETIQUETA = "nuevo", "borrado", "otro contorno", "otro rótulo"
_UNO = {"parcelas": "parcela", "subparcelas": "subparcela"}


def nombre_de(recinto):
    """An outline as a technician calls it: by its numbers, else by what its label says."""
    if recinto.capa == "poligonos":
        return f"polígono {recinto.poligono}"
    if recinto.capa == "hojas":
        return f"hoja {recinto.rotulo}"
    suyo = f"«{recinto.rotulo}»" + " en ninguna parcela" * (recinto.capa == "subparcelas")
    if recinto.parcela is not None:
        suyo = f"{recinto.parcela} {recinto.letra}".rstrip()
    return f"{_UNO[recinto.capa]} {suyo if recinto.rotulo else 'sin rótulo'} del polígono {recinto.poligono}"


def _por_nombre(recintos):
    grupos = collections.defaultdict(list)
    for recinto in recintos:
        grupos[nombre_de(recinto)].append(recinto)
    return grupos


def _cambian(antes, despues, iguales):
    """Tells whether an outline of either list has no equal in the other one."""
    quedan = list(despues)
    for recinto in antes:
        suyo = next((otro for otro in quedan if iguales(recinto.forma, otro.forma)), None)
        if suyo is None:
            return True
        quedan.remove(suyo)
    return bool(quedan)


def _suma(recintos):
    return sum(recinto.area for recinto in recintos) if recintos else None


def compara(antes, despues, iguales):
    """The changes in the order of the drawings; several outlines of a name are one row.

    \\param iguales  tells whether two shapes are the same, a point more on a line aside
    """
    viejos, nuevos, cambios = _por_nombre(antes), _por_nombre(despues), []
    for nombre in dict.fromkeys([*viejos, *nuevos]):
        suyos, otros = viejos.get(nombre, []), nuevos.get(nombre, [])
        clase = None
        if _cambian(suyos, otros, iguales):
            clase = CONTORNO if suyos and otros else NUEVO if otros else BORRADO
        elif {suyo.etiqueta for suyo in suyos} != {otro.etiqueta for otro in otros}:
            clase = ETIQUETA
        if clase:
            cambios.append(Cambio(clase, nombre, _suma(suyos), _suma(otros)))
    return cambios


def resumen(cambios):
    """A sentence on all changes."""
    cuantos = collections.Counter(cambio.clase for cambio in cambios)
    nombres = ((NUEVO, "nuevos"), (BORRADO, "borrados"), (CONTORNO, "con otro contorno"), (ETIQUETA, "con otro rótulo"))
    partes = [f"{cuantos[clase]} {nombre}" for clase, nombre in nombres if cuantos[clase]]
    return f"Recintos: {', '.join(partes)}." if partes else "Ningún recinto cambia."
