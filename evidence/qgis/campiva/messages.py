"""The messages of a log: what they say, which a filter lets through, which are done. Needs no QGIS."""

import collections
import html
import os
import re

# A line of the log. `donde` says what of the drawing it is shown by, where that is told; `lugar` is what the layer
# that it came from finds it by.
Mensaje = collections.namedtuple("Mensaje", "numero clase texto poligono parcela letra donde lugar")
# What is asked for; an empty field asks for nothing. `pendientes` leaves out what is done.
Filtro = collections.namedtuple("Filtro", "numero clase poligono texto pendientes",
                                defaults=("", "", None, "", False))

SIN_NUMERO = "sin número"
POLIGONO = "polígono"  # what a message is shown by that speaks of what nobody drew
HECHOS = ".hechos"  # behind the log's whole name, so that it is taken for no input of the log's name


def de_campos(campos, lugar):
    """The message of a feature's fields, by the names that the driver has or those of the report."""
    numero = campos.get("numero") or campos.get("codigo") or ""
    clase = {"E": "error", "W": "warning"}.get(numero[:1], "")
    return Mensaje(numero, clase, campos.get("texto") or "", campos.get("poligono"), campos.get("parcela"),
                   (campos.get("letra") or "").strip(), campos.get("lugar") or "", lugar)


def pasa(mensaje, hecho, filtro):
    """Tells whether a message is shown. Capitals and small letters of the text are alike."""
    return ((not filtro.numero or (mensaje.numero or SIN_NUMERO) == filtro.numero)
            and (not filtro.clase or mensaje.clase == filtro.clase)
            and (filtro.poligono is None or mensaje.poligono == filtro.poligono)
            and filtro.texto.lower() in mensaje.texto.lower()
            and not (filtro.pendientes and hecho))


def consejo(pagina, numero):
    """Cause and remedy of a message as plain text, each empty where the manual's page of messages has none."""
    seccion = re.split("<h[23]>", pagina.partition(f'<h3><a name="{numero}">')[2])[0]
    parrafos = (seccion.partition(f"<b>{nombre}.</b>")[2].split("</p>")[0] for nombre in ("Causa", "Remedio"))
    return tuple(" ".join(html.unescape(re.sub("<[^>]*>", "", parrafo)).split()) for parrafo in parrafos)


class Hechos:
    """Which messages are ticked off, kept beside the log as lines of the log.

    The next run writes a new log: a message that stands in it again is the same and stays done, which is why lines
    are kept and not their numbers. Of equal lines so many are done as were ticked.
    """

    def __init__(self, registro):
        """Raises OSError where the ticks are there and can't be read."""
        self._fichero = registro + HECHOS
        self._lineas = self._lee()
        self._vistas = self._lineas  # what is done where these ticks are shown, as far as it is kept

    def _lee(self):
        if not os.path.exists(self._fichero):
            return collections.Counter()
        with open(self._fichero, encoding="utf-8", errors="replace") as texto:
            return collections.Counter(linea.rstrip("\n") for linea in texto)

    def de(self, mensajes):
        """Of each message whether it is done."""
        vistas, hechos = collections.Counter(), []
        for mensaje in mensajes:
            vistas[mensaje.texto] += 1
            hechos.append(vistas[mensaje.texto] <= self._lineas[mensaje.texto])
        self._vistas = _hechas(mensajes, hechos)
        return hechos

    def guarda(self, mensajes, hechos):
        """Keeps what was ticked or unticked since the last time; no tick leaves no file.

        All else stays as it is there: what somebody else ticked meanwhile, and what isn't in this log, which may be
        that of a run that was stopped. Raises OSError, and keeps the file that was.
        """
        ahora, lineas = _hechas(mensajes, hechos), self._lee()
        for linea in {*ahora, *self._vistas}:
            if ahora[linea] != self._vistas[linea]:
                lineas[linea] = ahora[linea]
        if any(lineas.values()):
            with open(self._fichero + "~", "w", encoding="utf-8") as texto:
                texto.writelines(f"{linea}\n" for linea in lineas.elements())
            os.replace(self._fichero + "~", self._fichero)
        elif os.path.exists(self._fichero):
            os.remove(self._fichero)
        self._vistas = ahora


def _hechas(mensajes, hechos):
    return collections.Counter(mensaje.texto for mensaje, hecho in zip(mensajes, hechos) if hecho)
