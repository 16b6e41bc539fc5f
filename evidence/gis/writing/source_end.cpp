#include "evidence/gis/writing/source_end.h"

CFinDelOrigen::CFinDelOrigen() : m_quejas(CPLGetErrorCounter()), m_ultima(CPLGetLastErrorMsg()) {}

void CFinDelOrigen::Acaba()
{
    m_abierta = false;
    m_deshecho = m_deshecho || HayQuejaNueva();
}

bool CFinDelOrigen::Llego() const
{
    return m_porPartes ? !m_abierta && !m_deshecho : !HayQuejaNueva();
}

/// Tells whether the last complaint is a failure, and no older one than the dataset.
bool CFinDelOrigen::HayQuejaNueva() const
{
    return CPLGetLastErrorType() == CE_Failure &&
           (CPLGetErrorCounter() != m_quejas || m_ultima != CPLGetLastErrorMsg());
}
