#include "evidence/report/findings/changes/changes.h"

#include <algorithm>
#include <deque>
#include <map>

#include <gtest/gtest.h>

#include "generator/synthetic_municipality.h"

// Surfaces tell splits, and some always add up by chance. Here polygons by lot, with and without
// splits: few may be told where none is, and hardly one be missed that follows the custom.

using namespace informe;
using sintetico::CSorteo;

namespace {

using Que = CCambioParcela::Que;

constexpr int kPoligonos = 200;

/// What changed in a polygon.
class CPoligonoCambiado {
public:
    void Pon(Que que, int parcela, int metros)
    {
        CEstadoMunicipio::CParcela& estado = m_estados.emplace_back();
        estado.superficie = metros;
        CCambioParcela una{{1, 1, parcela}, que};
        (que == Que::Nueva ? una.ahora : una.antes) = &estado;
        m_cambios.parcelas.push_back(una);
    }
    /// The splits and joins, one number for another aside.
    std::vector<CReparto> Repartos()
    {
        std::sort(m_cambios.parcelas.begin(), m_cambios.parcelas.end(),
                  [](const auto& a, const auto& b) { return a.clave < b.clave; });
        BuscaRepartos(m_cambios);
        std::erase_if(m_cambios.repartos,
                      [](const CReparto& r) { return r.que == CReparto::Que::OtroNumero; });
        return m_cambios.repartos;
    }

private:
    std::deque<CEstadoMunicipio::CParcela> m_estados;
    CCambios m_cambios;
};

/// Small surfaces fit by chance more often than large ones.
int Metros(CSorteo& sorteo)
{
    return 50 + sorteo.Hasta(950);
}

/// In how many polygons something is told of three that are gone and twelve that are new.
/// \param salto  the new ones' numbers are up to so many apart
int Falsas(CSorteo& sorteo, int salto)
{
    int falsas = 0;
    for (int i = 0; i < kPoligonos; ++i) {
        CPoligonoCambiado poligono;
        for (int vieja = 1; vieja <= 3; ++vieja)
            poligono.Pon(Que::Desaparecida, 20 * vieja, Metros(sorteo));
        int numero = 200;
        for (int nueva = 0; nueva < 12; ++nueva)
            poligono.Pon(Que::Nueva, numero += 1 + sorteo.Hasta(salto), Metros(sorteo));
        falsas += poligono.Repartos().empty() ? 0 : 1;
    }
    return falsas;
}

/// Draws a parcel and its parts, whose surfaces are rounded each for itself.
/// \param numero  of the last part before, and then of the last one of these
void PonDividida(CSorteo& sorteo, CPoligonoCambiado& poligono, int entera, int& numero, bool agrupa)
{
    constexpr int kDecimas = 10;
    int suma = 0;
    for (int pieza = 2 + sorteo.Hasta(4); pieza > 0; --pieza) {
        const int decimas = Metros(sorteo) * kDecimas + sorteo.Hasta(kDecimas);
        suma += decimas;
        poligono.Pon(agrupa ? Que::Desaparecida : Que::Nueva, ++numero,
                     (decimas + kDecimas / 2) / kDecimas);
    }
    poligono.Pon(agrupa ? Que::Nueva : Que::Desaparecida, entera, (suma + kDecimas / 2) / kDecimas);
}

/// How many of a hundred splits, or joins, are told, each with the parts that it has. Ten further
/// parcels of other numbers come or go.
int Halladas(CSorteo& sorteo, bool agrupa)
{
    int todas = 0;
    int halladas = 0;
    for (int i = 0; i < kPoligonos; ++i) {
        CPoligonoCambiado poligono;
        std::map<int, int> ultimaDe; // the last part of each
        int numero = 200;
        for (int entera = 1 + sorteo.Hasta(4); entera > 0; --entera) {
            PonDividida(sorteo, poligono, entera, numero, agrupa);
            ultimaDe[entera] = numero;
        }
        todas += static_cast<int>(ultimaDe.size());
        for (int otra = 0; otra < 10; ++otra)
            poligono.Pon(agrupa ? Que::Desaparecida : Que::Nueva, numero += 3, Metros(sorteo));
        for (const CReparto& reparto : poligono.Repartos())
            halladas += ultimaDe[(agrupa ? reparto.a : reparto.de).front().parcela] ==
                                (agrupa ? reparto.de : reparto.a).back().parcela
                            ? 1
                            : 0;
    }
    return halladas * 100 / todas;
}

} // namespace

TEST(Repartos, AreHardlyToldByChance)
{
    CSorteo sorteo(3);
    EXPECT_LE(Falsas(sorteo, 16), 5);
    EXPECT_LE(Falsas(sorteo, 1), 10) << "where all new numbers follow one another";
}

TEST(Repartos, AreToldWhereNumbersFollowOneAnother)
{
    CSorteo sorteo(4);
    EXPECT_GE(Halladas(sorteo, false), 97);
    EXPECT_GE(Halladas(sorteo, true), 97);
}
