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
    CActual titular;
    CActual parcela;
    CString Tit;   ///< of the last parcel line that was long enough to tell it
    int pasan = 0; ///< lines with a number that passes 32 bits
};

void TomaTitular(std::string_view linea, int municipio, CLecturaLista& lectura)
{
    CTitular titular;
    titular.Lee(linea, kModoLista);
    CMunicipio& suyo = lectura.base.DameMunicipio(municipio);
    lectura.titular = {municipio, RegistraTitular(lectura.avisos, suyo, std::move(titular))};
}

void TomaParcela(std::string_view linea, int municipio, CLecturaLista& lectura)
{
    CMunicipio& suyo = lectura.base.DameMunicipio(municipio);
    CParcela parcela(0, 0, 0, {});
    CDatosLinea datos;
    datos.Tit = lectura.Tit;
    parcela.Lee(linea, kModoLista, datos);
    lectura.Tit = datos.Tit;
    lectura.pasan += datos.pasan ? 1 : 0;
    CParaje paraje(datos.nombreParaje);
    paraje.NumOrden = static_cast<short>(suyo.Parajes().size());
    parcela.paraje = suyo.InsertaParaje(paraje);
    lectura.parcela = {municipio, suyo.InsertaParcela(std::move(parcela))};
}

void TomaSubparcela(std::string_view linea, CLecturaLista& lectura)
{
    if (lectura.parcela.indice < 0)
        return;
    CSubparcela subparcela;
    CDatosLinea datos;
    subparcela.Lee(linea, kModoLista, datos);
    lectura.pasan += datos.pasan ? 1 : 0;
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
    if (lectura.titular.indice >= 0 && lectura.titular.municipio == municipio)
        parcela.InsertaCotitular(lectura.titular.indice, kSinOrden, superfic, lectura.Tit);
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
    CLecturaLista lectura{base, {*log, *numErrores, *numWarnings}, {}, {}, {}, 0};
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
            continue;
        }
        if (!Avanza(entrada->GetPosition(), longitud))
            return;
        TomaLinea(linea, lectura);
        m_lineas.Toma(linea);
    }
    m_pasan = lectura.pasan;
    Fase(IDS_ASIGNANDO_TITULARIDAD);
    base.ReparteParticipaciones();
}
