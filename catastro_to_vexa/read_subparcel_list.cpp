#include <tuple>
#include <utility>

#include "cadastre/exchange_lines.h"
#include "catastro_to_vexa/campiva_a_vexa_dlg.h"

// The reading of a list of subparcels with holders. A line that isn't a holder's belongs to the
// lines before it: the order of the lines links subparcels to parcels and parcels to holders.

namespace {

/// An element of a municipality that the lines to come belong to.
struct CActual {
    int municipio = -1;
    int indice = -1; ///< below 0 for none
};

/// State of the reading of one list.
struct CLecturaLista {
    CBaseCatastro& base;
    CAvisos avisos;
    CEntradaVista& vista;
    CActual titular = {};
    CActual parcela = {};
    CString Tit = {}; ///< of the last parcel line that was long enough to tell it
};

void TomaTitular(std::string_view linea, int municipio, CLecturaLista& lectura)
{
    CDatosLinea datos;
    auto titular = lectura.vista.Lee<CTitular>(linea, kModoLista, datos);
    CMunicipio& suyo = lectura.base.DameMunicipio(municipio);
    const int numero = titular.NumOrden;
    const int i = RegistraTitular(lectura.avisos, suyo, std::move(titular));
    const int conSuNumero = suyo.BuscaTitularNumOrden(numero);
    lectura.vista.titularesDeOtro += conSuNumero >= 0 && conSuNumero != i ? 1 : 0;
    lectura.titular = {municipio, i};
}

void TomaParcela(std::string_view linea, int municipio, CLecturaLista& lectura)
{
    CMunicipio& suyo = lectura.base.DameMunicipio(municipio);
    CDatosLinea datos;
    datos.Tit = lectura.Tit;
    auto parcela = lectura.vista.Lee<CParcela>(linea, kModoLista, datos);
    lectura.Tit = datos.Tit;
    CParaje paraje(datos.nombreParaje);
    paraje.NumOrden = static_cast<short>(suyo.Parajes().size());
    parcela.paraje = suyo.InsertaParaje(paraje);
    const auto datosSuyos = [](const CParcela& p) {
        return std::tuple(p.Zona, p.Superficie, p.paraje);
    };
    const auto leidos = datosSuyos(parcela);
    const int i = suyo.InsertaParcela(std::move(parcela));
    if (i < 0)
        ++lectura.vista.sinReferencia;
    else
        lectura.vista.conOtrosDatos += datosSuyos(suyo.DameParcela(i)) == leidos ? 0 : 1;
    lectura.parcela = {municipio, i};
}

void TomaSubparcela(std::string_view linea, CLecturaLista& lectura)
{
    if (lectura.parcela.indice < 0)
        return;
    CDatosLinea datos;
    auto subparcela = lectura.vista.Lee<CSubparcela>(linea, kModoLista, datos);
    const CString letra = subparcela.letra;
    const int superfic = subparcela.superfic;
    const auto& [municipio, i] = lectura.parcela;
    CParcela& parcela = lectura.base.DameMunicipio(municipio).DameParcela(i);
    if (superfic == 0)
        Avisa(lectura.avisos, kSubparcelaSinSuperficie, parcela.Polig, parcela.Parcela, letra);
    bool repetida = false;
    parcela.InsertaSubparcela(std::move(subparcela), repetida);
    if (repetida)
        Avisa(lectura.avisos, kSubparcelaDuplicada, parcela.Polig, parcela.Parcela, letra);
    if (lectura.titular.indice < 0)
        return;
    if (lectura.titular.municipio == municipio)
        parcela.InsertaCotitular(lectura.titular.indice, kSinOrden, superfic, lectura.Tit);
    else
        ++lectura.vista.sinSuTitular;
}

void TomaLinea(std::string_view linea, CLecturaLista& lectura)
{
    const CLineaFija fija(linea);
    const int tipo = fija.Entero(kLeeTipo);
    if (fija.Vacia() || tipo == kLineaIgnorada)
        return;
    const int municipio = lectura.base.RegistraMunicipio(static_cast<short>(fija.Entero(kLeeMun)));
    if (tipo == kLineaTitular)
        TomaTitular(linea, municipio, lectura);
    else if (tipo == kLineaParcela)
        TomaParcela(linea, municipio, lectura);
    else if (tipo == kLineaSubparcela)
        TomaSubparcela(linea, lectura);
}

} // namespace

void CCampivaAVexaDlg::LeeListaSubparcelas(CBaseCatastro& base, CStdioFile* entrada,
                                           CStdioFile* log, int* numErrores, int* numWarnings)
{
    CLecturaLista lectura{
        .base = base, .avisos = {*log, *numErrores, *numWarnings}, .vista = m_vista};
    Fase(IDS_LEYENDO_BASE);
    const std::uint64_t longitud = entrada->GetLength();
    char bufer[kLineaLista + 1];
    bool cabecera = false; // the first line that isn't empty is the heading
    while (entrada->ReadString(bufer, sizeof bufer) != nullptr) {
        const std::string_view linea = bufer;
        if (!cabecera) {
            const CLineaFija fija(linea);
            cabecera = !fija.Vacia();
            base.Ger = static_cast<short>(fija.Entero(kLeeGer));
            m_lineas.TomaCabecera(linea);
            continue;
        }
        if (!Avanza(entrada->GetPosition(), longitud))
            return;
        TomaLinea(linea, lectura);
        m_lineas.Toma(linea);
    }
    Fase(IDS_ASIGNANDO_TITULARIDAD);
    base.ReparteParticipaciones();
}
