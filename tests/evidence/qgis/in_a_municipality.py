"""A municipality of the samples in a folder of its own, and the plugin in the QGIS that runs this."""

import os
import shutil
import tempfile
import unittest

import processing
from qgis.core import QgsCoordinateReferenceSystem, QgsProject
from qgis.utils import iface, plugins

from campiva import layers

SAMPLES = os.environ["SAMPLES"]
REFERENCE = QgsCoordinateReferenceSystem("EPSG:25830")


class WithAMunicipality(unittest.TestCase):
    DRAWINGS, TABLES = "villanueva_dibujos_con_faltas", "villanueva_tablas_con_faltas"

    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        self.addCleanup(QgsProject.instance().clear)
        for part in filter(None, (self.DRAWINGS, self.TABLES)):
            shutil.copytree(os.path.join(SAMPLES, part), self.folder, dirs_exist_ok=True)
        self.list = os.path.join(self.folder, "poligonos.txt")
        self.plugin = plugins["campiva"]

    def translate(self, name="vuelta", feedback=None, **parameters):
        return processing.run(f"campiva:{name}", {"LISTA": self.list, **parameters}, feedback=feedback)

    def open(self):
        self.plugin.abre(self.list, self.folder if self.TABLES else "", REFERENCE)
        return {layer.name(): layer for layer in layers.capas_de(QgsProject.instance(), self.list)}

    def told(self):
        """What the bar says, which is read then."""
        text = iface.messageBar().currentItem().text()
        iface.messageBar().clearWidgets()
        return text

    def forget_subparcels(self):
        """Has the next run find other messages."""
        with open(os.path.join(self.folder, "Subparcelas.txt"), "r+", encoding="cp1252") as table:
            table.readline()
            table.truncate(table.tell())

    def log_lines(self):
        with open(os.path.join(self.folder, "045127.ERR"), encoding="cp1252") as log:
            return log.read().splitlines()
