#include "platform/windows/taskbar.h"

CBarraDeTareas::CBarraDeTareas(HWND ventana) : m_ventana(ventana)
{
    void* objeto = nullptr;
    if (CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3,
                         &objeto) == S_OK)
        m_lista.reset(static_cast<ITaskbarList3*>(objeto));
    if (m_lista != nullptr && m_lista->HrInit() != S_OK)
        m_lista.reset();
}

void CBarraDeTareas::Pon(int porcentaje)
{
    constexpr ULONGLONG kTodo = 100;
    m_puesta = true;
    if (m_lista != nullptr)
        m_lista->SetProgressValue(m_ventana, static_cast<ULONGLONG>(porcentaje), kTodo);
}

void CBarraDeTareas::Quita()
{
    if (m_lista != nullptr && m_puesta)
        m_lista->SetProgressState(m_ventana, TBPF_NOPROGRESS);
    m_puesta = false;
}
