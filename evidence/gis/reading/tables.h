#pragma once

#include "evidence/municipality_tables.h"

/// What the tables of a municipality say of its parcels. A table that isn't there says nothing.
class CTablas {
public:
    /// Reads the tables by their usual names in a folder. Raises CFileException where a read fails.
    /// \param mun  code of the municipality whose rows count
    CTablas(const CString& carpeta, short mun);

    bool HayParcelas() const { return m_leidas.parcelas.hay; }
    /// Null where the tables have none with these numbers.
    const CParcela* Parcela(int polig, int parcela) const;
    /// Main holder of a parcel of these tables, and its place; null where it names none that is
    /// there.
    const CTitular* Titular(const CParcela& parcela) const;
    const CParaje* Paraje(const CParcela& parcela) const;

private:
    CTablasLeidas m_leidas;
};
