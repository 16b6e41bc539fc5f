#include "vexa_to_infograf/infograf_record.h"

#include "cadastre/column_writer.h"

namespace {

constexpr int kAnchoInfograf = 126;

using R = CRegistroInfograf;

// clang-format off
constexpr auto kColumnasInfograf = std::to_array<CColumna<R>>({
    // field            read      list      written: column, form
    {&R::tipo,        kNoSeLee, kNoSeLee, {0, "%-3s"},       kSinTabla},
    {"000",           kNoSeLee, kNoSeLee, {3, "%s"},         kSinTabla},
    {"00",            kNoSeLee, kNoSeLee, {6, "%s"},         kSinTabla},
    {&R::Polig,       kNoSeLee, kNoSeLee, {8, "%03d"},       kSinTabla},
    {&R::Parcela,     kNoSeLee, kNoSeLee, {11, "%05d"},      kSinTabla},
    {&R::codigo,      kNoSeLee, kNoSeLee, {16, "%-16s"},     kSinTabla},
    {&R::valor,       kNoSeLee, kNoSeLee, {32, "% 4s"},      kSinTabla},
    {&R::x,           kNoSeLee, kNoSeLee, {36, "% 9d"},      kSinTabla},
    {&R::y,           kNoSeLee, kNoSeLee, {45, "% 10d"},     kSinTabla},
    {&R::area,        kNoSeLee, kNoSeLee, {55, "% 16.2lf"},  kSinTabla},
    {&R::numOrtofoto, kNoSeLee, kNoSeLee, {71, "%-10s"},     kSinTabla},
    {&R::marca,       kNoSeLee, kNoSeLee, {81, "%-1s"},      kSinTabla},
    {&R::letras,      kNoSeLee, kNoSeLee, {82, "%-4s"},      kSinTabla},
});
// clang-format on

constexpr auto kRegistro = RegistroFijo(kColumnasInfograf, kAnchoInfograf);

} // namespace

CRegistroInfograf::CRegistroInfograf(const CClaseInfograf& clase)
    : tipo(clase.tipo), codigo(clase.codigo), valor(clase.valor), marca(clase.marca)
{
}

void CRegistroInfograf::Graba(CStdioFile& csp) const
{
    GrabaLinea<kRegistro>(csp, *this, {});
}
