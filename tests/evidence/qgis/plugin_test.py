"""What of the plugin needs no QGIS: names of files, the programs' lines and words, messages, changes.

    plugin_test.py FOLDER_OF_PLUGIN CAMPIVA MANUAL_PAGE SAMPLES
"""

import contextlib
import os
import shutil
import sys
import tempfile
import unittest
from unittest import mock

PLUGIN, CAMPIVA, PAGE, SAMPLES = sys.argv[1:5]
sys.path.insert(0, os.path.dirname(PLUGIN))

from campiva import changes, edited_copy, messages, municipality, programs  # noqa: E402 - the place is an argument


class InAFolder(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)

    def write(self, name, text=""):
        path = os.path.join(self.folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="cp1252", newline="") as file:
            file.write(text)
        return path


class TestMunicipality(InAFolder):
    def test_finds_files_in_the_letters_that_they_have(self):
        listed = self.write("d/Lista.TXT", "TREN 045127 PEÑA\r\nP001\r\nPa b\r\n\r\n")
        for name in ("001.bin", "001.PAR", "A B.sub", "002.BIN", "Hojas.top", "hojas.BIN", "045127.err"):
            self.write("d/" + name)
        self.write("tablas/PARCELAS.TXT")
        found = municipality.Municipio(listed)
        self.assertEqual((found.nombre, found.titulo, found.entradas), ("045127", "045127 PEÑA", ["001", "a b"]))
        self.assertEqual([os.path.basename(path) for path in found.dibujos()],
                         ["Lista.TXT", "001.PAR", "001.bin", "A B.sub", "Hojas.top", "hojas.BIN"])
        for path, name in ((found.salida("ERR"), "045127.err"), (found.salida("R"), "045127.R"),
                           (found.ortos(), "Hojas.top"), (found.tablas(), "tablas")):
            self.assertEqual(os.path.basename(path), name)
        self.write("d/otras.TOP")
        self.assertEqual(os.path.basename(found.ortos()), "ortos.TOP", "of two neither is taken")

    def test_of_an_entry_only_the_name_counts(self):
        names = ("001.BIN", "002.BIN", "003.v2.BIN", "004\x0c.BIN", "005 .BIN")
        for name in names:
            self.write(name)
        for reason, entry, expected in (
                ("a name", "002", ["002.BIN"]), ("an extension", "002.BIN", ["002.BIN"]),
                ("another one", "002.par", ["002.BIN"]), ("a folder", "./002", ["002.BIN"]),
                ("both", "otra/carpeta.x/002.BIN", ["002.BIN"]), ("the last point", "003.v2.BIN", ["003.v2.BIN"]),
                ("what ends lines elsewhere", "004\x0c", ["004\x0c.BIN"]), ("a blank", "005 ", ["005 .BIN"]),
                ("of nothing", ".BIN", [])):
            with self.subTest(reason):
                listed = self.write("lista.txt", f"TREN 045127 PEÑA\r\nP{entry}\r\n")
                found = [os.path.basename(path) for path in municipality.Municipio(listed).dibujos()]
                self.assertEqual(found, ["lista.txt", *expected])

    @unittest.skipIf(os.name == "nt", "names are letters there")
    def test_a_name_has_the_letters_or_the_bytes_of_the_list(self):
        listed = self.write("lista.txt", "TREN 045127 PEÑA\r\nPpeña\r\n")
        for coding in ("cp1252", "utf-8"):
            drawn = os.path.join(os.fsencode(self.folder), "Peña.BIN".encode(coding))
            with open(drawn, "wb"):
                pass
            self.assertEqual(municipality.Municipio(listed).dibujos(), [listed, os.fsdecode(drawn)])
            os.remove(drawn)

    def test_noted_paths_go_with_the_files_that_were_copied(self):
        for name in ("25/d/lista.txt", "25/d/copia.gpkg", "25/tablas/x", "26/d/lista.txt", "26/d/copia.gpkg",
                     "26/tablas/x", "x/todas/x", "27/d/lista.txt"):
            self.write(name)
        for reason, noted, before, now, expected in (
                ("nothing moved", "25/d/lista.txt", "25/d/./copia.gpkg", "25/d/copia.gpkg", "25/d/lista.txt"),
                ("the list itself", "25/d/lista.txt", "25/d/lista.txt", "26/d/lista.txt", "26/d/lista.txt"),
                ("beside a copy", "25/d/lista.txt", "25/d/copia.gpkg", "26/d/copia.gpkg", "26/d/lista.txt"),
                ("its own folder", "25/d", "25/d/lista.txt", "26/d/lista.txt", "26/d"),
                ("the folder around", "25/tablas", "25/d/lista.txt", "26/d/lista.txt", "26/tablas"),
                ("didn't come along", "25/tablas", "25/d/lista.txt", "27/d/lista.txt", ""),
                ("of all municipalities", "x/todas", "25/d/lista.txt", "27/d/lista.txt", "x/todas")):
            with self.subTest(reason):
                paths = [os.path.join(self.folder, path) for path in (noted, before, now)]
                self.assertEqual(municipality.traslada(*paths), expected and os.path.join(self.folder, expected))

    def test_refuses_what_is_no_list(self):
        for text in ("", "TREN", "TREN 04512x\r\nP001\r\n"):
            with self.subTest(text), self.assertRaises(OSError):
                municipality.Municipio(self.write("lista.txt", text))
        with self.assertRaises(OSError):
            municipality.Municipio(os.path.join(self.folder, "none.txt"))


