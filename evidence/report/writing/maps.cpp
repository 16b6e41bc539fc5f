#include "evidence/report/writing/maps.h"

#include <algorithm>

#include "evidence/report/findings/drawn_balance.h"
#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/text.h"

namespace informe {

bool CMapas::HayMensajes(const CPoligonoDibujado& poligono) const
{
    const auto& recintos = poligono.parcelas.recintos;
    return std::ranges::any_of(recintos, [&](const CRecintoDibujado& recinto) {
        return recinto.Valido() && (m_comun.indice.HayDeParcela(poligono.polig, recinto.parcela) ||
                                    m_comun.perdidas.contains({poligono.polig, recinto.parcela}));
    });
}

void CMapas::TomaSilueta(const CPoligonoDibujado& poligono, const std::string& ancla)
{
    CSilueta silueta{std::to_string(poligono.polig), ancla, ContornosDe(poligono)};
    if (silueta.contornos.empty())
        return;
    silueta.conMensajes = HayMensajes(poligono);
    if (!m_siluetas.empty() && m_siluetas.back().nombre == silueta.nombre) {
        m_siluetas.back().Une(std::move(silueta));
        return;
    }
    silueta.cambios = m_comun.cambios.CuantasEn(poligono.polig);
    for (const CPerdidas* perdidas : {&m_comun.perdidas, &std::as_const(m_sinEscribir)}) {
        const auto hasta = perdidas->lower_bound({poligono.polig + 1, 0});
        for (auto una = perdidas->lower_bound({poligono.polig, 0}); una != hasta; ++una) {
            silueta.perdida += una->second;
            ++silueta.parcelas;
        }
    }
    m_siluetas.push_back(std::move(silueta));
}

void CMapas::Toma(const CPoligonoDibujado& poligono)
{
    const std::size_t gastados = topes::kPuntosDePagina - m_comun.presupuesto.puntos;
    if (gastados > topes::kPuntosSinMensajes && !HayMensajes(poligono) &&
        m_comun.cambios.CuantasEn(poligono.polig) == 0) {
        ++m_sinMapa;
        TomaSilueta(poligono, {});
        return;
    }
    const std::string ancla = "mapa" + std::to_string(m_mapas.size() + 1);
    const std::string falta = FaltaDelPoligono(poligono).que;
    m_mapas.push_back({ancla,
                       "Polígono " + std::to_string(poligono.polig) + " (" +
                           Texto(poligono.entrada) + ")" + (falta.empty() ? "" : ": " + falta),
                       MapaSvg(poligono, m_comun)});
    TomaSilueta(poligono, ancla);
}

std::vector<CMapaHecho> CMapas::Acaba()
{
    if (m_sinMapa > 0) {
        CMarcas nota;
        nota.Bloque("p", {{"class", "nota"}},
                    Cuantos(m_sinMapa, "polígono sin mensajes no lleva mapa",
                            "polígonos sin mensajes no llevan mapa") +
                        ", para que la página se abra pronto.");
        m_mapas.push_back({"otros", "Otros", nota.Toma()});
    }
    if (std::string general = VistaGeneral(m_siluetas); !general.empty())
        m_mapas.insert(m_mapas.begin(), {"municipio", "El municipio", std::move(general)});
    return std::move(m_mapas);
}

} // namespace informe
