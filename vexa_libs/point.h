#pragma once

#include <algorithm>
#include <cmath>

namespace vexageo {

/// A point of a drawing. With whole numbers the unit is that of the drawing, hundredths of a metre.
template <class T>
struct CPunto {
    CPunto() = default;
    constexpr CPunto(T x, T y, T z = 0) : X(x), Y(y), Z(z) {}

    friend bool operator==(const CPunto& a, const CPunto& b)
    {
        return a.X == b.X && a.Y == b.Y && a.Z == b.Z;
    }

    T X = 0;
    T Y = 0;
    T Z = 0;
    T Propio = 0; ///< the library's own; it plays no part in comparisons
};

/// Tells whether two points lie at one place; heights play no part.
inline bool EnElMismoSitio(const CPunto<int>& a, const CPunto<int>& b)
{
    return a.X == b.X && a.Y == b.Y;
}

/// The seed of a drawing: how many decimals its whole coordinates hold.
class CDataSemilla {
public:
    signed char Decimales() const { return m_decimales; }
    void Precision(char decimales) { m_decimales = static_cast<signed char>(decimales); }
    /// 10 to the power of the decimals.
    double Precision() const { return std::pow(10.0, m_decimales); }

private:
    signed char m_decimales = 2;
};

/// The extent of a drawing or polygon.
template <class T>
struct CMaximas {
    /// Widens the extent by a point.
    void Nuevo(const CPunto<T>& punto)
    {
        Minimo = Hay ? CPunto<T>(std::min(Minimo.X, punto.X), std::min(Minimo.Y, punto.Y),
                                 std::min(Minimo.Z, punto.Z))
                     : punto;
        Maximo = Hay ? CPunto<T>(std::max(Maximo.X, punto.X), std::max(Maximo.Y, punto.Y),
                                 std::max(Maximo.Z, punto.Z))
                     : punto;
        Hay = true;
    }

    CPunto<T> Minimo;
    CPunto<T> Maximo;
    CPunto<T> Propio; ///< the library's own
    bool Hay = false; ///< it holds a point at least
};

} // namespace vexageo
