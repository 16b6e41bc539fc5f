"""The programs of Campiva: how they are asked, what they say, and how they are stopped. Needs no QGIS."""

import contextlib
import os
import re
import select
import shutil
import signal
import struct
import subprocess
import tempfile

from .municipality import TABLAS, busca

_AVANCE = re.compile(r"(.*?)\s*[█░]+\s+(\d+) %\s+\d+:\d\d")
_CAJA = re.compile(r"^\[([^\]\n]+)\]$", re.MULTILINE)
# Of a box that has no place on the line: section and key of the settings, what the program's dialog calls it.
_AJUSTES = {"relacion": ("CampivaAVexa", "TipoEntrada", "Relación de subparcelas con titulares"),
            "concentradas": ("VexaACampiva2", "ModificarConcentradas", "Modificar las parcelas concentradas")}
_ACABADO, _DETENIDO = (0, 1), 130  # what a run ends with that came to its end, or that was stopped
_PLAZO = 3  # seconds that a program has for its own clearing away
_MOMENTO = 0.1
_COLUMNAS = 200  # as wide as no line of progress is


def busca_programa(nombre):
    """Path of a program: in PATH, or where Windows installs it. Raises OSError."""
    # Where a variable names none there is no place: not the folder that somebody is in.
    raices = [os.path.join(os.environ[raiz], dentro) for raiz, dentro in (("ProgramFiles", ""), ("LOCALAPPDATA", "Programs"))
              if os.environ.get(raiz)]
    sitios = [*filter(os.path.isabs, os.environ.get("PATH", os.defpath).split(os.pathsep)),
              *(os.path.join(raiz, "Campiva") for raiz in raices)]
    # By whole paths: for a bare name Windows would look there first.
    fichero = nombre + (".exe" if os.name == "nt" else "")
    suyo = next(filter(None, (shutil.which(os.path.join(sitio, fichero)) for sitio in sitios)), None)
    if suyo is None:
        raise OSError(f"No se encuentra el programa {nombre}: instale Campiva, o ponga su carpeta en PATH")
    return suyo


def tablas_de(carpeta):
    """Paths of the six tables in the order in which the programs want them."""
    return [busca(carpeta, nombre) for nombre in TABLAS]


def mandatos_infograf(lista, ortos):
    """What a user would type: this translation has no form on the line."""
    return f"1011\n1\n1003={lista}\n1005={ortos}\n1\n2\n"


def orden_informe(programa, registro, **opciones):
    """An option that is empty isn't given."""
    return [programa, *(parte for nombre, valor in opciones.items() if valor for parte in (f"--{nombre}", valor)),
            registro]


def _valor_en_el_registro(seccion, clave):
    """A number that Windows keeps for the program; 0 where it keeps none."""
    import winreg

    lugar = os.environ.get("AJUSTES_APARTE", r"Software\VexaSoft\Campiva")
    with contextlib.suppress(OSError, ValueError):  # it isn't there, or is no number: the program takes 0 as well
        with winreg.OpenKey(winreg.HKEY_CURRENT_USER, f"{lugar}\\{seccion}") as abierta:
            return int(winreg.QueryValueEx(abierta, clave)[0])
    return 0


def pon_ajustes(carpeta, **casillas):
    """Stores in a folder what has no place on the line, and gives the environment that reads it.

    \\param casillas  by the names in `_AJUSTES`; what isn't given is no
    A run gets settings of its own: those of the user say what somebody chose in a dialog. Where the system keeps
    settings in no file, on Windows, they stay those of the user; raises OSError where these aren't what is asked for.
    """
    os.makedirs(os.path.join(carpeta, "VexaSoft"))
    with open(os.path.join(carpeta, "VexaSoft", "Campiva.ini"), "w", encoding="utf-8") as ajustes:
        for nombre, (seccion, clave, _) in _AJUSTES.items():
            ajustes.write(f"[{seccion}]\n{clave}={int(casillas.get(nombre, False))}\n\n")
    for nombre, pedida in casillas.items() if os.name == "nt" else ():
        seccion, clave, titulo = _AJUSTES[nombre]
        if bool(_valor_en_el_registro(seccion, clave)) != pedida:
            raise OSError(f"En Windows «{titulo}» vale como se eligió la última vez en el diálogo del programa, y allí "
                          f"{'no ' * pedida}está elegido: ábralo, elíjalo como lo quiere y haga un proceso, o cambie "
                          "aquí la casilla")
    return dict(os.environ, XDG_CONFIG_HOME=os.path.abspath(carpeta))


def lee_avance(texto):
    """Phase and per cent of a line of progress; None for another line."""
    suyo = _AVANCE.match(texto)
    return (suyo.group(1).strip(), int(suyo.group(2))) if suyo else None


def lee_cajas(texto):
    """The boxes in what a program printed, caption and text each; a dialog's own lines before them say nothing."""
    partes = _CAJA.split(texto)
    return [(titulo, cuerpo.strip("\n")) for titulo, cuerpo in zip(partes[1::2], partes[2::2])]


