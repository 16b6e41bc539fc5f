#include "platform/files/set_healing.h"

#include <chrono>
#include <csignal>
#include <functional>
#include <iterator>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/files/cstdio_file.h"
#include "platform/files/output_diary.h"
#include "platform/files/side_names.h"
#include "platform/files/target_lock.h"
#include "platform/system.h"
#include "tests/platform/files/file_modes.h"
#include "tests/support/files.h"

namespace fs = std::filesystem;

namespace {

using Antes = CEntradaDiario::Antes;

constexpr uid_t kOtro = 65533;
constexpr const char* kDiario = "a.txt.~0123456789ab.~conjunto";

std::uint64_t Numero(const CCarpetaPrueba& carpeta, const char* nombre)
{
    struct stat datos = {};
    stat(carpeta.En(nombre).GetString(), &datos);
    return datos.st_ino;
}

long CuantosEn(const fs::path& carpeta)
{
    return std::distance(fs::directory_iterator(carpeta), fs::directory_iterator());
}

/// What a run leaves that was killed when it had placed one of its two tables and one that wasn't
/// there before, in the folder "m".
void PonAMedias(const CCarpetaPrueba& carpeta)
{
    carpeta.Pon("m/a.txt", "nueva");
    carpeta.Pon("m/a.txt.~0123456789ab.~antes", "vieja");
    carpeta.Pon("m/b.txt", "vieja");
    carpeta.Pon("m/b.txt.~0123456789ab.~nuevo", "nueva");
    carpeta.Pon("m/c.txt", "nueva");
    carpeta.Pon("m/a.txt.~candado", "");
    carpeta.Pon(std::string("m/") + kDiario,
                EscribeDiario({}, {{"a.txt", Antes::Fichero, Numero(carpeta, "m/a.txt")},
                                   {"b.txt", Antes::Fichero, 0},
                                   {"c.txt", Antes::Nada, Numero(carpeta, "m/c.txt")}}));
    fs::permissions(carpeta.Ruta() / "m" / kDiario, fs::perms{0644});
}

} // namespace

TEST(Conjuntos, HaveNamesOfTheirOwnThatTellTheirTarget)
{
    const std::string marca = lado::Marca();
    EXPECT_NE(marca, lado::Marca());
    const struct {
        fs::path nombre;
        const char* base;
        std::string marca;
        std::string_view sufijo;
    } casos[] = {{lado::De("m/a.txt", lado::kNuevo, marca), "a.txt", marca, lado::kNuevo},
                 {lado::De("a.txt", lado::kCandado), "a.txt", "", lado::kCandado},
                 {"a.txt.~antes", "a.txt", "", lado::kAntes},
                 {"a.~0123456789aX.~antes", "a.~0123456789aX", "", lado::kAntes},
                 {"a.txt", "a.txt", "", ""},
                 {".~nuevo", "", "", lado::kNuevo}};
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.nombre);
        const lado::CPartes partes = lado::Parte(caso.nombre);
        EXPECT_EQ(partes.base, caso.base);
        EXPECT_EQ(partes.marca, caso.marca);
        EXPECT_EQ(partes.sufijo, caso.sufijo);
    }
}

TEST(Conjuntos, AreHealedWhateverPathLeadsToThem)
{
    const struct {
        const char* desde;
        const char* nombre;
    } casos[] = {{".", "m/a.txt"},
                 {"m", "b.txt"},
                 {"m", "./c.txt"},
                 {".", "enlace/otra.txt"},
                 {".", "a_la_tabla"}};
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.nombre);
        const CCarpetaPrueba carpeta;
        PonAMedias(carpeta);
        fs::create_symlink("m", carpeta.Ruta() / "enlace");
        fs::create_symlink("m/a.txt", carpeta.Ruta() / "a_la_tabla");
        const CEnCarpeta ahi(carpeta.Ruta() / caso.desde);
        SanaConjuntos({caso.nombre});
        EXPECT_EQ(carpeta.Lee("m/a.txt"), "vieja");
        EXPECT_EQ(carpeta.Lee("m/b.txt"), "vieja");
        EXPECT_EQ(carpeta.Lee("m/c.txt"), "(no file)");
        EXPECT_EQ(CuantosEn(carpeta.Ruta() / "m"), 2) << "something else is left behind";
    }
}

