#include "cadastre/parcel.h"

#include <algorithm>
#include <unordered_map>

#include "cadastre/column_reader.h"
#include "cadastre/column_writer.h"
#include "cadastre/parcel_columns.h"
#include "cadastre/wrapping.h"

namespace {

/// Link groups of the PR record. It counts by tens, while a CT record carries nine links.
int GruposVinculos(int vinculos)
{
    return vinculos < 2 ? 0 : (vinculos - 1) / 10 + 1;
}

} // namespace

bool CParcela::Lee(std::string_view linea, int modo, CDatosLinea& datos)
{
    Superficie = 0;
    if (modo == kModoTabla)
        return LeeFila<kColumnasParcela>(linea, *this, datos);
    if (modo == kModoLista) {
        LeeColumnas<kColumnasParcela, &CColumna<CParcela>::lista>(CLineaFija(linea), *this, datos);
        return true;
    }
    LeeColumnas<kColumnasParcela, &CColumna<CParcela>::catastro>(CLineaFija(linea), *this, datos);
    Superficie = datos.DameSuperficie();
    return true;
}

bool CParcela::Lee(std::string_view linea, int modo)
{
    CDatosLinea datos;
    return Lee(linea, modo, datos);
}

void CParcela::Graba(CStdioFile& fichero, short ger, short mun, short emenor,
                     const std::vector<CTitular>& titulares, const std::vector<CParaje>& parajes,
                     bool fijo) const
{
    if (fijo && !salvar)
        return;
    CDatosLinea datos(ger, mun, emenor);
    const CCotitular principal = Principal();
    datos.numImputa = principal.titular >= 0
                          ? titulares[static_cast<std::size_t>(principal.titular)].NumOrden
                          : -1;
    datos.Tit = principal.Tit;
    datos.partici = principal.partici;
    datos.numVinculos = static_cast<int>(m_cotitulares.size());
    datos.gruposVinculos = GruposVinculos(datos.numVinculos);
    datos.numParaje = paraje >= 0 ? parajes[static_cast<std::size_t>(paraje)].NumOrden : 0;
    datos.PonSuperficie(Superficie);
    GrabaRegistro<kColumnasParcela>(fichero, *this, datos, fijo);
}

int CParcela::BuscaSubparcela(const CString& letra, int desde) const
{
    if (desde <= 0)
        return m_porLetra.Busca(m_subparcelas, &CSubparcela::letra, letra);
    const auto anterior = static_cast<std::size_t>(desde) - 1;
    if (anterior < m_subparcelas.size() && m_subparcelas[anterior].letra == letra)
        return m_porLetra.Siguiente(m_subparcelas, &CSubparcela::letra, desde - 1);
    for (std::size_t i = anterior + 1; i < m_subparcelas.size(); ++i)
        if (m_subparcelas[i].letra == letra)
            return static_cast<int>(i);
    return kNoEncontrado;
}

int CParcela::InsertaSubparcela(CSubparcela&& subparcela, bool& repetida)
{
    repetida = BuscaSubparcela(subparcela.letra, 0) >= 0;
    m_subparcelas.push_back(std::move(subparcela));
    return static_cast<int>(m_subparcelas.size()) - 1;
}

void CParcela::CompletaSuperficies()
{
    constexpr std::size_t kPocas = 12; // for which a walk costs less than a table
    if (m_subparcelas.size() <= kPocas) {
        for (CSubparcela& sub : m_subparcelas) {
            const auto tiene = [&](const CSubparcela& otra) {
                return otra.superfic > 0 && otra.letra == sub.letra;
            };
            if (sub.superfic == 0)
                if (const auto hallada =
                        std::find_if(m_subparcelas.begin(), m_subparcelas.end(), tiene);
                    hallada != m_subparcelas.end())
                    sub.superfic = hallada->superfic;
        }
        return;
    }
    std::unordered_map<std::string_view, int> porLetra; // of each letter the first surface above 0
    for (const CSubparcela& sub : m_subparcelas)
        if (sub.superfic > 0)
            porLetra.try_emplace(sub.letra, sub.superfic);
    for (CSubparcela& sub : m_subparcelas)
        if (const auto hallada = porLetra.find(sub.letra);
            sub.superfic == 0 && hallada != porLetra.end())
            sub.superfic = hallada->second;
}

void CParcela::GrabaSubparcelas(CStdioFile& fichero, short ger, short mun, short emenor, bool fijo)
{
    const auto sinSuperficie = [](const CSubparcela& sub) { return sub.superfic == 0; };
    if (std::any_of(m_subparcelas.begin(), m_subparcelas.end(), sinSuperficie))
        CompletaSuperficies();
    for (const CSubparcela& sub : m_subparcelas)
        sub.Graba(fichero, ger, mun, emenor, Zona, Polig, Parcela, fijo);
}

void CParcela::SumaSuperficies(int& superficie, int& suma) const
{
    superficie = Superficie;
    suma = 0;
    const auto primeraSalvada = [this](const CString& letra) {
        int i = BuscaSubparcela(letra, 0);
        while (!m_subparcelas[static_cast<std::size_t>(i)].salvar)
            i = BuscaSubparcela(letra, i + 1);
        return i;
    };
    for (int i = 0; const CSubparcela& sub : m_subparcelas) {
        if (sub.salvar && (sub.tipo == kTipoAbstracta || primeraSalvada(sub.letra) == i))
            suma = Suma(suma, sub.superfic);
        ++i;
    }
}
