#include <algorithm>
#include <cstdint>
#include <iterator>

#include "cadastre/co_holder_columns.h"
#include "cadastre/column_writer.h"
#include "cadastre/parcel.h"
#include "cadastre/wrapping.h"

// What a parcel does with its links to holders, and the CT record that carries the co-holders.

namespace {

constexpr int kGruposPorRegistro = 9;
constexpr int kAnchoCabecera = 23;
constexpr int kAnchoGrupo = 14;
constexpr const char* kGrupoVacio = "0000000  00000";
constexpr const char* kFinRegistro = " \n";

constexpr auto kCabeceraCT = RegistroFijo(kColumnasCabecera, kAnchoCabecera);
constexpr auto kGrupoCT = RegistroFijo(kColumnasVinculo, kAnchoGrupo);
constexpr auto kFilaCotitular = FilaTabla(kColumnasCotitular);

int NumOrdenDe(const CCotitular& vinculo, const std::vector<CTitular>& titulares)
{
    return vinculo.titular >= 0 ? titulares[static_cast<std::size_t>(vinculo.titular)].NumOrden
                                : -1;
}

} // namespace

int CParcela::InsertaCotitular(int titular, int orden, int partici, const CString& Tit)
{
    // The readers come with one holder after the other: one behind all others needs no look-up.
    const int conTitular = titular > m_mayorTitular
                               ? kNoEncontrado
                               : m_porTitular.Busca(m_cotitulares, &CCotitular::titular, titular);
    if (orden < 0 && conTitular >= 0) {
        int& suya = m_cotitulares[static_cast<std::size_t>(conTitular)].partici;
        suya = Suma(suya, partici);
        return 1;
    }
    if (orden >= 0 && orden <= m_ordenMaximo) {
        // Whichever of the two is met first tells the code; a link that is both tells the number.
        const auto hasta =
            conTitular >= 0 ? m_cotitulares.begin() + conTitular + 1 : m_cotitulares.end();
        if (std::any_of(m_cotitulares.begin(), hasta,
                        [orden](const CCotitular& c) { return c.orden == orden; }))
            return kOrdenRepetido;
    }
    if (orden >= 0 && conTitular >= 0)
        return kTitularRepetido;
    m_cotitulares.push_back({titular, orden, partici, Tit});
    m_ordenMaximo = std::max(m_ordenMaximo, orden);
    m_mayorTitular = std::max(m_mayorTitular, titular);
    return 1;
}

bool CParcela::FaltaTitular() const
{
    std::int64_t suma = 0;
    for (const CCotitular& vinculo : m_cotitulares)
        suma += vinculo.partici;
    return suma > 0 && suma + std::ssize(m_cotitulares) < 100; // 0 are shares that nobody told
}

void CParcela::EligeTitularPrincipal()
{
    const auto mayor = std::max_element(
        m_cotitulares.begin(), m_cotitulares.end(),
        [](const CCotitular& a, const CCotitular& b) { return a.partici < b.partici; });
    if (mayor == m_cotitulares.end() || mayor->partici <= 0)
        return;
    int siguiente = kOrdenPrincipal + 1;
    for (auto vinculo = m_cotitulares.begin(); vinculo != m_cotitulares.end(); ++vinculo)
        vinculo->orden = vinculo == mayor ? kOrdenPrincipal : siguiente++;
    m_ordenMaximo = siguiente - 1;
    constexpr std::size_t kSobran = 64; // places of a parcel that very many hold
    if (m_cotitulares.capacity() > m_cotitulares.size() + kSobran)
        m_cotitulares.shrink_to_fit();
}

void CParcela::GrabaCotitulares(CStdioFile& fichero, short ger, short mun, short emenor,
                                const std::vector<CTitular>& titulares, bool fijo) const
{
    if (fijo) {
        GrabaRegistrosCT(fichero, ger, mun, emenor, titulares);
        return;
    }
    CDatosLinea datos(ger, mun, emenor, Zona, Polig, Parcela);
    for (const CCotitular& vinculo : m_cotitulares) {
        if (vinculo.orden == kOrdenPrincipal)
            continue;
        datos.numImputa = NumOrdenDe(vinculo, titulares);
        GrabaLinea<kFilaCotitular>(fichero, vinculo, datos);
    }
}

void CParcela::GrabaRegistrosCT(CStdioFile& fichero, short ger, short mun, short emenor,
                                const std::vector<CTitular>& titulares) const
{
    const int vinculos = static_cast<int>(m_cotitulares.size());
    if (vinculos < 2)
        return;
    std::string& texto = fichero.Borrador();
    CDatosLinea datos(ger, mun, emenor, Zona, Polig, Parcela);
    int escritos = 0;
    bool caben = true;
    for (const CCotitular& vinculo : m_cotitulares) {
        if (vinculo.orden == kOrdenPrincipal)
            continue;
        if (escritos++ % kGruposPorRegistro == 0) {
            if (datos.numRegistro++ > 0)
                texto += kFinRegistro;
            caben &= AnexaLinea<kCabeceraCT>(texto, vinculo, datos);
        }
        datos.numImputa = NumOrdenDe(vinculo, titulares);
        caben &= AnexaLinea<kGrupoCT>(texto, vinculo, datos);
    }
    // Counted from the links and not from the groups: without a main link, or with two of them, the
    // last record doesn't come out at nine.
    for (int i = vinculos - 1; i < datos.numRegistro * kGruposPorRegistro; ++i)
        texto += kGrupoVacio;
    texto += kFinRegistro;
    if (!caben)
        fichero.AnotaDesborde();
    fichero.WriteString(texto);
}

void CParcela::ReparteParticipaciones()
{
    int suma = 0;
    for (const CSubparcela& sub : m_subparcelas)
        suma = Suma(suma, sub.superfic);
    for (CCotitular& vinculo : m_cotitulares)
        vinculo.partici = suma == 0 ? 100 : Corta(100.0 * vinculo.partici / suma + 0.5);
    EligeTitularPrincipal();
}

void CParcela::RenumeraTitulares(const std::vector<int>& nuevos)
{
    for (CCotitular& vinculo : m_cotitulares) {
        if (vinculo.titular >= 0)
            vinculo.titular = nuevos[static_cast<std::size_t>(vinculo.titular)];
        m_mayorTitular = std::max(m_mayorTitular, vinculo.titular);
    }
    m_porTitular.Olvida();
}

int CParcela::IndicePrincipal() const
{
    const auto principal =
        std::find_if(m_cotitulares.begin(), m_cotitulares.end(),
                     [](const CCotitular& c) { return c.orden == kOrdenPrincipal; });
    return principal != m_cotitulares.end() ? static_cast<int>(principal - m_cotitulares.begin())
                                            : kNoEncontrado;
}

CCotitular CParcela::Principal() const
{
    const int i = IndicePrincipal();
    return i >= 0 ? m_cotitulares[static_cast<std::size_t>(i)] : CCotitular();
}
