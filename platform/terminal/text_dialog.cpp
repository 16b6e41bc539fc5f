#include "platform/terminal/text_dialog.h"

#include <algorithm>

#include "platform/ansi.h"
#include "platform/layer_texts.h"
#include "platform/plain_texts.h"

namespace {

using enum ClaseControl;

template <class... T>
CRespuesta Queja(const char* forma, const T&... argumentos)
{
    return {Formatea(forma, argumentos...), true, 0};
}

/// Position in a list of an item given by its position or by its text; -1 where it has none such.
int BuscaElemento(const CPlantillaControl& lista, std::string_view valor)
{
    const auto cuantos = lista.elementos.size();
    if (const auto numero = NumeroDe<UINT>(valor); numero && *numero < cuantos)
        return static_cast<int>(*numero);
    const auto elemento = std::ranges::find_if(
        lista.elementos, [&](const char* texto) { return ansi::AUtf8(texto) == valor; });
    return elemento != lista.elementos.end() ? static_cast<int>(elemento - lista.elementos.begin())
                                             : -1;
}

/// The items with their positions, the one that is picked in brackets.
std::string Elementos(const CControl& lista)
{
    std::string texto;
    for (int i = 0; const char* elemento : lista.Plantilla().elementos) {
        const bool elegido = i == lista.GetCurSel();
        texto += std::string(i > 0 ? "  " : "") + (elegido ? "[" : "") + std::to_string(i) + " " +
                 ansi::AUtf8(elemento) + (elegido ? "]" : "");
        ++i;
    }
    return texto;
}

std::string ConNombre(const std::string& nombre, const std::string& valor)
{
    return nombre.empty() ? valor : nombre + ": " + valor;
}

std::string Linea(const CDialog& dialogo, const CControl& control)
{
    const std::string nombre = ansi::AUtf8(dialogo.NombreDe(control));
    const std::string valor = ansi::AUtf8(control.GetWindowText());
    switch (control.Clase()) {
    case Boton:
    case BotonPorDefecto:
        return "<" + nombre + ">";
    case Casilla:
        return (control.GetCheck() != 0 ? "[x] " : "[ ] ") + nombre;
    case Radio:
        return (control.GetCheck() != 0 ? "(*) " : "( ) ") + nombre;
    case Lista:
        return ConNombre(nombre, Elementos(control));
    case Progreso:
        return ConNombre(nombre, std::to_string(control.GetPos()) + " %");
    case Texto:
        return ConNombre(nombre.empty() ? textos::kEstado : nombre, valor);
    default:
        return ConNombre(nombre, valor);
    }
}

CRespuesta Pon(CControl& control, std::string_view valor)
{
    const int id = static_cast<int>(control.Id());
    switch (control.Clase()) {
    case Edicion:
        control.SetWindowText(valor);
        return {};
    case Lista: {
        const int elemento = BuscaElemento(control.Plantilla(), SinBlancos(valor));
        if (elemento < 0)
            return Queja(textos::kNoEstaEnLista, id, valor);
        control.SetCurSel(elemento);
        return {};
    }
    case Casilla: {
        const auto marca = NumeroDe<UINT>(SinBlancos(valor));
        if (!marca)
            return Queja(textos::kNoSeRellena, id);
        control.SetCheck(*marca != 0 ? 1 : 0);
        return {};
    }
    default:
        return Queja(textos::kNoSeRellena, id);
    }
}

} // namespace

std::string PintaDialogo(const CDialog& dialogo)
{
    std::string texto = ansi::AUtf8(dialogo.Plantilla().titulo) + std::string("\n");
    const std::deque<CControl>& controles = dialogo.Controles();
    for (std::size_t i = 0; i < controles.size(); ++i) {
        const CControl& control = controles[i];
        const ClaseControl clase = control.Clase();
        if (clase == Grupo && !control.GetWindowText().IsEmpty()) {
            texto += "  " + ansi::AUtf8(control.GetWindowText()) + "\n";
        } else if (control.Id() != kSinId && clase != Imagen && clase != Icono) {
            texto += Formatea("  % 6d  ", static_cast<int>(control.Id())) +
                     Linea(dialogo, control) + "\n";
        } else if (control.EsRotulo() && i > 0 && controles[i - 1].EsRotulo()) {
            texto += "          " + Linea(dialogo, control) + "\n"; // a fixed text behind its label
        }
    }
    return texto;
}

CRespuesta EjecutaMandato(CDialog& dialogo, std::string_view mandato)
{
    const std::string_view entero = SinBlancos(mandato);
    if (entero.empty())
        return {};
    if (entero == "?")
        return {PintaDialogo(dialogo)};
    const bool ayuda = entero.front() == '?';
    const std::size_t igual = ayuda ? std::string_view::npos : mandato.find('=');
    const std::string_view cual = SinBlancos(ayuda ? entero.substr(1) : mandato.substr(0, igual));
    const auto id = NumeroDe<UINT>(cual);
    if (!id)
        return Queja(textos::kNoSeEntiende, entero);
    CControl* control = dialogo.GetDlgItem(*id);
    if (control == nullptr || *id == kSinId)
        return Queja(textos::kNoHayControl, cual);
    if (ayuda)
        return {{}, false, *id};
    if (!control->IsWindowEnabled())
        return Queja(textos::kInactivo, static_cast<int>(*id));
    if (igual != std::string_view::npos)
        return Pon(*control, mandato.substr(igual + 1));
    const ClaseControl clase = control->Clase();
    if (clase == Edicion || clase == Lista)
        return Queja(textos::kSeRellena, static_cast<int>(*id), static_cast<int>(*id));
    dialogo.Pulsa(*control);
    return {};
}
