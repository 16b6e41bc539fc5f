#include "tests/windows/driven_program.h"

#include <gtest/gtest.h>

namespace {

std::wstring TextoDe(HWND ventana)
{
    std::wstring texto(256, L'\0');
    texto.resize(static_cast<std::size_t>(GetWindowTextW(ventana, texto.data(), 256)));
    return texto;
}

struct CBusca {
    DWORD proceso;
    std::wstring titulo;
    HWND hallada;
};

BOOL CALLBACK Mira(HWND ventana, LPARAM dato)
{
    auto& busca = *reinterpret_cast<CBusca*>(dato);
    DWORD suyo = 0;
    GetWindowThreadProcessId(ventana, &suyo);
    if (suyo == busca.proceso && IsWindowVisible(ventana) != 0 && TextoDe(ventana) == busca.titulo)
        busca.hallada = ventana;
    return busca.hallada == nullptr ? TRUE : FALSE;
}

} // namespace

bool Llega(const std::function<bool()>& cosa)
{
    constexpr DWORD kCadaVez = 50;
    for (DWORD esperado = 0; esperado < kPaciencia; esperado += kCadaVez) {
        if (cosa())
            return true;
        Sleep(kCadaVez);
    }
    return false;
}

HWND EsperaVentana(HANDLE proceso, const wchar_t* titulo)
{
    CBusca busca = {GetProcessId(proceso), titulo, nullptr};
    EXPECT_TRUE(Llega([&] {
        EnumWindows(Mira, reinterpret_cast<LPARAM>(&busca));
        return busca.hallada != nullptr;
    })) << "no window";
    return busca.hallada;
}

CProgramaConducido::CProgramaConducido(const std::wstring& fichero, const std::wstring& carpeta)
{
    STARTUPINFOW inicio = {};
    inicio.cb = sizeof inicio;
    std::wstring linea = L'"' + fichero + L'"';
    PROCESS_INFORMATION proceso = {};
    EXPECT_NE(CreateProcessW(nullptr, linea.data(), nullptr, nullptr, FALSE, 0, nullptr,
                             carpeta.empty() ? nullptr : carpeta.c_str(), &inicio, &proceso),
              0);
    CloseHandle(proceso.hThread);
    m_proceso.reset(proceso.hProcess);
}

CProgramaConducido::~CProgramaConducido()
{
    TerminateProcess(m_proceso.get(), 0);
    WaitForSingleObject(m_proceso.get(), kPaciencia);
}

HWND CProgramaConducido::Espera(const wchar_t* titulo)
{
    m_ventana = EsperaVentana(m_proceso.get(), titulo);
    return m_ventana;
}

void CProgramaConducido::Pulsa(int id) const
{
    Pulsa(GetDlgItem(m_ventana, id));
}

void CProgramaConducido::Pulsa(HWND boton) const
{
    EXPECT_NE(boton, nullptr);
    PostMessageW(boton, BM_CLICK, 0, 0);
}

void CProgramaConducido::Escribe(int id, const std::wstring& texto) const
{
    SendDlgItemMessageW(m_ventana, id, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(texto.c_str()));
}

HWND CProgramaConducido::Con(const std::wstring& texto) const
{
    for (HWND hijo = GetWindow(m_ventana, GW_CHILD); hijo != nullptr;
         hijo = GetWindow(hijo, GW_HWNDNEXT))
        if (IsWindowVisible(hijo) != 0 && TextoDe(hijo).find(texto) != std::wstring::npos)
            return hijo;
    return nullptr;
}

DWORD CProgramaConducido::EsperaFin() const
{
    DWORD estado = STILL_ACTIVE;
    WaitForSingleObject(m_proceso.get(), kPaciencia);
    GetExitCodeProcess(m_proceso.get(), &estado);
    return estado;
}