class TestEditedCopies(InAFolder):
    def setUp(self):
        super().setUp()
        self.town = municipality.Municipio(self.write("lista.txt", "TREN 045127 PEÑA\r\nP001\r\nP002\r\n"))

    def place(self, text):
        return os.path.basename(edited_copy.coloca(self.write("hecha/copia.gpkg", text), self.town))

    def read(self, name):
        with open(os.path.join(self.folder, name), encoding="cp1252") as file:
            return file.read()

    def test_a_new_one_leaves_those_that_are_there(self):
        self.assertEqual(edited_copy.ultima(self.town), "")
        for other in ("045127-edicion.bak.gpkg", "999999-edicion-7.gpkg", "045127-edicion-x.gpkg"):
            self.write(other)
        self.assertEqual(self.place("one"), "045127-edicion.gpkg")
        self.assertEqual(self.place("two"), "045127-edicion-2.gpkg")
        self.assertEqual((self.read("045127-edicion.gpkg"), self.read("045127-edicion-2.gpkg")), ("one", "two"))
        self.assertEqual(os.path.basename(edited_copy.ultima(self.town)), "045127-edicion-2.gpkg")
        self.write("045127-edicion-9.gpkg")
        self.write("045127-edicion-10.gpkg-wal")  # of one that somebody deleted: edits that a new one would take
        self.assertEqual(self.place("last"), "045127-edicion-11.gpkg")
        self.assertEqual(os.path.basename(edited_copy.ultima(self.town)), "045127-edicion-11.gpkg")

    def test_two_that_make_one_at_a_time_have_one_each(self):
        really = os.open
        def taken_meanwhile(path, flags):
            if path.endswith("edicion.gpkg") and not os.path.exists(path):
                self.write("045127-edicion.gpkg", "theirs")
            return really(path, flags)
        with mock.patch("campiva.edited_copy.os.open", taken_meanwhile):
            self.assertEqual(self.place("ours"), "045127-edicion-2.gpkg")
        self.assertEqual(self.read("045127-edicion.gpkg"), "theirs")

    def test_one_that_cannot_be_placed_leaves_no_name(self):
        with self.assertRaises(OSError):
            edited_copy.coloca(os.path.join(self.folder, "none"), self.town)
        self.assertEqual(edited_copy.ultima(self.town), "")

    def test_what_others_drew_is_known_by_what_was_drawn_when_the_copy_was_made(self):
        for name, text in (("001.BIN", "a"), ("001.PAR", "b"), ("002.BIN", "c")):
            self.write(name, text)
        noted = edited_copy.lee_apunte(edited_copy.apunte(edited_copy.sumas(self.town)))
        def overwritten(note, before, after):
            sums = []
            for drawn in (before, after):
                for name, text in drawn.items():
                    self.write(name, text)
                sums.append(edited_copy.sumas(self.town))
            return edited_copy.pisados(note, *sums)
        for reason, before, after, expected in (
                ("nobody drew", {}, {"001.PAR": "x"}, []),
                ("others drew what isn't written", {"001.PAR": "b", "002.BIN": "others"}, {"001.PAR": "x"}, []),
                ("others drew what is written", {"001.PAR": "others"}, {"001.PAR": "x", "001.BIN": "x"}, ["001.PAR"]),
                ("others drew what wasn't there", {"001.SUB": "others"}, {"001.SUB": "x"}, ["001.SUB"])):
            with self.subTest(reason):
                self.assertEqual(overwritten(noted, before, after), expected)
                for name, text in (("001.BIN", "a"), ("001.PAR", "b"), ("002.BIN", "c")):
                    self.write(name, text)
        for nothing in (None, "", "{", "[1]"):
            self.assertEqual(overwritten(edited_copy.lee_apunte(nothing), {}, {"001.PAR": "x"}), [])


