#include "platform/settings.h"

#include <filesystem>
#include <system_error>
#include <vector>

#include "platform/ansi.h"
#include "platform/cfile.h"
#include "platform/system.h"

namespace {

struct CPosicion {
    std::size_t linea; ///< where the key stands, or where it has to be put
    bool hay;          ///< the key is there
    bool haySeccion;
};

std::vector<CString> LeeLineas(const CString& fichero)
{
    std::vector<CString> lineas;
    CStdioFile entrada;
    if (entrada.Open(fichero, CFile::modeRead | CFile::typeText))
        for (CString linea; entrada.ReadString(linea);)
            lineas.push_back(linea);
    return lineas;
}

CPosicion Busca(const std::vector<CString>& lineas, const CString& seccion, const CString& clave)
{
    const CString cabecera = CString("[") + seccion + "]";
    const CString principio = clave + "=";
    CPosicion posicion{lineas.size(), false, false};
    bool dentro = false;
    for (std::size_t i = 0; i < lineas.size(); ++i) {
        const std::string_view linea = lineas[i];
        if (linea.starts_with('[')) {
            if (dentro)
                break;
            dentro = linea == std::string_view(cabecera);
        } else if (dentro && linea.starts_with(std::string_view(principio))) {
            return {i, true, true};
        }
        if (dentro) {
            posicion.haySeccion = true;
            if (!linea.empty())
                posicion.linea = i + 1;
        }
    }
    return posicion;
}

bool Graba(const CString& fichero, const std::vector<CString>& lineas)
{
    CStdioFile salida;
    if (!salida.Open(fichero, CFile::modeCreate | CFile::modeWrite | CFile::typeText))
        return false;
    try {
        for (const CString& linea : lineas)
            salida.WriteString(linea + "\n");
        salida.Close();
    } catch (const CFileException&) {
        return false;
    }
    return true;
}

} // namespace

CAlmacenAjustes::CAlmacenAjustes(const CString& empresa, const CString& programa)
    : m_lugar((sistema::CarpetaAjustes() / std::string(std::string_view(empresa)) /
               (std::string(std::string_view(programa)) + ".ini"))
                  .string())
{
}

std::optional<CString> CAlmacenAjustes::Lee(const CString& seccion, const CString& clave) const
{
    const std::vector<CString> lineas = LeeLineas(m_lugar);
    const CPosicion posicion = Busca(lineas, seccion, clave);
    if (!posicion.hay)
        return std::nullopt;
    return lineas[posicion.linea].Mid(clave.GetLength() + 1);
}

bool CAlmacenAjustes::Escribe(const CString& seccion, const CString& clave, const CString& valor)
{
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(m_lugar).parent_path(), error);
    std::vector<CString> lineas = LeeLineas(m_lugar);
    const CPosicion posicion = Busca(lineas, seccion, clave);
    const CString linea = clave + "=" + ansi::AUtf8(valor);
    const auto lugar = lineas.begin() + static_cast<std::ptrdiff_t>(posicion.linea);
    if (posicion.hay) {
        if (*lugar == linea)
            return true; // a dialog stores all its fields whenever it is closed
        *lugar = linea;
    } else if (posicion.haySeccion) {
        lineas.insert(lugar, linea);
    } else {
        if (!lineas.empty())
            lineas.emplace_back();
        lineas.push_back(CString("[") + seccion + "]");
        lineas.push_back(linea);
    }
    return Graba(m_lugar, lineas);
}
