#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

// How an input stands in its bytes. Its first three say how it is run; a '0' in the first and
// blanks in the others ask for nothing. Behind them come its pieces, one for each file of the run.

inline constexpr std::size_t kBytesCabecera = 3;
/// Stands between two pieces, a line of its own where they are texts.
inline constexpr std::string_view kCorte = "%%%\n";

std::vector<std::string_view> Trocea(std::string_view cuerpo);

class CEntrada {
public:
    explicit CEntrada(std::string_view bytes);

    /// An option of the run, numbered from 0 to 3.
    bool Opcion(unsigned n) const { return ((m_opciones >> n) & 1U) != 0; }
    /// The four as one number, 0 to 15.
    unsigned Opciones() const { return m_opciones & 0xFU; }
    /// How a call to the system fails, numbered from 0: the characters of the first column that
    /// ASCII has from '0' on, and so on to the right.
    unsigned ModoFallo() const { return m_opciones / kFilasAscii - kPrimeraColumna; }
    /// The call to the system that is to fail, counted from 1, or the kind of call; 0: none.
    int Fallo() const { return m_fallo; }
    /// The tick at which the user stops the run, counted from 1; 0: never.
    int Parada() const { return m_parada; }
    /// A piece, empty where the input doesn't have it.
    std::string_view Trozo(std::size_t i) const
    {
        return i < m_trozos.size() ? m_trozos[i] : std::string_view();
    }

private:
    static constexpr unsigned kFilasAscii = 16;
    static constexpr unsigned kPrimeraColumna = '0' / kFilasAscii;

    unsigned m_opciones = '0';
    int m_fallo = 0;
    int m_parada = 0;
    std::vector<std::string_view> m_trozos;
};
