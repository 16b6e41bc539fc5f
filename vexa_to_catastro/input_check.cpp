#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/ansi.h"
#include "shell/frame/box_texts.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

// The look at the inputs when all are read: whether the list and the tables are what they were read
// as, and belong together. A table that is written anew holds only what came out of it.

namespace {

/// Tells whether a text begins with the mark that editors put before UTF-8 and UTF-16, which shifts
/// all columns.
bool TieneMarca(std::string_view texto)
{
    constexpr std::string_view kMarcas[] = {ansi::kMarcaUtf8, "\xFF\xFE", "\xFE\xFF"};
    return std::any_of(std::begin(kMarcas), std::end(kMarcas),
                       [&](std::string_view marca) { return texto.starts_with(marca); });
}

/// Tells whether a header line is that of another table than it should be.
bool EsDeOtraTabla(std::string_view cabecera, std::string_view propia)
{
    constexpr std::string_view kCabeceras[] = {kCabeceraTitulares, kCabeceraParcelas,
                                               kCabeceraModulos,   kCabeceraSubparcelas,
                                               kCabeceraParajes,   kCabeceraCotitulares};
    const auto esEsa = [&](std::string_view otra) {
        return otra.substr(0, otra.size() - 1) == cabecera; // without its line end
    };
    return !esEsa(propia) && std::any_of(std::begin(kCabeceras), std::end(kCabeceras), esEsa);
}

} // namespace

void CVexaACampiva2Dlg::ObservaFilas()
{
    const CEntradasVistas& v = m_vistas;
    for (const CTablaVista* tabla :
         {&v.parajes, &v.modulos, &v.titulares, &v.parcelas, &v.subparcelas, &v.cotitulares}) {
        if (tabla->enUtf8)
            Sospecha(observaciones::kParecenUtf8, tabla->archivo);
        if (tabla->partidas > 0)
            Sospecha(observaciones::kFilasPartidas, tabla->archivo, tabla->partidas);
        // Where not one of its rows was taken, that is said instead.
        const bool ninguna =
            (tabla == &v.parcelas || tabla == &v.subparcelas) && tabla->tomadas == 0;
        if (tabla->incompletas > 0 && !ninguna)
            Sospecha(observaciones::kFilasIncompletas, tabla->archivo, tabla->incompletas);
    }
}

void CVexaACampiva2Dlg::ObservaEntradas()
{
    const CCabeceraLista& cabecera = m_vistas.cabecera;
    const CTablaVista& parcelas = m_vistas.parcelas;
    const CTablaVista& subparcelas = m_vistas.subparcelas;
    const bool marca = TieneMarca(m_vistas.primera);
    const bool vacia = m_vistas.primera.IsEmpty() && m_vistas.poligonos == 0;
    if (marca)
        Sospecha(observaciones::kListaConMarca, ArchivoTren);
    else if (vacia)
        Sospecha(observaciones::kVacia, ArchivoTren);
    else if (m_vistas.poligonos == 0)
        Sospecha(observaciones::kSinPoligonos, ArchivoTren);
    if (marca || vacia)
        return; // the codes that were read say nothing about the tables
    if (parcelas.todas > 0 && m_vistas.parcelasDelMunicipio == 0) {
        Sospecha(observaciones::kOtroMunicipio, ArchivoParcelas, cabecera.Ger, cabecera.Mun,
                 ArchivoTren);
        return;
    }
    if (EsDeOtraTabla(parcelas.cabecera, kCabeceraParcelas))
        Sospecha(observaciones::kNoEsDeParcelas, ArchivoParcelas);
    else if (parcelas.todas > 0 && parcelas.tomadas == 0)
        Sospecha(observaciones::kNingunaParcela, ArchivoParcelas);
    if (EsDeOtraTabla(subparcelas.cabecera, kCabeceraSubparcelas))
        Sospecha(observaciones::kNoEsDeSubparcelas, ArchivoSubparcelas);
    else if (subparcelas.todas > 0 && subparcelas.tomadas == 0)
        Sospecha(observaciones::kNingunaSubparcela, ArchivoSubparcelas);
    if (Modificar != 0 && parcelas.ajenas > 0)
        Sospecha(observaciones::kFilasAjenas, ArchivoParcelas, parcelas.ajenas);
    if (Modificar != 0 && subparcelas.ajenas > 0)
        Sospecha(observaciones::kFilasAjenas, ArchivoSubparcelas, subparcelas.ajenas);
}
