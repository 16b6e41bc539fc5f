"""The plugin in QGIS itself, which runs this by `--code`; scripts/qgis starts it.

The environment names the samples (SAMPLES), and the file (RESULT) that gets "passed" or what failed.
"""

import contextlib
import io
import os
import shutil
import sys
import traceback
import unittest
from unittest import mock

import processing
import qgis.utils
from osgeo import gdal
from qgis.core import (QgsApplication, QgsCoordinateReferenceSystem, QgsProcessingAlgRunnerTask, QgsProcessingContext,
                       QgsProcessingException, QgsProcessingFeedback, QgsProject, QgsRectangle)
from qgis.PyQt.QtCore import Qt, QTimer
from qgis.PyQt.QtTest import QTest
from qgis.PyQt.QtWidgets import QApplication, QDialog
from qgis.utils import iface, plugins

from campiva import gdal_files, layers
from giving_back import TestGivingBack
from in_a_municipality import REFERENCE, SAMPLES, WithAMunicipality


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
        self.assertFalse(opened["Parcelas"].startEditing(), "the next run writes these anew")
        self.assertEqual([message.texto for message in self.plugin.panel.tabla.mensajes], self.log_lines())
        self.forget_subparcels()
        self.translate()
        self.assertEqual([message.texto for message in self.plugin.panel.tabla.mensajes], self.log_lines())
        self.plugin.acciones["editar"].trigger()
        self.assertIn("Vexa", self.told())

    def test_the_reference_system_is_asked_for_once(self):
        dialog = mock.Mock()
        dialog.return_value.exec.return_value = QDialog.DialogCode.Accepted
        dialog.return_value.crs.return_value = QgsCoordinateReferenceSystem("EPSG:25829")
        with mock.patch("campiva.plugin.QgsProjectionSelectionDialog", dialog), \
                mock.patch("campiva.plugin.QFileDialog.getOpenFileName", lambda *_: (self.list, "")):
            for _ in range(2):
                self.plugin.acciones["abrir"].trigger()
        dialog.assert_called_once()
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
        self.assertIn("002.BIN", self.told())


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
        self.told, self.warnings, self.errors, self._cancels = [], [], [], cancels

    def isCanceled(self):
        return self._cancels

    def pushInfo(self, info):
        self.told.append(info)

    def pushWarning(self, warning):
        self.warnings.append(warning)

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

    def test_a_cancel_that_comes_when_all_is_written_is_none(self):
        self.translate()
        self.open()
        before, feedback, ended = self.log_lines(), Feedback(True), []
        programs = sys.modules["campiva.algorithms"].programs  # another one when the plugin was loaded anew
        really = programs.ejecuta

        def ends_by_the_signal(*order, **_how):
            result = really(*order[:3])
            return programs.Resultado(-2, result.salida, result.errores, True)

        self.forget_subparcels()
        feedback.cancel()
        algorithm, context = QgsApplication.processingRegistry().algorithmById("campiva:vuelta"), QgsProcessingContext()
        with mock.patch.object(programs, "ejecuta", ends_by_the_signal):
            task = QgsProcessingAlgRunnerTask(algorithm, {"LISTA": self.list}, context, feedback)
            task.executed.connect(lambda _done, results: ended.append(results))
            QgsApplication.taskManager().addTask(task)
            while not ended:
                QApplication.processEvents()
        self.assertEqual(ended[0]["R"], os.path.join(self.folder, "045127.R"))
        self.assertFalse([said for said in feedback.errors if "como estaban" in said])
        self.assertTrue([said for said in feedback.errors if "ya están escritos" in said])
        self.assertNotEqual(self.log_lines(), before)
        self.assertEqual([message.texto for message in self.plugin.panel.tabla.mensajes], self.log_lines())

    def test_what_could_not_be_written_is_told_and_not_handed_on(self):
        self.translate()
        os.remove(os.path.join(self.folder, "045127.M"))
        entry = shutil.copy(os.path.join(SAMPLES, "villanueva.txt"), self.folder)
        for name, algorithm, given, expected in (
                ("045127.M", "vuelta", {"LISTA": self.list}, {"R", "REGISTRO", "ERRORES", "AVISOS"}),
                ("Titulares.txt", "ida", {"ENTRADA": entry, "TABLAS": os.path.join(self.folder, "t")},
                 {"PARCELAS", "REGISTRO", "ERRORES", "AVISOS"})):
            with self.subTest(name):
                path, feedback = os.path.join(given.get("TABLAS", self.folder), name), Feedback()
                os.makedirs(path)  # as it can't be made, by root either
                self.assertEqual(set(processing.run(f"campiva:{algorithm}", given, feedback=feedback)), expected)
                self.assertIn(f"No se ha escrito {path}", feedback.errors)

    def test_what_is_suspected_of_an_input_is_a_warning(self):
        for algorithm, given, reason in (
                ("ida", {"ENTRADA": self.list, "TABLAS": self.folder}, "^Ninguna línea .* de un fichero de intercambio"),
                ("informe", {"REGISTRO": os.path.join(self.folder, "none.ERR"),
                             "HTML": os.path.join(self.folder, "i.html")}, "^campiva-informe: Imposible")):
            with self.subTest(algorithm):
                feedback = Feedback()
                with contextlib.suppress(QgsProcessingException):
                    processing.run(f"campiva:{algorithm}", given, feedback=feedback)
                self.assertRegex("".join(feedback.warnings), reason)

    def test_tables_that_are_modified_are_asked_after(self):
        feedback, programs = Feedback(), sys.modules["campiva.algorithms"].programs
        really = programs.ejecuta

        def modifies_none(order, *how):
            return really(order[:-3] + ["0"] + order[-2:], *how)

        self.translate(feedback=feedback, MODIFICAR=True)
        self.assertFalse([said for said in feedback.errors if said.startswith("No se ha escrito")])
        with mock.patch.object(programs, "ejecuta", modifies_none):
            self.translate(feedback=feedback, MODIFICAR=True)
        self.assertEqual([said for said in feedback.errors if said.startswith("No se ha escrito")],
                         [f"No se ha escrito {os.path.join(self.folder, name)}"
                          for name in ("Parcelas.txt", "Subparcelas.txt")])

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
