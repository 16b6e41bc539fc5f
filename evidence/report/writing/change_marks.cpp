#include "evidence/report/writing/change_marks.h"

#include <algorithm>
#include <limits>

#include "evidence/report/writing/change_texts.h"

namespace informe {
namespace {

auto Desde(const CCambios& cambios, const CClaveParcela& clave)
{
    return std::ranges::lower_bound(cambios.parcelas, clave, {}, &CCambioParcela::clave);
}

} // namespace

const CCambioParcela* CMarcasDeCambio::De(int polig, int parcela) const
{
    if (!Hay())
        return nullptr;
    const CClaveParcela clave{m_mun, polig, parcela};
    const auto suyo = Desde(*m_cambios, clave);
    return suyo == m_cambios->parcelas.end() || suyo->clave != clave ? nullptr : &*suyo;
}

std::int64_t CMarcasDeCambio::CuantasEn(int polig) const
{
    if (!Hay())
        return 0;
    constexpr int kAntesDeTodas = std::numeric_limits<int>::min();
    return Desde(*m_cambios, {m_mun, polig + 1, kAntesDeTodas}) -
           Desde(*m_cambios, {m_mun, polig, kAntesDeTodas});
}

/// A surface alone changes with every measuring: it is marked more faintly.
const char* CMarcasDeCambio::Clase(const CCambioParcela& cambio)
{
    if (cambio.que != CCambioParcela::Que::Cambiada)
        return " nueva";
    CCambioParcela sinMedir = cambio;
    sinMedir.difiere[static_cast<std::size_t>(Difiere::Superficie)] = false;
    sinMedir.difiere[static_cast<std::size_t>(Difiere::Subparcelas)] = false;
    return sinMedir.HayAlguno() ? " cambiada" : " medida";
}

std::string CMarcasDeCambio::EnPalabras(const CCambioParcela& cambio)
{
    if (cambio.que != CCambioParcela::Que::Cambiada)
        return NombreDe(cambio.que);
    std::string texto;
    for (std::size_t i = 0; i < kDifiere; ++i)
        if (cambio.difiere[i])
            texto += (texto.empty() ? "cambia de " : ", ") +
                     std::string(NombreDe(static_cast<Difiere>(i)));
    return texto;
}

} // namespace informe
