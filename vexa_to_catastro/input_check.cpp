#include <algorithm>
#include <iterator>
#include <string_view>

#include "shell/frame/box_texts.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

// The look at the inputs when all are read: whether the list and the tables are what they were read
// as, and belong together. A table that is written anew holds only what came out of it.

namespace {

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

std::array<const CVexaACampiva2Dlg::CTablaVista*, 6> CVexaACampiva2Dlg::TablasVistas() const
{
    const CEntradasVistas& v = m_vistas;
    return {&v.parcelas, &v.subparcelas, &v.parajes, &v.modulos, &v.titulares, &v.cotitulares};
}

/// Tells whether a table has rows, and none that could be one of its records. Where the parcels'
/// table holds several municipalities, this one may have no row in another; but subparcels it has.
bool CVexaACampiva2Dlg::NingunaVale(const CTablaVista& tabla) const
{
    const bool puedeNoTener = m_vistas.parcelas.ajenas > 0 && &tabla != &m_vistas.subparcelas;
    return tabla.tomadas == 0 && tabla.todas > (puedeNoTener ? tabla.ajenas : 0);
}

void CVexaACampiva2Dlg::ObservaFilas()
{
    for (const CTablaVista* tabla : TablasVistas()) {
        const bool vale = !NingunaVale(*tabla); // or that is said instead
        if (tabla->soloRetornos)
            Sospecha(observaciones::kSoloRetornos, tabla->archivo);
        if (tabla->cortada)
            Sospecha(observaciones::kTablaCortada, tabla->archivo);
        SospechaPagina(tabla->pagina, tabla->archivo);
        SospechaCuentas({{tabla->partidas, observaciones::kFilasPartidas},
                         {vale ? tabla->incompletas : 0, observaciones::kFilasIncompletas},
                         {vale ? tabla->sinMunicipio : 0, observaciones::kFilasSinMunicipio},
                         {tabla->repetidas, observaciones::kFilasRepetidas},
                         {vale ? tabla->campos.pasan : 0, observaciones::kNumerosQuePasan},
                         {tabla->conComillas, observaciones::kEntreComillas},
                         {vale ? tabla->campos.conResto : 0, observaciones::kNumerosConResto},
                         {vale ? tabla->campos.conLetras : 0, observaciones::kLetrasDeMas}},
                        tabla->archivo);
    }
    SospechaCuentas({{m_vistas.titularesSinNumero, observaciones::kNumerosDeOtro},
                     {m_vistas.dniSinCeros, observaciones::kDniSinCeros}},
                    ArchivoTitulares);
    SospechaCuentas({{m_vistas.sumados, observaciones::kSumados},
                     {m_vistas.faltasDeTitular, observaciones::kFaltanTitulares}},
                    ArchivoCotitulares);
    SospechaCuentas({{m_vistas.enHojaSinNombre, observaciones::kHojasSinNombre}}, ArchivoOrtos);
}

void CVexaACampiva2Dlg::ObservaTabla(const CTablaVista& tabla)
{
    if (tabla.soloRetornos)
        return; // which was said
    if (tabla.todas == 0 && tabla.cabecera.IsEmpty())
        Sospecha(observaciones::kVacia, tabla.archivo);
    else if (EsDeOtraTabla(tabla.cabecera, tabla.propia))
        Sospecha(observaciones::kEsOtraTabla, tabla.archivo, tabla.registros);
    else if (NingunaVale(tabla))
        Sospecha(observaciones::kNingunaFila, tabla.archivo, tabla.registro);
}

void CVexaACampiva2Dlg::ObservaEntradas()
{
    const CCabeceraLista& cabecera = m_vistas.cabecera;
    const CTablaVista& parcelas = m_vistas.parcelas;
    const CTablaVista& subparcelas = m_vistas.subparcelas;
    if (!ObservaLista(ArchivoTren, m_vistas.primera, m_vistas.poligonos))
        return; // the codes that were read say nothing about the tables
    if (parcelas.todas > 0 && m_vistas.parcelasDelMunicipio == 0) {
        Sospecha(observaciones::kOtroMunicipio, ArchivoParcelas, cabecera.Ger, cabecera.Mun,
                 ArchivoTren);
        return;
    }
    for (const CTablaVista* tabla : TablasVistas()) {
        ObservaTabla(*tabla);
        SospechaCuentas({{tabla->deOtraGer, observaciones::kFilasDeOtraGer}}, tabla->archivo);
    }
    if (parcelas.ajenas == 0) // the tables are one municipality's
        for (const CTablaVista* tabla :
             {&m_vistas.parajes, &m_vistas.modulos, &m_vistas.titulares, &m_vistas.cotitulares})
            SospechaCuentas({{tabla->ajenas, observaciones::kFilasSinParcelas}}, tabla->archivo);
    if (Modificar == 0)
        return; // all stays in the tables
    for (const CTablaVista* tabla : {&parcelas, &subparcelas}) {
        SospechaCuentas({{tabla->ajenas, observaciones::kFilasAjenas}}, tabla->archivo);
        if (tabla->conColumnasPropias)
            Sospecha(observaciones::kColumnasPropias, tabla->archivo);
        SospechaCuentas({{tabla->sueltas, observaciones::kFilasSueltas},
                         {NingunaVale(*tabla) ? 0 : tabla->dejadas, observaciones::kFilasDejadas}},
                        tabla->archivo);
    }
}
