#include "cadastre/holder.h"

#include <algorithm>

#include "cadastre/column_reader.h"
#include "cadastre/column_writer.h"

namespace {

// clang-format off
constexpr auto kColumnasTitular = std::to_array<CColumna<CTitular>>({
    // field                read: column, width, least  list: the same    written: column, form   table: field, form
    {&CDatosLinea::Ger,     kNoSeLee,       kNoSeLee,       {0, "%03d"},      {0, "%03d"}},
    {&CDatosLinea::Mun,     kNoSeLee,       kNoSeLee,       {3, "%03d"},      {1, "%03d"}},
    {&CDatosLinea::EMenor,  kNoSeLee,       kNoSeLee,       {6, "%03d"},      kSinTabla},
    {"TL",                  kNoSeLee,       kNoSeLee,       {9, "%s"},        kSinTabla},
    {&CTitular::NumOrden,   {11, 7, 12},    {8, 7, 9},      {11, "%07d"},     {2, "% 8d"}},
    {&CTitular::Nombre,     {23, 60, 24},   {49, 62, 50},   {19, "%-60.60s"}, {3, "%-60s"}, kSinCola},
    {&CTitular::CJurid,     {83, 1, 84},    {111, 1, 112},  {79, "%c"},       {4, "%c"}},
    {&CTitular::DNI,        {84, 8, 85},    {40, 8, 41},    {80, "%-8.8s"},   {5, "%-8s"}},
    {&CTitular::letra,      {92, 1, 93},    {48, 1, 49},    {88, "%c"},       {6, "%c"}},
    {"00000",               kNoSeLee,       kNoSeLee,       {89, "%s"},       kSinTabla},
    {&CTitular::Exen,       {93, 1, 94},    kNoSeLee,       {141, "%c"},      {7, "%c"}},
    {&CTitular::Del,        {94, 2, 95},    {112, 2, 113},  {130, "%02d"},    {8, "%03d"}},
    {&CTitular::MunDom,     {96, 3, 97},    {129, 3, 130},  {132, "%03d"},    {9, "%03d"}},
    {&CTitular::sig,        {99, 5, 100},   {167, 5, 168},  {95, "%-2.2s"},   {10, "%-2.2s"}},
    {&CTitular::nombreVia,  {104, 25, 105}, {172, 25, 173}, {97, "%-15.15s"}, {11, "%-25s"}, kSinCola},
    {&CTitular::numPol,     {129, 4, 130},  {197, 4, 198},  {117, "%04d"},    {12, "% 5d"}},
    {&CTitular::bloq,       {144, 4, 145},  kNoSeLee,       {122, "%-2.2s"},  {13, "%-2s"}},
    {&CTitular::esc,        {173, 2, 174},  {202, 2, 203},  {124, "%-2.2s"},  {14, "%-2s"}},
    {&CTitular::plant,      {175, 3, 176},  {204, 3, 205},  {126, "%-2.2s"},  {15, "%-2s"}},
    {&CTitular::puert,      {178, 3, 179},  {207, 3, 208},  {128, "%-2.2s"},  {16, "%-3s"}},
    {&CTitular::CP,         {181, 5, 182},  {210, 5, 211},  {135, "%05d"},    {17, "%05d"}},
});
// clang-format on

constexpr auto kRegistroTitular = RegistroFijo(kColumnasTitular, kAnchoRegistro);
constexpr auto kFilaTitular = FilaTabla(kColumnasTitular);

// Required fields of a row of Titulares.txt, and how many it has.
constexpr std::size_t kCampoNumOrden = 2;
constexpr std::size_t kCampoNombre = 3;
constexpr std::size_t kCampoDNI = 5;
constexpr std::size_t kCamposTitular = 18;

constexpr struct {
    std::string_view palabra;
    const char* sig;
} kTiposVia[] = {
    {"C/", "CL"},  {"CL", "CL"},   {"AVDA", "AV"}, {"AVDA.", "AV"}, {"AVD", "AV"},  {"PASEO", "PS"},
    {"PS", "PS"},  {"PLZA", "PZ"}, {"PZA", "PZ"},  {"PZ", "PZ"},    {"CMNO", "CM"}, {"CM", "CM"},
    {"URB", "UR"}, {"UR", "UR"},   {"CRTA", "CR"}, {"CR", "CR"},
};

/// Reads a line of fixed columns. An asterisk in the first column of the DNI pushes its eight
/// characters one column on, over the place of the letter.
template <auto Cual>
void LeeLinea(std::string_view linea, CTitular& titular)
{
    const CLineaFija fija(linea);
    CDatosLinea datos;
    LeeColumnas<kColumnasTitular, Cual>(fija, titular, datos);
    if (!std::string_view(titular.DNI).starts_with('*'))
        return;
    constexpr CLectura kDonde = std::find_if(kColumnasTitular.begin(), kColumnasTitular.end(),
                                             [](const CColumna<CTitular>& c) {
                                                 return c.campo == CCampo<CTitular>(&CTitular::DNI);
                                             })
                                    ->*Cual;
    titular.DNI = fija.Texto(kDonde.columna + 1, kDonde.ancho);
    titular.letra = ' ';
}

} // namespace

