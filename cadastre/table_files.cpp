#include "cadastre/table_files.h"

#include <array>

#include "cadastre/database.h"
#include "platform/memory_hint.h"
#include "vexa_libs/ccadena.h"

namespace {

template <class B, class F>
void GrabaTodo(B& base, CStdioFile& fichero, bool fijo, const char* cabecera, F graba)
{
    if (!fijo)
        fichero.WriteString(cabecera);
    for (auto& municipio : base.Municipios())
        graba(municipio);
}

/// Calls `graba` with each parcel. The number of its holder is written with it, which stands
/// anywhere in memory: the holders of the parcels that come next are asked for ahead.
template <class F>
void EnCadaParcela(const CMunicipio& municipio, F graba)
{
    constexpr std::size_t kDelante = 12;
    const std::vector<CParcela>& parcelas = municipio.Parcelas();
    const std::vector<CTitular>& titulares = municipio.Titulares();
    for (std::size_t i = 0; i < parcelas.size(); ++i) {
        if (i + kDelante < parcelas.size())
            for (const CCotitular& vinculo : parcelas[i + kDelante].Cotitulares())
                if (vinculo.titular >= 0)
                    PideMemoria(&titulares[static_cast<std::size_t>(vinculo.titular)].NumOrden);
        graba(parcelas[i]);
    }
}

} // namespace

int MunicipioDeFila(std::string_view fila)
{
    std::array<std::string_view, 2> campos;
    Leetira(fila, campos);
    return LeeEntero(campos.back());
}

bool EsCabecera(std::string_view fila)
{
    return fila.starts_with("Ger");
}

void CBaseCatastro::GrabaTitulares(CStdioFile& fichero, bool fijo) const
{
    GrabaTodo(*this, fichero, fijo, kCabeceraTitulares, [&](const CMunicipio& m) {
        for (const CTitular& titular : m.Titulares())
            titular.Graba(fichero, Ger, m.Mun, m.EMenor, fijo);
    });
}

void CBaseCatastro::GrabaParcelas(CStdioFile& fichero, bool fijo) const
{
    GrabaTodo(*this, fichero, fijo, kCabeceraParcelas, [&](const CMunicipio& m) {
        EnCadaParcela(m, [&](const CParcela& parcela) {
            parcela.Graba(fichero, Ger, m.Mun, m.EMenor, m.Titulares(), m.Parajes(), fijo);
        });
    });
}

void CBaseCatastro::GrabaModulos(CStdioFile& fichero, bool fijo) const
{
    GrabaTodo(*this, fichero, fijo, kCabeceraModulos, [&](const CMunicipio& m) {
        for (const CModulo& modulo : m.Modulos())
            modulo.Graba(fichero, Ger, m.Mun, m.EMenor, fijo);
    });
}

void CBaseCatastro::GrabaSubparcelas(CStdioFile& fichero, bool fijo)
{
    GrabaTodo(*this, fichero, fijo, kCabeceraSubparcelas, [&](CMunicipio& m) {
        for (CParcela& parcela : m.Parcelas())
            parcela.GrabaSubparcelas(fichero, Ger, m.Mun, m.EMenor, fijo);
    });
}

void CBaseCatastro::GrabaParajes(CStdioFile& fichero, bool fijo) const
{
    GrabaTodo(*this, fichero, fijo, kCabeceraParajes, [&](const CMunicipio& m) {
        for (const CParaje& paraje : m.Parajes())
            paraje.Graba(fichero, Ger, m.Mun, m.EMenor, fijo);
    });
}

void CBaseCatastro::GrabaCotitulares(CStdioFile& fichero, bool fijo) const
{
    GrabaTodo(*this, fichero, fijo, kCabeceraCotitulares, [&](const CMunicipio& m) {
        EnCadaParcela(m, [&](const CParcela& parcela) {
            parcela.GrabaCotitulares(fichero, Ger, m.Mun, m.EMenor, m.Titulares(), fijo);
        });
    });
}
