#include "evidence/gis/reading/municipality_source.h"

#include <algorithm>

#include "cadastre/messages.h"
#include "evidence/paths.h"
#include "platform/files/set_healing.h"

bool CMunicipioAbierto::Abre(const CString& lista, const COtrosSitios& otros)
{
    const CCadena carpeta = CCadena(lista).DamePath();
    const CNombresTablas tablas = TablasEn(otros.tablas.IsEmpty() ? carpeta : otros.tablas);
    std::vector<CString> ficheros(tablas.begin(), tablas.end());
    ficheros.insert(ficheros.end(), {lista, otros.registro, otros.ortos});
    SanaConjuntos(ficheros);
    std::optional<CListaPoligonos> leida = LeeLista(lista);
    if (!leida)
        return false;
    m_lista = std::move(*leida);
    m_otros = otros;
    return std::any_of(
        m_lista.entradas.begin(), m_lista.entradas.end(), [&](const CString& entrada) {
            CFile bin;
            return AbreSiHay(bin, FicheroDeLista(m_lista.carpeta, entrada, kExtensionDibujo),
                             kModoDibujo);
        });
}

CCadena CMunicipioAbierto::Ortos() const
{
    return m_otros.ortos.IsEmpty()
               ? FicheroDeLista(m_lista.carpeta, "ortos", ExtensionDe(ClaseTopologia::Hojas))
               : CCadena(m_otros.ortos);
}

CCadena CMunicipioAbierto::Registro() const
{
    return m_otros.registro.IsEmpty()
               ? FicheroDeLista(m_lista.carpeta, m_lista.cabecera.nombreSalida, kExtensionRegistro)
               : CCadena(m_otros.registro);
}

const CTablasLeidas& CMunicipioAbierto::Tablas()
{
    if (m_tablas)
        return *m_tablas;
    CNombresTablas nombres = TablasEn(m_otros.tablas.IsEmpty() ? m_lista.carpeta : m_otros.tablas);
    nombres[kModulos] = nombres[kCotitulares] = CString(); // no layer shows anything of them
    return m_tablas.emplace(
        LeeTablas(nombres, m_lista.cabecera.Mun, {false, true, CFile::anyCase, {}}));
}

const std::vector<CPoligonoDibujado>& CMunicipioAbierto::Poligonos()
{
    if (m_poligonos)
        return *m_poligonos;
    CHayParcela hayParcela;
    if (const CTablasLeidas& tablas = Tablas(); tablas.parcelas.hay)
        hayParcela = [&tablas](int polig, int parcela) {
            int i = kNoEncontrado;
            return tablas.municipio.BuscaParcela(polig, parcela, i);
        };
    std::vector<CPoligonoDibujado> poligonos;
    poligonos.reserve(m_lista.entradas.size());
    for (const CString& entrada : m_lista.entradas)
        poligonos.push_back(LeePoligonoDibujado(m_lista.carpeta, entrada, hayParcela));
    m_poligonos = std::move(poligonos);
    return *m_poligonos;
}

const CTopologiaDibujada& CMunicipioAbierto::Hojas()
{
    if (!m_hojas)
        m_hojas = LeeHojasDibujadas(Ortos());
    return *m_hojas;
}