CTitular::CTitular(const CString& direccion)
{
    const std::string_view linea = direccion;
    const std::string_view palabra = linea.substr(0, linea.find(' '));
    for (const auto& tipo : kTiposVia)
        if (tipo.palabra == palabra)
            sig = tipo.sig;
    const std::size_t detras = palabra.size() + 1;
    nombreVia = detras < linea.size() ? linea.substr(detras) : linea;
}

bool CTitular::Lee(std::string_view linea, int modo)
{
    if (modo == kModoCatastro)
        LeeLinea<&CColumna<CTitular>::catastro>(linea, *this);
    if (modo == kModoLista)
        LeeLinea<&CColumna<CTitular>::lista>(linea, *this);
    if (modo != kModoTabla)
        return true;
    std::array<std::string_view, kCamposTitular> campos;
    Leetira(linea, campos);
    if (campos[kCampoNumOrden].empty() || campos[kCampoNombre].empty() || campos[kCampoDNI].empty())
        return false;
    CDatosLinea datos;
    LeeFila<kColumnasTitular>(campos, *this, datos);
    return true;
}

void CTitular::Compon(std::string& linea, int modo) const
{
    if (modo == kModoLista)
        ComponColumnas<kColumnasTitular, &CColumna<CTitular>::lista>(linea, *this, {});
    else
        ComponColumnas<kColumnasTitular, &CColumna<CTitular>::catastro>(linea, *this, {});
}

void CTitular::Graba(CStdioFile& fichero, short ger, short mun, short emenor, bool fijo) const
{
    const CDatosLinea datos(ger, mun, emenor);
    if (fijo)
        GrabaLinea<kRegistroTitular>(fichero, *this, datos);
    else
        GrabaLinea<kFilaTitular>(fichero, *this, datos);
}

int CTitular::InsertaPropiedad(int parcela, int partici, const CString& Tit)
{
    // The readers come with one parcel after the other: one behind all others needs no look-up.
    if (parcela <= m_mayorParcela &&
        m_porParcela.Busca(m_propiedades, &CPropiedad::parcela, parcela) >= 0)
        return kPropiedadRepetida;
    m_propiedades.push_back({parcela, partici, Tit});
    m_mayorParcela = std::max(m_mayorParcela, parcela);
    return 1;
}

void CTitular::RenumeraParcelas(const std::vector<int>& nuevos)
{
    m_mayorParcela = -1;
    for (CPropiedad& propiedad : m_propiedades) {
        propiedad.parcela = nuevos[static_cast<std::size_t>(propiedad.parcela)];
        m_mayorParcela = std::max(m_mayorParcela, propiedad.parcela);
    }
    m_porParcela.Olvida();
}
