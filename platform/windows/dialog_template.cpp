#include "platform/windows/win32.h"

#include "platform/windows/dialog_template.h"

#include "platform/windows/text.h"

namespace {

using enum ClaseControl;

/// What a control is to the system: one of its windows' classes, by name, and a style.
struct CClaseSistema {
    const wchar_t* nombre;
    DWORD estilo;
    DWORD estiloMas = 0;
};

constexpr DWORD kConTab = WS_TABSTOP;
constexpr DWORD kPulsable = BS_NOTIFY; // it tells of the focus that it takes

CClaseSistema ClaseDe(const CPlantillaControl& control)
{
    constexpr const wchar_t* kBoton = L"BUTTON";
    constexpr const wchar_t* kTexto = L"STATIC";
    switch (control.clase) {
    case Boton:
        return {kBoton, BS_PUSHBUTTON | kPulsable | kConTab};
    case BotonPorDefecto:
        return {kBoton, BS_DEFPUSHBUTTON | kPulsable | kConTab};
    case Casilla: // its mark is the dialog's to set
        return {kBoton, BS_CHECKBOX | kPulsable | kConTab};
    case Radio: // the row is left by Tab and walked by the arrows
        return {kBoton, BS_AUTORADIOBUTTON | kPulsable | (control.abreGrupo ? kConTab : 0)};
    case Edicion:
        return {L"EDIT", ES_AUTOHSCROLL | kConTab, WS_EX_CLIENTEDGE | WS_EX_ACCEPTFILES};
    case Lista:
        return {L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL | kConTab};
    case Grupo:
        return {kBoton, BS_GROUPBOX};
    case Progreso:
        return {PROGRESS_CLASSW, PBS_SMOOTH};
    case Imagen:
        return {kTexto, SS_BITMAP | SS_CENTERIMAGE};
    case Icono:
        return {kTexto, SS_ICON | SS_CENTERIMAGE};
    case Texto:
        break;
    }
    const DWORD largo = control.id != kSinId ? SS_NOPREFIX | SS_ENDELLIPSIS : 0;
    return {kTexto, SS_LEFT | largo};
}

/// Words of a template. Texts and numbers stand one behind the other; each control begins at a
/// double word.
class CPalabras {
public:
    void Pon(std::uint16_t palabra) { m_palabras.push_back(palabra); }
    void PonDoble(DWORD doble)
    {
        Pon(static_cast<std::uint16_t>(doble & 0xFFFFU));
        Pon(static_cast<std::uint16_t>(doble >> 16U));
    }
    void PonTexto(std::wstring_view texto)
    {
        for (const wchar_t unidad : texto)
            Pon(static_cast<std::uint16_t>(unidad));
        Pon(0);
    }
    void PonSitio(short x, short y, short ancho, short alto)
    {
        for (const short lado : {x, y, ancho, alto})
            Pon(static_cast<std::uint16_t>(lado));
    }
    void Alinea()
    {
        if (m_palabras.size() % 2 != 0)
            Pon(0);
    }
    std::vector<std::uint16_t> Da() { return std::move(m_palabras); }

private:
    std::vector<std::uint16_t> m_palabras;
};

/// Tells whether a control begins a group within which the arrows walk.
bool AbreGrupo(const CPlantillaControl& control, const CPlantillaControl* anterior)
{
    const auto fila = [](ClaseControl clase) { return clase == BotonPorDefecto ? Boton : clase; };
    return control.abreGrupo || anterior == nullptr || fila(control.clase) != fila(anterior->clase);
}

void PonControl(CPalabras& palabras, const CPlantillaControl& control,
                const CPlantillaControl* anterior)
{
    const CClaseSistema clase = ClaseDe(control);
    const DWORD grupo = AbreGrupo(control, anterior) ? WS_GROUP : 0;
    const bool conTexto = control.clase != Progreso && control.clase != Edicion;
    palabras.Alinea();
    palabras.PonDoble(0); // no number of a help topic
    palabras.PonDoble(clase.estiloMas);
    palabras.PonDoble(clase.estilo | grupo | WS_CHILD | WS_VISIBLE);
    palabras.PonSitio(control.x, control.y, control.ancho, control.alto);
    palabras.PonDoble(control.id == kSinId ? ~DWORD{0} : control.id);
    palabras.PonTexto(clase.nombre);
    palabras.PonTexto(conTexto ? AAncho(control.texto) : std::wstring());
    palabras.Pon(0); // nothing of its own behind it
}

} // namespace

std::vector<std::uint16_t> HazPlantilla(const CPlantillaDialogo& dialogo, const CLetra& letra,
                                        const CMarcoDialogo& marco)
{
    // What a group box surrounds is painted by the dialog, so nothing is cut out of it.
    const DWORD estilo = DS_SETFONT | WS_POPUP | WS_CAPTION | WS_SYSMENU |
                         (marco.seEnsancha ? WS_THICKFRAME : DS_MODALFRAME) |
                         (marco.seMinimiza ? WS_MINIMIZEBOX : 0);
    CPalabras palabras;
    palabras.Pon(1);      // version
    palabras.Pon(0xFFFF); // the extended form
    palabras.PonDoble(0);
    palabras.PonDoble(WS_EX_CONTROLPARENT);
    palabras.PonDoble(estilo);
    palabras.Pon(static_cast<std::uint16_t>(dialogo.controles.size()));
    palabras.PonSitio(0, 0, dialogo.ancho, dialogo.alto);
    palabras.Pon(0); // no menu
    palabras.Pon(0); // the system's class for dialogs
    palabras.PonTexto(AAncho(dialogo.titulo));
    palabras.Pon(letra.puntos);
    palabras.Pon(letra.grosor);
    palabras.Pon(DEFAULT_CHARSET << 8U); // upright
    palabras.PonTexto(letra.nombre);
    const CPlantillaControl* anterior = nullptr;
    for (const CPlantillaControl& control : dialogo.controles) {
        PonControl(palabras, control, anterior);
        anterior = &control;
    }
    return palabras.Da();
}