TEST(Conjuntos, WhatWasWorkedOnSinceTheirEndStays)
{
    const auto enUnRato = fs::file_time_type::clock::now() + std::chrono::seconds(5);
    const auto haceDias = enUnRato - std::chrono::hours(100);
    const auto escribe = [](const CCarpetaPrueba& carpeta, const char* nombre, auto cuando) {
        carpeta.Pon(nombre, "de alguien");
        fs::last_write_time(carpeta.Ruta() / nombre, cuando);
    };
    const struct {
        const char* motivo;
        std::function<void(const CCarpetaPrueba&)> pasa;
        const char *a, *c; ///< what both targets that were placed hold in the end
        const char* anterior;
    } casos[] = {
        {"nobody", [](const CCarpetaPrueba&) {}, "vieja", "(no file)", "(no file)"},
        {"who took it away", [](const auto& k) { fs::remove(k.Ruta() / "m/a.txt"); }, "vieja",
         "(no file)", "(no file)"},
        {"who wrote it anew", [&](const auto& k) { escribe(k, "m/a.txt", enUnRato); }, "de alguien",
         "(no file)", "vieja"},
        {"who put an older file there",
         [&](const auto& k) {
             escribe(k, "m/x", haceDias);
             fs::rename(k.Ruta() / "m/x", k.Ruta() / "m/a.txt");
         },
         "de alguien", "(no file)", "vieja"},
        {"who wrote what wasn't there before",
         [&](const auto& k) { escribe(k, "m/c.txt", enUnRato); }, "vieja", "de alguien",
         "(no file)"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const CCarpetaPrueba carpeta;
        PonAMedias(carpeta);
        caso.pasa(carpeta);
        const std::vector<CTocado> tocados = SanaConjuntos({carpeta.En("m/b.txt")});
        EXPECT_EQ(carpeta.Lee("m/a.txt"), caso.a);
        EXPECT_EQ(carpeta.Lee("m/c.txt"), caso.c);
        EXPECT_EQ(carpeta.Lee("m/a.txt.anterior"), caso.anterior);
        EXPECT_FALSE(fs::exists(carpeta.Ruta() / "m" / kDiario));
        ASSERT_EQ(tocados.empty(), !fs::exists(carpeta.Ruta() / "m/a.txt.anterior"));
        for (const CTocado& tocado : tocados)
            EXPECT_EQ(tocado.anterior, carpeta.En("m/a.txt.anterior"));
    }
}

TEST(Conjuntos, AreHealedByTheDiaryOfAnOlderVersion)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("a.txt", "nueva");
    carpeta.Pon("a.txt.~antes", "vieja");
    carpeta.Pon("otra/b.txt", "nueva");
    carpeta.Pon("otra/b.txt.~antes", "vieja");
    const std::string diario = EscribeDiario(
        {carpeta.En("a.txt.~conjunto").GetString(), carpeta.En("otra/b.txt.~conjunto").GetString()},
        {{carpeta.En("a.txt").GetString(), Antes::Fichero, 1},
         {carpeta.En("otra/b.txt").GetString(), Antes::Fichero, 2}});
    for (const char* nombre : {"a.txt.~conjunto", "otra/b.txt.~conjunto"}) {
        carpeta.Pon(nombre, diario);
        fs::permissions(carpeta.Ruta() / nombre, fs::perms{0644});
    }
    SanaConjuntos({carpeta.En("a.txt")});
    EXPECT_EQ(carpeta.Lee("a.txt"), "vieja");
    EXPECT_EQ(carpeta.Lee("otra/b.txt"), "vieja");
    EXPECT_EQ(carpeta.Cuantos(), 2);
    EXPECT_EQ(CuantosEn(carpeta.Ruta() / "otra"), 1);
}

