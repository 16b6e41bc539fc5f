#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

// What the mutators of texts and of drawings share.

/// Draws from a fuzzer's seed.
class CAzar {
public:
    explicit CAzar(unsigned semilla) : m_motor(semilla) {}
    /// A number from 0 to n - 1; n isn't 0.
    std::size_t Hasta(std::size_t n) { return m_motor() % n; }
    bool UnaDe(std::size_t n) { return Hasta(n) == 0; }
    template <class L>
    auto& Uno(L& lista)
    {
        return lista[Hasta(std::size(lista))];
    }

private:
    std::minstd_rand m_motor;
};

/// The fuzzer's own mutation of some bytes, which knows nothing of their form.
std::string MutaBytes(std::string bytes, std::size_t masLargo);

/// Doubles, drops, swaps or moves elements, be they lines or records.
template <class T>
void Baraja(std::vector<T>& lista, CAzar& azar)
{
    const auto lugar = [&] {
        return lista.begin() + static_cast<std::ptrdiff_t>(azar.Hasta(lista.size()));
    };
    switch (azar.Hasta(3)) {
    case 0: {
        const T copia = *lugar();
        lista.insert(lugar(), copia);
        break;
    }
    case 1:
        lista.erase(lugar());
        break;
    default:
        std::swap(*lugar(), *lugar());
    }
}

/// Changes a text so that most of its lines keep their form: within a field, whole lines, their
/// record type, or their length.
std::string MutaTexto(std::string_view texto, CAzar& azar);

/// Changes a drawing or a topology, and seals what it changed again, so that its reader goes past
/// the lengths and checks.
std::string MutaDibujo(std::string_view bytes, CAzar& azar);

/// Mutates an input in its place, as a fuzzer asks for it: its head, or one of its pieces by
/// `muta`. Gives the new length.
std::size_t MutaEntrada(std::uint8_t* bytes, std::size_t n, std::size_t masLargo, unsigned semilla,
                        std::string (*muta)(std::string_view, CAzar&));
