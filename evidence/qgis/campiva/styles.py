"""How layers look: states by colour and hatch as on the report's maps, labels by scale."""

from qgis.core import (QgsFeatureRequest, QgsFillSymbol, QgsLinePatternFillSymbolLayer, QgsLineSymbol,
                       QgsMarkerSymbol, QgsNullSymbolRenderer, QgsPalLayerSettings, QgsPointPatternFillSymbolLayer,
                       QgsProperty, QgsRuleBasedRenderer, QgsSingleSymbolRenderer, QgsSymbolLayer,
                       QgsTextBufferSettings, QgsTextFormat, QgsVectorLayerSimpleLabeling)
from qgis.PyQt.QtGui import QColor

from .messages import POLIGONO

_PAPEL, _TINTA, _TENUE = "#fcfcfa", "#23262b", "#646b75"
_VELO = "252,252,250,90"  # paper through which a picture below is seen
_ERROR, _AVISO = "#a82a1e", "#8a5a00"
_CERCA = 5000  # the scale from which on outlines are as wide as can be
_VALIDO = "(estado = 'válido')"  # in the words of driver and report
_SIN_RELLENO = "no"
_DE_PUNTOS, _DE_SUPERFICIES = 0, 2  # QGIS has moved the names of these from version to version


def _contorno(color, ancho, trazo="solid", relleno=_SIN_RELLENO):
    """An outline, thinner from afar, where parcels are so small that nothing else would be seen of them."""
    suyo = QgsFillSymbol.createSimple({"color": _VELO, "style": relleno, "outline_color": color,
                                       "outline_width": str(ancho), "outline_style": trazo})
    suyo.symbolLayer(0).setDataDefinedProperty(
        QgsSymbolLayer.PropertyStrokeWidth,
        QgsProperty.fromExpression(f"{ancho} * max(0.2, min(1, {_CERCA} / @map_scale))"))
    return suyo


def _con_trama(trama, color):
    suyo = _contorno(color, 0.5)
    suyo.insertSymbolLayer(0, trama)
    return suyo


def _rayas():
    """Errors: stripes to the right."""
    trama = QgsLinePatternFillSymbolLayer()
    trama.setLineAngle(45)
    trama.setDistance(1.8)
    trama.setSubSymbol(QgsLineSymbol.createSimple({"color": "168,42,30,140", "width": "0.35"}))
    return _con_trama(trama, _ERROR)


def _puntos():
    """Warnings: dots, so that nobody needs the colour to tell them from errors."""
    trama = QgsPointPatternFillSymbolLayer()
    trama.setDistanceX(2)
    trama.setDistanceY(2)
    trama.setDisplacementX(1)
    trama.setSubSymbol(QgsMarkerSymbol.createSimple(
        {"name": "circle", "color": "138,90,0,205", "outline_style": "no", "size": "0.9"}))
    return _con_trama(trama, _AVISO)


def _cruz(color):
    return QgsMarkerSymbol.createSimple({"name": "cross2", "color": color, "outline_color": color,
                                         "outline_width": "0.7", "size": "3.6"})


def _reglas(capa, reglas):
    """Shows each feature by the first of the rules that it fits; each is a name, a condition, a symbol."""
    raiz = QgsRuleBasedRenderer.Rule(None)
    antes = []
    for nombre, condicion, simbolo in reglas:
        entera = " and ".join([*(f"not ({otra})" for otra in antes), f"({condicion})"])
        raiz.appendChild(QgsRuleBasedRenderer.Rule(simbolo, 0, 0, entera, nombre))
        antes.append(condicion)
    capa.setRenderer(QgsRuleBasedRenderer(raiz))


def _rotula(capa, expresion, tamano, color, desde=0, hasta=0, rango=5):
    """Labels of a layer, seen between two scales, 1:`desde` and nearer, farther than 1:`hasta`.

    \\param color  an expression
    \\param rango  0 to 10: whose labels give way to whose
    """
    formato = QgsTextFormat()
    formato.setSize(tamano)
    halo = QgsTextBufferSettings()
    halo.setEnabled(True)
    halo.setSize(0.8)
    halo.setColor(QColor(_PAPEL))
    formato.setBuffer(halo)
    rotulos = QgsPalLayerSettings()
    rotulos.fieldName, rotulos.isExpression = expresion, True
    rotulos.priority = rango
    if capa.geometryType() == _DE_SUPERFICIES:
        rotulos.placement = QgsPalLayerSettings.Placement.Horizontal
    rotulos.setFormat(formato)
    rotulos.dataDefinedProperties().setProperty(QgsPalLayerSettings.Property.Color,
                                                QgsProperty.fromExpression(color))
    rotulos.scaleVisibility = bool(desde or hasta)
    rotulos.minimumScale, rotulos.maximumScale = desde, hasta
    capa.setLabeling(QgsVectorLayerSimpleLabeling(rotulos))
    capa.setLabelsEnabled(True)


