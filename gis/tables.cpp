#include "gis/tables.h"

#include "cadastre/exchange_format.h"
#include "cadastre/table_rows.h"
#include "platform/cfile.h"

CTablas::CTablas(const CString& carpeta, short mun) : m_municipio(mun, 0)
{
    Recorre(carpeta + "Parajes.txt", &CTablas::TomaParaje);
    Recorre(carpeta + "Titulares.txt", &CTablas::TomaTitular);
    m_hayParcelas = Recorre(carpeta + "Parcelas.txt", &CTablas::TomaParcela);
    Recorre(carpeta + "Subparcelas.txt", &CTablas::TomaSubparcela);
}

bool CTablas::Recorre(const CString& nombre, void (CTablas::*toma)(CFila, CCampos))
{
    return RecorreTabla(
        nombre,
        [&](CFila fila, CCampos campos) {
            if (LeeEntero(campos[tabla::kMun]) == m_municipio.Mun)
                (this->*toma)(fila, campos);
        },
        CFile::anyCase);
}

void CTablas::TomaParaje(CFila /*fila*/, CCampos campos)
{
    if (campos[tabla::kParajeNumOrden].empty() || campos[tabla::kParajeNombre].empty())
        return;
    CParaje paraje(campos[tabla::kParajeNombre]);
    paraje.NumOrden = static_cast<short>(LeeEntero(campos[tabla::kParajeNumOrden]));
    m_municipio.InsertaParaje(paraje);
}

void CTablas::TomaTitular(CFila fila, CCampos /*campos*/)
{
    CTitular titular;
    if (titular.Lee(fila, kModoTabla))
        m_municipio.InsertaTitular(std::move(titular));
}

void CTablas::TomaParcela(CFila fila, CCampos campos)
{
    CParcela parcela(0, 0, 0, {});
    if (campos[tabla::kNumImputa].empty() || campos[tabla::kTit].empty() ||
        campos[tabla::kPartici].empty() || !parcela.Lee(fila, kModoTabla))
        return; // no parcel for the way back either
    parcela.paraje = m_municipio.BuscaParaje(LeeEntero(campos[tabla::kParaje]));
    parcela.InsertaCotitular(m_municipio.BuscaTitularNumOrden(LeeEntero(campos[tabla::kNumImputa])),
                             kOrdenPrincipal, LeeEntero(campos[tabla::kPartici]),
                             campos[tabla::kTit]);
    m_municipio.InsertaParcela(std::move(parcela));
}

void CTablas::TomaSubparcela(CFila fila, CCampos campos)
{
    CSubparcela subparcela;
    int i = kNoEncontrado;
    if (!subparcela.Lee(fila, kModoTabla) ||
        !m_municipio.BuscaParcela(LeeEntero(campos[tabla::kPolig]),
                                  LeeEntero(campos[tabla::kParcela]), i))
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
