#include "evidence/report/writing/output_file.h"

#include <algorithm>

#include "cadastre/file_extensions.h"
#include "evidence/drawn_polygon.h"
#include "evidence/report/reading/text.h"
#include "platform/files/system_files.h"

namespace informe {
namespace {

/// Tells whether there is a file by this name that begins otherwise. Raises CFileException.
bool EsDeOtro(const CString& nombre, std::string_view principio)
{
    sistema::Error error;
    const sistema::CEstado estado = sistema::Mira(sistema::Ruta(nombre), error);
    CFile fichero;
    if (estado.tipo != sistema::CEstado::Tipo::Regular || estado.largo == 0 ||
        !fichero.Open(nombre, CFile::modeRead))
        return false;
    return fichero.Tramo(static_cast<std::size_t>(
               std::min<std::uint64_t>(fichero.GetLength(), principio.size()))) != principio;
}

} // namespace

CSalida::CSalida(const CString& nombre, std::string_view principio, CConjuntoSalidas& todas)
    : m_estandar(nombre == kEstandar)
{
    if (m_estandar)
        return;
    if (EsDeOtro(nombre, principio))
        todas.ConservaAnteriores();
    CreaSalida(m_fichero, nombre, todas);
}

void EscribeSalida(const CString& nombre, std::string_view principio, CConjuntoSalidas& todas,
                   const std::function<void(const CEscribe&)>& como)
{
    if (nombre.IsEmpty())
        return;
    CSalida salida(nombre, principio, todas);
    como([&](std::string_view utf8) { salida.Escribe(utf8); });
    salida.Cierra();
}

void Coloca(CConjuntoSalidas& todas, std::vector<std::string>& quejas)
{
    todas.Confirma();
    for (const CConservada& una : todas.Conservadas())
        quejas.push_back(Texto(una.Frase()));
}

const CString* BuscaOcupada(const std::vector<CString>& salidas, std::vector<CString> leidos)
{
    for (const CString& salida : salidas) {
        if (salida.IsEmpty() || salida == kEstandar)
            continue;
        if (std::ranges::any_of(
                leidos, [&](const CString& leido) { return CFile::SeriaElMismo(salida, leido); }))
            return &salida;
        leidos.push_back(salida);
    }
    return nullptr;
}

bool EsDeUnMunicipio(const CString& nombre)
{
    const std::string extension = ExtensionDe(nombre);
    return extension == kExtensionDibujo || extension == kExtensionRegistro ||
           extension == kExtensionR || extension == kExtensionM ||
           extension == kExtensionInfograf || ClaseDeExtension(extension).has_value();
}

std::string NoSePisa(const CString& ocupada)
{
    return "El archivo " + Texto(ocupada) + " no se escribe, porque se lee o se escribe ya";
}

} // namespace informe
