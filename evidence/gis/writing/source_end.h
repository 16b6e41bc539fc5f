#pragma once

#include <string>

#include <cpl_error.h>
#include <ogr_core.h>

/// Tells whether all came that a dataset was to take. No driver is told that its source broke off:
/// whoever writes in transactions says so himself, and of all others the last complaint says it.
/// It begins with the dataset: a complaint that is there already is none of its source.
class CFinDelOrigen {
public:
    // Transactions, which GDAL may always begin and end.
    OGRErr Empieza()
    {
        m_abierta = m_porPartes = true;
        return OGRERR_NONE;
    }
    OGRErr Acaba()
    {
        m_abierta = false;
        Mira();
        return OGRERR_NONE;
    }
    OGRErr Deshace()
    {
        m_deshecho = true;
        return OGRERR_NONE;
    }
    /// A look in between, while a complaint is still the last one: the copy of the source's next
    /// layer may begin with another, or with none.
    void Mira() { m_deshecho = m_deshecho || HayQuejaNueva(); }

    /// Asked where the dataset is closed, before anything else is done there.
    bool Llego() const { return !m_deshecho && (m_porPartes ? !m_abierta : !HayQuejaNueva()); }

private:
    /// Tells whether the last complaint is a failure, and no older one than the dataset.
    bool HayQuejaNueva() const
    {
        return CPLGetLastErrorType() == CE_Failure &&
               (CPLGetErrorCounter() != m_quejas || m_ultima != CPLGetLastErrorMsg());
    }

    GUInt32 m_quejas = CPLGetErrorCounter();
    std::string m_ultima = CPLGetLastErrorMsg();
    bool m_porPartes = false;
    bool m_abierta = false;
    bool m_deshecho = false;
};
