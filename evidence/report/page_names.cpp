#include "evidence/report/page_names.h"

#include <vector>

#include "evidence/paths.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/output_file.h"

namespace informe {
namespace {

constexpr const char* kPaginaInfograf = "_infograf.html";
constexpr const char* kPaginaCambios = "cambios.html";

} // namespace

CString PaginaDe(const COpciones& opciones, const CString& usual)
{
    if (opciones.sinInformes)
        return {};
    if (!opciones.html.IsEmpty())
        return opciones.html;
    return opciones.PorLaSalida() > 0 ? CString() : usual;
}

CString PaginaUsual(const CFicheros& ficheros)
{
    const bool infograf = ficheros.sentido == Sentido::Infograf;
    return EnCarpeta(ficheros.carpeta, ficheros.base + (infograf ? kPaginaInfograf : ".html"));
}

CString PaginaUsualDeCambios(const CString& estado, ClaseEstado clase)
{
    return clase == ClaseEstado::Tablas
               ? EnCarpeta(estado, kPaginaCambios)
               : EnCarpeta(CCadena(estado).DamePath(), BaseDe(estado) + "_" + kPaginaCambios);
}

std::string ReparoDeRegistros(const COpciones& opciones)
{
    if (opciones.registros.size() < 2)
        return {};
    std::vector<CString> nombres; // of pages, and of logs that are called like one
    for (const CString& registro : opciones.registros)
        try {
            nombres.push_back(PaginaUsual(BuscaFicheros(registro, opciones)));
            if (ExtensionDe(registro) == "HTML")
                nombres.push_back(registro);
        } catch (const CFileException&) {
            continue; // its own report will tell
        }
    try {
        const CString repetida = CFile::Repetida(nombres);
        return repetida.IsEmpty() ? std::string() : NoSePisa(repetida);
    } catch (const CFileException& fallo) {
        return Texto(EnUnaLinea(fallo));
    }
}

} // namespace informe
