#include "platform/file_box.h"

#include "platform/files/system_files.h"

std::filesystem::path CarpetaInicial(const CString& enCampo, const CString& ultima)
{
    constexpr const char* kCualquiera = "-"; // any name stands for one in the folder at work
    const bool hay = !enCampo.IsEmpty();
    const std::filesystem::path carpeta =
        sistema::Entera(sistema::Ruta(hay ? enCampo : CString(kCualquiera))).parent_path();
    sistema::Error error;
    const bool laDice =
        hay && sistema::Mira(carpeta, error).tipo == sistema::CEstado::Tipo::Carpeta;
    return laDice || ultima.IsEmpty() ? carpeta : sistema::Ruta(ultima);
}
