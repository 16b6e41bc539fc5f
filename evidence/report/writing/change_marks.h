#pragma once

#include <cstdint>
#include <string>

#include "evidence/report/findings/changes/change_list.h"

namespace informe {

/// What the maps show of the changes of a municipality.
class CMarcasDeCambio {
public:
    CMarcasDeCambio() = default; ///< nothing is compared
    /// \param cambios  must outlive this object
    CMarcasDeCambio(const CCambios& cambios, short mun) : m_cambios(&cambios), m_mun(mun) {}

    bool Hay() const { return m_cambios != nullptr; }
    /// The change of a parcel; null where it is the same, and where nothing is compared.
    const CCambioParcela* De(int polig, int parcela) const;
    /// How many parcels of a polygon changed.
    std::int64_t CuantasEn(int polig) const;

    /// The class of its outline.
    static const char* Clase(const CCambioParcela& cambio);
    /// "nueva", "cambia de titular, superficie"
    static std::string EnPalabras(const CCambioParcela& cambio);

private:
    const CCambios* m_cambios = nullptr;
    short m_mun = 0;
};

} // namespace informe
