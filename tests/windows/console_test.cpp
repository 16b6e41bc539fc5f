#include <algorithm>
#include <cstdio>
#include <iterator>
#include <span>
#include <string>

#include <gtest/gtest.h>

#include "platform/files/system_files.h"
#include "platform/system.h"
#include "tests/windows/driven_program.h"

namespace {

/// A console of the test's own, as long as the object lives.
class CConsola {
public:
    CConsola()
    {
        FreeConsole();
        EXPECT_NE(AllocConsole(), 0);
        m_pantalla = Abre(L"CONOUT$");
        m_teclas = Abre(L"CONIN$");
        EXPECT_NE(SetConsoleScreenBufferSize(m_pantalla.get(), {kAncho, kAlto}), 0);
    }
    CConsola(const CConsola&) = delete;
    CConsola& operator=(const CConsola&) = delete;
    ~CConsola() { FreeConsole(); }

    /// What stands on it, line by line, without the blanks at their ends; in UTF-8.
    std::string Texto() const
    {
        std::string todo;
        for (SHORT y = 0; y < kAlto; ++y) {
            std::wstring linea(kAncho, L' ');
            DWORD leidos = 0;
            ReadConsoleOutputCharacterW(m_pantalla.get(), linea.data(), kAncho, {0, y}, &leidos);
            linea.resize(linea.find_last_not_of(L' ') + 1);
            todo += sistema::Nombre(linea) + '\n';
        }
        return todo;
    }

    /// Starts a program that has this console.
    Manija Arranca(const std::string& programa, const std::string& argumentos) const
    {
        STARTUPINFOW inicio = {};
        inicio.cb = sizeof inicio;
        inicio.dwFlags = STARTF_USESTDHANDLES;
        inicio.hStdInput = m_teclas.get();
        inicio.hStdOutput = m_pantalla.get();
        inicio.hStdError = m_pantalla.get();
        std::wstring linea = sistema::Ruta('"' + programa + "\" " + argumentos).native();
        PROCESS_INFORMATION proceso = {};
        EXPECT_NE(CreateProcessW(nullptr, linea.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                 &inicio, &proceso),
                  0);
        CloseHandle(proceso.hThread);
        return Manija(proceso.hProcess);
    }

private:
    static constexpr SHORT kAncho = 120;
    static constexpr SHORT kAlto = 300;

    static Manija Abre(const wchar_t* nombre)
    {
        SECURITY_ATTRIBUTES seHereda = {sizeof seHereda, nullptr, TRUE};
        return Manija(CreateFileW(nombre, GENERIC_READ | GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, &seHereda, OPEN_EXISTING, 0,
                                  nullptr));
    }

    Manija m_pantalla;
    Manija m_teclas;
};

std::string Impreso(const std::string& programa, const std::string& argumentos)
{
    const CConsola consola;
    const Manija proceso = consola.Arranca(programa, argumentos);
    EXPECT_EQ(WaitForSingleObject(proceso.get(), kPaciencia), WAIT_OBJECT_0);
    return consola.Texto();
}

} // namespace

TEST(Consola, ShowsWholeLettersOfWhateverThePrintingProgram)
{
    const struct {
        const char* programa;
        const char* argumentos;
        const char* linea;
    } casos[] = {
        {TERMINAL_PROGRAM, "--help", "0: lleva un municipio del fichero de Catastro ENTRADA a las"},
        {TERMINAL_PROGRAM, "--help",
         "texto (campiva), con mandatos que lee de la entrada: ID pulsa"},
        {TERMINAL_PROGRAM, "--opción", "--opción no es ninguna opción, o no está sola."},
        {WINDOWS_PROGRAM, "--help", "enseña el diálogo"},
        {DRAWING_PROGRAM, "peña.BIN", "show_drawing: no se puede leer peña.BIN o su dibujo"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.programa);
        EXPECT_NE(Impreso(caso.programa, caso.argumentos).find(caso.linea), std::string::npos)
            << Impreso(caso.programa, caso.argumentos);
    }
}

TEST(Consola, TakesALongTextInPiecesOfWholeLetters)
{
    const CConsola consola;
    std::FILE* salida = std::fopen("CONOUT$", "w+");
    ASSERT_NE(salida, nullptr);
    std::string texto;
    for (int i = 0; i < 200; ++i) // longer than the console takes at a time
        texto += std::string(80, '.') + " ñ█\n";
    sistema::Imprime(salida, texto + "fin\n");
    std::fclose(salida);
    const std::string hay = consola.Texto();
    std::size_t lineas = 0;
    for (std::size_t i = hay.find(" ñ█\n"); i != std::string::npos; i = hay.find(" ñ█\n", i + 1))
        ++lineas;
    EXPECT_EQ(lineas, 200U) << hay;
}

TEST(Consola, OfWhoeverStartedItIsNotThatOfAProgramInWindows)
{
    const CConsola consola;
    const Manija proceso = consola.Arranca(WINDOWS_PROGRAM, "");
    HWND ventana = EsperaVentana(proceso.get(), L"Campiva");
    ASSERT_NE(ventana, nullptr);
    DWORD suyos[8] = {};
    const DWORD cuantos = GetConsoleProcessList(suyos, std::size(suyos));
    ASSERT_GT(cuantos, 0U);
    const std::span lista(suyos, std::min<std::size_t>(cuantos, std::size(suyos)));
    EXPECT_EQ(std::count(lista.begin(), lista.end(), GetProcessId(proceso.get())), 0)
        << "it would end when that console is closed";
    PostMessageW(ventana, WM_CLOSE, 0, 0);
    EXPECT_EQ(WaitForSingleObject(proceso.get(), kPaciencia), WAIT_OBJECT_0);
}
