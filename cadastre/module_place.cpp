#include "cadastre/module_place.h"

#include "cadastre/column_reader.h"
#include "cadastre/column_writer.h"
#include "cadastre/wrapping.h"

namespace {

constexpr int kAnchoModulo = 80; // the one record that isn't 150 wide

// clang-format off
constexpr auto kColumnasModulo = std::to_array<CColumna<CModulo>>({
    // field                    read: column, width, least   list      written: column, form   table: field, form
    {&CDatosLinea::Ger,         kNoSeLee,      kNoSeLee, {0, "%03d"},   {0, "%03d"}},
    {&CDatosLinea::Mun,         kNoSeLee,      kNoSeLee, {3, "%03d"},   {1, "%03d"}},
    {&CDatosLinea::EMenor,      kNoSeLee,      kNoSeLee, {6, "%03d"},   kSinTabla},
    {"MD",                      kNoSeLee,      kNoSeLee, {9, "%s"},     kSinTabla},
    {&CModulo::Cal,             {11, 2, 13},   kNoSeLee, {11, "%-2s"},  {2, "%-2s"}},
    {&CModulo::Inten,           {13, 2, 15},   kNoSeLee, {13, "%02d"},  {3, "% 3d"}},
    {"-",                       kNoSeLee,      kNoSeLee, {15, "%s"},    kSinTabla},
    {&CModulo::Denominacion,    {16, 40, 18},  kNoSeLee, kNoSeEscribe,  {4, "%-40s"}, kSinCola},
    {&CModulo::TipoEvalua,      {56, 6, 58},   kNoSeLee, {16, "%06d"},  {5, "% 7d"}},
    {"00",                      kNoSeLee,      kNoSeLee, {22, "%s"},    kSinTabla},
    {&CModulo::Jornadas,        {62, 8, 64},   kNoSeLee, {60, "%08d"},  kSinTabla},
    {&CDatosLinea::jornadas,    kNoSeLee,      kNoSeLee, kNoSeEscribe,  {6, "% 11.2lf"}},
    {&CModulo::EConce1,         {70, 4, 72},   kNoSeLee, kNoSeEscribe,  {7, "% 5d"}},
    {&CModulo::VConce1,         {74, 6, 76},   kNoSeLee, kNoSeEscribe,  {8, "% 7d"}},
    {&CModulo::EConce2,         {80, 4, 82},   kNoSeLee, kNoSeEscribe,  {9, "% 5d"}},
    {&CModulo::VConce2,         {84, 6, 86},   kNoSeLee, kNoSeEscribe,  {10, "% 7d"}},
    {&CModulo::EConce3,         {90, 4, 92},   kNoSeLee, kNoSeEscribe,  {11, "% 5d"}},
    {&CModulo::VConce3,         {94, 6, 96},   kNoSeLee, kNoSeEscribe,  {12, "% 7d"}},
    {&CModulo::Exen,            {100, 1, 102}, kNoSeLee, kNoSeEscribe,  {13, "%c"}},
    {&CModulo::ConIBI,          {101, 1, 103}, kNoSeLee, kNoSeEscribe,  {14, "%c"}},
    {&CModulo::ConJornadas,     {102, 1, 104}, kNoSeLee, kNoSeEscribe,  {15, "%c"}},
});

constexpr auto kColumnasParaje = std::to_array<CColumna<CParaje>>({
    {&CDatosLinea::Ger,         kNoSeLee,      kNoSeLee, {0, "%03d"},   {0, "%03d"}},
    {&CDatosLinea::Mun,         kNoSeLee,      kNoSeLee, {3, "%03d"},   {1, "%03d"}},
    {&CDatosLinea::EMenor,      kNoSeLee,      kNoSeLee, {6, "%03d"},   {2, "% 4d"}},
    {"PJ",                      kNoSeLee,      kNoSeLee, {9, "%s"},     kSinTabla},
    {&CParaje::NumOrden,        {11, 5, 12},   kNoSeLee, {11, "%05d"},  {3, "% 6d"}},
    {&CParaje::Nombre,          {16, 30, 17},  kNoSeLee, {16, "%-30s"}, {4, "%-30s"}, kSinCola},
});
// clang-format on

constexpr auto kRegistroModulo = RegistroFijo(kColumnasModulo, kAnchoModulo);
constexpr auto kFilaModulo = FilaTabla(kColumnasModulo);
constexpr auto kRegistroParaje = RegistroFijo(kColumnasParaje, kAnchoRegistro);
constexpr auto kFilaParaje = FilaTabla(kColumnasParaje);

// Fields of a row of Modulos.txt that are asked for beside the columns, and how many it has.
constexpr std::size_t kCampoCal = 2;
constexpr std::size_t kCampoDenominacion = 4;
constexpr std::size_t kCampoJornadas = 6;
constexpr std::size_t kCamposModulo = 16;

} // namespace

bool CModulo::Lee(std::string_view linea, int modo)
{
    CDatosLinea datos;
    if (modo == kModoTabla) {
        std::array<std::string_view, kCamposModulo> campos;
        Leetira(linea, campos);
        if (campos[kCampoCal].empty() || campos[kCampoDenominacion].empty())
            return false;
        LeeFila<kColumnasModulo>(campos, *this, datos);
        if (!campos[kCampoJornadas].empty())
            Jornadas = Corta(datos.jornadas * 100); // cut, not rounded: 0.29 days are 28 hundredths
    } else {
        LeeColumnas<kColumnasModulo, &CColumna<CModulo>::catastro>(CLineaFija(linea), *this, datos);
    }
    return true;
}

void CModulo::Compon(std::string& linea, int /*modo*/) const
{
    ComponColumnas<kColumnasModulo, &CColumna<CModulo>::catastro>(linea, *this, {});
}

void CModulo::Graba(CStdioFile& fichero, short ger, short mun, short emenor, bool fijo) const
{
    CDatosLinea datos(ger, mun, emenor);
    datos.jornadas = Jornadas * 0.01;
    if (fijo)
        GrabaLinea<kRegistroModulo>(fichero, *this, datos);
    else
        GrabaLinea<kFilaModulo>(fichero, *this, datos);
}

void CParaje::Lee(std::string_view linea)
{
    CDatosLinea datos;
    LeeColumnas<kColumnasParaje, &CColumna<CParaje>::catastro>(CLineaFija(linea), *this, datos);
}

void CParaje::Compon(std::string& linea) const
{
    ComponColumnas<kColumnasParaje, &CColumna<CParaje>::catastro>(linea, *this, {});
}

void CParaje::Graba(CStdioFile& fichero, short ger, short mun, short emenor, bool fijo) const
{
    const CDatosLinea datos(ger, mun, emenor);
    if (fijo)
        GrabaLinea<kRegistroParaje>(fichero, *this, datos);
    else
        GrabaLinea<kFilaParaje>(fichero, *this, datos);
}
