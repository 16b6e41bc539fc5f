#include "cadastre/infograf_record.h"

#include "cadastre/column_writer.h"
#include "cadastre/infograf_record_columns.h"

namespace {

constexpr int kAnchoInfograf = 126;

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
