"""The plugin in QGIS itself, which runs this by `--code`; scripts/qgis starts it.

The environment names the samples (SAMPLES), and the file (RESULT) that gets "passed" or what failed.
"""

import filecmp
import io
import os
import shutil
import sys
import tempfile
import traceback
import unittest
from unittest import mock

import processing
import qgis.utils
from osgeo import gdal
from qgis.core import (QgsApplication, QgsCoordinateReferenceSystem, QgsGeometry, QgsProcessingFeedback, QgsProject,
                       QgsRectangle, QgsVectorLayer)
from qgis.PyQt.QtCore import Qt, QTimer
from qgis.PyQt.QtTest import QTest
from qgis.PyQt.QtWidgets import QApplication, QDialog, QMessageBox
from qgis.utils import iface, plugins

from campiva import gdal_files, layers
from campiva.give_back import Devolucion, DialogoDevolver

SAMPLES = os.environ["SAMPLES"]
REFERENCE = QgsCoordinateReferenceSystem("EPSG:25830")
OWN = ("Modulos.txt", "Titulares.txt", "Parcelas.txt", "Subparcelas.txt", "Parajes.txt", "Cotitulares.txt")


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

    def forget_subparcels(self):
        """Has the next run find other messages."""
        with open(os.path.join(self.folder, "Subparcelas.txt"), "r+", encoding="cp1252") as table:
            table.readline()
            table.truncate(table.tell())

    def log_lines(self):
        with open(os.path.join(self.folder, "045127.ERR"), encoding="cp1252") as log:
            return log.read().splitlines()


class TestOpening(WithAMunicipality):
    def test_one_group_has_all_layers_with_their_look(self):
        self.translate()
        for _ in range(2):  # the second time in the place of the first
            opened = self.open()
        self.assertEqual(len(opened), 8)
        self.assertEqual([group.name() for group in QgsProject.instance().layerTreeRoot().children()],
                         ["045127 VILLANUEVA"])
        for layer in opened.values():
            self.assertTrue(layer.isValid() and layer.crs() == REFERENCE, layer.name())
        self.assertEqual(opened["Parcelas"].featureCount(), 155)
        self.assertTrue(any(feature["titular"] for feature in opened["Parcelas"].getFeatures()), "tables are read")
        shown = iface.mapCanvas().extent()
        self.assertTrue(shown.contains(opened["Parcelas"].extent()))

    def test_without_the_driver_the_report_s_features_are_shown(self):
        self.translate()
        driver = gdal.GetDriverByName("Vexa")
        driver.Deregister()
        self.addCleanup(driver.Register)
        opened = self.open()
        self.assertEqual(sorted(opened), ["Mensajes", "Parcelas", "Subparcelas"])
        self.assertEqual(opened["Parcelas"].featureCount(), 154)
        self.assertEqual([message.texto for message in self.plugin.panel.tabla.mensajes], self.log_lines())
        self.forget_subparcels()
        self.translate()
        self.assertEqual([message.texto for message in self.plugin.panel.tabla.mensajes], self.log_lines())
        self.plugin.acciones["editar"].trigger()
        self.assertIn("Vexa", iface.messageBar().currentItem().text())
        iface.messageBar().clearWidgets()

    def test_the_reference_system_is_asked_for_once(self):
        asked = []

        class Dialog:
            DialogCode = QDialog.DialogCode

            def __init__(self, _window):
                asked.append(self)

            def setWindowTitle(self, _title):
                pass

            def setCrs(self, reference):
                self.reference = reference

            def crs(self):
                return QgsCoordinateReferenceSystem("EPSG:25829")

            def exec(self):
                return self.DialogCode.Accepted

        with mock.patch("campiva.plugin.QgsProjectionSelectionDialog", Dialog), \
                mock.patch("campiva.plugin.QFileDialog.getOpenFileName", lambda *_: (self.list, "")):
            for _ in range(2):
                self.plugin.acciones["abrir"].trigger()
        self.assertEqual(len(asked), 1)
        opened = layers.capas_de(QgsProject.instance(), self.list)
        self.assertEqual({(layer.crs().authid(), layers.dato(layer, layers.TABLAS)) for layer in opened},
                         {("EPSG:25829", self.folder)})

    def test_it_is_taken_away_and_comes_back(self):
        self.assertTrue(qgis.utils.unloadPlugin("campiva"))
        self.assertIsNone(QgsApplication.processingRegistry().providerById("campiva"))
        self.assertTrue(qgis.utils.loadPlugin("campiva") and qgis.utils.startPlugin("campiva"))
        self.plugin = plugins["campiva"]
        self.assertEqual(len(self.open()), 8)

    def test_what_cannot_be_opened_is_told(self):
        empty = os.path.join(self.folder, "vacía")
        os.mkdir(empty)
        for path, tables, reason in ((os.path.join(self.folder, "Parajes.txt"), "", "no es una lista"),
                                     (self.list, empty, "TABLAS")):
            with self.assertRaisesRegex(OSError, reason):
                layers.abre(QgsProject.instance(), path, tables, REFERENCE)
        self.assertEqual(len(QgsProject.instance().mapLayers()), 0)

    def test_what_is_missing_is_told(self):
        self.open()
        self.assertIn("002.BIN", iface.messageBar().currentItem().text())
        iface.messageBar().clearWidgets()


