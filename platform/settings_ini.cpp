#include "platform/settings.h"

#include <chrono>
#include <vector>

#include "platform/ansi.h"
#include "platform/files/cstdio_file.h"
#include "platform/files/set_healing.h"
#include "platform/files/short_wait.h"
#include "platform/files/system_files.h"
#include "platform/format.h"
#include "platform/layer_texts.h"
#include "platform/plain_texts.h"
#include "platform/system.h"

namespace {

constexpr std::string_view kBlancos = " \t";

struct CPosicion {
    std::size_t linea; ///< where the key stands, or where it has to be put
    bool hay;          ///< the key is there
    bool haySeccion;
};

bool EsIgual(std::string_view uno, std::string_view otro)
{
    return EnMayusculas(std::string(SinBlancos(uno, kBlancos))) == EnMayusculas(std::string(otro));
}

/// A value as it stands in a line, and back.
CString DeLinea(std::string_view texto)
{
    texto = SinBlancos(texto, kBlancos);
    if (texto.size() >= 2 && texto.front() == '"' && texto.back() == '"')
        texto = texto.substr(1, texto.size() - 2);
    return texto;
}
bool CabeEnUnaLinea(std::string_view valor)
{
    return valor.find_first_of("\r\n") == std::string_view::npos;
}
CString ALinea(const CString& valor)
{
    return DeLinea(valor) == valor ? valor : "\"" + valor + "\"";
}

/// An editor may have stored it in a form whose letters are two bytes each, of which nothing would
/// be found.
bool EstaEnUtf16(std::string_view primera)
{
    return primera.starts_with("\xFF\xFE") || primera.starts_with("\xFE\xFF");
}

/// The lines of the store; none where there is no such file yet.
std::vector<CString> LeeLineas(const CString& nombre)
{
    std::vector<CString> lineas;
    CStdioFile fichero;
    CFileException fallo;
    if (!fichero.Open(nombre, CFile::modeRead, &fallo)) {
        if (!fallo.SeVe())
            throw CFileException(fallo);
        return lineas;
    }
    for (CString linea; fichero.ReadString(linea);)
        lineas.push_back(linea);
    if (!lineas.empty() && EstaEnUtf16(lineas[0])) {
        CFileException ilegible(nombre, {}, true);
        ilegible.m_nota = textos::kEnUtf16;
        throw CFileException(ilegible);
    }
    if (!lineas.empty() && std::string_view(lineas[0]).starts_with(ansi::kMarcaUtf8))
        lineas[0] = lineas[0].Mid(static_cast<int>(ansi::kMarcaUtf8.size()));
    return lineas;
}

CPosicion Busca(const std::vector<CString>& lineas, const CString& seccion, const CString& clave)
{
    CPosicion posicion{lineas.size(), false, false};
    bool dentro = false;
    for (std::size_t i = 0; i < lineas.size(); ++i) {
        const std::string_view linea = SinBlancos(lineas[i], kBlancos);
        if (linea.starts_with('[')) {
            if (dentro)
                break;
            const std::size_t fin = linea.find(']');
            dentro = fin != std::string_view::npos && EsIgual(linea.substr(1, fin - 1), seccion);
        } else if (const auto igual = linea.find('='); dentro && igual != std::string_view::npos &&
                                                       EsIgual(linea.substr(0, igual), clave)) {
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

void Pon(std::vector<CString>& lineas, const CAjuste& ajuste)
{
    const CPosicion posicion = Busca(lineas, ajuste.seccion, ajuste.clave);
    const CString linea = ajuste.clave + "=" + ALinea(ajuste.valor);
    const auto lugar = lineas.begin() + static_cast<std::ptrdiff_t>(posicion.linea);
    if (posicion.hay) {
        const std::string_view antes = *lugar;
        const CString valor = DeLinea(antes.substr(antes.find('=') + 1));
        if (valor != ajuste.valor && (!ajuste.esNumero || CString(SinNota(valor)) != ajuste.valor))
            *lugar = linea;
    } else if (posicion.haySeccion) {
        lineas.insert(lugar, linea);
    } else {
        if (!lineas.empty())
            lineas.emplace_back();
        lineas.push_back("[" + ajuste.seccion + "]");
        lineas.push_back(linea);
    }
}

/// Opens the store for writing, which nobody else does meanwhile. Another program has it for a
/// moment only.
void AbreCerrado(CStdioFile& fichero, const CString& nombre)
{
    constexpr UINT kModo = CFile::modeCreate | CFile::modeWrite;
    constexpr std::chrono::seconds kComoMucho{2};
    const CEspera espera(kComoMucho);
    for (;;) {
        try {
            CFileException fallo;
            if (fichero.Open(nombre, kModo, &fallo))
                return;
            throw CFileException(fallo);
        } catch (const CFileException& fallo) {
            if (fallo.m_causa != sistema::kDeOtro || !espera.Sigue())
                throw;
        }
    }
}

std::string FicheroEn(const std::filesystem::path& carpeta, const CString& empresa,
                      const CString& programa)
{
    return (carpeta / std::string(std::string_view(empresa)) /
            (std::string(std::string_view(programa)) + ".ini"))
        .string();
}

} // namespace

CAlmacenAjustes::CAlmacenAjustes(const CString& empresa, const CString& programa)
    : m_lugar(FicheroEn(sistema::CarpetaAjustes(), empresa, programa))
{
}

CAlmacenAparte::CAlmacenAparte(const CString& empresa, const CString& programa,
                               const std::filesystem::path& carpeta)
    : CAlmacenAjustes(FicheroEn(carpeta, empresa, programa)),
      m_variable("XDG_CONFIG_HOME", carpeta.string())
{
}

CAlmacenAparte::~CAlmacenAparte()
{
    sistema::Error error;
    sistema::Borra(m_lugar, error);
    std::filesystem::remove(std::filesystem::path(m_lugar).parent_path(), error); // if it is empty
}

std::vector<std::optional<CString>> CAlmacenAjustes::Lee(const CString& seccion,
                                                         std::span<const CString> claves) const
{
    const std::vector<CString> lineas = LeeLineas(m_lugar);
    std::vector<std::optional<CString>> valores;
    for (const CString& clave : claves) {
        std::optional<CString>& valor = valores.emplace_back();
        const CPosicion posicion = Busca(lineas, seccion, clave);
        if (!posicion.hay)
            continue;
        const std::string_view linea = lineas[posicion.linea];
        valor = DeLinea(linea.substr(linea.find('=') + 1));
    }
    return valores;
}

void CAlmacenAjustes::Escribe(std::span<const CAjuste> ajustes)
{
    sistema::Error error;
    sistema::CreaCarpetas(std::filesystem::path(m_lugar).parent_path(), error);
    CFileException::Exige(error, m_lugar);
    SanaConjuntos({m_lugar});
    CStdioFile salida;
    AbreCerrado(salida, m_lugar);
    const std::vector<CString> antes = LeeLineas(m_lugar);
    std::vector<CString> lineas = antes;
    CFileException fallo(m_lugar, {});
    for (const CAjuste& ajuste : ajustes) {
        if (CabeEnUnaLinea(ajuste.valor))
            Pon(lineas, ajuste);
        else
            fallo.m_nota = Formatea(textos::kNoCabeEnUnaLinea, ajuste.clave);
    }
    if (lineas != antes) { // else the file stays as its owner wrote it
        for (const CString& linea : lineas)
            salida.WriteString(linea + "\n");
        salida.Close();
    }
    if (!fallo.m_nota.IsEmpty())
        throw CFileException(fallo);
}
