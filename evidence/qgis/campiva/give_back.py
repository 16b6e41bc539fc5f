"""Edited outlines back into the drawings: first a rehearsal on a copy, which shows what changes, then in earnest."""

import os
import shutil
import tempfile

from qgis.PyQt.QtCore import Qt
from qgis.PyQt.QtWidgets import (QApplication, QCheckBox, QComboBox, QDialog, QDialogButtonBox, QHeaderView, QLabel,
                                 QPlainTextEdit, QTableWidget, QTableWidgetItem, QVBoxLayout)

from . import edited_copy, gdal_files
from .changes import compara, resumen
from .municipality import Municipio

_ENCIMA = "ENCIMA"  # of the dialog itself, no option of the driver
_CASILLAS = (("PIEZAS=SI", "Escribir también parcelas y letras que están en varios &recintos"),
             ("INVALIDOS=SI", "Dejar &fuera los recintos que no se pueden dibujar, en vez de no escribir nada"),
             ("VACIA=TODOS", "&Vaciar los polígonos de los que no queda nada en la copia"),
             (_ENCIMA, "Escribir &también encima de lo dibujado después de hacer la copia"))
_GANAN = (("Si un rótulo contradice a los números, no escribir nada", ""),
          ("Si un rótulo contradice a los números, valen los números", "GANAN=NUMEROS"),
          ("Si un rótulo contradice a los números, vale el rótulo", "GANAN=ROTULOS"))


class Devolucion:
    """A copy on its way back. What it will change is seen by the driver itself, on a copy of the drawings."""

    def __init__(self, lista, copia):
        """Raises OSError where the list can't be read."""
        self._municipio, self._copia = Municipio(lista), copia
        self.nombre = os.path.basename(copia)
        self._antes = self._seran = None  # what a rehearsal began with, and the drawings that it came to

    def _estado(self):
        """Of the drawings, and of the copy, in which another QGIS may go on editing."""
        suma = gdal_files.suma_de(gdal_files.abre(self._copia))  # which may take a while
        return suma, [(fichero, os.stat(fichero).st_mtime_ns) for fichero in self._municipio.dibujos()]

    def ensaya(self, opciones):
        """What would change, and what the driver says of it. Raises OSError where the drawings can't be read."""
        gdal_files.abre(self._municipio.lista)  # which mends what a killed run left, before anybody looks at it
        self._municipio = Municipio(self._municipio.lista)
        self._antes = self._estado()
        with tempfile.TemporaryDirectory(prefix="campiva-") as carpeta:
            for fichero in self._municipio.dibujos():
                shutil.copy(fichero, carpeta)
            lista = os.path.join(carpeta, os.path.basename(self._municipio.lista))
            antes, hubo = gdal_files.recintos_de(gdal_files.abre(lista)), edited_copy.sumas(Municipio(lista))
            dichas = self._escribe(lista, opciones)
            self._seran = edited_copy.sumas(Municipio(lista))
            if _ENCIMA not in opciones:
                dichas = self._lo_de_otros(hubo) + dichas
            return compara(antes, gdal_files.recintos_de(gdal_files.abre(lista)), gdal_files.iguales), dichas

    def _lo_de_otros(self, antes):
        """Refuses what would bring back the drawings of the day of the copy where others drew since."""
        apunte = gdal_files.abre(self._copia).GetMetadataItem(edited_copy.APUNTE)
        pisados = edited_copy.pisados(edited_copy.lee_apunte(apunte), antes, self._seran)
        if not pisados:
            return []
        return [(True, "Han cambiado después de hacer la copia, y lo dibujado en ellos desde entonces se perdería: "
                 + ", ".join(pisados))]

    def devuelve(self, opciones):
        """Writes, and gives what the driver says. Raises OSError where drawings or copy aren't those rehearsed with."""
        if self._estado() != self._antes:
            raise OSError("Los dibujos o la copia han cambiado mientras tanto: se ha vuelto a mirar qué cambiaría")
        dichas = self._escribe(self._municipio.lista, opciones)
        if not any(falla for falla, _ in dichas):
            dichas += [(False, texto) for texto in (*self._de_quien_escribe_a_la_vez(), *self._apunta())]
        return dichas

    def _apunta(self):
        """From here on the copy is as old as what it has written."""
        return [texto for _, texto in
                gdal_files.apunta(self._copia, edited_copy.APUNTE, edited_copy.apunte(self._seran))]

    def _de_quien_escribe_a_la_vez(self):
        """The driver has the drawings to itself when it writes, and not yet while it reads the copy."""
        hay = edited_copy.sumas(Municipio(self._municipio.lista))
        otros = sorted(fichero for fichero in {*hay, *self._seran} if hay.get(fichero) != self._seran.get(fichero))
        return [f"Otro ha escrito a la vez, mire si falta algo de lo suyo o de la copia: {', '.join(otros)}"] * bool(otros)

    def _escribe(self, lista, opciones):
        dadas = [f"CABECERA={self._municipio.cabecera}", *(opcion for opcion in opciones if opcion != _ENCIMA)]
        return gdal_files.traduce(gdal_files.abre(self._copia), lista, gdal_files.CONTROLADOR, opciones=dadas)


