#include "platform/windows/accessible_name.h"

#include <memory>

// Alone in its file, so that a test's own takes its place when the program is linked.

namespace {

struct CSuelta {
    void operator()(IUnknown* objeto) const { objeto->Release(); }
};

} // namespace

void PonNombreAccesible(HWND ventana, const std::wstring& nombre)
{
    void* objeto = nullptr;
    if (CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                         &objeto) != S_OK)
        return; // the names that the system finds by itself are better than none
    const std::unique_ptr<IAccPropServices, CSuelta> servicio(
        static_cast<IAccPropServices*>(objeto));
    servicio->SetHwndPropStr(ventana, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                             PROPID_ACC_NAME, nombre.c_str());
}
