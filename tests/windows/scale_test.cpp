#include "platform/windows/dialog_window.h"

#include <cmath>
#include <iterator>

#include <gtest/gtest.h>

#include "resources/resource_ids.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

namespace {

SIZE LadosDe(HWND ventana)
{
    RECT sitio = {};
    GetClientRect(ventana, &sitio);
    return {sitio.right, sitio.bottom};
}

/// What a window's controls are written with: its height in pixels as asked for, and what the
/// letters measure, which is what a dialog's places are counted in.
struct CMedidaLetra {
    double alto;
    double ancho;
    double pedido;
};

CMedidaLetra MedidaDeLetra(HWND control)
{
    const auto letra = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
    LOGFONTW pedida = {};
    GetObjectW(letra, sizeof pedida, &pedida);
    constexpr wchar_t kLetras[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr int kCuantas = std::size(kLetras) - 1;
    HDC lienzo = GetDC(control);
    const HGDIOBJ antes = SelectObject(lienzo, letra);
    SIZE medida = {};
    GetTextExtentPoint32W(lienzo, kLetras, kCuantas, &medida);
    SelectObject(lienzo, antes);
    ReleaseDC(control, lienzo);
    return {double(medida.cy), std::round(double(medida.cx) / kCuantas),
            std::abs(double(pedida.lfHeight))};
}

/// Controls that don't stand wholly in the window.
int Fuera(HWND ventana)
{
    const SIZE lados = LadosDe(ventana);
    int fuera = 0;
    for (HWND hijo = GetWindow(ventana, GW_CHILD); hijo != nullptr;
         hijo = GetWindow(hijo, GW_HWNDNEXT)) {
        RECT sitio = {};
        GetWindowRect(hijo, &sitio);
        MapWindowPoints(nullptr, ventana, reinterpret_cast<LPPOINT>(&sitio), 2);
        const bool seVe = (GetWindowLongW(hijo, GWL_STYLE) & WS_VISIBLE) != 0;
        fuera += seVe && (sitio.left < 0 || sitio.right > lados.cx || sitio.top < 0 ||
                          sitio.bottom > lados.cy)
                     ? 1
                     : 0;
    }
    return fuera;
}

} // namespace

TEST(Escala, OfAnotherScreenIsThatOfTheWholeWindow)
{
    const CAplicacionPrueba aplicacion;
    CVexaACampiva2Dlg dialogo;
    dialogo.Create(IDD_VEXA_A_CAMPIVA2, nullptr);
    const CVentanaDialogo ventana(dialogo, nullptr);
    HWND manija = ventana.Manija();
    HWND campo = ventana.ControlCon(IDC_MODULOS);
    const SIZE antes = LadosDe(manija);
    const SIZE campoAntes = LadosDe(campo);
    const CMedidaLetra letraAntes = MedidaDeLetra(campo);
    const struct {
        int puntosPorPulgada;
        double veces;
    } casos[] = {{144, 1.5}, {96, 1}};
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.puntosPorPulgada);
        RECT sitio = {10, 10, 800, 900};
        SendMessageW(manija, WM_DPICHANGED,
                     MAKEWPARAM(caso.puntosPorPulgada, caso.puntosPorPulgada),
                     reinterpret_cast<LPARAM>(&sitio));
        // The letters follow the screen, to a whole pixel; all else follows the letters, whichever
        // font a system has for its messages.
        const CMedidaLetra letra = MedidaDeLetra(campo);
        EXPECT_NEAR(letra.pedido, letraAntes.pedido * caso.veces, 1);
        const double aLoAncho = letra.ancho / letraAntes.ancho;
        const double aLoAlto = letra.alto / letraAntes.alto;
        constexpr double kRedondeo = 0.03; // a window has a whole number of pixels
        EXPECT_NEAR(double(LadosDe(manija).cx) / antes.cx, aLoAncho, kRedondeo * aLoAncho);
        EXPECT_NEAR(double(LadosDe(manija).cy) / antes.cy, aLoAlto, kRedondeo * aLoAlto);
        EXPECT_NEAR(double(LadosDe(campo).cx) / campoAntes.cx, aLoAncho, kRedondeo * aLoAncho);
        EXPECT_EQ(Fuera(manija), 0);
    }
}