TEST(Conjuntos, WhatWasOverwrittenInItsPlaceStaysTheSameFile)
{
    const struct {
        const char* motivo;
        uid_t dueño; ///< of the diary
        bool segundoNombre, esEnlace, devuelto;
    } casos[] = {
        {"by one's own diary", geteuid(), false, false, true},
        {"a file with a second name", geteuid(), true, false, true},
        {"the same by somebody else's diary", kOtro, true, false, false},
        {"from a link, which may lead to what nobody is to see", geteuid(), false, true, false},
    };
    for (const auto& caso : casos) {
        if (geteuid() != 0 && caso.dueño != geteuid())
            continue; // only an administrator can put it there
        SCOPED_TRACE(caso.motivo);
        const CCarpetaPrueba carpeta;
        carpeta.Pon("a.txt", "nueva");
        if (caso.segundoNombre)
            fs::create_hard_link(carpeta.Ruta() / "a.txt", carpeta.Ruta() / "x");
        const fs::path antes = carpeta.Ruta() / "a.txt.~0123456789ab.~antes";
        carpeta.Pon("copia", "vieja");
        caso.esEnlace ? fs::create_symlink("copia", antes)
                      : fs::rename(carpeta.Ruta() / "copia", antes);
        carpeta.Pon(kDiario, EscribeDiario({}, {{"a.txt", Antes::FicheroEnSitio, 0}}));
        fs::permissions(carpeta.Ruta() / kDiario, fs::perms{0644});
        ASSERT_EQ(chown((carpeta.Ruta() / kDiario).c_str(), caso.dueño, caso.dueño), 0);
        const std::uint64_t numero = Numero(carpeta, "a.txt");
        if (caso.devuelto)
            EXPECT_NO_THROW(SanaConjuntos({carpeta.En("a.txt")}));
        else
            EXPECT_THROW(SanaConjuntos({carpeta.En("a.txt")}), CFileException);
        EXPECT_EQ(carpeta.Lee("a.txt"), caso.devuelto ? "vieja" : "nueva");
        EXPECT_EQ(Numero(carpeta, "a.txt"), numero);
        EXPECT_EQ(fs::exists(fs::symlink_status(antes)), !caso.devuelto);
    }
}

TEST(Conjuntos, AreHealedAsFarAsTheirDiaryCanBeTrusted)
{
    const struct {
        const char* motivo;
        unsigned carpeta; ///< rights
        unsigned diario;
        uid_t dueño; ///< of the diary
        bool segundoNombre, creido;
    } casos[] = {
        {"one's own", 0777, 0644, geteuid(), false, true},
        {"one's own, where users keep off one another's files", 01777, 0644, geteuid(), false,
         true},
        {"one's own that others can write", 0777, 0664, geteuid(), false, false},
        {"one's own that has a name elsewhere", 0777, 0644, geteuid(), true, false},
        {"somebody else's", 0777, 0644, kOtro, false, true},
        {"the same where users keep off one another's files", 01777, 0644, kOtro, false, false},
    };
    for (const auto& caso : casos) {
        if (geteuid() != 0 && caso.dueño != geteuid())
            continue; // only an administrator can put it there
        SCOPED_TRACE(caso.motivo);
        const CCarpetaPrueba carpeta;
        PonAMedias(carpeta);
        const fs::path diario = carpeta.Ruta() / "m" / kDiario;
        if (caso.segundoNombre)
            fs::create_hard_link(diario, carpeta.Ruta() / "x");
        fs::permissions(diario, fs::perms{caso.diario});
        ASSERT_EQ(chown(diario.c_str(), caso.dueño, caso.dueño), 0);
        fs::permissions(carpeta.Ruta() / "m", fs::perms{caso.carpeta});
        EXPECT_NO_THROW(SanaConjuntos({carpeta.En("m/otro_municipio.txt")}));
        EXPECT_EQ(carpeta.Lee("m/a.txt"), caso.creido ? "vieja" : "nueva");
        EXPECT_EQ(fs::exists(diario), !caso.creido) << "what wasn't believed stays";
        EXPECT_EQ(carpeta.Lee("m/a.txt.~0123456789ab.~antes"), caso.creido ? "(no file)" : "vieja");
        if (caso.creido)
            continue;
        try {
            SanaConjuntos({carpeta.En("m/otro.txt"), carpeta.En("m/b.txt")});
            ADD_FAILURE() << "a table that is half done is read";
        } catch (const CFileException& fallo) {
            EXPECT_EQ(fallo.m_strFileName, carpeta.En("m/b.txt"));
            EXPECT_NE(std::string(fallo.Mensaje()).find(kDiario), std::string::npos);
        }
    }
}

TEST(Conjuntos, ADiaryReachesNoFileOfAnotherFolderAndNoneWithoutItsNumber)
{
    const CCarpetaPrueba carpeta;
    for (const char* nombre : {"a.txt", "b.txt", "otra/a.txt", "otra/nota.txt"})
        carpeta.Pon(nombre, "privado");
    carpeta.Pon(
        kDiario,
        EscribeDiario(
            {carpeta.En("otra/nota.txt").GetString()},
            {{carpeta.En("otra/a.txt").GetString(), Antes::Nada, Numero(carpeta, "otra/a.txt")},
             {carpeta.En("otra/a.txt").GetString(), Antes::Nada, Numero(carpeta, "a.txt")},
             {"../otra/a.txt", Antes::Nada, Numero(carpeta, "otra/a.txt")},
             {"b.txt", Antes::Nada, Numero(carpeta, "a.txt")}}));
    fs::permissions(carpeta.Ruta() / kDiario, fs::perms{0644});
    SanaConjuntos({carpeta.En("a.txt")});
    for (const char* nombre : {"a.txt", "b.txt", "otra/a.txt", "otra/nota.txt"})
        EXPECT_EQ(carpeta.Lee(nombre), "privado") << nombre;
}

