#include "platform/files/safe_replacement.h"

#include <csignal>
#include <functional>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/files/cstdio_file.h"
#include "platform/files/output_set.h"
#include "tests/platform/files/file_modes.h"
#include "tests/support/files.h"

namespace fs = std::filesystem;

namespace {

bool Reemplaza(const CString& nombre, std::string_view bytes)
{
    CFile fichero;
    if (!fichero.Open(nombre, kEscribe))
        return false;
    fichero.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    fichero.Close();
    return true;
}

unsigned Permisos(const fs::path& ruta)
{
    return static_cast<unsigned>(fs::status(ruta).permissions());
}

/// While it lives no file can grow past a size, as on a disk that is full.
class CDiscoLleno {
public:
    explicit CDiscoLleno(rlim_t bytes) : m_señal(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_antes);
        const rlimit ahora = {bytes, m_antes.rlim_max};
        setrlimit(RLIMIT_FSIZE, &ahora);
    }
    CDiscoLleno(const CDiscoLleno&) = delete;
    CDiscoLleno& operator=(const CDiscoLleno&) = delete;
    ~CDiscoLleno()
    {
        setrlimit(RLIMIT_FSIZE, &m_antes);
        std::signal(SIGXFSZ, m_señal);
    }

private:
    rlimit m_antes = {};
    void (*m_señal)(int);
};

} // namespace

TEST(Reemplazo, FollowsALinkToItsTarget)
{
    const CCarpetaPrueba carpeta;
    const fs::path& raiz = carpeta.Ruta();
    fs::create_directories(raiz / "lejos");
    fs::create_symlink("../a.txt", raiz / "lejos" / "relativo");
    fs::create_symlink(raiz / "a.txt", raiz / "absoluto");
    fs::create_symlink("lejos/relativo", raiz / "cadena");
    fs::create_symlink("lejos/nuevo.txt", raiz / "colgante");
    const struct {
        const char* enlace;
        const char* destino;
    } casos[] = {{"lejos/relativo", "a.txt"},
                 {"absoluto", "a.txt"},
                 {"cadena", "a.txt"},
                 {"colgante", "lejos/nuevo.txt"}}; // its target isn't there yet
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.enlace);
        if (caso.destino == std::string_view("a.txt"))
            carpeta.Pon(caso.destino, "antes");
        EXPECT_TRUE(Reemplaza(carpeta.En(caso.enlace), caso.enlace));
        EXPECT_EQ(carpeta.Lee(caso.destino), caso.enlace);
        EXPECT_TRUE(fs::is_symlink(raiz / caso.enlace));
    }
    EXPECT_EQ(carpeta.Cuantos(), 5);
}

TEST(Reemplazo, FollowsNobodyElsesLinkWhereUsersKeepOffOneAnothersFiles)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only an administrator can make another user's link";
    constexpr uid_t kOtro = 65533;
    const CCarpetaPrueba carpeta;
    const fs::path deTodos = carpeta.Ruta() / "de_todos";
    fs::create_directories(deTodos);
    const struct {
        const char* motivo;
        unsigned permisos; ///< of the folder
        uid_t dueño;       ///< of the link
        bool seguido;
    } casos[] = {
        {"one's own", 01777, 0, true},
        {"somebody else's", 01777, kOtro, false},
        {"the same where all may do all", 0777, kOtro, true},
        {"the same where a group puts them", 01775, kOtro, true},
        {"the same where nobody else can put one", 01755, kOtro, true},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        carpeta.Pon("privado.txt", "antes");
        fs::remove(deTodos / "a.txt");
        fs::create_symlink("../privado.txt", deTodos / "a.txt");
        ASSERT_EQ(lchown((deTodos / "a.txt").c_str(), caso.dueño, caso.dueño), 0);
        fs::permissions(deTodos, fs::perms{caso.permisos});
        EXPECT_EQ(Reemplaza(carpeta.En("de_todos/a.txt"), "ahora"), caso.seguido);
        EXPECT_EQ(carpeta.Lee("privado.txt"), caso.seguido ? "ahora" : "antes");
        carpeta.Pon("privado.txt", "antes");
        EXPECT_EQ(CFile().Open(carpeta.En("de_todos/a.txt"), kRegistro), caso.seguido) << "a log";
        EXPECT_EQ(carpeta.Lee("privado.txt"), caso.seguido ? "" : "antes");
        EXPECT_EQ(carpeta.Cuantos(), 2);
    }
}

