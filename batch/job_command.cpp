#include "batch/job_command.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

#include "cadastre/file_extensions.h"
#include "cadastre/messages.h"
#include "cadastre/polygon_list.h"
#include "platform/files/content_copy.h"
#include "platform/files/cstdio_file.h"
#include "platform/files/side_names.h"
#include "platform/system.h"
#include "resources/resource_ids.h"

namespace lote {
namespace {

namespace fs = std::filesystem;

fs::path EnSuCarpeta(const CTrabajo& trabajo, const CString& nombre)
{
    return sistema::Ruta(trabajo.carpeta) / sistema::Ruta(nombre);
}

/// The kind of a message, by its line in the log: its letter, or a blank for none.
char ClaseDe(std::string_view linea)
{
    constexpr std::size_t kNumero = 4; // a letter and three digits
    const bool conNumero = linea.size() >= kNumero + 2 && linea.substr(kNumero, 2) == ": " &&
                           std::ranges::all_of(linea.substr(1, kNumero - 1),
                                               [](char c) { return c >= '0' && c <= '9'; });
    return conNumero ? linea.front() : ' ';
}

/// Nothing where it can't be read. What comes once only, out of a pipe, is left to the program.
std::optional<CString> PrimeraLinea(const fs::path& ruta)
{
    sistema::Error error;
    if (sistema::Mira(ruta, error).tipo != sistema::CEstado::Tipo::Regular)
        return std::nullopt;
    CStdioFile fichero;
    CString primera;
    try {
        if (!fichero.Open(sistema::Nombre(ruta), CFile::modeRead))
            return std::nullopt;
        fichero.ReadString(primera);
    } catch (const CFileException&) { // the program tells it
        return std::nullopt;
    }
    return primera;
}

} // namespace

fs::path FicheroDe(const CTrabajo& trabajo, std::string_view campo)
{
    return EnSuCarpeta(trabajo, trabajo.Campo(campo));
}

fs::path RutaDelRegistro(const CTrabajo& trabajo)
{
    if (trabajo.traduccion == Traduccion::Ida) {
        CCadena nombre = trabajo.Campo("entrada");
        nombre.CambiaExtension(kExtensionRegistro);
        return EnSuCarpeta(trabajo, nombre);
    }
    const CCadena lista = trabajo.Campo("lista");
    const std::optional<CString> primera = PrimeraLinea(FicheroDe(trabajo, "lista"));
    if (!primera)
        return {};
    return EnSuCarpeta(trabajo,
                       FicheroDeLista(lista.DamePath(), LeeCabeceraLista(*primera).nombreSalida,
                                      kExtensionRegistro));
}

std::vector<fs::path> SalidasDe(const CTrabajo& trabajo)
{
    std::vector<fs::path> salidas;
    if (fs::path registro = RutaDelRegistro(trabajo); !registro.empty())
        salidas.push_back(std::move(registro));
    const auto pon = [&](std::string_view campo) { salidas.push_back(FicheroDe(trabajo, campo)); };
    if (trabajo.traduccion == Traduccion::Ida)
        std::ranges::for_each(kCamposDeTablas, pon);
    else if (trabajo.traduccion == Traduccion::Vuelta && trabajo.Campo("modificar") == "1")
        for (const char* campo : {"parcelas", "subparcelas"})
            pon(campo);
    return salidas;
}

std::vector<fs::path> LeidasDe(const CTrabajo& trabajo)
{
    std::vector<fs::path> leidas;
    if (trabajo.traduccion == Traduccion::Vuelta)
        for (const std::string_view tabla : kCamposDeTablas)
            leidas.push_back(FicheroDe(trabajo, tabla));
    return leidas;
}

COrden OrdenDe(const CTrabajo& trabajo)
{
    COrden orden;
    orden.carpeta = sistema::Ruta(trabajo.carpeta);
    const auto pon = [&](std::string_view campo) {
        orden.argumentos.push_back(trabajo.Campo(campo));
    };
    if (trabajo.traduccion == Traduccion::Infograf) { // which has no line: by its dialog
        orden.entrada = std::to_string(IDC_DE_VEXA_A_INFOGRAF) + "\n1\n";
        orden.entrada += std::to_string(IDC_TREN) + "=" + trabajo.Campo("lista") + "\n";
        orden.entrada += std::to_string(IDC_ORTOS) + "=" + trabajo.Campo("ortos") + "\n1\n";
        return orden;
    }
    const bool esIda = trabajo.traduccion == Traduccion::Ida;
    orden.argumentos.emplace_back(esIda ? "0" : "1");
    if (esIda)
        pon("entrada");
    for (const std::string_view tabla : kCamposDeTablas)
        pon(tabla);
    if (!esIda)
        for (const char* campo : {"lista", "ortos", "modificar", "no_en_grafico", "no_en_bd"})
            pon(campo);
    return orden;
}

std::optional<int> Corre(const COrden& orden, sistema::Error& error,
                         std::chrono::milliseconds unRato, const std::function<void()>& mientras)
{
    CHijos hijos;
    const int hijo = hijos.Empieza(orden, error);
    if (error)
        return std::nullopt;
    std::optional<CHijos::CFin> fin; // of whichever: a process may have children it never started
    std::exception_ptr fallo;
    for (bool avisado = false; !fin || fin->hijo != hijo; fin = hijos.Espera(unRato)) {
        if ((sistema::HayQueAcabar() || fallo) && !std::exchange(avisado, true))
            hijos.PideAcabar();
        try {
            if (mientras && !fallo)
                mientras();
        } catch (...) {
            fallo = std::current_exception(); // told when nothing goes on unseen any more
        }
    }
    if (fallo)
        std::rethrow_exception(fallo);
    return fin->estado;
}

std::string LoDicho(const fs::path& dicho)
{
    std::ifstream fichero(dicho, std::ios::binary);
    return {std::istreambuf_iterator<char>(fichero), {}};
}

std::array<CAjuste, 2> AjustesDe(const CTrabajo& trabajo)
{
    const bool esLista = trabajo.Campo("tipo") == "lista";
    return {{{"CampivaAVexa", "TipoEntrada", esLista ? "1" : "0", true},
             {"VexaACampiva2", "ModificarConcentradas", trabajo.Campo("concentradas"), true}}};
}

CRegistro::CRegistro(const CTrabajo& trabajo)
    : m_esInfograf(trabajo.traduccion == Traduccion::Infograf), m_ruta(RutaDelRegistro(trabajo))
{
    std::error_code error;
    m_habia = fs::file_size(m_ruta, error);
    if (error)
        m_habia = 0;
    else if (const auto fecha = fs::last_write_time(m_ruta, error); !error)
        m_fecha = fecha;
}

/// As it was: who holds what the way back wrote against its log goes by their times.
void CRegistro::Devuelve(const fs::path& anterior) const
{
    sistema::Error error; // into the file that stands there: its rights and its links stay
    CopiaFichero(anterior, m_ruta, sistema::Modo::EnSitio, error);
    if (error)
        return;
    sistema::Borra(anterior, error);
    fs::last_write_time(m_ruta, *m_fecha, error);
}

bool CRegistro::EsDeAntes() const
{
    std::error_code error;
    return fs::last_write_time(m_ruta, error) == m_fecha && !error &&
           fs::file_size(m_ruta, error) == m_habia && !error;
}

std::optional<CCuenta> CRegistro::Acaba() const
{
    CCuenta cuenta;
    if (m_esInfograf) {
        std::error_code error;
        const fs::path anterior = lado::De(m_ruta, lado::kAnterior);
        const bool vacio = fs::file_size(m_ruta, error) == 0 && !error;
        if (m_fecha && m_habia == 0 && vacio) // nothing but its time is another
            fs::last_write_time(m_ruta, *m_fecha, error);
        else if (m_habia != 0 && vacio && fs::file_size(anterior, error) == m_habia && !error)
            Devuelve(anterior);
        return cuenta;
    }
    if (m_ruta.empty() || EsDeAntes())
        return std::nullopt;
    CStdioFile fichero;
    CFileException fallo;
    if (!fichero.Open(sistema::Nombre(m_ruta), CFile::modeRead, &fallo)) {
        if (fallo.SeVe())
            return std::nullopt;
        throw CFileException(fallo);
    }
    for (CString linea; fichero.ReadString(linea);) {
        const char clase = ClaseDe(linea);
        cuenta.errores += clase == 'E' ? 1 : 0;
        cuenta.warnings += clase == 'W' ? 1 : 0;
    }
    return cuenta;
}

} // namespace lote