class TestWords(unittest.TestCase):
    def test_reads_progress(self):
        for line, expected in (("Leyendo polígonos      ████░░░░  50 %  0:07", ("Leyendo polígonos", 50)),
                               ("░░░░   0 %  0:00", ("", 0)), ("[Error]", None), ("el 50 % de nada", None)):
            with self.subTest(line):
                self.assertEqual(programs.lee_avance(line), expected)

    def test_tells_boxes_from_what_is_behind_them(self):
        said = ("[Error]\nE107: [algo] fuera de fecha\n\n[Error]\nATENCION: algunas.\n\n        Revisar.\n\n"
                "Lo que había en a.ERR queda en a.ERR.anterior\n")
        self.assertEqual(programs.lee_errores(said),
                         [("Error", "E107: [algo] fuera de fecha"),
                          ("Error", "ATENCION: algunas.\n\n        Revisar."),
                          ("", "Lo que había en a.ERR queda en a.ERR.anterior")])
        self.assertEqual(programs.lee_cajas("Diálogo\n  1028  [ ] Casilla\n[Fin del proceso]\nHecho.\n\n 3\n\n"),
                         [("Fin del proceso", "Hecho.\n\n 3")])
        self.assertEqual(programs.lee_errores(""), [])

    def test_leaves_out_options_that_are_empty(self):
        self.assertEqual(programs.orden_informe("i", "a.ERR", lista="", tablas="t"), ["i", "--tablas", "t", "a.ERR"])


class FakeRegistry:
    """What of Windows' registry is asked for: numbers, and texts as somebody writes them by hand."""

    HKEY_CURRENT_USER = object()

    def __init__(self, values):
        self._values = values

    def OpenKey(self, root, place):
        assert root is self.HKEY_CURRENT_USER
        if not any(key[0] == place for key in self._values):
            raise FileNotFoundError(place)
        return contextlib.nullcontext(place)

    def QueryValueEx(self, place, name):
        if (place, name) not in self._values:
            raise FileNotFoundError(name)
        return self._values[place, name], 4


class TestSettingsOfWindows(InAFolder):
    OUT = (r"Software\VexaSoft\Campiva\CampivaAVexa", "TipoEntrada")
    BACK = (r"Software\VexaSoft\Campiva\VexaACampiva2", "ModificarConcentradas")

    def refused(self, values, **boxes):
        folder = tempfile.mkdtemp(dir=self.folder)
        with mock.patch.dict(sys.modules, winreg=FakeRegistry(values)), mock.patch.object(os, "name", "nt"):
            try:
                programs.pon_ajustes(folder, **boxes)
            except OSError as reason:
                return str(reason)
        return ""

    def test_a_box_that_the_program_would_not_see_is_refused(self):
        for reason, values, boxes, expected in (
                ("nothing is kept", {}, {"relacion": False}, ""),
                ("nothing is kept, a list is asked for", {}, {"relacion": True}, "«Relación.* no está elegido"),
                ("another value is kept", {self.OUT: 1}, {"concentradas": True}, "«Modificar.* no está elegido"),
                ("it is as it is asked for", {self.OUT: 1}, {"relacion": True}, ""),
                ("it is the other way", {self.BACK: 1}, {"concentradas": False}, "«Modificar.*allí está elegido"),
                ("as text", {self.BACK: "1"}, {"concentradas": True}, ""),
                ("no number", {self.BACK: "x"}, {"concentradas": False}, ""),
                ("nobody asks", {self.OUT: 1, self.BACK: 1}, {}, "")):
            with self.subTest(reason):
                self.assertRegex(self.refused(values, **boxes), expected or "^$")

    def test_settings_kept_elsewhere_are_those_that_count(self):
        with mock.patch.dict(os.environ, AJUSTES_APARTE=r"Software\x"):
            self.assertEqual(self.refused({(r"Software\x\CampivaAVexa", "TipoEntrada"): 1}, relacion=True), "")
            self.assertNotEqual(self.refused({self.OUT: 1}, relacion=True), "")


