#pragma once

#include <functional>
#include <string>

#include <windows.h>

#include "platform/files/windows_handles.h"

using sistema::Manija;

constexpr DWORD kPaciencia = 60'000; // milliseconds

/// Tells whether something comes true as long as the tests are patient.
bool Llega(const std::function<bool()>& cosa);

/// The visible window of a process that has the title, once it is there; null where it never comes.
HWND EsperaVentana(HANDLE proceso, const wchar_t* titulo);

/// A program in windows, worked by the messages that its user's hands would send. It is ended with
/// the object.
class CProgramaConducido {
public:
    explicit CProgramaConducido(const std::wstring& fichero, const std::wstring& carpeta = {});
    CProgramaConducido(const CProgramaConducido&) = delete;
    CProgramaConducido& operator=(const CProgramaConducido&) = delete;
    ~CProgramaConducido();

    HANDLE Proceso() const { return m_proceso.get(); }
    /// From here on its controls are those of that window.
    HWND Espera(const wchar_t* titulo);
    void Pulsa(int id) const;
    void Pulsa(HWND boton) const;
    void Escribe(int id, const std::wstring& texto) const;
    /// The visible control of the window that has the text, null for none.
    HWND Con(const std::wstring& texto) const;
    /// Its exit status; STILL_ACTIVE where it doesn't end.
    DWORD EsperaFin() const;

private:
    Manija m_proceso;
    HWND m_ventana = nullptr;
};
