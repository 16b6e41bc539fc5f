#include "cadastre/parcel.h"

#include <algorithm>
#include <array>
#include <set>
#include <span>
#include <unordered_map>

#include "cadastre/column_reader.h"
#include "cadastre/column_writer.h"
#include "cadastre/sorting.h"
#include "cadastre/wrapping.h"

namespace {

// clang-format off
constexpr auto kColumnasParcela = std::to_array<CColumna<CParcela>>({
    // field                        read: column, width, least  list: the same  written: column, form  table: field, form
    {&CDatosLinea::Ger,             kNoSeLee,     kNoSeLee,     {0, "%03d"},       {0, "%03d"}},
    {&CDatosLinea::Mun,             kNoSeLee,     kNoSeLee,     {3, "%03d"},       {1, "%03d"}},
    {&CDatosLinea::EMenor,          kNoSeLee,     kNoSeLee,     {6, "%03d"},       kSinTabla},
    {"PR",                          kNoSeLee,     kNoSeLee,     {9, "%s"},         kSinTabla},
    {&CParcela::Zona,               {11, 2, 13},  {19, 2, 21},  {11, "%02d"},      {2, "% 4d"}},
    {&CParcela::Polig,              {13, 3, 15},  {21, 3, 23},  {13, "%03d"},      {3, "% 4d"}},
    {&CParcela::Parcela,            {16, 5, 18},  {24, 5, 26},  {16, "%05d"},      {4, "% 6d"}},
    {&CDatosLinea::hectareas,       {21, 5, 23},  kNoSeLee,     {21, "%05d"},      kSinTabla},
    {&CDatosLinea::areas,           {26, 2, 28},  kNoSeLee,     {26, "%02d"},      kSinTabla},
    {&CDatosLinea::centiareas,      {28, 2, 30},  kNoSeLee,     {28, "%02d"},      kSinTabla},
    {&CParcela::Superficie,         kNoSeLee,     {67, 10, 69}, kNoSeEscribe,      {5, "% 10d"}},
    {&CParcela::valorCatastral,     {30, 12, 32}, kNoSeLee,     kNoSeEscribe,      {6, "% 13d"}},
    {&CParcela::añoVal,             {42, 4, 44},  kNoSeLee,     kNoSeEscribe,      {7, "% 5d"}},
    {&CDatosLinea::numImputa,       kNoSeLee,     kNoSeLee,     {30, "%07d"},      {8, "% 8d"}},
    {&CDatosLinea::Tit,             kNoSeLee,     kNoSeLee,     {37, "%-2.2s"},    kSinTabla},
    {&CDatosLinea::Tit,             kNoSeLee,     kNoSeLee,     kNoSeEscribe,      {9, "%-2s"}},
    {&CDatosLinea::partici,         kNoSeLee,     kNoSeLee,     {39, "%05d"},      {10, "% 6d"}},
    {&CDatosLinea::numVinculos,     kNoSeLee,     kNoSeLee,     {44, "%03d"},      kSinTabla},
    {&CDatosLinea::gruposVinculos,  kNoSeLee,     kNoSeLee,     {47, "%02d"},      kSinTabla},
    {&CParcela::numOrtofoto,        {55, 10, 57}, kNoSeLee,     {58, "%-10.10s"},  {11, "%-10.10s"}},
    {&CParcela::x,                  {65, 3, 67},  kNoSeLee,     {68, "%03d"},      {12, "% 4d"}},
    {&CParcela::y,                  {68, 3, 70},  kNoSeLee,     {71, "%03d"},      {13, "% 4d"}},
    {&CDatosLinea::numParaje,       kNoSeLee,     kNoSeLee,     {94, "%05d"},      {14, "% 6d"}},
    {&CParcela::clase,              kNoSeLee,     kNoSeLee,     {108, "%c"},       kSinTabla},
    {&CParcela::subclase,           kNoSeLee,     kNoSeLee,     {109, "%02d"},     kSinTabla},
    {&CParcela::claveConc,          {76, 1, 78},  kNoSeLee,     {111, "%c"},       {15, "%c"}},
});
// clang-format on

constexpr auto kRegistroParcela = RegistroFijo(kColumnasParcela, kAnchoRegistro);
constexpr auto kFilaParcela = FilaTabla(kColumnasParcela);

// Required fields of a row of Parcelas.txt, and how many it has.
constexpr std::size_t kCampoZona = 2;
constexpr std::size_t kCampoPolig = 3;
constexpr std::size_t kCampoParcela = 4;
constexpr std::size_t kCamposParcela = 16;

/// Link groups of the PR record. It counts by tens, while a CT record carries nine links.
int GruposVinculos(int vinculos)
{
    return vinculos < 2 ? 0 : (vinculos - 1) / 10 + 1;
}

/// A set of letters. The few that a parcel has as a rule need no memory of their own.
class CLetrasVistas {
public:
    /// False if the letter was there.
    bool Añade(std::string_view letra)
    {
        const std::span vistas(m_pocas.data(), m_cuantas);
        if (std::find(vistas.begin(), vistas.end(), letra) != vistas.end())
            return false;
        if (m_cuantas == m_pocas.size())
            return m_otras.insert(letra).second;
        m_pocas[m_cuantas++] = letra;
        return true;
    }

private:
    std::array<std::string_view, 12> m_pocas;
    std::size_t m_cuantas = 0;
    std::set<std::string_view> m_otras;
};

} // namespace