class TestRuns(InAFolder):
    """The program itself, as the algorithms run it."""

    def run_out(self, name, **how):
        shutil.copy(os.path.join(SAMPLES, name), self.folder)
        order = [CAMPIVA, "0", os.path.join(self.folder, name), *programs.tablas_de(self.folder)]
        settings = programs.pon_ajustes(os.path.join(self.folder, "settings"), **how.pop("settings", {}))
        return programs.ejecuta(order, entorno=settings, **how)

    def rows(self):
        with open(os.path.join(self.folder, "Parcelas.txt"), encoding="cp1252") as table:
            return len(table.readlines())

    def test_hears_the_summary_and_the_progress(self):
        heard = []
        result = self.run_out("villanueva_con_faltas.txt", avance=lambda *said: heard.append(said))
        with open(os.path.join(self.folder, "villanueva_con_faltas.ERR"), encoding="cp1252") as written:
            log = written.read()
        self.assertEqual([title for title, _ in result.cajas], ["", "Fin del proceso"])
        self.assertIn("villanueva_con_faltas.txt hay registros con números", result.cajas[0][1])
        self.assertEqual(result.cuenta("warnings"), log.count("W3"))
        self.assertGreater(result.cuenta("errores"), 10)
        self.assertEqual((result.estado, result.detenido), (0, False))
        self.assertTrue(heard and all(0 <= share <= 100 for _, share in heard))

    def test_the_kind_of_input_is_the_run_s_own(self):
        self.run_out("villanueva_lista.txt", settings={"relacion": True})
        self.assertGreater(self.rows(), 200)

    def test_a_stop_leaves_all_as_it_was(self):
        self.run_out("villanueva.txt")
        before, names = self.rows(), sorted(os.listdir(self.folder))
        shutil.rmtree(os.path.join(self.folder, "settings"))
        with open(os.path.join(SAMPLES, "villanueva.txt"), "rb") as sample:
            lines = sample.read()
        with open(os.path.join(self.folder, "villanueva.txt"), "wb") as long:
            long.writelines([lines] * 400)
        order = [CAMPIVA, "0", os.path.join(self.folder, "villanueva.txt"), *programs.tablas_de(self.folder)]
        settings, calls = programs.pon_ajustes(os.path.join(self.folder, "settings")), []
        result = programs.ejecuta(order, entorno=settings, parar=lambda: calls.append(1) or len(calls) > 1)
        self.assertTrue(result.detenido)
        self.assertIn(result.estado, (130, -2))
        self.assertEqual((self.rows(), sorted(os.listdir(self.folder))), (before, names))

    def test_a_stop_that_comes_too_late_is_none(self):
        for order, expected in (("trap '' INT; sleep 0.3", False), ("trap '' INT; sleep 0.3; exit 1", False),
                                ("trap 'exit 130' INT; sleep 9 & wait", True), ("exec sleep 9", True)):
            with self.subTest(order):
                calls = []
                result = programs.ejecuta(["sh", "-c", order], parar=lambda: calls.append(1) or len(calls) > 1)
                self.assertEqual(result.detenido, expected, result.estado)

    def test_who_tells_much_does_not_wait_until_somebody_looks(self):
        # What its terminal holds many times over, no faster than it is read.
        lines = f"i=0; while [ $i -lt 4000 ]; do echo 'Falta algo {'x' * 90}'; i=$((i+1)); done >&2"
        order = f"(sleep 3; kill $$) > /dev/null 2>&1 & w=$!; {lines}; kill $w"
        with mock.patch.object(programs, "_MOMENTO", 0.5):
            result = programs.ejecuta(["sh", "-c", order])
        self.assertEqual((result.estado, result.errores.count("Falta algo")), (0, 4000))

    def test_what_goes_wrong_meanwhile_leaves_no_program_behind(self):
        def fails(phase, share):
            raise OSError("No queda sitio")

        mark = os.path.join(self.folder, "alive")
        order = f"echo $$ > '{mark}'; printf 'Leyendo ██░░ 50 %%  0:01\\r' >&2; exec sleep 9"
        with self.assertRaisesRegex(OSError, "sitio"):
            programs.ejecuta(["sh", "-c", order], avance=fails)
        with open(mark, encoding="ascii") as number, self.assertRaises(ProcessLookupError):
            os.kill(int(number.read()), 0)

    def test_a_program_that_is_not_there_is_told(self):
        with self.assertRaisesRegex(OSError, "no-hay-tal"):
            programs.busca_programa("no-hay-tal")

    def test_a_program_is_looked_for_where_it_is_installed_and_not_where_somebody_is(self):
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(self.folder)
        for path in ("Campiva/campiva-x", "Programs/Campiva/campiva-x"):
            os.chmod(self.write(path, "#!/bin/sh\n"), 0o755)
        for path in ("/none", ":.:Campiva:"):
            with self.subTest(path), mock.patch.dict(os.environ, PATH=path), self.assertRaises(OSError):
                programs.busca_programa("campiva-x")
        with mock.patch.dict(os.environ, PATH=os.path.join(self.folder, "Campiva")):
            self.assertEqual(programs.busca_programa("campiva-x"), os.path.join(self.folder, "Campiva/campiva-x"))
        with mock.patch.dict(os.environ, PATH="/none"):
            for variable, found in (("ProgramFiles", "Campiva/campiva-x"),
                                    ("LOCALAPPDATA", "Programs/Campiva/campiva-x")):
                with mock.patch.dict(os.environ, {variable: self.folder}):
                    self.assertEqual(programs.busca_programa("campiva-x"), os.path.join(self.folder, found))


