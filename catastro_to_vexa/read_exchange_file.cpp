#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <utility>

#include "cadastre/exchange_lines.h"
#include "cadastre/wrapping.h"
#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "catastro_to_vexa/exchange_reader.h"

// The reading of an exchange file: the walk of its lines, then the three phases that settle what
// the lines left pending. Each gives false when the user stopped it.

namespace {

/// A municipality's holder lines by number.
class CPorNumero {
public:
    CPorNumero(const std::vector<CTitularLeido>& leidos, int municipio)
    {
        m_lineas.reserve(leidos.size());
        std::copy_if(leidos.begin(), leidos.end(), std::back_inserter(m_lineas),
                     [&](const CTitularLeido& leido) { return leido.municipio == municipio; });
        if (!std::is_sorted(m_lineas.begin(), m_lineas.end(), kMenor))
            std::stable_sort(m_lineas.begin(), m_lineas.end(), kMenor);
        AnotaSitios();
    }

    /// The lines of a number, in the order of the file.
    std::span<const CTitularLeido> Con(int numero) const
    {
        if (m_sitios.empty()) {
            CTitularLeido buscado;
            buscado.NumOrden = numero;
            const auto [desde, hasta] =
                std::equal_range(m_lineas.begin(), m_lineas.end(), buscado, kMenor);
            return {desde, hasta};
        }
        const std::int64_t i = std::int64_t{numero} - m_lineas.front().NumOrden;
        if (i < 0 || i + 1 >= std::ssize(m_sitios))
            return {};
        const auto sitio = m_sitios.begin() + i;
        return {m_lineas.begin() + sitio[0], m_lineas.begin() + sitio[1]};
    }

private:
    /// Numbers hardly leave any out, so that the first line of each can be noted. Where they leave
    /// out more than they take, they are searched.
    void AnotaSitios()
    {
        if (m_lineas.empty())
            return;
        const int primero = m_lineas.front().NumOrden;
        const std::int64_t numeros = std::int64_t{m_lineas.back().NumOrden} - primero + 1;
        if (numeros > 2 * std::ssize(m_lineas))
            return;
        m_sitios.reserve(static_cast<std::size_t>(numeros) + 1);
        for (int i = 0; const CTitularLeido& linea : m_lineas) {
            m_sitios.resize(static_cast<std::size_t>(linea.NumOrden - primero) + 1, i);
            ++i;
        }
        m_sitios.push_back(static_cast<int>(m_lineas.size()));
    }

    static constexpr auto kMenor = [](const CTitularLeido& a, const CTitularLeido& b) {
        return a.NumOrden < b.NumOrden;
    };

    std::vector<CTitularLeido> m_lineas;
    std::vector<int> m_sitios; // of the first line with each number or a higher one
};

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
    const CPorNumero leidos(lectura.titularesLeidos, lectura.municipioActual);
    const std::size_t n = lectura.vinculosParcela.size();
    for (std::size_t k = 0; k < n; ++k) {
        if (!Avanza(k, n))
            return false;
        const CVinculoParcela& vinculo = lectura.vinculosParcela[k];
        int i = vinculo.indice;
        if (vinculo.Tit.IsEmpty() ||
            (i < 0 && !lectura.Municipio().BuscaParcela(vinculo.Polig, vinculo.Parcela, i)))
            continue; // the parcel was dropped, and told then
        for (const CTitularLeido& leido : leidos.Con(vinculo.numImputa))
            Enlaza(lectura, i, leido, vinculo.Tit);
    }
    return true;
}
