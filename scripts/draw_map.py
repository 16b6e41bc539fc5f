"""Draws a municipality's first polygon in QGIS: parcels with their numbers, and where messages point.

    draw_map.py LIST PICTURE
"""

import sys

from qgis.core import (QgsApplication, QgsFillSymbol, QgsMapRendererSequentialJob, QgsMapSettings,
                       QgsMarkerSymbol, QgsPalLayerSettings, QgsRectangle, QgsRuleBasedRenderer,
                       QgsTextBufferSettings, QgsTextFormat, QgsVectorLayer,
                       QgsVectorLayerSimpleLabeling)
from qgis.PyQt.QtCore import QSize
from qgis.PyQt.QtGui import QColor, QFont


def layer(path, name, condition):
    found = QgsVectorLayer(f"{path}|layername={name}|subset={condition}", name, "ogr")
    if not found.isValid():
        sys.exit(f"{path}: no layer {name}")
    return found


def fill(colour, border, width, style="solid"):
    return QgsFillSymbol.createSimple({"color": colour, "outline_color": border, "style": style,
                                       "outline_width": str(width)})


def labelled(of, field, size, colour):
    text = QgsTextFormat()
    text.setFont(QFont("DejaVu Sans"))
    text.setSize(size)
    text.setColor(QColor(colour))
    halo = QgsTextBufferSettings()
    halo.setEnabled(True)
    halo.setSize(0.7)
    halo.setColor(QColor("#ffffff"))
    text.setBuffer(halo)
    settings = QgsPalLayerSettings()
    settings.fieldName = field
    settings.isExpression = True
    settings.centroidInside = True
    settings.setFormat(text)
    of.setLabeling(QgsVectorLayerSimpleLabeling(settings))
    of.setLabelsEnabled(True)


def ruled(of, rules):
    root = QgsRuleBasedRenderer.Rule(None)
    for condition, symbol in rules:
        root.appendChild(QgsRuleBasedRenderer.Rule(symbol, 0, 0, condition))
    of.setRenderer(QgsRuleBasedRenderer(root))


def draw(path, picture):
    parcels = layer(path, "parcelas", "poligono = 1")
    ruled(parcels, [("valido", fill("#f4f1e6", "#6b6b60", 0.35)),
                    ("not valido", fill("#d9d9d9", "#6b6b60", 0.35))])
    labelled(parcels, "coalesce(rotulo, '(sin rótulo)')", 8, "#222222")
    parts = layer(path, "subparcelas", "poligono = 1")
    parts.renderer().setSymbol(fill("0,0,0,0", "#b9b4a2", 0.2, "no"))
    wrong = QgsVectorLayer(f"{path}|layername=mensajes|geometrytype=MultiPolygon", "recintos", "ogr")
    wrong.setSubsetString("poligono = 1 and numero <> 'E112'")
    wrong.renderer().setSymbol(fill("214,69,48,60", "#d64530", 0.7))
    labelled(wrong, "concat(parcela, ' ', numero)", 9, "#b02010")
    points = QgsVectorLayer(f"{path}|layername=mensajes|geometrytype=Point", "puntos", "ogr")
    points.renderer().setSymbol(QgsMarkerSymbol.createSimple(
        {"name": "cross_fill", "color": "#d64530", "outline_color": "#7d1d10", "size": "4"}))
    labelled(points, "numero", 9, "#b02010")
    settings = QgsMapSettings()
    settings.setLayers([points, wrong, parts, parcels])
    settings.setBackgroundColor(QColor("#ffffff"))
    settings.setOutputSize(QSize(1400, 900))
    settings.setOutputDpi(110)
    shown = parcels.extent()
    settings.setExtent(QgsRectangle(shown.xMinimum(), shown.yMinimum(), shown.xMaximum(),
                                    shown.yMinimum() + shown.height() * 0.62))
    job = QgsMapRendererSequentialJob(settings)
    job.start()
    job.waitForFinished()
    job.renderedImage().save(picture)


def main(path, picture):
    app = QgsApplication([], False)
    app.initQgis()
    draw(path, picture)  # its layers go before what they need does
    app.exitQgis()


main(*sys.argv[1:])