TEST(Reemplazo, RefusesLinksThatLeadToNoFile)
{
    const CCarpetaPrueba carpeta;
    fs::create_directory(carpeta.Ruta() / "carpeta");
    fs::create_symlink("circulo2", carpeta.Ruta() / "circulo1");
    fs::create_symlink("circulo1", carpeta.Ruta() / "circulo2");
    fs::create_symlink("carpeta", carpeta.Ruta() / "a_carpeta");
    fs::create_symlink("falta/a.txt", carpeta.Ruta() / "a_falta");
    for (const char* nombre : {"circulo1", "a_carpeta", "a_falta"})
        EXPECT_FALSE(CFile().Open(carpeta.En(nombre), kEscribe)) << nombre;
    EXPECT_EQ(carpeta.Cuantos(), 5);
}

TEST(Reemplazo, KeepsThePermissionsOfItsTarget)
{
    const CCarpetaPrueba carpeta;
    const mode_t antes = umask(027);
    for (const unsigned permisos : {0600U, 0664U, 0755U, 0222U}) {
        carpeta.Pon("a.txt", "antes");
        fs::permissions(carpeta.Ruta() / "a.txt", fs::perms{permisos});
        EXPECT_TRUE(Reemplaza(carpeta.En("a.txt"), "ahora"));
        EXPECT_EQ(Permisos(carpeta.Ruta() / "a.txt"), permisos);
        fs::remove(carpeta.Ruta() / "a.txt");
    }
    EXPECT_TRUE(Reemplaza(carpeta.En("nuevo.txt"), "ahora"));
    EXPECT_EQ(Permisos(carpeta.Ruta() / "nuevo.txt"), 0640U); // those that any new file gets
    umask(antes);
}

TEST(Reemplazo, WritesWhatTheUserMayWriteAndNothingElse)
{
    constexpr uid_t kNadie = 65534; // an administrator may write anything
    constexpr uid_t kOtro = 65533;
    const CCarpetaPrueba carpeta;
    fs::permissions(carpeta.Ruta(), fs::perms{0777});
    const auto escribe = [&](const char* nombre) {
        if (geteuid() == 0 && setuid(kNadie) != 0)
            _exit(2);
        _exit(Reemplaza(carpeta.En(nombre), "ahora") ? 1 : 0);
    };
    const struct {
        const char* motivo;
        const char* nombre;
        unsigned carpeta, fichero; ///< their rights; a file with none isn't there
        uid_t dueño;
        bool escrito;
    } casos[] = {
        {"no right to the file", "lectura/a.txt", 0777, 0444, kOtro, false},
        {"a folder that takes no new file, an old one", "cerrada/a.txt", 0555, 0666, kOtro, true},
        {"the same, a new one", "cerrada/b.txt", 0555, 0, kOtro, false},
        {"where only owners take files away", "pegajosa/a.txt", 01777, 0646, kOtro, true},
        {"its own file there", "pegajosa/b.txt", 01777, 0600, kNadie, true},
        {"somebody else's, whose owner can't be kept by a new one", "d/a.txt", 0777, 0646, kOtro,
         true},
        {"a new one", "d/b.txt", 0777, 0, kNadie, true},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const fs::path ruta = carpeta.Ruta() / caso.nombre;
        fs::create_directories(ruta.parent_path());
        if (caso.fichero != 0) {
            carpeta.Pon(caso.nombre, "antes");
            fs::permissions(ruta, fs::perms{caso.fichero});
            if (geteuid() == 0) {
                ASSERT_EQ(chown(ruta.c_str(), caso.dueño, caso.dueño), 0);
            }
        }
        fs::permissions(ruta.parent_path(), fs::perms{caso.carpeta});
        EXPECT_EXIT(escribe(caso.nombre), testing::ExitedWithCode(caso.escrito ? 1 : 0), "");
        fs::permissions(ruta.parent_path(), fs::perms{0777});
        if (caso.fichero != 0) {
            struct stat datos = {};
            stat(ruta.c_str(), &datos);
            EXPECT_EQ(datos.st_mode & 07777U, caso.fichero);
            EXPECT_EQ(datos.st_uid, geteuid() == 0 ? caso.dueño : geteuid());
            EXPECT_EQ(carpeta.Lee(caso.nombre), caso.escrito ? "ahora" : "antes");
        }
        EXPECT_FALSE(fs::exists(ruta.string() + ".~nuevo"));
    }
}

