#include "platform/windows/accessible_name.h"

#include <map>
#include <set>

#include <gtest/gtest.h>

#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "platform/windows/dialog_window.h"
#include "resources/resource_ids.h"
#include "shell/translation_choice_dialog.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"
#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

namespace {

std::map<HWND, std::wstring>& Puestos()
{
    static std::map<HWND, std::wstring> puestos;
    return puestos;
}

/// What a screen reader calls the window: the name that it was given, or that the system finds.
std::string NombreLeido(HWND ventana)
{
    if (const auto suyo = Puestos().find(ventana); suyo != Puestos().end())
        return sistema::Nombre(suyo->second);
    IAccessible* objeto = nullptr;
    if (AccessibleObjectFromWindow(ventana, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                   reinterpret_cast<void**>(&objeto)) != S_OK)
        return {};
    VARIANT elMismo = {};
    elMismo.vt = VT_I4;
    BSTR nombre = nullptr;
    objeto->get_accName(elMismo, &nombre);
    objeto->Release();
    const std::string utf8 = nombre != nullptr ? sistema::Nombre(nombre) : std::string();
    SysFreeString(nombre);
    return utf8;
}

/// What the user reaches or waits for, in the dialog's order: its kind and its name.
std::vector<std::string> NombresDe(const CVentanaDialogo& ventana)
{
    std::vector<std::string> nombres;
    for (HWND hijo = GetWindow(ventana.Manija(), GW_CHILD); hijo != nullptr;
         hijo = GetWindow(hijo, GW_HWNDNEXT)) {
        wchar_t clase[64] = {};
        GetClassNameW(hijo, clase, 64);
        const auto estilo = static_cast<DWORD>(GetWindowLongW(hijo, GWL_STYLE));
        const bool suyo = GetDlgCtrlID(hijo) > 0; // the line below has those of a run
        if (suyo && ((estilo & WS_TABSTOP) != 0 || clase == std::wstring(PROGRESS_CLASSW)))
            nombres.push_back(sistema::Nombre(clase) + ": " + NombreLeido(hijo));
    }
    return nombres;
}

template <class D>
std::vector<std::string> Nombres(UINT plantilla)
{
    const CAplicacionPrueba aplicacion;
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    Puestos().clear();
    D dialogo;
    dialogo.Create(plantilla, nullptr);
    const CVentanaDialogo ventana(dialogo, nullptr);
    return NombresDe(ventana);
}

} // namespace

// In the place of the program's own.
void PonNombreAccesible(HWND ventana, const std::wstring& nombre)
{
    Puestos()[ventana] = nombre;
}

TEST(NombresAccesibles, TellWhatEachControlIsForAndNoTwoAlike)
{
    const struct {
        const char* dialogo;
        std::vector<std::string> nombres;
        std::vector<std::string> algunos;
    } casos[] = {
        {"choice", Nombres<CTipoTraduccionDlg>(IDD_TIPO_TRADUCCION), {"Button: Salir"}},
        {"Catastro to Vexa",
         Nombres<CCampivaAVexaDlg>(IDD_CAMPIVA_A_VEXA),
         {"Edit: Archivo de entrada", "ComboBox: Archivo de entrada", "Edit: Módulos",
          "msctls_progress32: Avance", "Button: Aceptar"}},
        {"Vexa to Catastro",
         Nombres<CVexaACampiva2Dlg>(IDD_VEXA_A_CAMPIVA2),
         {"Button: Buscar... Módulos", "Button: Buscar... Cotitulares",
          "msctls_progress32: Avance"}},
        {"Vexa to Infograf",
         Nombres<CVexaAInfografDlg>(IDD_VEXA_A_INFOGRAF),
         {"msctls_progress32: Avance"}},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.dialogo);
        const std::set<std::string> distintos(caso.nombres.begin(), caso.nombres.end());
        EXPECT_EQ(distintos.size(), caso.nombres.size()) << testing::PrintToString(caso.nombres);
        for (const std::string& nombre : caso.nombres)
            EXPECT_FALSE(nombre.ends_with(": ")) << testing::PrintToString(caso.nombres);
        for (const std::string& nombre : caso.algunos)
            EXPECT_EQ(distintos.count(nombre), 1U)
                << nombre << " in " << testing::PrintToString(caso.nombres);
    }
}