bool CParcela::Lee(std::string_view linea, int modo)
{
    Superficie = 0;
    CDatosLinea datos;
    if (modo == kModoTabla) {
        std::array<std::string_view, kCamposParcela> campos;
        Leetira(linea, campos);
        if (campos[kCampoZona].empty() || campos[kCampoPolig].empty() ||
            campos[kCampoParcela].empty())
            return false;
        LeeFila<kColumnasParcela>(campos, *this, datos);
    } else if (modo == kModoLista) {
        LeeColumnas<kColumnasParcela, &CColumna<CParcela>::lista>(CLineaFija(linea), *this, datos);
    } else {
        LeeColumnas<kColumnasParcela, &CColumna<CParcela>::catastro>(CLineaFija(linea), *this,
                                                                     datos);
        Superficie = datos.DameSuperficie();
    }
    return true;
}

void CParcela::Compon(std::string& linea, int modo) const
{
    CDatosLinea datos;
    datos.PonSuperficie(Superficie);
    if (modo == kModoLista)
        ComponColumnas<kColumnasParcela, &CColumna<CParcela>::lista>(linea, *this, datos);
    else
        ComponColumnas<kColumnasParcela, &CColumna<CParcela>::catastro>(linea, *this, datos);
}

void CParcela::Graba(CStdioFile& fichero, short ger, short mun, short emenor,
                     const std::vector<CTitular>& titulares, const std::vector<CParaje>& parajes,
                     bool fijo) const
{
    if (fijo && !salvar)
        return;
    CDatosLinea datos(ger, mun, emenor);
    const int principal = TitularPrincipal();
    datos.numImputa = principal >= 0 ? titulares[static_cast<std::size_t>(principal)].NumOrden : -1;
    datos.Tit = TitPrincipal();
    datos.partici = ParticiPrincipal();
    datos.numVinculos = static_cast<int>(m_cotitulares.size());
    datos.gruposVinculos = GruposVinculos(datos.numVinculos);
    datos.numParaje = paraje >= 0 ? parajes[static_cast<std::size_t>(paraje)].NumOrden : 0;
    datos.PonSuperficie(Superficie);
    if (fijo)
        GrabaLinea<kRegistroParcela>(fichero, *this, datos);
    else
        GrabaLinea<kFilaParcela>(fichero, *this, datos);
}

int CParcela::BuscaSubparcela(const CString& letra, int desde) const
{
    if (desde <= 0)
        return m_porLetra.Primero(m_subparcelas, &CSubparcela::letra, letra);
    const auto anterior = static_cast<std::size_t>(desde) - 1;
    if (anterior < m_subparcelas.size() && m_subparcelas[anterior].letra == letra)
        return m_porLetra.Siguiente(m_subparcelas, &CSubparcela::letra, desde - 1);
    for (std::size_t i = anterior + 1; i < m_subparcelas.size(); ++i)
        if (m_subparcelas[i].letra == letra)
            return static_cast<int>(i);
    return kNoEncontrado;
}

int CParcela::InsertaSubparcela(CSubparcela subparcela, bool& repetida)
{
    repetida = BuscaSubparcela(subparcela.letra, 0) >= 0;
    m_subparcelas.push_back(std::move(subparcela));
    return static_cast<int>(m_subparcelas.size()) - 1;
}

void CParcela::OrdenaSubparcelas()
{
    OrdenaPor(m_subparcelas,
              [](const CSubparcela& subparcela) { return std::string_view(subparcela.letra); });
    m_porLetra.Olvida();
}

void CParcela::CompletaSuperficies()
{
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
    CLetrasVistas contadas;
    for (const CSubparcela& sub : m_subparcelas) {
        if (!sub.salvar)
            continue;
        const bool nueva = contadas.Añade(sub.letra);
        if (nueva || sub.tipo == kTipoAbstracta)
            suma = Suma(suma, sub.superfic);
    }
}