TEST(Reemplazo, TwoProgramsNeverWriteOneOutput)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("a.txt", "antes");
    CFile uno;
    CFile otro;
    ASSERT_TRUE(uno.Open(carpeta.En("a.txt"), kEscribe));
    EXPECT_THROW(otro.Open(carpeta.En("a.txt"), kEscribe), CFileException);
    uno.Write("uno", 3);
    uno.Close();
    EXPECT_EQ(carpeta.Lee("a.txt"), "uno");
    ASSERT_TRUE(otro.Open(carpeta.En("a.txt"), kEscribe)); // it has let go
    CFile registro;
    CFile segundo;
    ASSERT_TRUE(registro.Open(carpeta.En("a.ERR"), kRegistro));
    registro.Write("E101", 4);
    registro.Flush();
    EXPECT_THROW(segundo.Open(carpeta.En("a.ERR"), kRegistro), CFileException);
    EXPECT_EQ(carpeta.Lee("a.ERR"), "E101");
}

TEST(Reemplazo, WhatAnotherProgramWroteMeanwhileStaysBesideItOnce)
{
    const struct {
        const char* motivo;
        bool habia;
        std::function<void(const CCarpetaPrueba&)> entretanto;
        const char* queda;
    } casos[] = {
        {"nothing", true, [](const auto&) {}, "(no file)"},
        {"nothing, and no target", false, [](const auto&) {}, "(no file)"},
        {"read", true, [](const auto& k) { (void)k.Lee("a.txt"); }, "(no file)"},
        {"written", true, [](const auto& k) { k.Pon("a.txt", "de otro"); }, "de otro"},
        {"written where nothing was", false, [](const auto& k) { k.Pon("a.txt", "de otro"); },
         "de otro"},
        {"replaced", true,
         [](const auto& k) {
             k.Pon("x", "de otro");
             fs::rename(k.Ruta() / "x", k.Ruta() / "a.txt");
         },
         "de otro"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const CCarpetaPrueba carpeta;
        for (int vez = 1; vez <= 2; ++vez) {
            fs::remove(carpeta.Ruta() / "a.txt");
            if (caso.habia)
                carpeta.Pon("a.txt", "antes");
            CConjuntoSalidas salidas;
            CFile fichero;
            ASSERT_TRUE(fichero.Open(carpeta.En("a.txt"), kEscribe, nullptr, &salidas));
            fichero.Write("nuestro", 7);
            fichero.Close();
            caso.entretanto(carpeta);
            salidas.Confirma();
            EXPECT_EQ(carpeta.Lee("a.txt"), "nuestro");
            EXPECT_EQ(carpeta.Lee("a.txt.anterior"), caso.queda);
            EXPECT_FALSE(fs::exists(carpeta.Ruta() / "a.txt.anterior.2"));
            ASSERT_EQ(salidas.Conservadas().size(),
                      fs::exists(carpeta.Ruta() / "a.txt.anterior") ? 1U : 0U);
            for (const CConservada& una : salidas.Conservadas()) {
                EXPECT_TRUE(una.escritoMientras);
                EXPECT_EQ(una.anterior, carpeta.En("a.txt.anterior"));
            }
        }
    }
}

TEST(Reemplazo, AFileOfSomebodysUnderTheLocksNameKeepsItsRightsAndItsPlace)
{
    const CCarpetaPrueba carpeta;
    for (const bool segundoNombre : {true, false}) {
        SCOPED_TRACE(segundoNombre);
        carpeta.Pon("a.txt", "antes");
        carpeta.Pon("privado.txt", segundoNombre ? "" : "privado");
        fs::permissions(carpeta.Ruta() / "privado.txt", fs::perms{0600});
        const fs::path candado = carpeta.Ruta() / "a.txt.~candado";
        segundoNombre ? fs::create_hard_link(carpeta.Ruta() / "privado.txt", candado)
                      : fs::rename(carpeta.Ruta() / "privado.txt", candado);
        EXPECT_TRUE(Reemplaza(carpeta.En("a.txt"), "ahora"));
        EXPECT_EQ(carpeta.Lee("a.txt"), "ahora");
        EXPECT_EQ(Permisos(candado), 0600U);
        fs::remove(candado);
    }
}

TEST(Reemplazo, ALogTellsWhereALineOfItIsMissing)
{
    const CCarpetaPrueba carpeta;
    const std::string larga(std::size_t{100} * 1024 - 10, 'x');
    CStdioFile registro;
    ASSERT_TRUE(registro.Open(carpeta.En("a.ERR"), kRegistro));
    {
        const CDiscoLleno lleno(std::size_t{100} * 1024);
        registro.WriteString(larga + "\n");
        registro.WriteString("E101: se pierde\n");
        registro.Flush();
    }
    registro.WriteString("E102: el final de una que empezó donde no cabía\nE103: entera\n");
    registro.Close();
    EXPECT_TRUE(registro.Fallo().m_causa);
    const std::vector<std::string> lineas = carpeta.Lineas("a.ERR");
    ASSERT_GE(lineas.size(), 3U);
    EXPECT_EQ(lineas.back(), "E103: entera");
    EXPECT_EQ(lineas[lineas.size() - 2], "*** Faltan mensajes: no se pudieron escribir ***");
}

TEST(Reemplazo, TakesTheLongestNameThatTheSystemHas)
{
    const CCarpetaPrueba carpeta;
    const std::string nombre(255, 'n');
    EXPECT_TRUE(Reemplaza(carpeta.En(nombre), "ahora"));
    EXPECT_EQ(carpeta.Lee(nombre), "ahora");
    EXPECT_EQ(carpeta.Cuantos(), 1);
}

TEST(Reemplazo, AFullDiskLeavesTheTargetAsItWas)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("a.txt", "antes");
    const std::string larga(std::size_t{200} * 1024, 'x');
    {
        const CDiscoLleno lleno(std::size_t{100} * 1024);
        CStdioFile fichero;
        ASSERT_TRUE(fichero.Open(carpeta.En("a.txt"), kEscribe));
        EXPECT_THROW(fichero.WriteString(larga), CFileException);
        EXPECT_EQ(carpeta.Cuantos(), 1) << "a temporary file stays";
        CStdioFile registro;
        ASSERT_TRUE(registro.Open(carpeta.En("a.ERR"), kRegistro));
        EXPECT_NO_THROW(registro.WriteString(larga));
        EXPECT_NO_THROW(registro.Close());
    }
    EXPECT_EQ(carpeta.Lee("a.txt"), "antes");
    EXPECT_EQ(carpeta.Lee("a.ERR").size(), 100U * 1024) << "the log keeps what fitted";
}

TEST(Reemplazo, WritesADeviceDirectly)
{
    const std::string corta = "a\n";
    const std::string larga(std::size_t{200} * 1024, 'x');
    for (const std::string& texto : {corta, larga}) {
        const auto escribe = [&](const char* nombre, UINT modo, bool vacia) {
            CStdioFile fichero;
            ASSERT_TRUE(fichero.Open(nombre, modo)) << nombre;
            fichero.WriteString(texto);
            if (vacia)
                fichero.Flush();
            fichero.Close();
        };
        EXPECT_NO_THROW(escribe("/dev/null", kEscribe, false));
        EXPECT_THROW(escribe("/dev/full", kEscribe, false), CFileException);
        EXPECT_THROW(escribe("/dev/full", kEscribe, true), CFileException);
        EXPECT_NO_THROW(escribe("/dev/full", kRegistro, true));
    }
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    const CCarpetaPrueba carpeta;
    fs::create_symlink("/dev/null", carpeta.Ruta() / "nada");
    EXPECT_TRUE(Reemplaza(carpeta.En("nada"), "ahora"));
    EXPECT_TRUE(fs::is_symlink(carpeta.Ruta() / "nada"));
    EXPECT_EQ(carpeta.Cuantos(), 1);
}
