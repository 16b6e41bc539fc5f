#include <string>

#include <gtest/gtest.h>

#include <shlobj.h>

#include "platform/files/cstdio_file.h"
#include "platform/files/output_set.h"
#include "platform/files/set_healing.h"
#include "platform/files/windows_handles.h"
#include "platform/system.h"
#include "tests/support/files.h"

namespace fs = std::filesystem;

namespace {

constexpr UINT kEscribe = CFile::modeCreate | CFile::modeWrite;

/// Has the file open as another program would.
sistema::Manija Ocupa(const fs::path& ruta, DWORD comparte)
{
    sistema::Manija manija =
        sistema::AbreManija(ruta, {.acceso = GENERIC_READ, .comparte = comparte});
    EXPECT_NE(manija, nullptr);
    return manija;
}

void EscribeEntero(CFile& fichero, std::string_view bytes)
{
    fichero.Write(bytes.data(), static_cast<UINT>(bytes.size()));
}

} // namespace

TEST(FicherosWindows, WhatAnotherProgramHasOpenIsToldAndStays)
{
    const struct {
        const char* motivo;
        DWORD comparte;
    } casos[] = {
        {"a spreadsheet, which lets others read", FILE_SHARE_READ},
        {"one that lets nobody in", 0},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const CCarpetaPrueba carpeta;
        const CString tabla = carpeta.Pon("tabla.txt", "antes");
        {
            const sistema::Manija ocupada = Ocupa(carpeta.Ruta() / "tabla.txt", caso.comparte);
            sistema::Error motivo;
            try {
                CFile fichero;
                CFileException alAbrir(tabla, {});
                if (!fichero.Open(tabla, kEscribe, &alAbrir))
                    throw CFileException(alAbrir);
                EscribeEntero(fichero, "ahora");
                fichero.Close();
                ADD_FAILURE() << "it was replaced";
            } catch (const CFileException& excepcion) {
                motivo = excepcion.m_causa;
            }
            EXPECT_EQ(motivo, sistema::Error(ERROR_SHARING_VIOLATION, std::system_category()))
                << motivo.message();
            EXPECT_TRUE(CFileException::EsCorriente(motivo)) << "a run goes on with its others";
        }
        EXPECT_EQ(carpeta.Lee("tabla.txt"), "antes");
        EXPECT_EQ(carpeta.Cuantos(), 1) << "nothing is left beside it";
    }
}

TEST(FicherosWindows, WhatAnotherProgramLetsOthersWriteGetsTheNewContent)
{
    const CCarpetaPrueba carpeta;
    const CString tabla = carpeta.Pon("tabla.txt", "antes, y más largo");
    const sistema::Manija abierta =
        Ocupa(carpeta.Ruta() / "tabla.txt", FILE_SHARE_READ | FILE_SHARE_WRITE);
    CFile fichero;
    ASSERT_TRUE(fichero.Open(tabla, kEscribe));
    EscribeEntero(fichero, "ahora");
    fichero.Close();
    EXPECT_EQ(carpeta.Lee("tabla.txt"), "ahora");
    EXPECT_EQ(carpeta.Cuantos(), 1);
}

TEST(FicherosWindows, OneOutputThatIsOpenElsewhereKeepsAllOthersAsTheyWere)
{
    const CCarpetaPrueba carpeta;
    for (const char* nombre : {"a.txt", "b.txt", "c.txt"})
        carpeta.Pon(nombre, "antes");
    {
        CConjuntoSalidas salidas;
        sistema::Error error;
        for (const char* nombre : {"a.txt", "b.txt", "c.txt"}) {
            CReemplazo* salida = salidas.Abre(carpeta.En(nombre), error);
            ASSERT_NE(salida, nullptr) << error.message();
            salida->Escribe("ahora", error);
        }
        const sistema::Manija ocupada = Ocupa(carpeta.Ruta() / "b.txt", FILE_SHARE_READ);
        EXPECT_THROW(salidas.Confirma(), CFileException);
    }
    for (const char* nombre : {"a.txt", "b.txt", "c.txt"})
        EXPECT_EQ(carpeta.Lee(nombre), "antes") << nombre;
    // The second name of what was open couldn't go before; the next run takes it away.
    SanaConjuntos({carpeta.En("b.txt")});
    EXPECT_EQ(carpeta.Lee("b.txt"), "antes");
    EXPECT_EQ(carpeta.Cuantos(), 3);
}

