#include "cadastre/index.h"

#include <utility>

void CTablaHash::Crece()
{
    constexpr std::size_t kPrimeros = 32;
    const std::vector<CSitio> antes = std::exchange(
        m_sitios, std::vector<CSitio>(m_sitios.empty() ? kPrimeros : m_sitios.size() * 2));
    const auto ninguna = [](int) { return false; }; // the keys that were in differ from one another
    for (const CSitio& sitio : antes)
        if (sitio.posicion >= 0)
            m_sitios[Sitio(sitio.hash, ninguna)] = sitio;
}
