#include "evidence/gis/reading/tables.h"

#include "platform/files/cfile.h"

namespace {

/// The tables whose rows a layer shows something of.
CNombresTablas Mostradas(const CString& carpeta)
{
    CNombresTablas tablas = TablasEn(carpeta);
    tablas[kModulos] = tablas[kCotitulares] = CString();
    return tablas;
}

/// The element at an index of an array, null for an index below 0.
template <class T>
const T* Elemento(const std::vector<T>& todos, int i)
{
    return i < 0 ? nullptr : &todos[static_cast<std::size_t>(i)];
}

} // namespace

CTablas::CTablas(const CString& carpeta, short mun)
    : m_leidas(LeeTablas(Mostradas(carpeta), mun, {false, true, CFile::anyCase, {}}))
{
}

const CParcela* CTablas::Parcela(int polig, int parcela) const
{
    int i = kNoEncontrado;
    return m_leidas.municipio.BuscaParcela(polig, parcela, i) ? &m_leidas.municipio.DameParcela(i)
                                                              : nullptr;
}

const CTitular* CTablas::Titular(const CParcela& parcela) const
{
    return Elemento(m_leidas.municipio.Titulares(), parcela.TitularPrincipal());
}

const CParaje* CTablas::Paraje(const CParcela& parcela) const
{
    return Elemento(m_leidas.municipio.Parajes(), parcela.paraje);
}
