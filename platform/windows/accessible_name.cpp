#include "platform/windows/accessible_name.h"

#include <memory>

// Alone in its file, so that a test's own takes its place when the program is linked.

namespace {

struct CSuelta {
    void operator()(IUnknown* objeto) const { objeto->Release(); }
};

constexpr CLSID kServicio = {
    0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
constexpr IID kInterfaz = {
    0x6e26e776, 0x04f0, 0x495d, {0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69}};
constexpr MSAAPROPID kNombre = {
    0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};

} // namespace

void PonNombreAccesible(HWND ventana, const std::wstring& nombre)
{
    void* objeto = nullptr;
    if (CoCreateInstance(kServicio, nullptr, CLSCTX_INPROC_SERVER, kInterfaz, &objeto) != S_OK)
        return; // the names that the system finds by itself are better than none
    const std::unique_ptr<IAccPropServices, CSuelta> servicio(
        static_cast<IAccPropServices*>(objeto));
    servicio->SetHwndPropStr(ventana, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, kNombre,
                             nombre.c_str());
}
