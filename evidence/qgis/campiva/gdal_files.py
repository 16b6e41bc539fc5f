"""A municipality through GDAL: its messages and outlines read, drawings written.

By the driver where GDAL has it; else messages and outlines come from the features that the report writes.
"""

import contextlib
import zlib

from osgeo import gdal, ogr

from .changes import Recinto
from .messages import de_campos

CONTROLADOR = "Vexa"
DE_RECINTOS = ("parcelas", "subparcelas", "poligonos", "hojas")
# What the driver shows of drawings and tables, and takes back from nobody.
SOLO_LEIDOS = ("area_registro", "area_contorno", "valido", "estado", "faltas", "pieza", "piezas", "en_tablas",
               "superficie", "titular", "dni", "participacion", "paraje", "clave_conc", "tipo", "calificacion", "clase")
_DE_LA_ETIQUETA = ("rotulo", "codigo", "borrado", "rotulo_x", "rotulo_y")
_LEE = {ogr.OFTInteger: ogr.Feature.GetFieldAsInteger, ogr.OFTInteger64: ogr.Feature.GetFieldAsInteger64,
        ogr.OFTReal: ogr.Feature.GetFieldAsDouble}
_SE_NOTA = 0.005  # square metres: half of what a drawing's smallest step encloses along a metre


def hay_controlador():
    return gdal.GetDriverByName(CONTROLADOR) is not None


@contextlib.contextmanager
def quejas():
    """Gathers what GDAL tells instead of printing it, of each whether it is a failure, and its text.

    Its exceptions, which others switch on, would lose what is told when a dataset is closed.
    """
    dichas, excepciones = [], gdal.GetUseExceptions()
    gdal.DontUseExceptions()
    gdal.PushErrorHandler(lambda clase, _, texto: dichas.append((clase >= gdal.CE_Failure, texto)))
    try:
        yield dichas
    except RuntimeError as fallo:  # of OGR, which has a switch of its own before GDAL 3.7
        dichas.append((True, str(fallo)))
    finally:
        gdal.PopErrorHandler()
        if excepciones:
            gdal.UseExceptions()
    dichas[:] = dict.fromkeys(dichas)


def _fallos(dichas):
    return "; ".join(texto for falla, texto in dichas if falla)


def abre(fichero, **opciones):
    """The dataset of a list, or of features; what GDAL warns of goes on to whoever listens.

    \\param opciones  the driver's, by their names; an empty one isn't given
    Raises OSError with what GDAL says of it.
    """
    datos, dadas = None, [f"{nombre}={valor}" for nombre, valor in opciones.items() if valor]
    with quejas() as dichas:
        datos = gdal.OpenEx(fichero, gdal.OF_VECTOR, open_options=dadas)
    if datos is None:
        raise OSError(_fallos(dichas) or f"{fichero} no se puede abrir")
    for _, texto in dichas:
        gdal.Error(gdal.CE_Warning, gdal.CPLE_AppDefined, texto)
    return datos


def _lector(capa, *nombres):
    """A function that gives what a feature of a layer has of these fields.

    A log may have a hundred thousand lines, and Python's own ways look up each name and kind again in each.
    """
    definicion, campos = capa.GetLayerDefn(), []
    for nombre in nombres:
        sitio = definicion.GetFieldIndex(nombre)
        if sitio >= 0:
            clase = definicion.GetFieldDefn(sitio).GetType()
            campos.append((nombre, sitio, _LEE.get(clase, ogr.Feature.GetFieldAsString)))
    return lambda elemento: {nombre: lee(elemento, sitio) for nombre, sitio, lee in campos
                             if elemento.IsFieldSetAndNotNull(sitio)}


def lee_mensajes(datos):
    """All lines of the log, in its order, and the layer that `lugar` of each is a number of."""
    capa = datos.GetLayerByName("mensajes")
    if capa is None:  # the report's features are all in one layer
        capa = datos.GetLayer(0)
        capa.SetAttributeFilter("clase = 'mensaje'")
    lee = _lector(capa, "numero", "codigo", "texto", "poligono", "parcela", "letra", "lugar")
    return [de_campos(lee(elemento), elemento.GetFID()) for elemento in capa], capa


def lugar_de(capa, mensaje):
    """Where a message lies, as WKB; None where it has no place."""
    elemento = capa.GetFeature(mensaje.lugar)
    geometria = elemento.GetGeometryRef() if elemento is not None else None
    return bytes(geometria.ExportToWkb()) if geometria is not None else None


def recintos_de(datos):
    """All outlines of a list."""
    recintos = []
    for nombre in DE_RECINTOS:
        capa = datos.GetLayerByName(nombre)
        lee = _lector(capa, "poligono", "parcela", "letra", "area_contorno", *_DE_LA_ETIQUETA)
        for elemento in capa:
            campos, forma = lee(elemento), elemento.GetGeometryRef()
            recintos.append(Recinto(nombre, campos.get("poligono"), campos.get("parcela"), campos.get("letra", ""),
                                    campos.get("rotulo", ""), campos.get("area_contorno", 0.0),
                                    forma.Clone() if forma is not None else None,
                                    tuple(campos.get(campo) for campo in _DE_LA_ETIQUETA)))
    return recintos


def suma_de(datos):
    """Of all that the outlines of a dataset are: that of an edit is another one."""
    suma = 0
    for capa in filter(None, map(datos.GetLayerByName, DE_RECINTOS)):
        cuantos = capa.GetLayerDefn().GetFieldCount()
        for elemento in capa:
            forma = elemento.GetGeometryRef()
            campos = [elemento.GetFieldAsString(sitio) for sitio in range(cuantos)]
            suma = zlib.crc32(repr((elemento.GetFID(), campos)).encode("utf-8", "surrogateescape"), suma)
            suma = zlib.crc32(forma.ExportToWkb() if forma is not None else b"", suma)
    return suma


def iguales(una, otra):
    """Tells whether two outlines enclose the same, wherever their points are."""
    if una is None or otra is None or una.Equals(otra):
        return una is otra or una is not None and otra is not None
    with quejas():  # an outline that crosses itself has no difference from any
        diferencia = una.SymDifference(otra)
        return diferencia is not None and diferencia.GetArea() < _SE_NOTA
    return False


def traduce(origen, destino, formato, capas=DE_RECINTOS, opciones=(), apuntes=()):
    """Writes layers of a dataset: over a municipality, or drawings into a file to be edited.

    \\param opciones  creation options, "NAME=VALUE"
    \\param apuntes  what the file is to say of itself, in the same form
    \\return what GDAL said, as `quejas` has it: nothing was written where one is a failure
    """
    with quejas() as dichas:
        hecho = gdal.VectorTranslate(destino, origen, format=formato, layers=list(capas),
                                     datasetCreationOptions=list(opciones),
                                     options=[parte for apunte in apuntes for parte in ("-mo", apunte)])
        if hecho is None and not _fallos(dichas):
            dichas.append((True, f"No se ha podido escribir {destino}"))
        del hecho  # it writes when it is closed
    return dichas


def apunta(fichero, nombre, valor):
    """Has a file say another thing of itself, and gives what GDAL said, as `traduce` does."""
    with quejas() as dichas:
        datos = gdal.OpenEx(fichero, gdal.OF_VECTOR | gdal.OF_UPDATE)
        if datos is not None:
            datos.SetMetadataItem(nombre, valor)
        del datos
    return dichas