class TestPanel(WithAMunicipality):
    def setUp(self):
        super().setUp()
        self.translate()
        self.open()
        self.panel = self.plugin.panel
        self.rows = self.panel.vista.model()
        self.addCleanup(self.panel.texto.clear)

    def test_shows_the_log_and_filters_it(self):
        self.assertEqual([message.texto for message in self.panel.tabla.mensajes], self.log_lines())
        self.panel.texto.setText("coordenadas")
        self.assertEqual(self.rows.rowCount(), sum("coordenadas" in line for line in self.log_lines()))
        self.panel.texto.clear()
        self.panel.numero.setCurrentIndex(self.panel.numero.findData("W303"))
        self.assertEqual(self.rows.rowCount(), 1)
        self.panel.numero.setCurrentIndex(0)

    def test_keys_lead_from_message_to_message_and_the_map_follows(self):
        self.panel.texto.setText("coordenadas")
        self.plugin.acciones["siguiente"].trigger()
        self.plugin.acciones["siguiente"].trigger()
        self.assertEqual(self.panel.vista.currentIndex().row(), 1)
        self.assertRegex(self.panel.consejo.toPlainText(), "(?s)^E109.*Causa[.].*Remedio[.]")
        words = self.rows.index(1, 4).data().split()
        x, y = (float(word) for word in words[words.index("coordenadas") + 1:][:2])
        shown = iface.mapCanvas().extent()
        self.assertTrue(shown.contains(QgsRectangle(x, y, x, y)))
        self.assertLess(shown.height(), 200)
        self.plugin.acciones["anterior"].trigger()
        self.plugin.acciones["anterior"].trigger()
        self.assertEqual(self.panel.vista.currentIndex().row(), 0, "before the first there is none")

    def test_blank_ticks_off_and_the_tick_is_there_the_next_time(self):
        self.panel.vista.setCurrentIndex(self.rows.index(3, 4))
        QTest.keyClick(self.panel.vista, Qt.Key.Key_Space)
        self.assertEqual(sum(self.panel.tabla.hechos), 1)
        with open(os.path.join(self.folder, "045127.ERR.hechos"), encoding="utf-8") as kept:
            self.assertEqual(kept.read().splitlines(), [self.log_lines()[3]])
        self.open()
        self.assertTrue(self.panel.tabla.hechos[3])
        self.panel.vista.setCurrentIndex(self.rows.index(3, 4))
        self.panel.pendientes.setChecked(True)
        self.assertEqual(self.rows.rowCount(), len(self.log_lines()) - 1)
        self.panel.pendientes.setChecked(False)
        self.panel.vista.setCurrentIndex(self.rows.index(3, 4))
        QTest.keyClick(self.panel.vista, Qt.Key.Key_Space)
        self.assertFalse(os.path.exists(os.path.join(self.folder, "045127.ERR.hechos")))

    def test_each_control_has_a_name_for_who_hears_it(self):
        for control in (self.panel.numero, self.panel.clase, self.panel.poligono, self.panel.texto, self.panel.vista,
                        self.panel.consejo):
            self.assertTrue(control.accessibleName())


class Feedback(QgsProcessingFeedback):
    """Notes what an algorithm says; cancels it at the first word of progress if it is to."""

    def __init__(self, cancels=False):
        super().__init__()
        self.told, self.errors, self._cancels = [], [], cancels

    def isCanceled(self):
        return self._cancels

    def pushInfo(self, info):
        self.told.append(info)

    def reportError(self, error, fatalError=False):
        self.errors.append(error)