TEST(FicherosWindows, TakesPathsOfAnyLengthAndLetter)
{
    const struct {
        const char* motivo;
        std::string carpeta;
        const char* nombre;
    } casos[] = {
        {"blanks", "Mis documentos", "mi tabla.txt"},
        {"letters of the code page", "Peñaranda", "municipio nº 1.txt"},
        {"letters of no code page", "市町村", "表.txt"},
        {"more than 260 characters", std::string(150, 'a') + "\\" + std::string(150, 'b'), "c.txt"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const CCarpetaPrueba carpeta;
        const fs::path lugar = carpeta.Ruta() / sistema::Ruta(caso.carpeta);
        fs::create_directories(L"\\\\?\\" + lugar.native());
        const CString nombre = sistema::Nombre(lugar / sistema::Ruta(caso.nombre));
        for (const char* texto : {"uno\n", "dos\n"}) { // made, then replaced
            CStdioFile fichero;
            ASSERT_TRUE(fichero.Open(nombre, kEscribe));
            fichero.WriteString(texto);
            fichero.Close();
        }
        CStdioFile fichero;
        ASSERT_TRUE(fichero.Open(nombre, CFile::modeRead));
        CString linea;
        EXPECT_TRUE(fichero.ReadString(linea));
        EXPECT_EQ(linea, CString("dos"));
        fichero.Close();
        sistema::Error error;
        EXPECT_EQ(sistema::Lista(lugar, error).size(), 1U) << "nothing is left beside it";
        fs::remove_all(L"\\\\?\\" + (carpeta.Ruta() / *fs::path(caso.carpeta).begin()).native(),
                       error);
    }
}

TEST(FicherosWindows, TwoProgramsNeverWriteOneOutput)
{
    const CCarpetaPrueba carpeta;
    const CString nombre = carpeta.Pon("a.txt", "antes");
    CFile uno, otro;
    ASSERT_TRUE(uno.Open(nombre, kEscribe));
    for (const char* suyo : {"a.txt", "A.TXT", "a.txt.", "a.txt ", "a.txt. ."})
        EXPECT_THROW(otro.Open(carpeta.En(suyo), kEscribe), CFileException) << suyo;
    EscribeEntero(uno, "ahora");
    uno.Close();
    ASSERT_TRUE(otro.Open(nombre, kEscribe));
    EscribeEntero(otro, "luego");
    otro.Close();
    EXPECT_EQ(carpeta.Lee("a.txt"), "luego");
}

TEST(FicherosWindows, TwoNamesThatWouldBeOneFileAreKnown)
{
    const CCarpetaPrueba carpeta;
    const struct {
        const char* uno;
        const char* otro;
        bool elMismo;
    } casos[] = {{"Mo.txt", "MO.TXT", true},   {"Mo.txt", "Mo.txt.", true},
                 {"Mo.txt", "Mo.txt ", true},  {"Año.txt", "AÑO.TXT", true},
                 {"Mo.txt", "Mo2.txt", false}, {"Mo.txt", "Mo.tx", false}};
    for (const auto& caso : casos)
        EXPECT_EQ(CFile::SeriaElMismo(carpeta.En(caso.uno), carpeta.En(caso.otro)), caso.elMismo)
            << caso.uno << ", " << caso.otro;
}

TEST(FicherosWindows, NothingGoesToADeviceByTheNameOfAFile)
{
    const CCarpetaPrueba carpeta;
    for (const char* nombre :
         {"aux.txt", "CON.TXT", "nul.tabla.txt", "com1.txt", "Lpt9.txt", "prn .txt"}) {
        CFile fichero;
        CFileException fallo;
        EXPECT_FALSE(fichero.Open(carpeta.En(nombre), kEscribe, &fallo)) << nombre;
        EXPECT_TRUE(CFileException::EsCorriente(fallo.m_causa)) << fallo.m_causa.message();
        EXPECT_FALSE(fichero.Open(carpeta.En(nombre), CFile::modeRead)) << nombre;
    }
    for (const char* nombre : {"auxiliar.txt", "com.txt", "com10.txt", "mi aux.txt"}) {
        CFile fichero;
        EXPECT_TRUE(fichero.Open(carpeta.En(nombre), kEscribe)) << nombre;
    }
}

TEST(FicherosWindows, NamesComeBackAsTheyWent)
{
    for (const wchar_t* nombre :
         {L"a.txt", L"peña.txt", L"表.txt", L"\\\\servidor\\recurso\\a b.txt", L"\U0001F33E.txt"}) {
        const std::string texto = sistema::Nombre(nombre);
        EXPECT_EQ(sistema::Ruta(texto).native(), nombre) << texto;
    }
    const wchar_t media[] = {L'a', 0xD800, L'b', 0}; // which the system lets a name have
    EXPECT_NO_THROW(sistema::Nombre(media));
}

TEST(ProgramaWindows, WorksInItsUsersDocumentsRatherThanInAFolderOfPrograms)
{
    const fs::path antes = fs::current_path();
    wchar_t documentos[MAX_PATH] = {};
    wchar_t delSistema[MAX_PATH] = {};
    ASSERT_EQ(SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, 0, documentos), S_OK);
    GetSystemDirectoryW(delSistema, MAX_PATH);
    const CCarpetaPrueba suya;
    const struct {
        const char* motivo;
        fs::path desde;
        fs::path hasta;
    } casos[] = {
        {"a click on the program", sistema::FicheroPrograma().parent_path(), documentos},
        {"a link that names no folder", delSistema, documentos},
        {"a console in a folder of the user's", suya.Ruta(), suya.Ruta()},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        fs::current_path(caso.desde);
        sistema::SalDeLaCarpetaDelPrograma();
        EXPECT_TRUE(fs::equivalent(fs::current_path(), caso.hasta)) << fs::current_path();
    }
    fs::current_path(antes);
}

