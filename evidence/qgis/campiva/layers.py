"""A municipality as layers of the project: one group, each layer knowing what it was opened from."""

import os
import tempfile
import zlib

from qgis.core import QgsApplication, QgsProject, QgsVectorLayer
from qgis.PyQt.QtCore import QObject, pyqtSignal

from . import edited_copy, gdal_files, programs, styles
from .municipality import Municipio, traslada

LISTA, CAPA, TABLAS, EDICION = (f"campiva/{que}" for que in ("lista", "capa", "tablas", "edicion"))

# From top to bottom: title, layer of the driver, kind of geometry where it has several, whether it is shown.
_DEL_CONTROLADOR = (("Mensajes en un punto", "mensajes", "|geometrytype=Point", True),
                    ("Mensajes de recintos", "mensajes", "|geometrytype=MultiPolygon", True),
                    ("Textos y puntos", "rotulos", "", False), ("Subparcelas", "subparcelas", "", True),
                    ("Parcelas", "parcelas", "", True), ("Polígonos", "poligonos", "", True),
                    ("Líneas", "lineas", "", False), ("Hojas", "hojas", "", False))
# Of the report's features: title, layer of the driver that they stand for, kind of geometry, class.
_DEL_INFORME = (("Mensajes", "mensajes", "Point", "mensaje"), ("Subparcelas", "subparcelas", "Polygon", "subparcela"),
                ("Parcelas", "parcelas", "Polygon", "parcela"))


class _Noticias(QObject):
    refrescado = pyqtSignal(str)  # the list whose layers were read again
    escrito = pyqtSignal(str)  # the list of a run that was cancelled when all was written, in whatever thread


noticias = _Noticias()


def rasgos_de(municipio, tablas):
    """Has the report write a municipality's features, and gives their file.

    They stand in the user's own folder: a project that shows them finds them there again. Raises OSError where
    there is no log or the report can't write them.
    """
    registro, ortos = municipio.salida("ERR"), municipio.ortos()
    if not os.path.exists(registro):
        raise OSError("El GDAL de este QGIS no tiene el controlador Vexa, y sin él los recintos salen del informe de "
                      f"un proceso: falta {registro}. Traduzca antes el municipio de Vexa a Catastro.")
    carpeta = os.path.join(QgsApplication.qgisSettingsDirPath(), "campiva")
    os.makedirs(carpeta, exist_ok=True)
    suma = zlib.crc32(os.path.abspath(municipio.lista).encode("utf-8", "surrogateescape"))
    base = os.path.join(carpeta, f"{municipio.nombre}-{suma:08x}")
    resultado = programs.ejecuta(programs.orden_informe(
        programs.busca_programa("campiva-informe"), registro, lista=municipio.lista, tablas=tablas,
        ortos=ortos if os.path.exists(ortos) else "", html=base + ".html", geojson=base + ".geojson"))
    if resultado.estado != 0:
        raise OSError(resultado.errores.strip() or "El informe no se ha podido hacer")
    return base + ".geojson"


def _fuentes(municipio, tablas):
    """Title, layer, source of QGIS and visibility of each layer."""
    if gdal_files.hay_controlador():
        gdal_files.abre(municipio.lista, TABLAS=tablas)  # which tells why it can't be, as layers don't
        opcion = f"|option:TABLAS={tablas}" if tablas else ""
        return [(titulo, nombre, f"{municipio.lista}|layername={nombre}{geometria}{opcion}", visible)
                for titulo, nombre, geometria, visible in _DEL_CONTROLADOR]
    rasgos = rasgos_de(municipio, tablas)
    return [(titulo, nombre, f"{rasgos}|geometrytype={geometria}|subset=\"clase\" = '{clase}'", True)
            for titulo, nombre, geometria, clase in _DEL_INFORME]


def abre(proyecto, lista, tablas, referencia):
    """Puts a municipality above all else, in the place of the same one opened before, and gives its layers.

    Raises OSError with what the user is to know.
    """
    municipio = Municipio(lista)
    return _pon(proyecto, municipio.titulo, _fuentes(municipio, tablas), referencia,
                {LISTA: lista, TABLAS: tablas, EDICION: ""})


def abre_copia(proyecto, lista, copia, referencia):
    """The same with a copy that may be edited, in whose stead the drawings aren't shown."""
    fuentes = [(titulo, nombre, f"{copia}|layername={nombre}", visible)
               for titulo, nombre, _, visible in _DEL_CONTROLADOR if nombre in gdal_files.DE_RECINTOS]
    capas = _pon(proyecto, f"{Municipio(lista).titulo}: edición", fuentes, referencia, {LISTA: lista, EDICION: copia})
    for capa in capas:
        formulario = capa.editFormConfig()
        for sitio in filter(lambda sitio: sitio >= 0, map(capa.fields().indexOf, gdal_files.SOLO_LEIDOS)):
            formulario.setReadOnly(sitio)  # else a form takes what comes into no drawing
        capa.setEditFormConfig(formulario)
    for capa in capas_de(proyecto, lista):
        if dato(capa, CAPA) in gdal_files.DE_RECINTOS:
            proyecto.layerTreeRoot().findLayer(capa).setItemVisibilityChecked(False)
    return capas


