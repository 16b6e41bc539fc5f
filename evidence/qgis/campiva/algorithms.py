"""The translations and the report as algorithms: their boxes become messages, a cancel is a Ctrl-C.

Names with capitals inside are those that QGIS asks for.
"""

import collections
import os
import tempfile

from qgis.core import (QgsProcessingAlgorithm, QgsProcessingException, QgsProcessingOutputFile,
                       QgsProcessingOutputNumber, QgsProcessingParameterBoolean, QgsProcessingParameterFile,
                       QgsProcessingParameterFileDestination, QgsProcessingProvider)
from qgis.PyQt.QtGui import QIcon

from . import layers, programs
from .municipality import Municipio, busca

# What is run: its line, what it writes by the names of the outputs, what is typed into its dialogs, the settings
# that have no place on the line, the list whose layers are read again when it is done, what it writes besides.
Encargo = collections.namedtuple("Encargo", "orden salidas mandatos ajustes lista demas", defaults=("", {}, None, ()))

_LISTA = ("LISTA", "Lista de polígonos (DBVexa)", "Listas de polígonos (*.txt *.TXT)")
_ORTOS = ("ORTOS", "Gráfico de ortofotos, si no es el que está junto a la lista", "", True)
_TABLAS = ("TABLAS", "Carpeta de las tablas, si no está junto a la lista", None, True)
_CUENTAS = (("ERRORES", "Número de errores", "errores"), ("AVISOS", "Número de warnings", "warnings"))


def icono(nombre):
    return QIcon(os.path.join(os.path.dirname(__file__), "icons", f"{nombre}.svg"))


def _marca(fichero):
    """What tells a file that was written from the one before; None where there is none."""
    if not os.path.exists(fichero):
        return None
    estado = os.stat(fichero)
    return estado.st_mtime_ns, estado.st_ino, estado.st_size


