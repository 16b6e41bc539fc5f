#include <algorithm>
#include <utility>

#include "cadastre/exchange_format.h"
#include "cadastre/wrapping.h"
#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "catastro_to_vexa/exchange_reader.h"

// The reading of an exchange file: the walk of its lines, then the three phases that settle what
// the lines left pending. Each gives false when the user stopped it.

namespace {

constexpr UINT kLineaMasLarga = 190; // a longer line comes in pieces, each a line of its own

/// Positions in `titularesLeidos` of the municipality's holder lines, by number and, within one
/// number, in the order of the file.
std::vector<std::size_t> PorNumero(const std::vector<CTitularLeido>& leidos, int municipio)
{
    std::vector<std::size_t> orden;
    for (std::size_t i = 0; i < leidos.size(); ++i)
        if (leidos[i].municipio == municipio)
            orden.push_back(i);
    std::stable_sort(orden.begin(), orden.end(), [&](std::size_t a, std::size_t b) {
        return leidos[a].NumOrden < leidos[b].NumOrden;
    });
    return orden;
}

/// Links the parcel to the holder of a TL line that has the number which the parcel names.
void Enlaza(CLecturaCatastro& lectura, int indiceParcela, const CTitularLeido& leido,
            const CString& Tit)
{
    CMunicipio& municipio = lectura.Municipio();
    CParcela& parcela = municipio.DameParcela(indiceParcela);
    const CTitular& titular = std::as_const(municipio).DameTitular(leido.indice);
    const int vinculos = static_cast<int>(parcela.Cotitulares().size());
    switch (parcela.InsertaCotitular(leido.indice, vinculos, leido.partici, Tit)) {
    case kOrdenRepetido:
        Avisa(lectura.avisos, kYaCotitular, parcela.Polig, parcela.Parcela, titular.Nombre);
        break;
    case kTitularRepetido:
        Avisa(lectura.avisos, kYaTitular, titular.Nombre, parcela.Polig, parcela.Parcela);
        break;
    default:
        municipio.InsertaPropiedad(leido.indice, indiceParcela, leido.partici, Tit);
    }
}

} // namespace

void CCampivaAVexaDlg::LeeArchivoNormal(CBaseCatastro& base, CStdioFile* entrada, CStdioFile* log,
                                        int* numErrores, int* numWarnings)
{
    CLecturaCatastro lectura(base, {*log, *numErrores, *numWarnings});
    Fase(IDS_LEYENDO_BASE);
    const std::uint64_t longitud = entrada->GetLength();
    char bufer[kLineaMasLarga + 1];
    while (entrada->ReadString(bufer, sizeof bufer) != nullptr) {
        const std::string_view linea = bufer;
        if (!Avanza(entrada->GetPosition(), longitud))
            return;
        const CLineaFija fija(linea);
        if (fija.Vacia())
            continue;
        if (base.Ger == 0)
            base.Ger = static_cast<short>(fija.Entero(kLeeGer));
        lectura.municipioActual = base.RegistraMunicipio(static_cast<short>(fija.Entero(kLeeMun)));
        TomaRegistro(linea, lectura);
    }
    AsientaRegistros(lectura);
}

void CCampivaAVexaDlg::AsientaRegistros(CLecturaCatastro& lectura)
{
    if (!AsientaParcelas(lectura) || !AsientaSubparcelas(lectura))
        return;
    const int asignados = lectura.base.AsignaNumOrden(lectura.avisos.log);
    lectura.avisos.numErrores = Suma(lectura.avisos.numErrores, asignados);
    if (AsientaTitulares(lectura))
        lectura.base.EligeTitularPrincipal();
}

bool CCampivaAVexaDlg::AsientaParcelas(CLecturaCatastro& lectura)
{
    Fase(IDS_REGISTRANDO_PARCELAS);
    const std::size_t n = lectura.parcelasLeidas.size();
    for (std::size_t k = 0; k < n; ++k) {
        if (!Avanza(k, n))
            return false;
        CParcela parcela = std::move(lectura.parcelasLeidas.front());
        lectura.parcelasLeidas.pop_front();
        const int numParaje = lectura.vinculosParcela[k].numParaje;
        CMunicipio& municipio = lectura.Municipio();
        const int polig = parcela.Polig;
        const int numero = parcela.Parcela;
        parcela.paraje = municipio.BuscaParaje(numParaje);
        if (parcela.paraje < 0)
            Avisa(lectura.avisos, kParajeNoEncontrado, numParaje, polig, numero);
        else if (municipio.BuscaParcela(parcela) >= 0)
            Avisa(lectura.avisos, kParcelaRepetida, polig, numero);
        else if (municipio.InsertaParcela(std::move(parcela)) == kParcelaInvalida)
            Avisa(lectura.avisos, kParcelaNoValida, polig, numero);
    }
    return true;
}

bool CCampivaAVexaDlg::AsientaSubparcelas(CLecturaCatastro& lectura)
{
    Fase(IDS_REGISTRANDO_SUBPARCELAS);
    const std::size_t n = lectura.subparcelasLeidas.size();
    for (std::size_t k = 0; k < n; ++k) {
        if (!Avanza(k, n))
            return false;
        CSubparcela subparcela = std::move(lectura.subparcelasLeidas.front());
        lectura.subparcelasLeidas.pop_front();
        const CRefSubparcela ref = lectura.refSubparcelas.front();
        lectura.refSubparcelas.pop_front();
        const CString letra = subparcela.letra;
        int i = kNoEncontrado;
        if (!lectura.Municipio().BuscaParcela(ref.Polig, ref.Parcela, i)) {
            Avisa(lectura.avisos, kSubparcelaSinParcela, ref.Polig, ref.Parcela, letra);
            continue;
        }
        bool repetida = false;
        lectura.Municipio().DameParcela(i).InsertaSubparcela(std::move(subparcela), repetida);
        if (repetida)
            Avisa(lectura.avisos, kSubparcelaDuplicada, ref.Polig, ref.Parcela, letra);
    }
    return true;
}

bool CCampivaAVexaDlg::AsientaTitulares(CLecturaCatastro& lectura)
{
    Fase(IDS_REGISTRANDO_TITULARES);
    const std::vector<CTitularLeido>& leidos = lectura.titularesLeidos;
    const std::vector<std::size_t> orden = PorNumero(leidos, lectura.municipioActual);
    const std::size_t n = lectura.vinculosParcela.size();
    for (std::size_t k = 0; k < n; ++k) {
        if (!Avanza(k, n))
            return false;
        const CVinculoParcela& vinculo = lectura.vinculosParcela[k];
        int i = kNoEncontrado;
        if (!vinculo.enlaza || !lectura.Municipio().BuscaParcela(vinculo.Polig, vinculo.Parcela, i))
            continue; // the parcel was dropped, and told then
        auto t = std::lower_bound(orden.begin(), orden.end(), vinculo.numImputa,
                                  [&](std::size_t a, int num) { return leidos[a].NumOrden < num; });
        for (; t != orden.end() && leidos[*t].NumOrden == vinculo.numImputa; ++t)
            Enlaza(lectura, i, leidos[*t], vinculo.Tit);
    }
    return true;
}
