"""Giving an edited copy back to the drawings that it was made of."""

import filecmp
import os
import re
import shutil
import sys
import tempfile
from unittest import mock

import processing
from osgeo import gdal
from qgis.core import QgsGeometry, QgsProject, QgsRectangle, QgsVectorLayer, QgsVectorLayerUtils
from qgis.PyQt.QtCore import QVariant
from qgis.PyQt.QtWidgets import QMessageBox
from qgis.utils import iface

from campiva import gdal_files, layers
from campiva.give_back import Devolucion, DialogoDevolver
from in_a_municipality import REFERENCE, SAMPLES, WithAMunicipality


class TestGivingBack(WithAMunicipality):
    DRAWINGS, TABLES = "villanueva_dibujos", None

    def setUp(self):
        super().setUp()
        self.open()
        self.plugin.acciones["editar"].trigger()
        self.copy = {layers.dato(layer, layers.CAPA): layer for layer in self.edited()}
        self.copy_file = layers.dato(self.copy["parcelas"], layers.EDICION)

    def edited(self):
        return layers.capas_de(QgsProject.instance(), self.list, edicion=True)

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

    def test_what_comes_into_no_drawing_is_not_edited(self):
        entry = shutil.copy(os.path.join(SAMPLES, "villanueva.txt"), self.folder)
        processing.run("campiva:ida", {"ENTRADA": entry, "TABLAS": self.folder})
        self.plugin.abre(self.list, self.folder, REFERENCE)
        self.edit_anew(QMessageBox.StandardButton.No)
        shut, fields = set(), set()
        for layer in self.edited():
            layer.startEditing()
            one = next(layer.getFeatures())
            for index, field in enumerate(layer.fields()):
                fields.add(field.name())
                if not QgsVectorLayerUtils.fieldIsEditable(layer, index, one):
                    shut.add(field.name())
                    other = {QVariant.String: "x", QVariant.Bool: one[index] is False}.get(field.type(), 77)
                    layer.changeAttributeValue(one.id(), index, other)
            self.assertTrue(layer.commitChanges(), layer.commitErrors())
        giving = Devolucion(self.list, layers.dato(layer, layers.EDICION))
        giving.ensaya([])
        said = " ".join(text for _, text in giving.devuelve([]))
        self.assertEqual(set(re.findall(r"(\w+) \(\d+\)", said.partition("Sin efecto")[2])), shut)
        self.assertEqual(fields - shut, {"fid", "entrada", "poligono", "parcela", "letra", "hoja", "rotulo", "codigo",
                                         "borrado", "numero", "rotulo_x", "rotulo_y"})

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
                self.assertRegex(str(theirs.devuelve([])), r"^\[\(False, '001: 0 .*, 1 quitados y [^']*'\)\]$")
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

    def edit_anew(self, *answers):
        """"Copia para editar" once more, and what is asked."""
        asked = []
        with mock.patch("campiva.plugin.QMessageBox.question", lambda _window, _title, text, *_: (
                asked.append(text), answers[min(len(asked), len(answers)) - 1])[1]):
            self.plugin.acciones["editar"].trigger()
        return asked

    def test_edits_that_are_not_saved_outlive_a_second_start(self):
        parcels, button = self.copy["parcelas"], QMessageBox.StandardButton
        parcels.startEditing()
        parcels.deleteFeature(self.parcel(30).id())
        count = parcels.featureCount()
        iface.setActiveLayer(self.copy["hojas"])
        self.assertEqual(len(self.edit_anew(button.Yes)), 1, "what is open already is gone on with")
        self.assertEqual(iface.activeLayer(), parcels)
        self.assertEqual(len(self.edit_anew(button.No, button.No)), 2)
        with mock.patch.object(QgsProject, "removeMapLayer") as removes, \
                self.assertRaisesRegex(OSError, "sin guardar en Parcelas"):
            layers.abre_copia(QgsProject.instance(), self.list, self.copy_file, REFERENCE)
        removes.assert_not_called()
        self.assertTrue(parcels.isModified())
        self.assertEqual(parcels.featureCount(), count)
        self.assertFalse(os.path.exists(os.path.join(self.folder, "045127-edicion-2.gpkg")))
        self.assertIn("sin guardar", self.edit_anew(button.No, button.Yes)[1])
        first = QgsVectorLayer(f"{self.copy_file}|layername=parcelas", "first", "ogr")
        self.assertEqual(first.featureCount(), count, "the copy before keeps what was saved")

    def test_a_copy_whose_drawings_were_taken_away_is_gone_on_with(self):
        for layer in layers.capas_de(QgsProject.instance(), self.list):
            QgsProject.instance().removeMapLayer(layer)
        iface.setActiveLayer(self.copy["hojas"])
        self.edit_anew(QMessageBox.StandardButton.Yes)
        self.assertEqual(iface.activeLayer(), self.copy["parcelas"])
        with self.assertRaisesRegex(OSError, "ya no están en el proyecto"):
            self.plugin.muestra_mensajes(self.list)
        self.edit_anew(QMessageBox.StandardButton.No)
        self.assertIn("ya no están en el proyecto", self.told())

    def test_a_copy_without_one_of_its_layers_gets_it_back(self):
        QgsProject.instance().removeMapLayer(self.copy["hojas"])
        self.edit_anew(QMessageBox.StandardButton.Yes)
        self.assertEqual({layers.dato(layer, layers.EDICION) for layer in self.edited()}, {self.copy_file})
        self.assertEqual(len(self.edited()), 4)

    def test_of_several_copies_the_one_in_focus_is_given_back(self):
        others = shutil.copy(self.copy_file, os.path.join(self.folder, "antes.gpkg"))
        another = QgsVectorLayer(f"{others}|layername=parcelas", "antes", "ogr")
        project, titles = QgsProject.instance(), []
        for name in (layers.LISTA, layers.CAPA, layers.EDICION):  # as a pasted style brings them along
            another.setCustomProperty(name, self.copy["parcelas"].customProperty(name))
        project.addMapLayer(another)
        dialog = sys.modules["campiva.plugin"].DialogoDevolver
        with mock.patch.object(dialog, "exec", lambda dialog: titles.append(dialog.windowTitle())):
            for layer in (another, self.copy["hojas"], layers.capas_de(project, self.list)[0]):
                iface.setActiveLayer(layer)
                self.plugin.acciones["devolver"].trigger()
        self.assertEqual(titles, ["Devolver al dibujo: antes.gpkg", "Devolver al dibujo: 045127-edicion.gpkg"])
        self.assertIn("varias copias", self.told())

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
        self.assertIn("queda en 001.PAR.x", self.told())
