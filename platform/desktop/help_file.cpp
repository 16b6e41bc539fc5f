#include "platform/desktop/help_file.h"

#include <memory>

#include <chm_lib.h>
#include <wx/file.h>
#include <wx/filefn.h>
#include <wx/filesys.h>
#include <wx/mstream.h>

#include "platform/desktop/toolkit.h"

namespace {

constexpr std::uint64_t kMayor = 64U << 20U; // of a file inside; a length past it is damage

constexpr const char* kProtocolo = "chm";
constexpr const char* kExtensionSuma = ".sha256";

/// Tells whether a help file is as it was made. The library that reads it trusts its numbers, so a
/// damaged one would take the program with it. Beside the file stands its sum; one without it is
/// taken at its word.
bool EstaEntero(const wxString& fichero)
{
    wxFile suma;
    wxString esperada;
    if (!wxFileExists(fichero + kExtensionSuma) || !suma.Open(fichero + kExtensionSuma) ||
        !suma.ReadAll(&esperada))
        return true;
    const wxString hallada = SumaDe(fichero);
    return hallada.empty() || esperada.StartsWith(hallada);
}

class CLectorFicherosDeAyuda : public wxFileSystemHandler {
public:
    bool CanOpen(const wxString& lugar) override { return GetProtocol(lugar) == kProtocolo; }

    wxFSFile* OpenFile(wxFileSystem& /*sistema*/, const wxString& lugar) override
    {
        const wxString fichero = wxFileSystem::URLToFileName(GetLeftLocation(lugar)).GetFullPath();
        const wxString nombre = GetRightLocation(lugar);
        const auto contenido = LeeDeLaAyuda(fichero, nombre);
        if (!contenido)
            return nullptr;
        wxMemoryOutputStream bytes;
        bytes.Write(contenido->data(), contenido->size());
        return new wxFSFile(new wxMemoryInputStream(bytes), lugar, GetMimeTypeFromExt(nombre),
                            GetAnchor(lugar), wxDateTime::Now());
    }
};

} // namespace

std::optional<std::string> LeeDeLaAyuda(const wxString& ayuda, const wxString& nombre)
{
    const std::unique_ptr<chmFile, decltype(&chm_close)> fichero(
        wxFileExists(ayuda) && EstaEntero(ayuda) ? chm_open(ayuda.fn_str()) : nullptr, chm_close);
    chmUnitInfo unidad = {};
    const wxString dentro = nombre.StartsWith("/") ? nombre : "/" + nombre;
    if (fichero == nullptr ||
        chm_resolve_object(fichero.get(), dentro.utf8_str(), &unidad) != CHM_RESOLVE_SUCCESS ||
        unidad.length > kMayor)
        return {};
    std::string contenido(unidad.length, '\0');
    const auto leidos = chm_retrieve_object(fichero.get(), &unidad,
                                            reinterpret_cast<unsigned char*>(contenido.data()), 0,
                                            static_cast<LONGINT64>(contenido.size()));
    contenido.resize(leidos > 0 ? static_cast<std::size_t>(leidos) : 0);
    return contenido;
}

void RegistraFicherosDeAyuda()
{
    wxFileSystem::AddHandler(new CLectorFicherosDeAyuda);
}