class TestMessages(InAFolder):
    SAID = [messages.de_campos(fields, place) for place, fields in enumerate((
        {"numero": "E106", "texto": "E106: La parcela    1   9001 en gráfico", "poligono": 1, "parcela": 9001},
        {"codigo": "W304", "texto": "W304: La parcela    2      7", "poligono": 2, "parcela": 7, "letra": "  a"},
        {"texto": "algo que nadie\x0c \u2028conoce"},
        {"numero": "E106", "texto": "E106: La parcela    1   9001 en gráfico", "poligono": 1, "parcela": 9001}))]

    def test_lets_through_what_is_asked_for(self):
        for asked, expected in (({}, [0, 1, 2, 3]), ({"numero": "E106"}, [0, 3]), ({"clase": "warning"}, [1]),
                                ({"poligono": 2}, [1]), ({"texto": "GRÁFICO"}, [0, 3]),
                                ({"pendientes": True}, [1, 2, 3]),
                                ({"numero": messages.SIN_NUMERO}, [2]), ({"clase": "error", "poligono": 2}, [])):
            with self.subTest(asked):
                through = [message.lugar for message in self.SAID
                           if messages.pasa(message, message.lugar == 0, messages.Filtro(**asked))]
                self.assertEqual(through, expected)

    def test_letters_lose_the_blanks_of_their_column(self):
        self.assertEqual([message.letra for message in self.SAID], ["", "a", "", ""])

    def test_ticks_stay_with_their_lines_in_another_log(self):
        log = os.path.join(self.folder, "045127.ERR")
        messages.Hechos(log).guarda(self.SAID, [True, True, False, False])
        self.assertEqual(messages.Hechos(log).de(self.SAID), [True, True, False, False])
        self.assertEqual(messages.Hechos(log).de(self.SAID[:0:-1]), [True, False, True], "one of two equal lines")
        messages.Hechos(log).guarda(self.SAID, [False] * 4)
        self.assertEqual(os.listdir(self.folder), [])

    def test_a_tick_changes_no_other_one(self):
        log = os.path.join(self.folder, "045127.ERR")
        done = [True, False, False, False]
        messages.Hechos(log).guarda(self.SAID, done)
        mine, theirs = messages.Hechos(log), messages.Hechos(log)
        self.assertEqual((mine.de(self.SAID), theirs.de(self.SAID)), (done, done))
        theirs.guarda(self.SAID, [True, True, False, False])
        mine.guarda(self.SAID, [False, False, True, False])
        self.assertEqual(messages.Hechos(log).de(self.SAID), [False, True, True, False], "two that tick at a time")
        mine.guarda(self.SAID, [False, False, False, False])
        self.assertEqual(messages.Hechos(log).de(self.SAID), [False, True, False, False])
        short = messages.Hechos(log)
        self.assertEqual(short.de(self.SAID[:1]), [False])
        short.guarda(self.SAID[:1], [True])
        self.assertEqual(messages.Hechos(log).de(self.SAID), [True, True, False, False], "the log of a stopped run")

    def test_a_tick_that_could_not_be_kept_is_kept_with_the_next_one(self):
        log = os.path.join(self.folder, "045127.ERR")
        mine = messages.Hechos(log)
        mine.de(self.SAID)
        os.mkdir(log + messages.HECHOS + "~")
        with self.assertRaises(OSError):
            mine.guarda(self.SAID, [True, False, False, False])
        os.rmdir(log + messages.HECHOS + "~")
        mine.guarda(self.SAID, [True, True, False, False])
        self.assertEqual(messages.Hechos(log).de(self.SAID), [True, True, False, False])

    def test_ticks_that_cannot_be_kept_are_told_and_the_old_ones_stay(self):
        log = os.path.join(self.folder, "045127.ERR")
        messages.Hechos(log).guarda(self.SAID, [True, False, False, False])
        os.mkdir(log + messages.HECHOS + "~")
        with self.assertRaises(OSError):
            messages.Hechos(log).guarda(self.SAID, [True] * 4)
        self.assertEqual(messages.Hechos(log).de(self.SAID), [True, False, False, False])

    def test_the_manual_has_cause_and_remedy_of_each_number(self):
        with open(PAGE, encoding="utf-8") as text:
            page = text.read()
        for number in ("E101", "E113", "E214", "W301", "W304"):
            for text in messages.consejo(page, number):
                self.assertRegex(text, r"^[^<>&]{20,}$", number)
        for number in ("E999", ""):
            self.assertEqual(messages.consejo(page, number), ("", ""))