class TestTranslating(WithAMunicipality):
    def test_boxes_are_told_and_the_layers_read_again(self):
        self.translate()
        on_the_map = self.open()["Mensajes de recintos"]
        count = on_the_map.featureCount()
        before, feedback = {feature["texto"] for feature in on_the_map.getFeatures()}, Feedback()
        self.forget_subparcels()
        result = self.translate(feedback=feedback)
        QApplication.processEvents()
        self.assertIn("E107: Archivo topológico del polígono 003.PAR fuera de fecha", feedback.errors)
        self.assertTrue(any(told.startswith("Proceso finalizado con éxito.") for told in feedback.told))
        self.assertEqual(result["ERRORES"], sum(line.startswith("E") for line in self.log_lines()))
        now = {feature["texto"] for feature in on_the_map.getFeatures()}
        self.assertNotEqual(now, before)
        self.assertNotEqual(on_the_map.featureCount(), count)
        self.assertLessEqual(now, set(self.log_lines()))
        self.assertEqual([message.texto for message in self.plugin.panel.tabla.mensajes], self.log_lines())

    def test_a_cancel_leaves_the_outputs_as_they_were(self):
        self.translate()
        with open(os.path.join(self.folder, "045127.R"), "rb") as output:
            before = output.read()
        feedback = Feedback(cancels=True)
        self.translate(feedback=feedback, NO_EN_GRAFICO=True)
        with open(os.path.join(self.folder, "045127.R"), "rb") as output:
            self.assertEqual("Detenido: los ficheros de salida quedan como estaban." in feedback.errors,
                             output.read() == before, "so short a run may be done before anybody stops it")

    def test_only_what_is_read_is_filled_in(self):
        self.open()
        given = {}
        with mock.patch("processing.execAlgorithmDialog", given.__setitem__):
            for name in ("ida", "vuelta", "infograf", "informe"):
                self.plugin.acciones[name].trigger()
        self.assertEqual(given.pop("campiva:ida"), {}, "the tables of this municipality would be written over")
        for name, filled in given.items():
            self.assertEqual((filled["LISTA"], filled["TABLAS"]), (self.list, self.folder), name)

    def test_all_four_write_what_they_name(self):
        entry = shutil.copy(os.path.join(SAMPLES, "villanueva.txt"), self.folder)
        results = [processing.run("campiva:ida", {"ENTRADA": entry, "TABLAS": self.folder}), self.translate(),
                   processing.run("campiva:informe", {"REGISTRO": os.path.join(self.folder, "045127.ERR"),
                                                      "HTML": os.path.join(self.folder, "i.html"),
                                                      "GEOJSON": os.path.join(self.folder, "i.geojson")}),
                   self.translate("infograf")]
        for written in (path for result in results for path in result.values() if isinstance(path, str)):
            self.assertTrue(os.path.exists(written), written)
        self.assertEqual([len(result) for result in results], [4, 5, 2, 1])


