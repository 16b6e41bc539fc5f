"""Where the files of a municipality are, by its list. Needs no QGIS.

Names in lists come from systems that don't tell capitals from small letters, so that files are found in either.
"""

import os

TABLAS = ("Modulos.txt", "Titulares.txt", "Parcelas.txt", "Subparcelas.txt", "Parajes.txt", "Cotitulares.txt")
_NUMEROS = slice(5, 11)  # of the municipality, in the list's first line
_DE_POLIGONO, _DE_HOJAS = (".bin", ".par", ".sub", ".pol"), (".bin", ".top")


def busca(carpeta, nombre):
    """Path of a file in a folder, in the letters that it has there; in the given ones if it isn't there."""
    if not os.path.exists(os.path.join(carpeta, nombre)) and os.path.isdir(carpeta or "."):
        nombre = min((otro for otro in os.listdir(carpeta or ".") if otro.lower() == nombre.lower()), default=nombre)
    return os.path.join(carpeta, nombre)


def igual(una, otra):
    """Tells whether two paths name the same file."""
    return os.path.normcase(os.path.normpath(una)) == os.path.normcase(os.path.normpath(otra))


def _en_la_lista(fichero):
    """A file's name as a list may have it, in small letters: where names are bytes, they may be the code page's."""
    return {fichero.lower(), os.fsencode(fichero).decode("cp1252", errors="replace").lower()}


def _nombre_de(entrada):
    """What of a list's entry names its drawings: whatever folder and extension it has, others are taken."""
    fichero = os.path.basename(entrada)
    return fichero.rpartition(".")[0] if "." in fichero else fichero


def traslada(ruta, antes, ahora):
    """What a noted path is for files that were copied: the one that was at `antes` when it was noted is at `ahora`.

    What doesn't stand around it, as tables for all municipalities, is where it was; what didn't come along is empty.
    """
    if igual(antes, ahora):
        return ruta
    try:
        sitio = os.path.relpath(ruta, os.path.dirname(antes)).replace(os.sep, "/")
    except ValueError:  # on another drive
        return ruta
    if sitio.startswith("../../"):
        return ruta
    nueva = os.path.normpath(f"{os.path.dirname(ahora)}/{sitio}").replace(os.sep, "/")  # as QGIS writes paths
    return nueva if os.path.exists(nueva) else ""


class Municipio:
    """The list, read once: what is drawn is the driver's business."""

    def __init__(self, lista):
        """Raises OSError where the list can't be read."""
        self.lista, self.carpeta = lista, os.path.dirname(lista)
        with open(lista, encoding="cp1252", errors="replace", newline="\n") as texto:  # no other character ends a line
            self.cabecera, *lineas = (linea.removesuffix("\r") for linea in texto.read().split("\n"))
        self.nombre = self.cabecera[_NUMEROS]
        self.titulo = " ".join(self.cabecera[_NUMEROS.start:].split())
        self.entradas = [_nombre_de(linea[1:]) for linea in lineas if linea[1:]]
        if len(self.nombre) != 6 or not self.nombre.replace(" ", "0").isdigit():
            raise OSError(f"{lista} no es una lista de polígonos: su primera línea no dice el municipio")

    def salida(self, extension):
        """Path of what a run leaves beside the list: "ERR", "R", "M", "CSP"."""
        return busca(self.carpeta, f"{self.nombre}.{extension}")

    def ortos(self):
        """The drawing of the sheets: the usual one, else the only other one there is."""
        usual = busca(self.carpeta, "ortos.TOP")
        otros = [nombre for nombre in os.listdir(self.carpeta or ".") if nombre.lower().endswith(".top")]
        return usual if os.path.exists(usual) or len(otros) != 1 else os.path.join(self.carpeta, otros[0])

    def tablas(self):
        """The folder of the tables: the list's own, or the first around it that has one of parcels; else none."""
        arriba = os.path.dirname(os.path.abspath(self.carpeta))
        sitios = (self.carpeta, os.path.join(self.carpeta, "tablas"), arriba, os.path.join(arriba, "tablas"))
        return next((sitio for sitio in sitios if os.path.exists(busca(sitio, "Parcelas.txt"))), "")

    def dibujos(self):
        """Paths of the list and of all drawings beside it, the sheets' too."""
        nombres = {entrada.lower() for entrada in self.entradas}
        ortos = os.path.splitext(os.path.basename(self.ortos()))[0].lower()
        partes = ((fichero, *os.path.splitext(fichero)) for fichero in sorted(os.listdir(self.carpeta or ".")))
        return [self.lista] + [os.path.join(self.carpeta, fichero) for fichero, nombre, extension in partes
                               if extension.lower() in _DE_POLIGONO and nombres & _en_la_lista(nombre)
                               or extension.lower() in _DE_HOJAS and nombre.lower() == ortos]
