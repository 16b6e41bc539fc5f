#include "platform/common_window.h"

#include <deque>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/support/scripted_front_end.h"

namespace {

constexpr CPlantillaControl kControlesVentana[] = {
    {ClaseControl::Progreso, 40, "", 0, 0, 1, 1},
    {ClaseControl::Edicion, 10, "", 0, 0, 1, 1},
    {ClaseControl::Boton, IDCANCEL, "&Detener", 0, 0, 1, 1},
};
constexpr CPlantillaDialogo kPlantillasVentana[] = {{7, "Prueba", 10, 10, kControlesVentana}};

/// A window whose user's events are given beforehand.
class CVentanaPrueba : public CVentanaComun {
public:
    using CVentanaComun::CVentanaComun;
    using CVentanaComun::Despacha;

    bool SeVe() const override { return seVe; }

    std::deque<std::function<void()>> sucesos;
    bool seVe = false;
    bool dejado = false; ///< the window told the library to leave the loop
    bool cruzo = false;  ///< something was thrown through the code of the windows' library
    int barra = -1;
    std::string titulo;
    int vecesPie = 0;

private:
    void Aparece() override { seVe = true; }
    void Esconde() override { seVe = false; }
    void SirveAlUsuario() override
    {
        if (HayQueSalir())
            return;
        while (!dejado && TomaUno()) {
        }
    }
    void DejaDeServir() override { dejado = true; }
    bool TomaUno() override
    {
        if (sucesos.empty())
            return false;
        const auto suceso = sucesos.front();
        sucesos.pop_front();
        try {
            Despacha(suceso);
        } catch (...) {
            cruzo = true;
        }
        return true;
    }
    void PonControl(const CControl& /*control*/) override {}
    void PonBarra(int hecho) override { barra = hecho; }
    void PonTitulo(const std::string& utf8) override { titulo = utf8; }
    void PonPie() override { ++vecesPie; }
};

class CDialogoVisto : public CDialog {
public:
    CDialogoVisto() : CDialog(7) { Create(7, nullptr); }
};

class VentanaComun : public testing::Test {
protected:
    VentanaComun() { aplicacion.Arranca(guion, {.dialogos = kPlantillasVentana}, {}, {}); }

    CGuion guion;
    CWinApp aplicacion;
    std::vector<std::string> pasos;
};

} // namespace

TEST_F(VentanaComun, WhatAHandlerThrowsIsThrownWhereItsLoopWasAskedFor)
{
    CDialogoVisto dialogo;
    CVentanaPrueba ventana(dialogo);
    ventana.sucesos = {
        [&] { // a run, in the middle of which the user sets another handler to work
            try {
                ventana.AtiendeUno();
                pasos.emplace_back("nothing was thrown");
            } catch (const std::runtime_error& fallo) {
                pasos.emplace_back(std::string("the run gets: ") + fallo.what());
                throw std::runtime_error("from the run");
            }
        },
        [] { throw std::runtime_error("from inside"); },
        [&] { pasos.emplace_back("served after a fault"); },
    };
    try {
        ventana.Muestra();
        pasos.emplace_back("nothing was thrown");
    } catch (const std::runtime_error& fallo) {
        pasos.emplace_back(std::string("the caller gets: ") + fallo.what());
        EXPECT_FALSE(ventana.SeVe());
    }
    EXPECT_EQ(pasos, (std::vector<std::string>{"the run gets: from inside",
                                               "the caller gets: from the run"}));
    EXPECT_FALSE(ventana.cruzo);
}

TEST_F(VentanaComun, APathIsTakenOutOfTheQuotesInWhichItWasCopied)
{
    constexpr struct {
        const char* motivo;
        const char* escrito;
        const char* campo;
        bool enComillas;
    } kCasos[] = {
        {"copied in a file manager", R"("C:\Mis datos\045.txt")", R"(C:\Mis datos\045.txt)", true},
        {"no quotes at all", "045.txt", "045.txt", false},
        {"one that was typed so far", R"("045.txt)", R"("045.txt)", false},
        {"one that stands alone", R"(")", R"(")", false},
        {"one pair goes", R"(""a"")", R"("a")", true},
        {"nothing between them", R"("")", "", true},
    };
    CDialogoVisto dialogo;
    CControl& campo = *dialogo.GetDlgItem(10);
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(TomaLoEscrito(campo, caso.escrito), caso.enComillas);
        EXPECT_EQ(campo.GetWindowText(), CString(caso.campo));
    }
}

TEST_F(VentanaComun, GoesOnWhereTheRunCaughtWhatAHandlerThrew)
{
    CDialogoVisto dialogo;
    CVentanaPrueba ventana(dialogo);
    ventana.sucesos = {
        [&] { EXPECT_THROW(ventana.AtiendeUno(), std::runtime_error); },
        [] { throw std::runtime_error("from inside"); },
        [&] {
            pasos.emplace_back("the next one is served");
            dialogo.EndDialog(IDOK);
        },
        [&] { pasos.emplace_back("served after its end"); },
    };
    EXPECT_NO_THROW(ventana.Muestra());
    EXPECT_EQ(pasos, std::vector<std::string>{"the next one is served"});
}

TEST_F(VentanaComun, AWindowClosedDuringARunIsGoneAndTheRunEndsBehindIt)
{
    CDialogoVisto dialogo;
    CVentanaPrueba ventana(dialogo);
    ventana.sucesos = {
        [&] {
            ventana.AtiendeUno();
            EXPECT_FALSE(ventana.SeVe());
            ventana.AtiendeUno();
            EXPECT_FALSE(ventana.dejado) << "its handler is still at work";
            pasos.emplace_back("end of the run");
        },
        [&] { dialogo.EndDialog(IDCANCEL); },
        [&] { pasos.emplace_back("an event behind the window"); },
        [&] { pasos.emplace_back("served after its end"); },
    };
    ventana.Muestra();
    EXPECT_EQ(pasos, (std::vector<std::string>{"an event behind the window", "end of the run"}));
}

TEST_F(VentanaComun, ShowsARunAndStandsStillWhileItWaitsForTheUser)
{
    CDialogoVisto dialogo;
    CVentanaPrueba ventana(dialogo);
    CControl& barra = *dialogo.GetDlgItem(40);
    const auto pon = [&](WPARAM hecho) {
        barra.SendMessage(PBM_SETPOS, hecho, 0);
        ventana.Refleja(barra);
    };
    const auto caja = [&] {
        EXPECT_EQ(ventana.titulo, "Prueba");
        return 5;
    };
    pon(30);
    EXPECT_EQ(ventana.barra, -1) << "it lags behind";
    EXPECT_EQ(ventana.Espera([&] { return 3; }), 3);
    EXPECT_EQ(ventana.titulo, "") << "no run is at work";
    ventana.AtiendeUno();
    EXPECT_EQ(ventana.barra, 30);
    EXPECT_EQ(ventana.titulo, "30 % - Prueba");
    pon(60);
    EXPECT_EQ(ventana.Espera(caja), 5);
    EXPECT_EQ(ventana.barra, 60);
    const int antes = ventana.vecesPie;
    ventana.FinDeProceso({});
    EXPECT_EQ(ventana.vecesPie, antes + 1);
    EXPECT_EQ(ventana.titulo, "Prueba");
    ventana.InicioDeProceso();
    EXPECT_EQ(ventana.vecesPie, antes + 2) << "what stood there was the last run's";
    pon(0);
    EXPECT_EQ(ventana.barra, 0) << "it goes back at once";
}