class TestGivingBack(WithAMunicipality):
    DRAWINGS, TABLES = "villanueva_dibujos", None

    def setUp(self):
        super().setUp()
        self.open()
        self.plugin.acciones["editar"].trigger()
        self.copy = {layers.dato(layer, layers.CAPA): layer
                     for layer in layers.capas_de(QgsProject.instance(), self.list, edicion=True)}
        self.copy_file = layers.dato(self.copy["parcelas"], layers.EDICION)

    def bytes_there(self):
        return {name: open(os.path.join(self.folder, name), "rb").read() for name in sorted(os.listdir(self.folder))
                if name.lower().endswith((".bin", ".par", ".sub", ".pol", ".txt"))}

    def written_at(self, name):
        return os.stat(os.path.join(self.folder, name)).st_mtime_ns

    def parcel(self, number):
        return next(feature for feature in self.copy["parcelas"].getFeatures()
                    if (feature["poligono"], feature["parcela"]) == (1, number))

    def edit(self, change):
        layer = self.copy["parcelas"]
        layer.startEditing()
        change(layer)
        self.assertTrue(layer.commitChanges(), layer.commitErrors())

    def test_nothing_edited_changes_nothing(self):
        dialog = DialogoDevolver(Devolucion(self.list, self.copy_file))
        self.assertEqual(dialog.resumen.text(), "Ningún recinto cambia.")

    def rows(self, dialog):
        return [tuple(dialog.tabla.item(row, column).text() for column in range(4))
                for row in range(dialog.tabla.rowCount())]

    def split(self, layer, number, new_number, **fields):
        """Cuts a parcel in two as a technician does: the other half has all that the one has."""
        whole = self.parcel(number)
        box = whole.geometry().boundingBox()
        left = QgsGeometry.fromRect(QgsRectangle(box.xMinimum(), box.yMinimum(), box.center().x(), box.yMaximum()))
        rest = whole.geometry().difference(left)
        layer.changeGeometry(whole.id(), whole.geometry().intersection(left))
        for name, value in {"fid": None, "parcela": new_number, **fields}.items():
            whole.setAttribute(name, value)
        whole.setGeometry(rest)
        layer.addFeature(whole)

    def test_what_is_shown_is_done_and_nothing_else(self):
        def change(layer):
            layer.deleteFeature(self.parcel(20).id())
            layer.changeGeometry(self.parcel(30).id(), self.parcel(30).geometry().buffer(-1, 1))
            self.split(layer, 47, 947, rotulo=None, numero=None)

        self.edit(change)
        before, written = self.bytes_there(), self.written_at("002.BIN")
        dialog = DialogoDevolver(Devolucion(self.list, self.copy_file))
        shown = [row[:2] for row in self.rows(dialog)]
        self.assertEqual(sorted(what for what in shown if what[1].startswith("parcela")),
                         [("borrado", "parcela 20 del polígono 1"), ("nuevo", "parcela 947 del polígono 1"),
                          ("otro contorno", "parcela 30 del polígono 1"),
                          ("otro contorno", "parcela 47 del polígono 1")])
        # Subparcels stay where they are; what changes is the parcel that they fall into.
        self.assertEqual({what[1] for what in shown if not what[1].startswith("parcela")} -
                         {f"subparcela {name} del polígono 1" for name in (
                             "20 a", "«20-a» en ninguna parcela", "47 a", "47 b", "947 a", "947 b")}, set())
        self.assertEqual(self.bytes_there(), before, "so far nothing is written")
        dialog.accept()
        self.assertEqual(dialog.result(), DialogoDevolver.DialogCode.Accepted)
        after = self.bytes_there()
        self.assertEqual({name[:4] for name in after if after[name] != before[name]}, {"001."})
        self.assertEqual(self.written_at("002.BIN"), written, "nobody edited it")
        layers.refresca(self.list)
        shown = {layer.name(): layer for layer in layers.capas_de(QgsProject.instance(), self.list)}["Parcelas"]
        numbers = [feature["parcela"] for feature in shown.getFeatures() if feature["poligono"] == 1]
        self.assertEqual([numbers.count(number) for number in (20, 30, 47, 947)], [0, 1, 1, 1])

    def test_a_label_alone_is_a_change_too(self):
        parcel = self.parcel(20)
        self.edit(lambda layer: layer.changeAttributeValue(
            parcel.id(), layer.fields().indexOf("rotulo_x"), parcel["rotulo_x"] + 1))
        dialog = DialogoDevolver(Devolucion(self.list, self.copy_file))
        self.assertEqual([row[:2] for row in self.rows(dialog)], [("otro rótulo", "parcela 20 del polígono 1")])
        self.assertTrue(dialog.escribir.isEnabled())

    def test_a_polygon_of_which_nothing_is_left_is_emptied_where_somebody_says_so(self):
        for layer in self.copy.values():
            if layer.fields().indexOf("poligono") >= 0:
                layer.startEditing()
                layer.deleteFeatures([one.id() for one in layer.getFeatures() if one["poligono"] == 2])
                self.assertTrue(layer.commitChanges(), layer.commitErrors())
        dialog = DialogoDevolver(Devolucion(self.list, self.copy_file))
        self.assertFalse(dialog.escribir.isEnabled())
        self.assertIn("se quedan como están; la opción VACIA los vacía: 002", dialog.quejas.toPlainText())
        dialog.casillas["VACIA=TODOS"].setChecked(True)
        rows = self.rows(dialog)
        self.assertGreater(len(rows), 100)
        self.assertTrue(all(row[0] == "borrado" and row[1].endswith("polígono 2") for row in rows))
        dialog.accept()
        self.assertEqual(os.path.getsize(os.path.join(self.folder, "002.PAR")), 0)

    def test_a_contradiction_is_refused_until_somebody_says_what_holds(self):
        self.edit(lambda layer: self.split(layer, 47, 947))
        dialog = DialogoDevolver(Devolucion(self.list, self.copy_file))
        self.assertFalse(dialog.escribir.isEnabled())
        self.assertIn("947", dialog.quejas.toPlainText())
        dialog.ganan.setCurrentIndex(dialog.ganan.findData("GANAN=NUMEROS"))
        self.assertTrue(dialog.escribir.isEnabled())
        self.assertIn("parcela 947 del polígono 1", [row[1] for row in self.rows(dialog)])

    def test_what_is_refused_is_told_and_not_written(self):
        self.edit(lambda layer: layer.changeGeometry(self.parcel(20).id(), QgsGeometry.fromWkt(
            "POLYGON((0 0, 10 10, 10 0, 0 10, 0 0))")))
        self.addCleanup(gdal.UseExceptions if gdal.GetUseExceptions() else gdal.DontUseExceptions)
        before = self.bytes_there()
        for exceptions in (gdal.DontUseExceptions, gdal.UseExceptions):
            exceptions()
            dialog = DialogoDevolver(Devolucion(self.list, self.copy_file))
            self.assertFalse(dialog.escribir.isEnabled())
            self.assertIn("✗ la parcela 20", dialog.quejas.toPlainText())
        dialog.accept()
        self.assertNotEqual(dialog.result(), DialogoDevolver.DialogCode.Accepted)
        self.assertEqual(self.bytes_there(), before)

    def test_drawings_that_changed_meanwhile_are_looked_at_again(self):
        self.edit(lambda layer: layer.deleteFeature(self.parcel(20).id()))
        dialog = DialogoDevolver(Devolucion(self.list, self.copy_file))
        os.utime(os.path.join(self.folder, "001.BIN"), (1, 1))
        before = self.bytes_there()
        dialog.accept()
        self.assertNotEqual(dialog.result(), DialogoDevolver.DialogCode.Accepted)
        self.assertIn("han cambiado", dialog.quejas.toPlainText())
        self.assertEqual(self.bytes_there(), before)
        dialog.accept()
        self.assertNotEqual(self.bytes_there(), before)

    def test_a_copy_that_somebody_goes_on_editing_is_looked_at_again(self):
        self.edit(lambda layer: layer.deleteFeature(self.parcel(20).id()))
        dialog = DialogoDevolver(Devolucion(self.list, self.copy_file))
        self.edit(lambda layer: layer.deleteFeature(self.parcel(30).id()))
        before = self.bytes_there()
        dialog.accept()
        self.assertEqual(self.bytes_there(), before)
        self.assertIn("la copia han cambiado", dialog.quejas.toPlainText())
        self.assertIn("parcela 30 del polígono 1", [row[1] for row in self.rows(dialog)])
        dialog.accept()
        self.assertEqual(dialog.result(), DialogoDevolver.DialogCode.Accepted)

    def test_who_writes_while_the_copy_is_read_is_told(self):
        others = os.path.join(self.folder, "otros.gpkg")
        shutil.copy(self.copy_file, others)
        self.edit(lambda layer: layer.deleteFeature(self.parcel(30).id()))
        mine, theirs, written = Devolucion(self.list, others), Devolucion(self.list, self.copy_file), gdal_files.traduce
        mine.ensaya([])
        theirs.ensaya([])

        def reads_long(*how, **more):
            with mock.patch.object(gdal_files, "traduce", written):
                self.assertEqual(theirs.devuelve([]), [])
            return written(*how, **more)

        with mock.patch.object(gdal_files, "traduce", reads_long):
            said = mine.devuelve([])
        self.assertRegex(" ".join(text for _, text in said), "Otro ha escrito a la vez.* 001.PAR")

    def test_what_others_drew_since_the_copy_is_not_undone_unseen(self):
        others = os.path.join(self.folder, "otros.gpkg")
        shutil.copy(self.copy_file, others)
        self.edit(lambda layer: layer.deleteFeature(self.parcel(20).id()))
        theirs = Devolucion(self.list, self.copy_file)
        theirs.ensaya([])
        self.assertFalse(any(fails for fails, _ in theirs.devuelve([])))
        dialog = DialogoDevolver(Devolucion(self.list, others))
        self.assertFalse(dialog.escribir.isEnabled())
        self.assertIn("desde entonces se perdería: 001.PAR", dialog.quejas.toPlainText())
        dialog.casillas["ENCIMA"].setChecked(True)
        self.assertTrue(dialog.escribir.isEnabled())
        self.edit(lambda layer: layer.deleteFeature(self.parcel(30).id()))
        dialog = DialogoDevolver(Devolucion(self.list, self.copy_file))
        self.assertTrue(dialog.escribir.isEnabled(), "the copy that was given back has its own drawings before it")

    def test_of_a_copied_project_the_files_beside_it_are_written(self):
        project, elsewhere = QgsProject.instance(), tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, elsewhere)
        self.assertTrue(project.write(os.path.join(self.folder, "p.qgz")))
        shutil.copytree(self.folder, elsewhere, dirs_exist_ok=True)
        project.clear()
        self.assertTrue(project.read(os.path.join(elsewhere, "p.qgz")))
        here = os.path.join(elsewhere, "poligonos.txt")
        self.assertEqual(layers.capas_de(project, self.list) + layers.capas_de(project, self.list, edicion=True), [])
        self.assertEqual([len(layers.capas_de(project, here, edicion=copy)) for copy in (False, True)], [8, 4])
        self.copy = {layers.dato(layer, layers.CAPA): layer for layer in layers.capas_de(project, here, edicion=True)}
        self.edit(lambda layer: layer.deleteFeature(self.parcel(20).id()))
        before, there = self.bytes_there(), sys.modules["campiva.plugin"]
        iface.setActiveLayer(self.copy["parcelas"])
        with mock.patch.object(there.DialogoDevolver, "exec", lambda dialog: (dialog.accept(), dialog.result())[1]):
            self.plugin.acciones["devolver"].trigger()
        self.assertEqual(self.bytes_there(), before)
        self.assertFalse(filecmp.cmp(os.path.join(self.folder, "001.PAR"), os.path.join(elsewhere, "001.PAR"), False))

    def test_a_new_copy_leaves_the_one_that_another_qgis_edits(self):
        another = QgsVectorLayer(f"{self.copy_file}|layername=parcelas", "another", "ogr")
        another.startEditing()
        another.deleteFeature(self.parcel(30).id())
        with mock.patch("campiva.plugin.QMessageBox.question", lambda *_: QMessageBox.StandardButton.No):
            self.plugin.acciones["editar"].trigger()
        self.assertTrue(another.commitChanges(), another.commitErrors())
        numbers = [{feature["parcela"] for feature in layer.getFeatures() if feature["poligono"] == 1}
                   for layer in (another, *layers.capas_de(QgsProject.instance(), self.list, edicion=True))
                   if layer is another or layers.dato(layer, layers.CAPA) == "parcelas"]
        self.assertEqual([30 in present for present in numbers], [False, True])
        self.assertEqual(sorted(name for name in os.listdir(self.folder) if name.endswith(".gpkg") or "~" in name),
                         ["045127-edicion-2.gpkg", "045127-edicion.gpkg"])

    def test_half_of_a_copy_is_none(self):
        written, before = gdal_files.traduce, sorted(os.listdir(self.folder))

        def breaks_off(*how, **more):
            return written(*how, **more) + [(True, "No queda sitio")]

        with mock.patch.object(gdal_files, "traduce", breaks_off), self.assertRaisesRegex(OSError, "sitio"):
            layers.copia(QgsProject.instance(), self.list, REFERENCE)
        self.assertEqual(sorted(os.listdir(self.folder)), before)

    def test_what_the_writing_alone_says_is_told(self):
        self.edit(lambda layer: layer.deleteFeature(self.parcel(20).id()))
        there = sys.modules["campiva.plugin"]  # which is another one when the plugin was loaded anew
        written = there.Devolucion.devuelve

        def kept(*how):
            return written(*how) + [(False, "queda en 001.PAR.x")]

        with mock.patch.object(there.Devolucion, "devuelve", kept), mock.patch.object(
                there.DialogoDevolver, "exec", lambda dialog: (dialog.accept(), dialog.result())[1]):
            self.plugin.acciones["devolver"].trigger()
        self.assertIn("queda en 001.PAR.x", iface.messageBar().currentItem().text())
        iface.messageBar().clearWidgets()


def run():
    said = io.StringIO()
    try:
        assert gdal_files.hay_controlador(), "the driver isn't there"
        loader = unittest.defaultTestLoader
        suite = unittest.TestSuite(loader.loadTestsFromTestCase(case) for case in (
            TestOpening, TestPanel, TestTranslating, TestGivingBack))
        result = unittest.TextTestRunner(said, verbosity=2).run(suite)
        said.write("passed" if result.wasSuccessful() and result.testsRun else "failed")
    except Exception:  # else QGIS would stay open
        traceback.print_exc(file=said)
    with open(os.environ["RESULT"], "w", encoding="utf-8") as result:
        result.write(said.getvalue() + "\n")
    QgsProject.instance().clear()
    QgsApplication.processEvents()
    os._exit(0)  # nobody is there to answer what QGIS asks when it is closed


QTimer.singleShot(1000, run)
