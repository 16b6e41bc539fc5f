#include "evidence/report/writing/maps.h"

#include <algorithm>

#include "evidence/report/findings/drawn_balance.h"
#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/text.h"

namespace informe {

bool CMapas::HayMensajes(const CPoligonoDibujado& poligono) const
{
    const auto& recintos = poligono.parcelas.recintos;
    return std::any_of(recintos.begin(), recintos.end(), [&](const CRecintoDibujado& recinto) {
        return recinto.Valido() && (m_indice.HayDeParcela(poligono.polig, recinto.parcela) ||
                                    m_perdidas.contains({poligono.polig, recinto.parcela}));
    });
}

void CMapas::Toma(const CPoligonoDibujado& poligono)
{
    const std::size_t gastados = topes::kPuntosDePagina - m_presupuesto.puntos;
    if (gastados > topes::kPuntosSinMensajes && !HayMensajes(poligono)) {
        ++m_sinMapa;
        return;
    }
    const std::string falta = FaltaDelPoligono(poligono).que;
    m_mapas.push_back(
        {"Polígono " + std::to_string(poligono.polig) + " (" + Texto(poligono.entrada) + ")" +
             (falta.empty() ? "" : ": " + falta),
         MapaSvg(poligono, m_indice, m_perdidas, m_anclas, m_presupuesto, m_dibujados)});
}

std::vector<CMapaHecho> CMapas::Acaba()
{
    if (m_sinMapa > 0) {
        CMarcas nota;
        nota.Bloque("p", {{"class", "nota"}},
                    Cuantos(m_sinMapa, "polígono sin mensajes no lleva mapa",
                            "polígonos sin mensajes no llevan mapa") +
                        ", para que la página se abra pronto.");
        m_mapas.push_back({"Otros", nota.Toma()});
    }
    return std::move(m_mapas);
}

} // namespace informe
