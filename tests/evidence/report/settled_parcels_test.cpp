#include "evidence/report/reading/settled_parcels.h"

#include <gtest/gtest.h>

#include "cadastre/municipality.h"
#include "generator/synthetic_municipality.h"

// What a run stores of parcels and links, and the little that a balance keeps of them, are two
// pieces of code. Here both are told the same by lot.

using namespace informe;
using sintetico::CSorteo;

namespace {

constexpr int kTitulares = 8;

/// What the balance should say of a link, by what the parcel has.
CParcelasAsentadas::Vinculo Vinculado(CParcela& parcela, int titular)
{
    const int vinculos = static_cast<int>(parcela.Cotitulares().size());
    if (parcela.InsertaCotitular(titular, vinculos, 0, {}) != 1)
        return CParcelasAsentadas::Vinculo::YaEstaba;
    return vinculos == 0 ? CParcelasAsentadas::Vinculo::Primero : CParcelasAsentadas::Vinculo::Otro;
}

/// \param numeros  so many of each kind: many are seldom met again, few mostly
void Compara(CSorteo& sorteo, int numeros, bool enFila)
{
    CMunicipio municipio(1, 0);
    CParcelasAsentadas asentadas;
    for (int i = 0; i < 400; ++i) {
        const auto polig = static_cast<short>(enFila ? i / 20 : sorteo.Hasta(numeros));
        const int parcela = enFila ? i % 20 : sorteo.Hasta(numeros);
        const std::size_t antes = municipio.NumParcelas();
        const int sitio = municipio.InsertaParcela(CParcela(polig, parcela));
        ASSERT_EQ(asentadas.Inserta({polig, parcela}), municipio.NumParcelas() > antes);
        ASSERT_EQ(asentadas.Busca({polig, parcela}), sitio < 0 ? kNoEncontrado : sitio);
        if (municipio.NumParcelas() == 0)
            continue;
        const int otra = sorteo.Hasta(static_cast<int>(municipio.NumParcelas()));
        const int titular = sorteo.Hasta(kTitulares);
        ASSERT_EQ(asentadas.Vincula(otra, titular),
                  Vinculado(municipio.DameParcela(otra), titular));
    }
}

} // namespace

TEST(ParcelasAsentadas, AreThoseThatARunStores)
{
    CSorteo sorteo(5);
    for (const int numeros : {2, 9, 300})
        Compara(sorteo, numeros, false);
    Compara(sorteo, 0, true);
}
