#pragma once

#include <map>
#include <tuple>

#include "platform/cstring.h"

/// What a drawing shows of parcels and subparcels, by what a message can speak of.
template <class T>
class CPorLugar {
public:
    /// What is kept of a parcel, and of a subparcel, whose letter isn't empty; made where it isn't
    /// there.
    T& DeParcela(int polig, int parcela) { return m_lugares[{polig, parcela, CString()}]; }
    T& DeSubparcela(int polig, int parcela, const CString& letra)
    {
        return m_lugares[{polig, parcela, letra}];
    }
    /// What shows best where a message lies: the subparcel that it names or, where that isn't drawn
    /// or it names none, the parcel; null where neither is.
    const T* Busca(int polig, int parcela, const CString& letra) const
    {
        auto suyo = m_lugares.find({polig, parcela, letra});
        if (suyo == m_lugares.end() && !letra.IsEmpty())
            suyo = m_lugares.find({polig, parcela, CString()});
        return suyo == m_lugares.end() ? nullptr : &suyo->second;
    }

private:
    std::map<std::tuple<int, int, CString>, T> m_lugares;
};
