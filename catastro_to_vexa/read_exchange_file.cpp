#include <algorithm>
#include <iterator>
#include <utility>

#include "cadastre/exchange_lines.h"
#include "cadastre/wrapping.h"
#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "catastro_to_vexa/exchange_reader.h"

// The reading of an exchange file: the walk of its lines, then the three phases that settle what
// the lines left pending. Each gives false when the user stopped it.

namespace {

/// The municipality's holder lines, by number and, within one number, in the order of the file.
std::vector<CTitularLeido> PorNumero(const std::vector<CTitularLeido>& leidos, int municipio)
{
    std::vector<CTitularLeido> orden;
    orden.reserve(leidos.size());
    std::copy_if(leidos.begin(), leidos.end(), std::back_inserter(orden),
                 [&](const CTitularLeido& leido) { return leido.municipio == municipio; });
    std::stable_sort(
        orden.begin(), orden.end(),
        [](const CTitularLeido& a, const CTitularLeido& b) { return a.NumOrden < b.NumOrden; });
    return orden;
}

/// The first of the lines with the number, or with one above it. Numbers hardly leave any out, so
/// that the place which one has then is tried before the search.
std::vector<CTitularLeido>::const_iterator
PrimeroConNumero(const std::vector<CTitularLeido>& porNumero, int numero)
{
    const auto esMenor = [](const CTitularLeido& leido, int n) { return leido.NumOrden < n; };
    auto desde = porNumero.begin();
    if (porNumero.empty() || numero <= desde->NumOrden)
        return desde;
    const auto sitio = std::int64_t{numero} - desde->NumOrden;
    if (sitio < std::ssize(porNumero) && esMenor(desde[sitio - 1], numero)) {
        if (!esMenor(desde[sitio], numero))
            return desde + sitio;
        desde += sitio;
    }
    return std::lower_bound(desde, porNumero.end(), numero, esMenor);
}

/// How many subparcels from position `k` on belong to the same parcel.
std::size_t Seguidas(const std::deque<CRefSubparcela>& refs, std::size_t k)
{
    const auto desde = refs.begin() + static_cast<std::ptrdiff_t>(k);
    return static_cast<std::size_t>(
        std::find_if(desde, refs.end(), [&](const CRefSubparcela& r) { return r != *desde; }) -
        desde);
}

/// Links the parcel to the holder of a TL line that has the number which the parcel names.
void Enlaza(CLecturaCatastro& lectura, int indiceParcela, const CTitularLeido& leido,
            const CString& Tit)
{
    CMunicipio& municipio = lectura.Municipio();
    CParcela& parcela = municipio.DameParcela(indiceParcela);
    const CTitular& titular = municipio.DameTitular(leido.indice);
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
    char bufer[kLineaCatastro + 1];
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
    const std::size_t n = lectura.parcelasLeidas.Cuantos();
    if (n == 0)
        return true;
    CMunicipio& municipio = lectura.Municipio();
    municipio.ReservaParcelas(n);
    for (std::size_t k = 0; k < n; ++k, lectura.parcelasLeidas.Quita()) {
        if (!Avanza(k, n))
            return false;
        CParcela& parcela = lectura.parcelasLeidas.Primera();
        CVinculoParcela& vinculo = lectura.vinculosParcela[k];
        const int polig = parcela.Polig;
        const int numero = parcela.Parcela;
        parcela.paraje = municipio.BuscaParaje(vinculo.numParaje);
        if (parcela.paraje < 0) {
            Avisa(lectura.avisos, kParajeNoEncontrado, vinculo.numParaje, polig, numero);
            continue;
        }
        const std::size_t antes = municipio.NumParcelas();
        vinculo.indice = municipio.InsertaParcela(std::move(parcela));
        if (vinculo.indice == kParcelaInvalida)
            Avisa(lectura.avisos, kParcelaNoValida, polig, numero);
        else if (municipio.NumParcelas() == antes)
            Avisa(lectura.avisos, kParcelaRepetida, polig, numero);
    }
    return true;
}

bool CCampivaAVexaDlg::AsientaSubparcelas(CLecturaCatastro& lectura)
{
    Fase(IDS_REGISTRANDO_SUBPARCELAS);
    const std::size_t n = lectura.subparcelasLeidas.Cuantos();
    std::size_t hasta = 0; // where the subparcels of the parcel at work end
    int i = kNoEncontrado;
    for (std::size_t k = 0; k < n; ++k, lectura.subparcelasLeidas.Quita()) {
        if (!Avanza(k, n))
            return false;
        CMunicipio& municipio = lectura.Municipio();
        CSubparcela& subparcela = lectura.subparcelasLeidas.Primera();
        const CRefSubparcela ref = lectura.refSubparcelas[k];
        if (k == hasta) {
            const std::size_t seguidas = Seguidas(lectura.refSubparcelas, k);
            hasta += seguidas;
            i = kNoEncontrado;
            if (municipio.BuscaParcela(ref.Polig, ref.Parcela, i))
                municipio.DameParcela(i).ReservaSubparcelas(seguidas);
        }
        const CString letra = subparcela.letra;
        bool repetida = false;
        if (i < 0)
            Avisa(lectura.avisos, kSubparcelaSinParcela, ref.Polig, ref.Parcela, letra);
        else
            municipio.DameParcela(i).InsertaSubparcela(std::move(subparcela), repetida);
        if (repetida)
            Avisa(lectura.avisos, kSubparcelaDuplicada, ref.Polig, ref.Parcela, letra);
    }
    return true;
}

bool CCampivaAVexaDlg::AsientaTitulares(CLecturaCatastro& lectura)
{
    Fase(IDS_REGISTRANDO_TITULARES);
    const std::vector<CTitularLeido> leidos =
        PorNumero(lectura.titularesLeidos, lectura.municipioActual);
    const std::size_t n = lectura.vinculosParcela.size();
    for (std::size_t k = 0; k < n; ++k) {
        if (!Avanza(k, n))
            return false;
        const CVinculoParcela& vinculo = lectura.vinculosParcela[k];
        int i = vinculo.indice;
        if (vinculo.Tit.IsEmpty() ||
            (i < 0 && !lectura.Municipio().BuscaParcela(vinculo.Polig, vinculo.Parcela, i)))
            continue; // the parcel was dropped, and told then
        auto leido = PrimeroConNumero(leidos, vinculo.numImputa);
        for (; leido != leidos.end() && leido->NumOrden == vinculo.numImputa; ++leido)
            Enlaza(lectura, i, *leido, vinculo.Tit);
    }
    return true;
}