TEST(ProgramaWindows, LooksForAnotherBesideItselfAndInThePathAndNotWhereSomebodyWorks)
{
    const std::wstring pathDeAntes = _wgetenv(L"PATH");
    const CCarpetaPrueba trabajo, programas;
    for (const char* nombre : {"mio.exe", "bin\\mio.exe"})
        trabajo.Pon(nombre, "de otro");
    programas.Pon("mio.exe", "mío");
    const fs::path suyo = programas.Ruta() / "mio.exe";
    const std::wstring carpeta = programas.Ruta().native();
    const struct {
        const char* motivo;
        std::wstring path;
        fs::path cual;
    } casos[] = {
        {"none names it", L"C:\\no hay", {}},
        {"parts without a root", L";.;bin;.\\bin;\\bin;C:bin;", {}},
        {"behind such", L".;C:\\no hay;" + carpeta, suyo},
        {"in quotes", L"bin;\"" + carpeta + L"\";", suyo},
    };
    const CEnCarpeta aqui(trabajo.Ruta());
    for (const auto& caso : casos) {
        _wputenv_s(L"PATH", caso.path.c_str());
        EXPECT_EQ(sistema::BuscaPrograma("mio"), caso.cual) << caso.motivo;
    }
    EXPECT_EQ(sistema::BuscaPrograma("platform_test"), sistema::FicheroPrograma());
    _wputenv_s(L"PATH", pathDeAntes.c_str());
}

TEST(ProgramaWindows, KeepsTheMachineAwakeDuringARunOnly)
{
    const auto despierta = [] { // what was asked for before comes back, and is asked for again
        const EXECUTION_STATE antes = SetThreadExecutionState(ES_CONTINUOUS);
        SetThreadExecutionState(antes | ES_CONTINUOUS);
        return (antes & ES_SYSTEM_REQUIRED) != 0;
    };
    SetThreadExecutionState(ES_CONTINUOUS); // Wine begins with all that can be asked for
    EXPECT_FALSE(despierta());
    sistema::VigilaSenales(false);
    EXPECT_TRUE(despierta());
    sistema::OlvidaSenales();
    EXPECT_FALSE(despierta());
}