class _Algoritmo(QgsProcessingAlgorithm):
    """What all have in common; each says its names, its parameters, and by `prepara` what is run."""

    NOMBRE = TITULO = AYUDA = ""
    FICHEROS = CASILLAS = DESTINOS = SALIDAS = CUENTAS = ()
    _lista = None

    def createInstance(self):
        return type(self)()

    def name(self):
        return self.NOMBRE

    def displayName(self):
        return self.TITULO

    def shortHelpString(self):
        return self.AYUDA

    def icon(self):
        return icono(self.NOMBRE)

    def initAlgorithm(self, _configuracion=None):
        for nombre, titulo, filtro, *opcional in self.FICHEROS:
            clase = QgsProcessingParameterFile.File if filtro is not None else QgsProcessingParameterFile.Folder
            self.addParameter(QgsProcessingParameterFile(nombre, titulo, clase, optional=bool(opcional),
                                                         fileFilter=filtro or "Todos los ficheros (*)"))
        for nombre, titulo in self.CASILLAS:
            self.addParameter(QgsProcessingParameterBoolean(nombre, titulo, defaultValue=False))
        for nombre, titulo, filtro, *opcional in self.DESTINOS:
            self.addParameter(QgsProcessingParameterFileDestination(
                nombre, titulo, filtro, optional=bool(opcional), createByDefault=not opcional))
        for nombre, titulo in self.SALIDAS:
            self.addOutput(QgsProcessingOutputFile(nombre, titulo))
        for nombre, titulo, _ in self.CUENTAS:
            self.addOutput(QgsProcessingOutputNumber(nombre, titulo))

    def processAlgorithm(self, parametros, contexto, respuesta):
        dados = {nombre: self.parameterAsFile(parametros, nombre, contexto) for nombre, *_ in self.FICHEROS}
        dados.update((nombre, self.parameterAsBool(parametros, nombre, contexto)) for nombre, _ in self.CASILLAS)
        dados.update((nombre, self.parameterAsFileOutput(parametros, nombre, contexto)) for nombre, *_ in self.DESTINOS)
        try:
            encargo = self.prepara(dados)
            resultado, escritos = self._ejecuta(encargo, respuesta)
        except OSError as fallo:  # of a file: the user's to know, in the words that it comes in
            raise QgsProcessingException(str(fallo)) from fallo
        if resultado.detenido and not escritos:
            return {}
        if resultado.detenido and encargo.lista:
            layers.noticias.escrito.emit(encargo.lista)
        else:
            self._lista = encargo.lista
        salidas = {nombre: fichero for nombre, fichero in encargo.salidas.items() if fichero in escritos}
        return {**salidas, **{nombre: resultado.cuenta(que) for nombre, _, que in self.CUENTAS}}

    def _ejecuta(self, encargo, respuesta):
        """Runs it until it is done or cancelled, and gives what came of it and the files that it wrote.

        Only what is new was written: a run that can't make one of its files leaves the one before, and goes on.
        """
        antes = {fichero: _marca(fichero) for fichero in (*encargo.salidas.values(), *encargo.demas)}
        respuesta.pushCommandInfo(" ".join(encargo.orden))

        def avance(fase, tanto):
            respuesta.setProgressText(fase)
            respuesta.setProgress(tanto)

        with tempfile.TemporaryDirectory(prefix="campiva-") as carpeta:
            resultado = programs.ejecuta(encargo.orden, encargo.mandatos,
                                         programs.pon_ajustes(carpeta, **encargo.ajustes), avance, respuesta.isCanceled)
        # Boxes of errors are seen in red, and stop nobody's model; what is said without a box isn't to be passed over.
        di = {"Error": respuesta.reportError, "": respuesta.pushWarning}
        for titulo, texto in resultado.cajas:
            di.get(titulo, respuesta.pushInfo)(texto)
        escritos = {fichero for fichero, marca in antes.items() if _marca(fichero) not in (None, marca)}
        principal = next(iter(antes))
        if principal in escritos:
            if resultado.detenido:  # whatever the program ended with
                respuesta.reportError("Se ha detenido tarde: los ficheros de salida ya están escritos.")
            for fichero in sorted(antes.keys() - escritos):
                respuesta.reportError(f"No se ha escrito {fichero}")
        elif resultado.detenido:
            respuesta.reportError("Detenido: los ficheros de salida quedan como estaban.")
            escritos = set()  # the log of a stopped run is no result
        else:
            raise OSError(f"No se ha escrito {principal}")
        return resultado, escritos

    def postProcessAlgorithm(self, _contexto, respuesta):
        """In the thread that layers live in. Who starts it in another one doesn't come here after a cancel."""
        try:
            if self._lista:
                layers.refresca(self._lista)
        except OSError as fallo:
            respuesta.reportError(str(fallo))
        return {}


class Ida(_Algoritmo):
    NOMBRE, TITULO = "ida", "De Catastro a Vexa"
    AYUDA = ("Lee el fichero de Catastro, o una relación de subparcelas con titulares, y escribe las seis tablas en "
             "la carpeta que se diga: reemplaza todas las de antes, o ninguna. Los mensajes quedan junto a la entrada, "
             "en un fichero ERR.")
    FICHEROS = (("ENTRADA", "Archivo de entrada", ""), ("TABLAS", "Carpeta de las tablas", None))
    CASILLAS = (("RELACION", "La entrada es una relación de subparcelas con titulares, no el archivo normal"),)
    SALIDAS, CUENTAS = (("PARCELAS", "Tabla de parcelas"), ("REGISTRO", "Mensajes")), _CUENTAS

    def prepara(self, dados):
        entrada, carpeta = dados["ENTRADA"], dados["TABLAS"]
        return Encargo([programs.busca_programa("campiva"), "0", entrada, *programs.tablas_de(carpeta)],
                       {"PARCELAS": busca(carpeta, "Parcelas.txt"), "REGISTRO": os.path.splitext(entrada)[0] + ".ERR"},
                       ajustes={"relacion": dados["RELACION"]}, demas=programs.tablas_de(carpeta))


