#include "evidence/gis/reading/municipality_source.h"

#include <algorithm>

bool CMunicipioAbierto::Abre(const CString& lista, const COtrosSitios& otros)
{
    if (!LeeLista(lista, m_lista))
        return false;
    m_carpeta = CCadena(lista).DamePath();
    m_otros = otros;
    return std::any_of(Entradas().begin(), Entradas().end(), [&](const CString& entrada) {
        constexpr UINT kModo = CFile::modeRead | CFile::anyCase;
        return CFile().Open(FicheroDeLista(m_carpeta, entrada, "BIN"), kModo);
    });
}

CCadena CMunicipioAbierto::Ortos() const
{
    return m_otros.ortos.IsEmpty() ? FicheroDeLista(m_carpeta, "ortos", "TOP")
                                   : CCadena(m_otros.ortos);
}

CCadena CMunicipioAbierto::Registro() const
{
    return m_otros.registro.IsEmpty()
               ? FicheroDeLista(m_carpeta, LeeCabeceraLista(Cabecera()).nombreSalida, "ERR")
               : CCadena(m_otros.registro);
}

const CTablas& CMunicipioAbierto::Tablas()
{
    if (!m_tablas) {
        CString carpeta = m_otros.tablas.IsEmpty() ? m_carpeta : m_otros.tablas;
        if (!carpeta.IsEmpty() && std::string_view(carpeta).back() != '/' &&
            std::string_view(carpeta).back() != '\\')
            carpeta += "/";
        m_tablas = std::make_unique<CTablas>(carpeta, LeeCabeceraLista(Cabecera()).Mun);
    }
    return *m_tablas;
}

const std::vector<CPoligonoDibujado>& CMunicipioAbierto::Poligonos()
{
    if (m_poligonos)
        return *m_poligonos;
    CHayParcela hayParcela;
    if (const CTablas& tablas = Tablas(); tablas.HayParcelas())
        hayParcela = [&tablas](int polig, int parcela) {
            return tablas.Parcela(polig, parcela) != nullptr;
        };
    std::vector<CPoligonoDibujado> poligonos;
    poligonos.reserve(Entradas().size());
    for (const CString& entrada : Entradas())
        poligonos.push_back(LeePoligonoDibujado(m_carpeta, entrada, hayParcela));
    m_poligonos = std::move(poligonos);
    return *m_poligonos;
}

const CTopologiaDibujada& CMunicipioAbierto::Hojas()
{
    if (!m_hojas)
        m_hojas = LeeHojasDibujadas(Ortos());
    return *m_hojas;
}
