"""The plugin: its menu and what each entry does."""

import os

import processing
from qgis.core import Qgis, QgsApplication, QgsCoordinateReferenceSystem, QgsProject, QgsSettings
from qgis.gui import QgsProjectionSelectionDialog
from qgis.PyQt.QtCore import Qt
from qgis.PyQt.QtWidgets import QAction, QDialog, QFileDialog, QInputDialog, QMessageBox

from . import edited_copy, gdal_files, layers
from .algorithms import ALGORITMOS, Ida, Proveedor, icono
from .give_back import Devolucion, DialogoDevolver
from .messages_panel import PanelMensajes
from .municipality import Municipio, igual

_MENU = "&Campiva"
_PAGINA = os.path.join(os.path.dirname(__file__), "mensajes.html")
_BOTON = QMessageBox.StandardButton


class Complemento:
    """Names with capitals inside are those that QGIS asks for."""

    def __init__(self, iface):
        self._iface = iface  # none where no window is, as for qgis_process
        self.acciones, self.panel, self._proveedor, self._barra, self._lista = {}, None, None, None, ""

    def initProcessing(self):
        self._proveedor = Proveedor()
        QgsApplication.processingRegistry().addProvider(self._proveedor)

    def initGui(self):
        self._ventana = self._iface.mainWindow()
        self.initProcessing()
        self.panel = PanelMensajes(self._iface.mapCanvas(), _PAGINA, self._ventana)
        self._iface.addDockWidget(Qt.DockWidgetArea.RightDockWidgetArea, self.panel)
        self.panel.hide()
        self._barra = self._iface.addToolBar("Campiva")
        self._barra.setObjectName("Campiva")
        self._accion("abrir", "&Abrir municipio...", self._pregunta_y_abre)
        self._accion("mensajes", "&Mensajes", lambda: self._de_la_elegida(self.muestra_mensajes))
        self._accion("siguiente", "Mensaje &siguiente", lambda: self.panel.siguiente(), "F8")
        self._accion("anterior", "Mensaje an&terior", lambda: self.panel.siguiente(-1), "Shift+F8")
        for algoritmo in ALGORITMOS:
            self._accion(algoritmo.NOMBRE, f"{algoritmo.TITULO}...",
                         lambda nombre=algoritmo.NOMBRE: self._traduce(nombre))
        self._accion("editar", "&Copia para editar...", lambda: self._de_la_elegida(self._edita))
        self._accion("devolver", "&Devolver al dibujo...", lambda: self._de_la_elegida(self._devuelve))
        layers.noticias.refrescado.connect(self._refrescado)
        layers.noticias.escrito.connect(self._escrito)

    def unload(self):
        layers.noticias.refrescado.disconnect(self._refrescado)
        layers.noticias.escrito.disconnect(self._escrito)
        QgsApplication.processingRegistry().removeProvider(self._proveedor)
        for accion in self.acciones.values():
            self._iface.removePluginMenu(_MENU, accion)
            self._iface.unregisterMainWindowAction(accion)
        self._iface.removeDockWidget(self.panel)
        self.panel.deleteLater()
        self._barra.deleteLater()

    def _accion(self, nombre, texto, hace, tecla=""):
        accion = QAction(icono(nombre), texto, self._ventana)
        accion.setObjectName(f"campiva_{nombre}")
        accion.triggered.connect(lambda *_: self._con(hace))
        self._iface.addPluginToMenu(_MENU, accion)
        self._iface.registerMainWindowAction(accion, tecla)
        self._barra.addAction(accion)
        self.acciones[nombre] = accion

    def _con(self, hace):
        """A fault of files is the user's to know, until he has read it."""
        try:
            hace()
        except OSError as fallo:
            self._iface.messageBar().pushMessage("Campiva", str(fallo), Qgis.MessageLevel.Critical, 0)

    def _de_la_elegida(self, hace):
        """Does it with the list of the layer in focus, else of the only municipality, else with the one chosen."""
        todas, activa = QgsProject.instance().mapLayers().values(), self._iface.activeLayer()
        abiertas = sorted({layers.dato(capa, layers.LISTA) for capa in todas} - {""})
        if not abiertas:
            raise OSError("Abra antes un municipio")
        lista, elegida = layers.dato(activa, layers.LISTA) or abiertas[0], True
        if len(abiertas) > 1 and not layers.dato(activa, layers.LISTA):
            lista, elegida = QInputDialog.getItem(self._ventana, "Campiva", "Municipio:", abiertas, 0, False)
        if elegida:
            hace(lista)

    def _pregunta_y_abre(self):
        ajustes = QgsSettings()
        lista, _ = QFileDialog.getOpenFileName(
            self._ventana, "Lista de polígonos", ajustes.value("campiva/carpeta", ""),
            "Listas de polígonos (*.txt *.TXT);;Todos los ficheros (*)")
        if not lista:
            return
        municipio = Municipio(lista)
        ajustes.setValue("campiva/carpeta", municipio.carpeta)
        tablas, referencia = self._tablas(municipio), self._referencia(lista)
        if referencia is not None:
            self.abre(lista, tablas, referencia)

    def _tablas(self, municipio):
        """The folder of the tables, asked for where they aren't around the list; empty for none."""
        return municipio.tablas() or QFileDialog.getExistingDirectory(
            self._ventana, "Carpeta de las tablas (Cancelar: abrir sin ellas)", municipio.carpeta)

    def _referencia(self, lista):
        """The drawings tell no reference system: it is asked for once for each list. None where nobody answers."""
        ajustes, clave = QgsSettings(), f"campiva/referencias/{lista.replace('/', '|')}"
        if not ajustes.value(clave, ""):
            dialogo = QgsProjectionSelectionDialog(self._ventana)
            dialogo.setWindowTitle("Sistema de referencia de los dibujos")
            dialogo.setCrs(QgsCoordinateReferenceSystem(ajustes.value("campiva/referencia", "EPSG:25830")))
            if dialogo.exec() != QDialog.DialogCode.Accepted:
                return None
            ajustes.setValue(clave, dialogo.crs().authid())
            ajustes.setValue("campiva/referencia", dialogo.crs().authid())
        return QgsCoordinateReferenceSystem(ajustes.value(clave))

    def abre(self, lista, tablas, referencia):
        """Opens a municipality, shows all of it, and its messages where it has any."""
        proyecto = QgsProject.instance()
        if not proyecto.mapLayers():
            proyecto.setCrs(referencia)
        capas = layers.abre(proyecto, lista, tablas, referencia)
        parcelas = next(capa for capa in capas if layers.dato(capa, layers.CAPA) == "parcelas")
        self._iface.setActiveLayer(parcelas)
        self._iface.zoomToActiveLayer()
        with gdal_files.quejas() as dichas:
            self.muestra_mensajes(lista)
        if dichas:
            self._iface.messageBar().pushMessage("Campiva", "; ".join(texto for _, texto in dichas),
                                                 Qgis.MessageLevel.Warning, 0)

    @staticmethod
    def _dibujado(lista):
        """A layer that shows the drawings: who edits may have taken all of them away, and kept the copy's."""
        capas = layers.capas_de(QgsProject.instance(), lista)
        if not capas:
            raise OSError(f"Los dibujos de {lista} ya no están en el proyecto: abra otra vez el municipio")
        return capas[0]

    def muestra_mensajes(self, lista):
        capa = self._dibujado(lista)
        fichero, opciones = capa.source().split("|")[0], {}
        if gdal_files.hay_controlador():
            opciones["TABLAS"] = layers.dato(capa, layers.TABLAS)
        self.panel.pon(gdal_files.abre(fichero, **opciones), Municipio(lista).salida("ERR"), capa.crs())
        self._lista = lista
        self.panel.setUserVisible(True)

    def _refrescado(self, lista):
        if lista == self._lista:
            self._con(lambda: self.muestra_mensajes(lista))

    def _escrito(self, lista):
        self._con(lambda: layers.refresca(lista))

    def _traduce(self, nombre):
        """Opens the dialog of a translation, filled in for the municipality in focus.

        Of the way out it isn't: the tables are what it writes over, and its input may be another municipality's.
        """
        capa, dados = self._iface.activeLayer(), {}
        if layers.dato(capa, layers.LISTA) and nombre != Ida.NOMBRE:
            municipio = Municipio(layers.dato(capa, layers.LISTA))
            dados = {"LISTA": municipio.lista, "REGISTRO": municipio.salida("ERR"),
                     "TABLAS": layers.dato(capa, layers.TABLAS)}
        processing.execAlgorithmDialog(f"campiva:{nombre}", dados)

    def _edita(self, lista):
        """Makes a copy of the outlines that may be edited, or goes on with the one that there is."""
        if not gdal_files.hay_controlador():
            raise OSError("El GDAL de este QGIS no tiene el controlador Vexa: los dibujos no se pueden escribir")
        proyecto, copia = QgsProject.instance(), edited_copy.ultima(Municipio(lista))
        capas, respuesta = layers.capas_de(proyecto, lista, edicion=True), _BOTON.No
        if copia:
            respuesta = QMessageBox.question(
                self._ventana, "Copia para editar", f"Ya hay una copia, {copia}.\n¿Seguir con ella? Con «No» se hace "
                "otra, y ésa se queda como está.", _BOTON.Yes | _BOTON.No | _BOTON.Cancel)
        abiertas = [capa for capa in capas if copia and igual(layers.dato(capa, layers.EDICION), copia)]
        if respuesta == _BOTON.Yes and len(abiertas) == len(gdal_files.DE_RECINTOS):
            self._iface.setActiveLayer(next(capa for capa in abiertas if layers.dato(capa, layers.CAPA) == "parcelas"))
            return
        if respuesta == _BOTON.Cancel:
            return
        referencia = self._dibujado(lista).crs()
        if not self._guardadas(capas, "Copia para editar"):
            return
        if respuesta == _BOTON.No:
            copia = layers.copia(proyecto, lista, referencia)
        layers.abre_copia(proyecto, lista, copia, referencia)

    def _guardadas(self, capas, titulo):
        """Saves what is edited in these layers where the user wants it; false where he doesn't. Raises OSError."""
        sin_guardar = [capa for capa in capas if capa.isModified()]
        if sin_guardar and QMessageBox.question(self._ventana, titulo, "Hay ediciones sin guardar. "
                                                "¿Guardarlas?") != _BOTON.Yes:
            return False
        for capa in sin_guardar:
            if not capa.commitChanges(False):
                raise OSError("; ".join(capa.commitErrors()))
        return True

    def _devuelve(self, lista):
        capas = layers.capas_de(QgsProject.instance(), lista, edicion=True)
        if not capas:
            raise OSError("Haga antes una copia para editar: es lo que se devuelve al dibujo")
        copias = {layers.dato(capa, layers.EDICION) for capa in capas}
        elegida = layers.dato(self._iface.activeLayer(), layers.EDICION)
        if elegida not in copias and len(copias) > 1:
            raise OSError("Hay capas de varias copias: elija una de la que quiera devolver")
        copia = elegida if elegida in copias else copias.pop()
        suyas = [capa for capa in capas if layers.dato(capa, layers.EDICION) == copia]
        if not self._guardadas(suyas, "Devolver al dibujo"):
            return
        dialogo = DialogoDevolver(Devolucion(lista, copia), self._ventana)
        if dialogo.exec() == QDialog.DialogCode.Accepted:
            self._di_que_estan_escritos(dialogo.nuevas)
            layers.refresca(lista)

    def _di_que_estan_escritos(self, nuevas):
        """With what nobody has seen yet of what the driver says, until it is read."""
        barra, hecho = self._iface.messageBar(), "Los dibujos están escritos"
        if nuevas:
            barra.pushMessage("Campiva", "; ".join([hecho, *nuevas]), Qgis.MessageLevel.Warning, 0)
        else:
            barra.pushMessage("Campiva", hecho, Qgis.MessageLevel.Success)