class Vuelta(_Algoritmo):
    NOMBRE, TITULO = "vuelta", "De Vexa a Catastro"
    AYUDA = ("Cruza las tablas con los dibujos de los polígonos y escribe junto a la lista los ficheros de Catastro, "
             "R y M, y los mensajes, en un fichero ERR. Después vuelve a leer las capas del municipio.")
    FICHEROS = (_LISTA, _TABLAS, _ORTOS)
    CASILLAS = (("MODIFICAR", "Modificar archivos de entrada con los nuevos datos del gráfico"),
                ("NO_EN_GRAFICO", "Incluir parcelas existentes en BD y no existentes en gráfico"),
                ("NO_EN_BD", "Incluir parcelas existentes en gráfico y no existentes en BD"),
                ("CONCENTRADAS", "Modificar las parcelas concentradas"))
    SALIDAS, CUENTAS = (("R", "Fichero R"), ("M", "Fichero M"), ("REGISTRO", "Mensajes")), _CUENTAS

    def prepara(self, dados):
        municipio = Municipio(dados["LISTA"])
        tablas = dados["TABLAS"] or municipio.tablas() or municipio.carpeta
        *en_la_linea, concentradas = (dados[nombre] for nombre, _ in self.CASILLAS)
        modificadas = [busca(tablas, nombre) for nombre in ("Parcelas.txt", "Subparcelas.txt") if dados["MODIFICAR"]]
        return Encargo([programs.busca_programa("campiva"), "1", *programs.tablas_de(tablas), municipio.lista,
                        dados["ORTOS"] or municipio.ortos(), *(str(int(casilla)) for casilla in en_la_linea)],
                       {"R": municipio.salida("R"), "M": municipio.salida("M"), "REGISTRO": municipio.salida("ERR")},
                       ajustes={"concentradas": concentradas}, lista=municipio.lista, demas=modificadas)


class Infograf(_Algoritmo):
    NOMBRE, TITULO = "infograf", "De Vexa a Infograf"
    AYUDA = "Escribe junto a la lista un fichero CSP con un registro por parcela, polígono y subparcela."
    FICHEROS, SALIDAS = (_LISTA, _ORTOS), (("CSP", "Fichero CSP"),)

    def prepara(self, dados):
        municipio = Municipio(dados["LISTA"])
        return Encargo([programs.busca_programa("campiva")], {"CSP": municipio.salida("CSP")},
                       programs.mandatos_infograf(municipio.lista, dados["ORTOS"] or municipio.ortos()),
                       lista=municipio.lista)


class Informe(_Algoritmo):
    NOMBRE, TITULO = "informe", "Informe de un proceso"
    AYUDA = ("Hace de un fichero de mensajes, y de lo que el proceso leyó y escribió, una página con el balance, "
             "los mensajes por sus causas y un mapa de cada polígono.")
    FICHEROS = (("REGISTRO", "Fichero de mensajes", "Mensajes (*.ERR *.err)"), (*_LISTA, True), _TABLAS, _ORTOS)
    DESTINOS = (("HTML", "Página", "Páginas (*.html)"), ("CSV", "Hoja de mensajes", "Hojas (*.csv)", True),
                ("GEOJSON", "Recintos y mensajes para un SIG", "GeoJSON (*.geojson)", True))

    def prepara(self, dados):
        registro = dados.pop("REGISTRO")
        opciones = {nombre.lower(): valor for nombre, valor in dados.items()}
        return Encargo(programs.orden_informe(programs.busca_programa("campiva-informe"), registro, **opciones),
                       {nombre: dados[nombre] for nombre, *_ in self.DESTINOS if dados[nombre]})


ALGORITMOS = (Ida, Vuelta, Infograf, Informe)


class Proveedor(QgsProcessingProvider):
    """All of them in the toolbox of Processing, so that models and scripts have them."""

    def loadAlgorithms(self):
        for algoritmo in ALGORITMOS:
            self.addAlgorithm(algoritmo())

    def id(self):
        return "campiva"

    def name(self):
        return "Campiva"

    def icon(self):
        return icono("campiva")
