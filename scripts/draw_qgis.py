"""Takes pictures of the plugin in QGIS, which runs this by `--code`; scripts/qgis_pictures starts it.

The environment names the list of a municipality with a log (LIST), one to be edited (EDITED), and the folder
(PICTURES) that the pictures go to.
"""

import os
import traceback

from qgis.core import QgsCoordinateReferenceSystem, QgsGeometry, QgsProject, QgsRectangle
from qgis.PyQt.QtCore import Qt, QTimer
from qgis.PyQt.QtWidgets import QApplication, QDockWidget, QToolBar
from qgis.utils import iface, plugins

from campiva import layers
from campiva.give_back import Devolucion, DialogoDevolver
from campiva.municipality import Municipio

PAUSE = 4000  # milliseconds in which a map is drawn
SHOWN = ("Campiva", "mMapNavToolBar", "mAttributesToolBar")
CAMPIVA = plugins["campiva"]
held = []  # windows that stay open for their picture


def prepare():
    window = iface.mainWindow()
    window.setGeometry(0, 0, 1400, 880)
    for dock in window.findChildren(QDockWidget):
        dock.setVisible(dock.objectName() == "Layers")
    for bar in window.findChildren(QToolBar):
        bar.setVisible(bar.objectName() in SHOWN)


def opened(path):
    QgsProject.instance().clear()
    reference = QgsCoordinateReferenceSystem("EPSG:25830")
    CAMPIVA.abre(path, Municipio(path).tablas(), reference)
    iface.messageBar().clearWidgets()
    iface.mainWindow().resizeDocks([CAMPIVA.panel], [520], Qt.Orientation.Horizontal)


def open_with_messages():
    opened(os.environ["LIST"])


def show_a_message():
    CAMPIVA.panel.clase.setCurrentIndex(1)
    rows = CAMPIVA.panel.vista.model()
    for row in (0, 1):
        rows.setData(rows.index(row, 0), Qt.CheckState.Checked, Qt.ItemDataRole.CheckStateRole)
    CAMPIVA.panel.vista.setCurrentIndex(next(rows.index(row, 0) for row in range(rows.rowCount())
                                             if rows.index(row, 0).data() == "E110"))
    CAMPIVA.panel.ve_al_sitio()
    iface.mapCanvas().zoomScale(3000)


def edit(layer):
    """A parcel is gone, one grew into its neighbour, one is split in two."""
    numbered = {feature["parcela"]: feature for feature in layer.getFeatures() if feature["poligono"] == 1}
    layer.startEditing()
    layer.deleteFeature(numbered[20].id())
    grown = QgsGeometry(numbered[30].geometry())
    layer.changeGeometry(numbered[30].id(), grown.buffer(0.4, 1))
    box = numbered[47].geometry().boundingBox()
    half = QgsGeometry.fromRect(QgsRectangle(box.xMinimum() - 1, box.yMinimum() - 1, box.center().x(),
                                             box.yMaximum() + 1))
    other = numbered[47]
    rest = other.geometry().difference(half)
    layer.changeGeometry(other.id(), other.geometry().intersection(half))
    other.setId(-1)
    other.setAttribute("fid", None)
    other.setAttribute("parcela", 947)
    other.setAttribute("rotulo", None)
    other.setAttribute("numero", None)
    other.setGeometry(rest)
    layer.addFeature(other)
    layer.commitChanges()


def show_giving_back():
    opened(os.environ["EDITED"])
    CAMPIVA.panel.hide()
    CAMPIVA.acciones["editar"].trigger()
    copies = layers.capas_de(QgsProject.instance(), os.environ["EDITED"], edicion=True)
    parcels = next(layer for layer in copies if layers.dato(layer, layers.CAPA) == "parcelas")
    edit(parcels)
    iface.mapCanvas().zoomScale(5000)
    dialog = DialogoDevolver(Devolucion(os.environ["EDITED"], layers.dato(parcels, layers.EDICION)), iface.mainWindow())
    dialog.move(560, 180)
    dialog.show()
    held.append(dialog)


# What is done, and the picture of what is seen then; a window takes its size before a map is moved in it.
STEPS = [(open_with_messages, None), (show_a_message, "qgis_messages.png"), (show_giving_back, "qgis_give_back.png")]


def step():
    try:
        if not STEPS:
            os._exit(0)  # nobody is there to answer what QGIS asks when it is closed
        show, name = STEPS.pop(0)
        show()
        QTimer.singleShot(PAUSE, lambda: taken(name))
    except Exception:
        traceback.print_exc()
        os._exit(1)


def taken(name):
    if name:
        QApplication.primaryScreen().grabWindow(0).save(os.path.join(os.environ["PICTURES"], name))
    step()


prepare()
QTimer.singleShot(1000, step)