class TestChanges(unittest.TestCase):
    @staticmethod
    def outline(layer, parcel, letter="", label=None, area=10.0, shape=1, code="125201"):
        label = f"{parcel}{letter and '-'}{letter}" if label is None else label
        return changes.Recinto(layer, 1, parcel, letter, label, area, shape, (label, code))

    def test_each_kind_of_change_is_a_row(self):
        one = self.outline
        kept = [one("parcelas", 5), one("hojas", None, label="A-1"), one("poligonos", None)]
        for reason, before, after, expected in (
                ("the same", [one("parcelas", 1)], [one("parcelas", 1)], []),
                ("deleted", [one("parcelas", 1)], [], [("borrado", "parcela 1 del polígono 1", 10, None)]),
                ("new", [], [one("subparcelas", 1, "a")], [("nuevo", "subparcela 1 a del polígono 1", None, 10)]),
                ("moved", [one("parcelas", 1)], [one("parcelas", 1, area=12, shape=2)],
                 [("otro contorno", "parcela 1 del polígono 1", 10, 12)]),
                ("another code", [one("parcelas", 1)], [one("parcelas", 1, code="9")],
                 [("otro rótulo", "parcela 1 del polígono 1", 10, 10)]),
                ("a second piece", [one("parcelas", 1)], [one("parcelas", 1), one("parcelas", 1, shape=2)],
                 [("otro contorno", "parcela 1 del polígono 1", 10, 20)]),
                ("pieces in another order", [one("parcelas", 1), one("parcelas", 1, shape=2)],
                 [one("parcelas", 1, shape=2), one("parcelas", 1)], []),
                ("a letter whose parcel is gone", [one("subparcelas", 12, "b")],
                 [one("subparcelas", None, label="12-b")],
                 [("borrado", "subparcela 12 b del polígono 1", 10, None),
                  ("nuevo", "subparcela «12-b» en ninguna parcela del polígono 1", None, 10)]),
                ("a word", [], [one("parcelas", None, label="x")],
                 [("nuevo", "parcela «x» del polígono 1", None, 10)]),
                ("without a label", [], [one("parcelas", None, label="")],
                 [("nuevo", "parcela sin rótulo del polígono 1", None, 10)])):
            with self.subTest(reason):
                rows = changes.compara(kept + before, kept + after, lambda a, b: a == b)
                self.assertEqual([tuple(row) for row in rows], expected)

    def test_all_changes_are_one_sentence(self):
        self.assertEqual(changes.resumen([]), "Ningún recinto cambia.")
        rows = [changes.Cambio(changes.NUEVO, "x", None, 1)] * 2 + [changes.Cambio(changes.BORRADO, "y", 1, None)]
        self.assertEqual(changes.resumen(rows), "Recintos: 2 nuevos, 1 borrados.")


unittest.main(argv=sys.argv[:1])
