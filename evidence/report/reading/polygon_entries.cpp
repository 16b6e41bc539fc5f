#include "evidence/report/reading/polygon_entries.h"

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <utility>

#include "cadastre/file_extensions.h"
#include "cadastre/polygon_list.h"
#include "evidence/drawn_polygon.h"
#include "evidence/paths.h"
#include "platform/files/any_case_name.h"
#include "platform/files/system_files.h"

namespace informe {
namespace {

/// What tells a file from all others; zeros for one that isn't there.
using CIdentidad = std::pair<std::uint64_t, std::uint64_t>;

CIdentidad IdentidadDe(const CString& nombre)
{
    sistema::Error error;
    const sistema::CEstado estado = sistema::Mira(sistema::Ruta(nombre), error);
    return NoSeHalla(nombre, error) ? CIdentidad() : CIdentidad(estado.disco, estado.numero);
}

/// Leaves out drawings that stand further in front, by whatever name. Those that aren't there are
/// told each.
void QuitaRepetidas(const CString& carpeta, std::vector<CString>& entradas)
{
    using CFicherosDeDibujo = std::array<CIdentidad, 3>;
    CNombresEnDisco nombres;
    std::set<CFicherosDeDibujo> vistos;
    std::erase_if(entradas, [&](const CString& entrada) {
        const auto suyo = [&](const char* extension) {
            return IdentidadDe(
                CFile::EnDisco(FicheroDeLista(carpeta, entrada, extension), nombres));
        };
        const CFicherosDeDibujo suyos = {suyo(kExtensionDibujo),
                                         suyo(ExtensionDe(ClaseTopologia::Parcelas)),
                                         suyo(ExtensionDe(ClaseTopologia::Subparcelas))};
        return suyos.front() != CIdentidad() && !vistos.insert(suyos).second;
    });
}

} // namespace

std::vector<std::vector<CString>> EntradasPorPoligono(const CListaPoligonos& lista)
{
    std::vector<std::vector<CString>> grupos;
    std::map<int, std::size_t> cual; // by the polygon's number
    for (const CString& entrada : lista.entradas) {
        const auto [suyo, nuevo] = cual.try_emplace(LeeEntero(entrada), grupos.size());
        if (nuevo)
            grupos.emplace_back();
        grupos[suyo->second].push_back(entrada);
    }
    for (std::vector<CString>& entradas : grupos)
        if (entradas.size() > 1)
            QuitaRepetidas(lista.carpeta, entradas);
    return grupos;
}

} // namespace informe
