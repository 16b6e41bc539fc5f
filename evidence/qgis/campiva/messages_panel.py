"""The panel of messages: filtered, with cause and remedy, each on the map by a click, done ones ticked off.

Names with capitals inside are those of Qt.
"""

import os

from qgis.core import QgsCoordinateTransform, QgsGeometry, QgsProject
from qgis.gui import QgsDockWidget
from qgis.PyQt.QtCore import QAbstractTableModel, QModelIndex, QSortFilterProxyModel, Qt, pyqtSignal
from qgis.PyQt.QtWidgets import (QAbstractItemView, QCheckBox, QComboBox, QHBoxLayout, QLabel, QLineEdit, QTableView,
                                 QTextBrowser, QVBoxLayout, QWidget)

from . import gdal_files
from .messages import POLIGONO, SIN_NUMERO, Filtro, Hechos, consejo, pasa

_COLUMNAS = ("Número", "Polígono", "Parcela", "Letra", "Texto")
_HECHO = 0  # the column that has the tick
_MARGEN = 30  # metres shown around a place
_MARCA, _MOSTRADO = Qt.ItemDataRole.CheckStateRole, Qt.ItemDataRole.DisplayRole


class TablaMensajes(QAbstractTableModel):
    """The messages of a log as a table; ticks are kept as soon as they are set."""

    fallo = pyqtSignal(str)
    mensajes, hechos, _guardados = (), (), None

    def pon(self, mensajes, registro):
        self.beginResetModel()
        self._guardados = Hechos(registro)
        self.mensajes, self.hechos = mensajes, self._guardados.de(mensajes)
        self.endResetModel()

    def rowCount(self, padre=QModelIndex()):
        return 0 if padre.isValid() else len(self.mensajes)

    def columnCount(self, padre=QModelIndex()):
        return 0 if padre.isValid() else len(_COLUMNAS)

    def headerData(self, seccion, orientacion, papel=_MOSTRADO):
        return _COLUMNAS[seccion] if papel == _MOSTRADO and orientacion == Qt.Orientation.Horizontal else None

    def data(self, indice, papel=_MOSTRADO):
        mensaje = self.mensajes[indice.row()]
        if papel == _MARCA and indice.column() == _HECHO:
            return Qt.CheckState.Checked if self.hechos[indice.row()] else Qt.CheckState.Unchecked
        if papel not in (_MOSTRADO, Qt.ItemDataRole.ToolTipRole):
            return None
        texto = " ".join(mensaje.texto[len(mensaje.numero):].lstrip(": ").split())
        return (mensaje.numero, mensaje.poligono, mensaje.parcela, mensaje.letra, texto)[indice.column()]

    def flags(self, indice):
        return super().flags(indice) | (Qt.ItemFlag.ItemIsUserCheckable if indice.column() == _HECHO
                                        else Qt.ItemFlag.NoItemFlags)

    def setData(self, indice, valor, papel=Qt.ItemDataRole.EditRole):
        if indice.column() != _HECHO or papel != _MARCA:
            return False
        self.hechos[indice.row()] = Qt.CheckState(valor) == Qt.CheckState.Checked
        try:
            self._guardados.guarda(self.mensajes, self.hechos)
        except OSError as fallo:
            self.fallo.emit(f"La marca no queda guardada: {fallo}")
        self.dataChanged.emit(indice, indice)
        return True


class _Criba(QSortFilterProxyModel):
    filtro = Filtro()

    def filterAcceptsRow(self, fila, _padre):
        return pasa(self.sourceModel().mensajes[fila], self.sourceModel().hechos[fila], self.filtro)


class _Vista(QTableView):
    """A table in which blank ticks the row, whatever column is in focus."""

    def keyPressEvent(self, evento):
        marca = self.currentIndex().siblingAtColumn(_HECHO)
        if evento.key() != Qt.Key.Key_Space or not marca.isValid():
            super().keyPressEvent(evento)
            return
        hecho = marca.data(_MARCA) == Qt.CheckState.Checked
        self.model().setData(marca, Qt.CheckState.Unchecked if hecho else Qt.CheckState.Checked, _MARCA)