def copia(proyecto, lista, referencia):
    """Writes a municipality's outlines into a new file that may be edited, and gives its path. Raises OSError.

    It gets its name when it is whole: half of a copy, given back, would delete the other half.
    """
    municipio = Municipio(lista)
    tablas = next((dato(capa, TABLAS) for capa in capas_de(proyecto, lista)), "")
    datos = gdal_files.abre(lista, TABLAS=tablas, SRS=referencia.authid())
    apunte = f"{edited_copy.APUNTE}={edited_copy.apunte(edited_copy.sumas(municipio))}"
    with tempfile.TemporaryDirectory(prefix=f"~{municipio.nombre}-", dir=municipio.carpeta or ".") as carpeta:
        hecha = os.path.join(carpeta, "copia.gpkg")
        fallos = [texto for falla, texto in gdal_files.traduce(datos, hecha, "GPKG", apuntes=[apunte]) if falla]
        if fallos:
            raise OSError("; ".join(fallos))
        return edited_copy.coloca(hecha, municipio)


def _pon(proyecto, titulo, fuentes, referencia, propiedades):
    capas = []
    for nombre_visible, nombre, fuente, _ in fuentes:
        capa = QgsVectorLayer(fuente, nombre_visible, "ogr")
        if not capa.isValid():
            raise OSError(f"No se puede abrir la capa {nombre} de {propiedades[LISTA]}")
        capa.setCrs(referencia)
        for clave, valor in {**propiedades, CAPA: nombre}.items():
            capa.setCustomProperty(clave, valor)
        capa.setReadOnly(not propiedades[EDICION])  # what is read again after each run would lose edits
        styles.viste(capa, nombre)
        capas.append(capa)
    _quita(proyecto, propiedades[LISTA], bool(propiedades[EDICION]))
    grupo = proyecto.layerTreeRoot().insertGroup(0, titulo)
    for capa, (*_, visible) in zip(capas, fuentes):
        proyecto.addMapLayer(capa, False)
        nodo = grupo.addLayer(capa)
        nodo.setItemVisibilityChecked(visible)
        nodo.setExpanded(False)
    return capas


def _quita(proyecto, lista, edicion):
    """Takes away what shows the same already, and the group that is empty then.

    Raises OSError where somebody's edits would go with it, and takes nothing away.
    """
    capas = capas_de(proyecto, lista, edicion)
    sin_guardar = [capa.name() for capa in capas if capa.isModified()]
    if sin_guardar:
        raise OSError(f"Hay ediciones sin guardar en {', '.join(sin_guardar)}: guárdelas o descártelas antes")
    for capa in capas:
        grupo = proyecto.layerTreeRoot().findLayer(capa).parent()
        proyecto.removeMapLayer(capa)
        if not grupo.children() and grupo.parent() is not None:
            grupo.parent().removeChildNode(grupo)


def dato(capa, que):
    """What a layer was opened from, by one of the names above; empty for a layer that isn't ours, and for none.

    Of a project that was copied with its files that is what the layer shows now: by what it was opened from before,
    other files than those in view would be written.
    """
    anotado = capa.customProperty(que, "") if capa is not None else ""
    if not anotado or que == CAPA:
        return anotado
    fuente, copia_anotada = capa.source().split("|")[0], capa.customProperty(EDICION, "")
    if que == EDICION:
        return fuente
    origen = copia_anotada or capa.customProperty(LISTA, "")
    if not copia_anotada and os.path.basename(fuente) != os.path.basename(origen):
        return anotado  # the report's features stand elsewhere
    return traslada(anotado, origen, fuente)


def capas_de(proyecto, lista, edicion=False):
    """A municipality's layers in a project; those of its copy where that is asked for."""
    return [capa for capa in proyecto.mapLayers().values()
            if dato(capa, LISTA) == lista and bool(dato(capa, EDICION)) == edicion]


def refresca(lista):
    """Reads a municipality's layers again, after a run or a writing. Raises OSError as `rasgos_de` does."""
    capas = capas_de(QgsProject.instance(), lista)
    if capas and not gdal_files.hay_controlador():
        rasgos_de(Municipio(lista), dato(capas[0], TABLAS))
    for capa in capas:
        capa.dataProvider().reloadData()
        capa.triggerRepaint()
    noticias.refrescado.emit(lista)