TEST(Conjuntos, ADiaryThatIsNoneCostsNothingAndStopsNobody)
{
    const std::string entero = EscribeDiario({}, {{"a.txt", Antes::Nada, 1}});
    const struct {
        const char* motivo;
        std::string bytes;
    } casos[] = {{"empty", ""},
                 {"cut short", entero.substr(0, entero.size() - 1)},
                 {"zeros", std::string(kDiarioMasLargo, '\0')},
                 {"longer than any", std::string(kDiarioMasLargo + 1, 'x')}};
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_TRUE(LeeDiario(caso.bytes).entradas.empty());
        const CCarpetaPrueba carpeta;
        carpeta.Pon("a.txt", "a");
        carpeta.Pon(kDiario, caso.bytes);
        EXPECT_NO_THROW(SanaConjuntos({carpeta.En("a.txt")}));
        EXPECT_EQ(carpeta.Lee("a.txt"), "a");
        const bool noEsNinguno = caso.bytes.size() > kDiarioMasLargo;
        EXPECT_EQ(fs::exists(carpeta.Ruta() / kDiario), noEsNinguno);
    }
}

TEST(Conjuntos, ALiveOneIsWaitedForWhereItChangesAFileOfTheRun)
{
    const CCarpetaPrueba carpeta;
    PonAMedias(carpeta);
    CCandado vivo;
    sistema::Error error;
    ASSERT_EQ(vivo.Toma((carpeta.Ruta() / "m/a.txt.~candado"), error), sistema::Bloqueo::Mio);
    EXPECT_NO_THROW(SanaConjuntos({carpeta.En("m/otro_municipio.txt")}));
    EXPECT_EQ(carpeta.Lee("m/a.txt"), "nueva");
    EXPECT_EQ(carpeta.Lee("m/a.txt.~0123456789ab.~antes"), "vieja");
    const auto acaba = [&] { // the process is to end while it waits
        sistema::VigilaSenales(false);
        std::raise(SIGTERM);
        try {
            SanaConjuntos({carpeta.En("m/b.txt")});
        } catch (const CInterrumpido&) {
            _exit(3);
        }
        _exit(0);
    };
    EXPECT_EXIT(acaba(), testing::ExitedWithCode(3), "");
    const pid_t hijo = fork();
    if (hijo == 0) { // it comes to its end in a moment
        usleep(100'000);
        fs::remove(carpeta.Ruta() / "m" / kDiario);
        _exit(0);
    }
    SanaConjuntos({carpeta.En("m/b.txt")});
    EXPECT_EQ(carpeta.Lee("m/a.txt"), "nueva") << "what is alive is undone";
    EXPECT_FALSE(fs::exists(carpeta.Ruta() / "m" / kDiario));
}

TEST(Conjuntos, LeavesAloneWhatIsAliveAndClearsWhatIsNot)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("a.txt", "antes");
    carpeta.Pon("muerto.txt.~nuevo", "a medias");
    carpeta.Pon("muerto.txt.~antes", "antes"); // by a system that gives no second names
    CFile vivo;
    ASSERT_TRUE(vivo.Open(carpeta.En("a.txt"), kEscribe));
    SanaConjuntos({carpeta.En("b.txt")});
    EXPECT_EQ(carpeta.Lee("muerto.txt"), "antes");
    EXPECT_EQ(carpeta.Cuantos(), 4) << "that one, the file, its lock and the one in the making";
    vivo.Write("ahora", 5);
    vivo.Close();
    EXPECT_EQ(carpeta.Lee("a.txt"), "ahora");
    EXPECT_EQ(carpeta.Cuantos(), 2);
}

TEST(Conjuntos, LeavesWhatATargetHeldUnderANameThatWasCut)
{
    const CCarpetaPrueba carpeta;
    const std::string cortado = std::string(200, 'a') + "12345.~antes";
    carpeta.Pon(cortado.c_str(), "antes");
    carpeta.Pon((std::string(200, 'b') + "67890.~nuevo").c_str(), "a medias");
    SanaConjuntos({carpeta.En("b.txt")});
    EXPECT_EQ(carpeta.Lee(cortado.c_str()), "antes");
    EXPECT_EQ(carpeta.Cuantos(), 1);
}
