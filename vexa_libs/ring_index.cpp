#include "vexa_libs/ring_index.h"

namespace vexageo {

void CIndiceAnillos::Añade(const std::vector<CPunto<int>>& anillo, double preferencia, int indice)
{
    if (anillo.empty())
        return;
    m_arbol = {};
    m_anillos.Añade({CAnilloConsultado(anillo), preferencia, indice});
}

int CIndiceAnillos::Busca(const CPunto<int>& punto,
                          const std::function<bool(int, Lugar)>& acepta) const
{
    if (m_anillos.Cantidad() == 0)
        return -1;
    if (m_arbol.Vacio())
        m_arbol = CArbolCajas(m_anillos);
    int hallado = -1;
    const auto mira = [&](const CArbolCajas::CVia& via) {
        if (acepta(via.indice, m_anillos[via.posicion].consulta.Situa(punto)))
            hallado = via.indice;
        return hallado >= 0;
    };
    m_arbol.Recorre(punto, std::cref(mira)); // a copy of it would ask for memory
    return hallado;
}

} // namespace vexageo
