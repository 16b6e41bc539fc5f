#include "vexa_libs/extent.h"

#include <cmath>
#include <cstddef>
#include <limits>

namespace vexageo {
namespace {

template <class F>
CCaja Encierra(const std::vector<CPunto<int>>& puntos, F mide)
{
    const CMedidas primero = mide(puntos.front());
    CCaja caja{primero, primero};
    for (const CPunto<int>& punto : puntos) {
        const CMedidas medidas = mide(punto);
        caja.Junta({medidas, medidas});
    }
    return caja;
}

int Recoge(double medida)
{
    return static_cast<int>(std::clamp<double>(medida, std::numeric_limits<int>::min(),
                                               std::numeric_limits<int>::max()));
}

} // namespace

CMarco CMarco::Girado(double angulo)
{
    const double coseno = std::cos(angulo);
    const double seno = std::sin(angulo);
    const double escala = (kUno - 1) / (std::abs(coseno) + std::abs(seno));
    return {static_cast<int>(coseno * escala), static_cast<int>(seno * escala)};
}

double CMarco::Norma() const
{
    return static_cast<double>(m_coseno) * m_coseno + static_cast<double>(m_seno) * m_seno;
}

double CMarco::AreaDePaso() const
{
    return static_cast<double>(kUno) * kUno / Norma();
}

std::array<double, 2> CMarco::Desde(const CMarco& otro) const
{
    const double coseno =
        static_cast<double>(m_coseno) * otro.m_coseno + static_cast<double>(m_seno) * otro.m_seno;
    const double seno =
        static_cast<double>(m_seno) * otro.m_coseno - static_cast<double>(m_coseno) * otro.m_seno;
    return {coseno / otro.Norma(), seno / otro.Norma()};
}

CCaja CCaja::De(const std::vector<CPunto<int>>& puntos, const CMarco& marco)
{
    if (marco.Recto())
        return Encierra(puntos, [](const CPunto<int>& punto) {
            return CMedidas{punto.X, punto.Y};
        });
    return Encierra(puntos, [&marco](const CPunto<int>& punto) { return marco.Mide(punto); });
}

CCaja CCaja::De(const std::vector<CCaja>& cajas)
{
    CCaja todas = cajas.front();
    for (const CCaja& caja : cajas)
        todas.Junta(caja);
    return todas;
}

CCaja CCaja::Gira(const CMarco& de, const CMarco& a) const
{
    if (de == a)
        return *this;
    const auto [coseno, seno] = a.Desde(de);
    std::array<double, 2> menor{HUGE_VAL, HUGE_VAL};
    std::array<double, 2> mayor{-HUGE_VAL, -HUGE_VAL};
    // A measure stands for all that is less than a step beyond it.
    for (const double u : {minimo[0] + 0.0, maximo[0] + 1.0}) {
        for (const double v : {minimo[1] + 0.0, maximo[1] + 1.0}) {
            const std::array<double, 2> esquina{coseno * u + seno * v, coseno * v - seno * u};
            for (std::size_t k = 0; k < esquina.size(); ++k) {
                menor[k] = std::min(menor[k], esquina[k]);
                mayor[k] = std::max(mayor[k], esquina[k]);
            }
        }
    }
    // Those of its points lie below the greatest; a step more to each side for what corners are
    // off, which is far less.
    return {{Recoge(std::floor(menor[0]) - 1), Recoge(std::floor(menor[1]) - 1)},
            {Recoge(std::ceil(mayor[0])), Recoge(std::ceil(mayor[1]))}};
}

void CRumbo::Toma(const std::vector<CPunto<int>>& puntos)
{
    constexpr std::size_t kCuerdas = 32;
    const std::size_t paso = (puntos.size() - 1) / kCuerdas + 1;
    const CPunto<int>* a = &puntos.back();
    for (std::size_t i = 0; i < puntos.size(); i += paso) {
        const CPunto<int>& b = puntos[i];
        const double x = static_cast<double>(b.X) - a->X;
        const double y = static_cast<double>(b.Y) - a->Y;
        const double x2 = x * x - y * y;
        const double y2 = 2 * x * y;
        m_x += x2 * x2 - y2 * y2;
        m_y += 2 * x2 * y2;
        m_total += x2 * x2 + y2 * y2;
        a = &b;
    }
}

void CRumbo::Junta(const CRumbo& otro)
{
    m_x += otro.m_x;
    m_y += otro.m_y;
    m_total += otro.m_total;
}

std::optional<CMarco> CRumbo::Marco() const
{
    constexpr double kDeAcuerdo = 0.5;
    if (std::hypot(m_x, m_y) <= kDeAcuerdo * m_total)
        return std::nullopt;
    const CMarco marco = CMarco::Girado(std::atan2(m_y, m_x) / 4);
    return marco.Recto() ? std::nullopt : std::optional(marco);
}

} // namespace vexageo