def _segun_mensajes(capa):
    """Rules of outlines that name their messages themselves, as those of the report do."""
    if capa.fields().indexOf("mensajes") < 0:
        return []
    codigos = "coalesce(array_to_string(mensajes), '')"
    return [("con errores", f"{codigos} like '%E%'", _rayas()), ("con avisos", f"{codigos} like '%W%'", _puntos())]


def _viste_parcelas(capa):
    del_informe = capa.fields().indexOf("recintos") >= 0
    piezas = "recintos" if del_informe else "piezas"
    _reglas(capa, [("sin uso en la vuelta", f"not {_VALIDO}", _contorno(_TENUE, 0.4, "dot")),
                   *_segun_mensajes(capa),
                   ("en varios recintos", f"{piezas} > 1", _contorno(_TINTA, 0.4, "dash", "solid")),
                   ("válida", _VALIDO, _contorno(_TINTA, 0.3, "solid", "solid"))])
    _rotula(capa, "if(parcela > 0, to_string(parcela), coalesce(rotulo, '?'))", 8.5,
            f"if({_VALIDO}, '{_TINTA}', '{_TENUE}')", 12000, rango=9)


def _viste_subparcelas(capa):
    _reglas(capa, [("sin uso en la vuelta", f"not {_VALIDO}", _contorno(_TENUE, 0.3, "dot")),
                   ("fuera de toda parcela", "parcela is null", _contorno(_ERROR, 0.4)),
                   ("válida", _VALIDO, _contorno(_TENUE, 0.15))])
    _rotula(capa, "coalesce(letra, rotulo)", 7, f"'{_TENUE}'", 4000, rango=2)


def _viste_textos(capa):
    capa.setRenderer(QgsNullSymbolRenderer())
    _rotula(capa, "texto", 7, f"if(borrado, '{_TENUE}', '{_TINTA}')", 5000)


def _viste_lineas(capa):
    capa.setRenderer(QgsSingleSymbolRenderer(QgsLineSymbol.createSimple({"color": _TENUE, "width": "0.2"})))


def _viste_grandes(expresion, color, ancho, trazo, hasta):
    """Polygons and sheets, which are seen where parcels are too small to be."""
    def viste_suya(capa):
        capa.setRenderer(QgsSingleSymbolRenderer(_contorno(color, ancho, trazo)))
        _rotula(capa, expresion, 10, f"'{color}'", 0, hasta)

    return viste_suya


def _viste_mensajes(capa):
    """Errors above warnings, so that of a parcel with both the error is seen."""
    de_puntos = capa.geometryType() == _DE_PUNTOS
    error, aviso = (_cruz(_ERROR), _cruz(_AVISO)) if de_puntos else (_rayas(), _puntos())
    numero = "codigo" if capa.fields().indexOf("codigo") >= 0 else "numero"
    sin_dibujar = f"coalesce(lugar, '') = '{POLIGONO}'" if capa.fields().indexOf("lugar") >= 0 else "false"
    _reglas(capa, [("sin dibujar, en su polígono", sin_dibujar, _contorno(_ERROR, 0.5, "dash")),
                   ("aviso", f"{numero} like 'W%'", aviso), ("error", "true", error)])
    capa.renderer().setOrderBy(QgsFeatureRequest.OrderBy([QgsFeatureRequest.OrderByClause(numero, False)]))
    capa.renderer().setOrderByEnabled(True)
    _rotula(capa, f"if({sin_dibujar}, '', {numero})", 7.5, f"if({numero} like 'W%', '{_AVISO}', '{_ERROR}')", 6000, rango=6)


_DE_CAPA = {"parcelas": _viste_parcelas, "subparcelas": _viste_subparcelas, "rotulos": _viste_textos,
            "poligonos": _viste_grandes("concat('Polígono ', poligono)", "#1f5a96", 0.7, "solid", 12000),
            "hojas": _viste_grandes("hoja", "#2f6b3c", 0.4, "dash", 0),
            "lineas": _viste_lineas, "mensajes": _viste_mensajes}


def viste(capa, nombre):
    """Gives a layer the look of what it shows: `nombre` is the driver's name of it."""
    _DE_CAPA[nombre](capa)
