#include "bench/matching_drawings.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

using vexageo::CPunto;

namespace {

constexpr double kVuelta = 6.283185307179586;

std::vector<CPunto<int>> Puntos(std::size_t cuantos, int hasta)
{
    std::mt19937 azar(5);
    std::vector<CPunto<int>> puntos;
    for (std::size_t i = 0; i < cuantos; ++i)
        puntos.emplace_back(static_cast<int>(azar() % static_cast<unsigned>(hasta)),
                            static_cast<int>(azar() % static_cast<unsigned>(hasta)));
    return puntos;
}

CAnillo Liso(int x, int y, int radio, int esquinas)
{
    CAnillo anillo;
    for (int i = 0; i < esquinas; ++i) {
        const double angulo = kVuelta * i / esquinas;
        const double r = radio * (1 + 0.1 * std::sin(7 * angulo));
        anillo.emplace_back(x + static_cast<int>(r * std::cos(angulo)),
                            y + static_cast<int>(r * std::sin(angulo)));
    }
    return anillo;
}

} // namespace

/// Parcels side by side, each corner a little off its place, as an honest drawing has them.
CDibujo Parcelas(int lado)
{
    constexpr int kMalla = 5000;
    const auto esquina = [](int x, int y) {
        std::mt19937 azar(static_cast<unsigned>(x * 7919 + y));
        return CPunto<int>(x * kMalla + static_cast<int>(azar() % 2000),
                           y * kMalla + static_cast<int>(azar() % 2000));
    };
    CDibujo dibujo{"parcels side by side", {}, {}, 0.27};
    std::mt19937 azar(5);
    const auto dentro = [&](int celda) {
        return celda * kMalla + 2000 + static_cast<int>(azar() % 3000);
    };
    for (int x = 0; x < lado; ++x)
        for (int y = 0; y < lado; ++y) {
            dibujo.anillos.push_back(
                {esquina(x, y), esquina(x + 1, y), esquina(x + 1, y + 1), esquina(x, y + 1)});
            for (int rotulo = 0; rotulo < 3; ++rotulo) // as they stand in a file: by parcels
                dibujo.puntos.emplace_back(dentro(x), dentro(y));
        }
    return dibujo;
}

CDibujo AnilloLargo(int esquinas, std::size_t rotulos)
{
    return {"one smooth ring",
            {Liso(50'000'000, 50'000'000, 40'000'000, esquinas)},
            Puntos(rotulos, 100'000'000),
            0.8};
}

CDibujo Solapados(int cuantos, std::size_t rotulos)
{
    CDibujo dibujo{"huge rings that overlap", {}, Puntos(rotulos, 1'000'000), 1.2};
    std::mt19937 azar(3);
    for (int i = 0; i < cuantos; ++i)
        dibujo.anillos.push_back(Liso(static_cast<int>(azar() % 1'000'000),
                                      static_cast<int>(azar() % 1'000'000), 400'000, 200));
    return dibujo;
}

CDibujo Tiras(const char* nombre, double pendiente, int cuantas, std::size_t rotulos)
{
    CDibujo dibujo{nombre, {}, Puntos(rotulos, 1'000'000), 0.6, true};
    const int sube = static_cast<int>(1'000'000 * pendiente);
    const int abajo = std::min(0, -sube);
    const int ancho = (1'000'000 + std::abs(sube)) / cuantas;
    for (int i = 0; i < cuantas; ++i) {
        const int y = abajo + i * ancho;
        dibujo.anillos.push_back(
            {{0, y}, {1'000'000, y + sube}, {1'000'000, y + sube + ancho}, {0, y + ancho}});
    }
    return dibujo;
}

CDibujo Peines(int puas, std::size_t rotulos)
{
    CDibujo dibujo{"combs", {}, Puntos(rotulos, 1'000'000), 1.2, true};
    for (int k = 0; k < 10; ++k) {
        CAnillo peine;
        for (int i = 0; i < puas; ++i)
            peine.emplace_back(i * (1'000'000 / puas),
                               i % 2 == 0 ? k * 100'000 : k * 100'000 + 90'000);
        peine.emplace_back(1'000'000, k * 100'000 - 10);
        peine.emplace_back(0, k * 100'000 - 10);
        dibujo.anillos.push_back(peine);
    }
    return dibujo;
}

CDibujo Rombos(int cuantos, std::size_t rotulos)
{
    CDibujo dibujo{"nested diamonds", {}, Puntos(rotulos, 1'000'000), 1.2, true};
    for (int i = 1; i <= cuantos; ++i) {
        const int r = i * (500'000 / cuantos);
        dibujo.anillos.push_back({{500'000 - r, 500'000},
                                  {500'000, 500'000 - r},
                                  {500'000 + r, 500'000},
                                  {500'000, 500'000 + r}});
    }
    return dibujo;
}