def lee_errores(texto):
    """The boxes of errors, and with an empty caption what a run says behind its boxes.

    A box ends with an empty line; its own text goes on behind one only where the line is indented.
    """
    return [dicho for parrafo in re.split(r"\n\n(?!\s)", texto)
            for dicho in lee_cajas(parrafo) or [("", parrafo.strip("\n"))] if dicho[1]]


class Resultado:
    """What came of a program: its status, what it printed, whether it was stopped.

    A stop that came too late has stopped nothing.
    """

    def __init__(self, estado, salida, errores, detenido):
        self.estado, self.salida, self.errores = estado, salida, errores
        self.detenido = detenido and estado not in _ACABADO or estado == _DETENIDO
        self.cajas = lee_errores(errores) + lee_cajas(salida)

    def cuenta(self, que):
        """The number of "errores" or "warnings" in the summary, 0 without one."""
        suya = re.search(rf"Número de {que} producidos\s*:\s*(\d+)", self.salida)
        return int(suya.group(1)) if suya else 0


def _terminal():
    """Both ends of a terminal as wide as a line of progress; None where the system has none.

    Only to a terminal do the programs tell how far they are. As it is none of their input, no box waits.
    """
    try:
        import fcntl
        import pty
        import termios
    except ImportError:
        return None
    nuestro, suyo = pty.openpty()
    fcntl.ioctl(suyo, termios.TIOCSWINSZ, struct.pack("HHHH", 25, _COLUMNAS, 0, 0))
    os.set_blocking(nuestro, False)
    return nuestro, suyo


def _interrumpe_en_windows(proceso):
    """Ctrl-C for a program with a console of its own, which QGIS has not."""
    import ctypes

    nucleo = ctypes.windll.kernel32
    if nucleo.AttachConsole(proceso.pid):
        nucleo.SetConsoleCtrlHandler(None, True)  # it would end QGIS as well
        nucleo.GenerateConsoleCtrlEvent(0, 0)
        nucleo.FreeConsole()


def _detiene(proceso):
    """Ends a program as Ctrl-C does, so that its outputs are as they were.

    One that was started where Ctrl-C is passed over is ended by the next signal, which leaves nothing half done.
    """
    if os.name == "nt":
        _interrumpe_en_windows(proceso)
    else:
        proceso.send_signal(signal.SIGINT)
    try:
        proceso.wait(_PLAZO)
    except subprocess.TimeoutExpired:
        proceso.terminate()


def _atiende(terminal, errores, avance):
    """Takes what a program told its terminal since the last time; the last line of progress says how far it is."""
    trozo = b""
    with contextlib.suppress(OSError):  # nothing there, or nobody at the other end
        while nuevo := os.read(terminal, 65536):
            trozo += nuevo
    errores.write(trozo)
    for dicho in list(filter(None, map(lee_avance, trozo.decode("utf-8", "replace").split("\r"))))[-1:]:
        avance(*dicho)


def _texto(fichero):
    """All that was printed, without lines of progress, each of which another one was printed over."""
    fichero.seek(0)
    texto = fichero.read().decode("utf-8", "replace").replace("\r\n", "\n")
    return "\n".join(linea.rsplit("\r", 1)[-1] for linea in texto.split("\n"))


@contextlib.contextmanager
def _en_marcha(orden, **flujos):
    """A program that is started. It isn't left behind by what goes wrong here: it would have its files in hand."""
    proceso = subprocess.Popen(orden, creationflags=getattr(subprocess, "CREATE_NO_WINDOW", 0), **flujos)
    try:
        yield proceso
    finally:
        if proceso.poll() is None:
            _detiene(proceso)
            proceso.wait()


def ejecuta(orden, entrada="", entorno=None, avance=lambda fase, tanto: None, parar=lambda: False):
    """Runs a program to its end, or until `parar` says so, and gives what came of it."""
    detenido = False
    with contextlib.ExitStack() as abiertos:
        mandatos, salida, errores = (abiertos.enter_context(tempfile.TemporaryFile()) for _ in range(3))
        mandatos.write(entrada.encode("utf-8", "surrogateescape"))
        mandatos.seek(0)
        terminal = _terminal()
        for extremo in terminal or ():
            abiertos.callback(os.close, extremo)
        with _en_marcha(orden, env=entorno, stdin=mandatos, stdout=salida,
                        stderr=terminal[1] if terminal else errores) as proceso:
            while proceso.poll() is None:
                if parar() and not detenido:
                    detenido = True
                    _detiene(proceso)
                if terminal:  # as soon as it tells something: it waits where its terminal is full
                    select.select(terminal[:1], (), (), _MOMENTO)
                    _atiende(terminal[0], errores, avance)
                else:
                    with contextlib.suppress(subprocess.TimeoutExpired):
                        proceso.wait(_MOMENTO)
        if terminal:
            _atiende(terminal[0], errores, avance)  # what came between the last look and the end
        return Resultado(proceso.returncode, _texto(salida), _texto(errores), detenido)