def _cifra(valor):
    return "—" if valor is None else f"{valor:.2f} m²".replace(".", ",")


class DialogoDevolver(QDialog):
    """Shows what would change; its button "Escribir" does it."""

    def __init__(self, devolucion, padre=None):
        super().__init__(padre)
        self.setWindowTitle(f"Devolver al dibujo: {devolucion.nombre}")
        self._devolucion, self.dichas, self.nuevas = devolucion, [], []
        self.resumen, self.tabla, self.quejas = QLabel(), QTableWidget(0, 4), QPlainTextEdit()
        self.tabla.setHorizontalHeaderLabels(("Qué", "Recinto", "Antes", "Después"))
        self.tabla.horizontalHeader().setSectionResizeMode(1, QHeaderView.ResizeMode.Stretch)
        self.tabla.setEditTriggers(QTableWidget.EditTrigger.NoEditTriggers)
        self.tabla.setAccessibleName("Lo que cambia")
        self.quejas.setReadOnly(True)
        self.quejas.setAccessibleName("Lo que dice el controlador")
        self.casillas, self.ganan = {opcion: QCheckBox(texto) for opcion, texto in _CASILLAS}, QComboBox()
        self.ganan.setAccessibleName("Rótulos que contradicen a los números")
        for texto, opcion in _GANAN:
            self.ganan.addItem(texto, opcion)
        self.botones = QDialogButtonBox(QDialogButtonBox.StandardButton.Cancel)
        self.botones.button(QDialogButtonBox.StandardButton.Cancel).setText("&Cancelar")
        self.escribir = self.botones.addButton("&Escribir", QDialogButtonBox.ButtonRole.AcceptRole)
        self.botones.accepted.connect(self.accept)
        self.botones.rejected.connect(self.reject)
        columna = QVBoxLayout(self)
        for control in (self.resumen, self.tabla, self.quejas, *self.casillas.values(), self.ganan, self.botones):
            columna.addWidget(control)
        self.resize(760, 560)
        for casilla in self.casillas.values():
            casilla.toggled.connect(self.ensaya)
        self.ganan.currentIndexChanged.connect(self.ensaya)
        self.ensaya()

    def _elegidas(self):
        elegidas = [opcion for opcion, casilla in self.casillas.items() if casilla.isChecked()]
        return elegidas + [self.ganan.currentData()] * bool(self.ganan.currentData())

    def _con(self, hace):
        """Does what takes a while. A fault of files is shown like one of the driver."""
        QApplication.setOverrideCursor(Qt.CursorShape.WaitCursor)
        try:
            return hace(self._elegidas())
        except OSError as fallo:
            return [], [(True, str(fallo))]
        finally:
            QApplication.restoreOverrideCursor()

    def ensaya(self, *_):
        cambios, self.dichas = self._con(self._devolucion.ensaya)
        rechazado = any(falla for falla, _ in self.dichas)
        self.escribir.setEnabled(bool(cambios) and not rechazado)
        self.resumen.setText("Así no se puede escribir:" if rechazado else resumen(cambios))
        self.tabla.setRowCount(len(cambios))
        for fila, cambio in enumerate(cambios):
            textos = (cambio.clase, cambio.nombre, _cifra(cambio.antes), _cifra(cambio.despues))
            for columna, texto in enumerate(textos):
                self.tabla.setItem(fila, columna, QTableWidgetItem(texto))
        self._cuenta()

    def _cuenta(self):
        """What refuses first."""
        ordenadas = sorted(self.dichas, key=lambda dicha: not dicha[0])
        self.quejas.setPlainText("\n".join(("✗ " if falla else "• ") + texto for falla, texto in ordenadas))

    def accept(self):
        """Closes when it is written; where it isn't, what stands in the way is shown and all is as it was.

        What the writing says and the rehearsal didn't, as that somebody else's file was put aside, is left in `nuevas`.
        """
        ensayadas, fallos = self.dichas, self._con(lambda opciones: ([], self._devolucion.devuelve(opciones)))[1]
        if not any(falla for falla, _ in fallos):
            self.nuevas = [texto for falla, texto in fallos if (falla, texto) not in ensayadas]
            super().accept()
            return
        self.ensaya()
        self.dichas = fallos + self.dichas
        self._cuenta()
