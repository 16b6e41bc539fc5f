#include "evidence/gis/reading/tables.h"

#include "cadastre/exchange_format.h"
#include "evidence/table_rows.h"
#include "platform/files/cfile.h"

CTablas::CTablas(const CString& carpeta, short mun) : m_municipio(mun, 0)
{
    Recorre(carpeta + "Parajes.txt", &CTablas::TomaParaje);
    Recorre(carpeta + "Titulares.txt", &CTablas::TomaTitular);
    m_hayParcelas = Recorre(carpeta + "Parcelas.txt", &CTablas::TomaParcela);
    Recorre(carpeta + "Subparcelas.txt", &CTablas::TomaSubparcela);
}

bool CTablas::Recorre(const CString& nombre, void (CTablas::*toma)(std::string_view))
{
    return RecorreTabla(
        nombre,
        [&](std::string_view fila) {
            if (MunicipioDeFila(fila) == m_municipio.Mun)
                (this->*toma)(fila);
        },
        CFile::anyCase);
}

void CTablas::TomaParaje(std::string_view fila)
{
    CParaje paraje;
    if (paraje.Lee(fila, kModoTabla))
        m_municipio.InsertaParaje(paraje);
}

void CTablas::TomaTitular(std::string_view fila)
{
    CTitular titular;
    if (titular.Lee(fila, kModoTabla))
        m_municipio.InsertaTitular(std::move(titular));
}

void CTablas::TomaParcela(std::string_view fila)
{
    CParcela parcela(0, 0, 0, {});
    CDatosLinea datos;
    if (!parcela.Lee(fila, kModoTabla, datos) || datos.faltan)
        return; // no parcel for the way back either
    parcela.paraje = m_municipio.BuscaParaje(datos.numParaje);
    parcela.InsertaCotitular(m_municipio.BuscaTitularNumOrden(datos.numImputa), kOrdenPrincipal,
                             datos.partici, datos.Tit);
    m_municipio.InsertaParcela(std::move(parcela));
}

void CTablas::TomaSubparcela(std::string_view fila)
{
    CSubparcela subparcela;
    CDatosLinea datos;
    int i = kNoEncontrado;
    if (!subparcela.Lee(fila, kModoTabla, datos) ||
        !m_municipio.BuscaParcela(datos.Polig, datos.Parcela, i))
        return;
    bool repetida = false;
    m_municipio.DameParcela(i).InsertaSubparcela(std::move(subparcela), repetida);
}

const CParcela* CTablas::Parcela(int polig, int parcela) const
{
    int i = kNoEncontrado;
    return m_municipio.BuscaParcela(polig, parcela, i) ? &m_municipio.DameParcela(i) : nullptr;
}

const CTitular* CTablas::Titular(const CParcela& parcela) const
{
    const int i = parcela.TitularPrincipal();
    return i < 0 ? nullptr : &m_municipio.Titulares()[static_cast<std::size_t>(i)];
}

const CParaje* CTablas::Paraje(const CParcela& parcela) const
{
    return parcela.paraje < 0 ? nullptr
                              : &m_municipio.Parajes()[static_cast<std::size_t>(parcela.paraje)];
}
