#include <filesystem>

#include <gtest/gtest.h>

#include "tests/support/files.h"
#include "tests/windows/driven_program.h"

namespace fs = std::filesystem;

// What a run in windows has to do with the rest of the system.

namespace {

constexpr int kDeCatastroAVexa = 1009; // controls by their numbers in the templates
constexpr int kEntrada = 1000;

constexpr const wchar_t* kDialogo = L"Catastro campiva a Vexa";
constexpr const wchar_t* kResumen = L"Fin del proceso";

void VaAlDialogo(CProgramaConducido& programa)
{
    programa.Espera(L"Campiva");
    programa.Pulsa(kDeCatastroAVexa);
    programa.Pulsa(IDOK);
    programa.Espera(kDialogo);
}

/// An exchange file that takes a run many seconds.
void PonEntradaLarga(const fs::path& fichero)
{
    const CProgramaConducido generador(fs::path(GENERATOR).native() + L"\" --parcels 300000 \"" +
                                       fichero.native());
    ASSERT_EQ(generador.EsperaFin(), 0U);
}

/// Pixels of the control's text that don't find room in it.
long Sobra(HWND control)
{
    wchar_t texto[256] = {};
    const int largo = GetWindowTextW(control, texto, 256);
    RECT sitio = {};
    GetClientRect(control, &sitio);
    HDC lienzo = GetDC(control);
    SelectObject(lienzo, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    SIZE lados = {};
    GetTextExtentPoint32W(lienzo, texto, largo, &lados);
    ReleaseDC(control, lienzo);
    return lados.cx - sitio.right;
}

} // namespace

TEST(Proceso, AsksBeforeTheSessionEndsAndEndsWithTheFilesAsTheyWere)
{
    const CCarpetaPrueba carpeta;
    PonEntradaLarga(carpeta.Ruta() / "in.txt");
    carpeta.Pon("Parcelas.txt", "antes");
    CProgramaConducido programa(fs::path(WINDOWS_PROGRAM).native(), carpeta.Ruta().native());
    VaAlDialogo(programa);
    HWND ventana = programa.Espera(kDialogo);
    EXPECT_EQ(SendMessageW(ventana, WM_QUERYENDSESSION, 0, 0), 1) << "nothing is at work";
    programa.Escribe(kEntrada, L"in.txt");
    programa.Pulsa(IDOK);
    ASSERT_TRUE(Llega([&] { return SendMessageW(ventana, WM_QUERYENDSESSION, 0, 0) == 0; }));
    SendMessageW(ventana, WM_ENDSESSION, FALSE, 0);
    constexpr DWORD kUnRato = 1000;
    EXPECT_EQ(WaitForSingleObject(programa.Proceso(), kUnRato), WAIT_TIMEOUT)
        << "its user changed his mind";
    SendMessageW(ventana, WM_ENDSESSION, TRUE, 0);
    EXPECT_EQ(programa.EsperaFin(), 0xC000013AU);
    EXPECT_EQ(carpeta.Lee("Parcelas.txt"), "antes");
    EXPECT_EQ(carpeta.Cuantos(), 3) << "input, log and the table";
}

TEST(Proceso, IsToldBelowTheDialogInFullAndAReportOfItBlocksNobody)
{
    const CCarpetaPrueba carpeta;
    const Manija sigue(CreateEventW(nullptr, TRUE, FALSE, L"informe_de_prueba"));
    fs::copy_file(WINDOWS_PROGRAM, carpeta.Ruta() / "campiva-gui.exe");
    fs::copy_file(SLOW_REPORT, carpeta.Ruta() / "campiva-informe.exe");
    fs::create_directory(carpeta.Ruta() / "a");
    fs::copy_file(SAMPLE, carpeta.Ruta() / "a" / "in.txt");
    CProgramaConducido programa((carpeta.Ruta() / "campiva-gui.exe").native(),
                                (carpeta.Ruta() / "a").native());
    VaAlDialogo(programa);
    programa.Escribe(kEntrada, L"in.txt");
    programa.Pulsa(IDOK);
    programa.Espera(kResumen);
    PostMessageW(EsperaVentana(programa.Proceso(), kResumen), WM_COMMAND, IDOK, 0);
    HWND ventana = programa.Espera(kDialogo);
    ASSERT_TRUE(Llega([&] { return programa.Con(L"In&forme") != nullptr; }));
    HWND texto = programa.Con(L"Registro vacío: sin errores ni avisos");
    ASSERT_NE(texto, nullptr);
    EXPECT_LE(Sobra(texto), 0) << "the words are cut";

    programa.Pulsa(programa.Con(L"In&forme"));
    ASSERT_TRUE(Llega([&] { return programa.Con(L"Se está haciendo el informe") != nullptr; }));
    DWORD_PTR respuesta = 0;
    constexpr UINT kUnRato = 2000;
    EXPECT_NE(SendMessageTimeoutW(ventana, WM_NULL, 0, 0, SMTO_NORMAL, kUnRato, &respuesta), 0)
        << "the window waits for the report";
    EXPECT_FALSE(IsWindowEnabled(programa.Con(L"In&forme"))) << "one at a time";
    SetEvent(sigue.get());
    EXPECT_TRUE(Llega([&] { return programa.Con(L"Registro vacío") != nullptr; }));
    EXPECT_TRUE(IsWindowEnabled(programa.Con(L"In&forme")));
    EXPECT_TRUE(fs::exists(carpeta.Ruta() / "a" / "in.html"));
}
