#include "platform/windows/taskbar.h"

namespace {

constexpr CLSID kLista = {
    0x56fdf344, 0xfd6d, 0x11d0, {0x95, 0x8a, 0x00, 0x60, 0x97, 0xc9, 0xa0, 0x90}};
constexpr IID kTercera = {
    0xea1afb91, 0x9e28, 0x4b86, {0x90, 0xe9, 0x9e, 0x9f, 0x8a, 0x5e, 0xef, 0xaf}};

} // namespace

CBarraDeTareas::CBarraDeTareas(HWND ventana) : m_ventana(ventana)
{
    void* objeto = nullptr;
    if (CoCreateInstance(kLista, nullptr, CLSCTX_INPROC_SERVER, kTercera, &objeto) == S_OK)
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
