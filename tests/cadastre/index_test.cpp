#include "cadastre/index.h"

#include <algorithm>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

struct CCosa {
    std::string nombre;
    int numero;
};

template <class P, class K>
int BuscaAndando(const std::vector<CCosa>& cosas, Gana gana, P proyeccion, const K& valor)
{
    int hallada = -3;
    for (std::size_t i = 0; i < cosas.size(); ++i)
        if (std::invoke(proyeccion, cosas[i]) == valor && (gana == Gana::Ultimo || hallada < 0))
            hallada = static_cast<int>(i);
    return hallada;
}

std::string Nombre(int i)
{
    return i == 0 ? "" : "NOMBRE QUE NO CABE EN EL OBJETO " + std::to_string(i);
}

/// Grows, asks, gives numbers to elements that have none, reorders and copies, in any order.
template <Gana G>
void CompruebaContraElPaseo(unsigned semilla)
{
    std::mt19937 azar(semilla);
    const auto hasta = [&](int n) { return static_cast<int>(azar() % static_cast<unsigned>(n)); };
    const int distintos = 1 + hasta(60);
    std::vector<CCosa> cosas;
    CIndice<G> porNombre;
    CIndice<G> porNumero;
    constexpr int kSinNumero = -1;
    for (int paso = 0; paso < 150; ++paso) {
        const int que = hasta(20);
        if (que < 12) {
            cosas.push_back({Nombre(hasta(distintos)), hasta(distintos) - 1});
        } else if (que < 16 && !cosas.empty()) {
            const int i = hasta(static_cast<int>(cosas.size()));
            CCosa& cosa = cosas[static_cast<std::size_t>(i)];
            if (cosa.numero != kSinNumero)
                continue;
            cosa.numero = hasta(distintos);
            porNumero.ClaveNueva(cosas, &CCosa::numero, i);
        } else if (que == 17) {
            std::shuffle(cosas.begin(), cosas.end(), azar);
            porNombre.Olvida();
            porNumero.Olvida();
        } else if (que == 18) {
            CIndice<G> copia(porNombre);
            porNombre = std::move(copia);
            porNumero = CIndice<G>(porNumero);
        }
        const std::string nombre = Nombre(hasta(distintos));
        ASSERT_EQ(porNombre.Busca(cosas, &CCosa::nombre, nombre),
                  BuscaAndando(cosas, G, &CCosa::nombre, nombre));
        const int numero = hasta(distintos);
        ASSERT_EQ(porNumero.Busca(cosas, &CCosa::numero, numero),
                  BuscaAndando(cosas, G, &CCosa::numero, numero));
    }
}

/// The same for all elements with a key, which come one after the other.
void CompruebaLaCadena(unsigned semilla)
{
    std::mt19937 azar(semilla);
    std::vector<CCosa> cosas;
    CIndice<Gana::Todos> porNumero;
    const int distintos = 1 + static_cast<int>(azar() % 9);
    for (int paso = 0; paso < 60; ++paso) {
        cosas.push_back({"", static_cast<int>(azar() % static_cast<unsigned>(distintos))});
        if (azar() % 16 == 0) {
            std::shuffle(cosas.begin(), cosas.end(), azar);
            porNumero.Olvida();
        }
        const int numero = static_cast<int>(azar() % static_cast<unsigned>(distintos));
        int hallada = porNumero.Busca(cosas, &CCosa::numero, numero);
        for (std::size_t i = 0; i < cosas.size(); ++i) {
            if (cosas[i].numero != numero)
                continue;
            ASSERT_EQ(hallada, static_cast<int>(i));
            hallada = porNumero.Siguiente(cosas, &CCosa::numero, hallada);
        }
        ASSERT_EQ(hallada, -3);
    }
}

} // namespace

TEST(Indice, AnswersAsAWalkDoes)
{
    for (unsigned semilla = 1; semilla <= 200; ++semilla) {
        SCOPED_TRACE(semilla);
        CompruebaContraElPaseo<Gana::Primero>(semilla);
        CompruebaContraElPaseo<Gana::Ultimo>(semilla);
        CompruebaLaCadena(semilla);
        if (testing::Test::HasFatalFailure())
            return;
    }
}

TEST(TablaHash, TellsKeysWithOneHashApartThroughItsGrowth)
{
    CTablaHash tabla;
    std::vector<int> claves;
    const auto igualA = [&](int clave) {
        return [&claves, clave](int i) { return claves[static_cast<std::size_t>(i)] == clave; };
    };
    EXPECT_EQ(tabla.Busca(7, igualA(0)), -3);
    for (int i = 0; i < 200; ++i) {
        claves.push_back(1000 + i);
        tabla.Pon(7, i, igualA(1000 + i));
    }
    for (int i = 0; i < 200; ++i)
        ASSERT_EQ(tabla.Busca(7, igualA(1000 + i)), i);
    EXPECT_EQ(tabla.Busca(7, igualA(999)), -3);

    claves[60] = 1005; // a second element with the key takes its place
    tabla.Pon(7, 60, igualA(1005));
    EXPECT_EQ(tabla.Busca(7, igualA(1005)), 60);
}