class PanelMensajes(QgsDockWidget):
    """Shows one log at a time."""

    def __init__(self, lienzo, pagina, padre=None):
        """\\param pagina  path of the manual's page of messages"""
        super().__init__("Mensajes de Campiva", padre)
        self.setObjectName("CampivaMensajes")
        with open(pagina, encoding="utf-8") as texto:
            self._lienzo, self._pagina = lienzo, texto.read()
        self._datos = self._capa = self._referencia = None
        self.tabla, self._criba = TablaMensajes(self), _Criba(self)
        self._criba.setSourceModel(self.tabla)
        self._hace_filtro()
        self._hace_vista()
        columna = QVBoxLayout()
        for controles in ((self.clase, self.poligono, self.numero), (self.texto, self.pendientes)):
            fila = QHBoxLayout()
            for control in controles:
                fila.addWidget(control, 1)
            columna.addLayout(fila)
        for control, parte in ((self.vista, 3), (self.cuantos, 0), (self.consejo, 1)):
            columna.addWidget(control, parte)
        self.setWidget(QWidget())
        self.widget().setLayout(columna)

    def _hace_filtro(self):
        self.numero, self.clase, self.poligono, self.texto = QComboBox(), QComboBox(), QComboBox(), QLineEdit()
        self.pendientes, self.cuantos = QCheckBox("Sólo los &pendientes"), QLabel()
        for nombre, valor in (("Errores y avisos", ""), ("Errores", "error"), ("Avisos", "warning")):
            self.clase.addItem(nombre, valor)
        self.texto.setPlaceholderText("Texto que contienen")
        self.texto.setClearButtonEnabled(True)
        for control, nombre in ((self.numero, "Número de mensaje"), (self.clase, "Clase de mensaje"),
                                (self.poligono, "Polígono"), (self.texto, "Texto que contienen")):
            control.setAccessibleName(nombre)
            control.setToolTip(nombre)
        for lista in (self.numero, self.clase, self.poligono):
            lista.currentIndexChanged.connect(self._filtra)
        self.texto.textChanged.connect(self._filtra)
        self.pendientes.toggled.connect(self._filtra)

    def _hace_vista(self):
        self.vista, self.consejo = _Vista(), QTextBrowser()
        self.vista.setModel(self._criba)
        self.vista.setAccessibleName("Mensajes")
        self.vista.setSortingEnabled(True)
        self.vista.sortByColumn(-1, Qt.SortOrder.AscendingOrder)  # as they stand in the log
        self.vista.setSelectionBehavior(QAbstractItemView.SelectionBehavior.SelectRows)
        self.vista.setSelectionMode(QAbstractItemView.SelectionMode.SingleSelection)
        self.vista.verticalHeader().hide()
        self.vista.verticalHeader().setDefaultSectionSize(self.vista.fontMetrics().height() + 6)
        self.vista.horizontalHeader().setStretchLastSection(True)
        self.vista.selectionModel().currentRowChanged.connect(self._muestra)
        self.vista.clicked.connect(lambda _: self.ve_al_sitio())
        self.vista.activated.connect(lambda _: self.ve_al_sitio())
        self.consejo.setAccessibleName("Causa y remedio")
        self.tabla.fallo.connect(self.consejo.setPlainText)
        self.tabla.dataChanged.connect(self._filtra)

    def pon(self, datos, registro, referencia):
        """Shows the messages of a dataset. Raises OSError where the ticks beside the log can't be read."""
        mensajes, capa = gdal_files.lee_mensajes(datos)
        self.tabla.pon(mensajes, registro)
        self._datos, self._capa, self._referencia = datos, capa, referencia  # a layer dies with its dataset
        self.setWindowTitle(f"Mensajes de Campiva: {os.path.basename(registro)}")
        self._llena(self.numero, "Todos los números", {mensaje.numero or SIN_NUMERO for mensaje in mensajes})
        self._llena(self.poligono, "Todos los polígonos", {mensaje.poligono for mensaje in mensajes} - {None})
        self.vista.resizeColumnsToContents()
        self._filtra()

    @staticmethod
    def _llena(lista, todos, valores):
        """Offers the values that there are; what was chosen stays chosen where it is there still."""
        antes = lista.currentData()
        lista.blockSignals(True)
        lista.clear()
        lista.addItem(todos, None)
        for valor in sorted(valores):
            lista.addItem(f"Polígono {valor}" if isinstance(valor, int) else valor, valor)
        lista.setCurrentIndex(max(lista.findData(antes), 0))
        lista.blockSignals(False)

    def _filtra(self, *_):
        self._criba.filtro = Filtro(self.numero.currentData() or "", self.clase.currentData() or "",
                                    self.poligono.currentData(), self.texto.text(), self.pendientes.isChecked())
        self._criba.invalidateFilter()
        self.cuantos.setText(f"{self._criba.rowCount()} de {len(self.tabla.mensajes)} mensajes; "
                             f"hechos, {sum(self.tabla.hechos)}")

    def _lugar(self, indice):
        """The message of a row that is shown, and where it lies; None for what there isn't."""
        if not indice.isValid():
            return None, None
        mensaje = self.tabla.mensajes[self._criba.mapToSource(indice).row()]
        return mensaje, gdal_files.lugar_de(self._capa, mensaje)

    def _muestra(self, indice, _antes=None):
        mensaje, lugar = self._lugar(indice)
        if mensaje is None:
            self.consejo.clear()
            return
        causa, remedio = consejo(self._pagina, mensaje.numero)
        sin_sitio = "Lo que nombra no está dibujado: se ve su polígono." if mensaje.donde == POLIGONO else ""
        partes = (mensaje.texto, sin_sitio if lugar else "Este mensaje no tiene sitio en el dibujo.",
                  causa and f"Causa. {causa}", remedio and f"Remedio. {remedio}")
        self.consejo.setPlainText("\n\n".join(filter(None, partes)))

    def siguiente(self, paso=1):
        """Goes to the next message that is shown, or with -1 to the one before, and to its place."""
        cuantos, actual = self._criba.rowCount(), self.vista.currentIndex()
        fila = actual.row() + paso if actual.isValid() else (0 if paso > 0 else cuantos - 1)
        if 0 <= fila < cuantos:
            self.vista.setCurrentIndex(self._criba.index(fila, 0))
            self.ve_al_sitio()

    def ve_al_sitio(self):
        """Shows the place of the current message with what is around it, and has it flash."""
        _, lugar = self._lugar(self.vista.currentIndex())
        if lugar is None:
            return
        geometria = QgsGeometry()
        geometria.fromWkb(lugar)
        destino = self._lienzo.mapSettings().destinationCrs()
        paso = QgsCoordinateTransform(self._referencia, destino, QgsProject.instance())
        self._lienzo.setExtent(paso.transformBoundingBox(geometria.boundingBox().buffered(_MARGEN)))
        self._lienzo.refresh()
        self._lienzo.flashGeometries([geometria], self._referencia)
