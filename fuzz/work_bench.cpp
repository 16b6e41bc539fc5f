#include "fuzz/work_bench.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "platform/files/cfile.h"
#include "platform/files/set_healing.h"
#include "platform/files/side_names.h"
#include "resources/program_resources.h"
#include "tests/faults/fault_plan.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kFin = "Fin del proceso";
constexpr std::string_view kLog = ".ERR";

using Alcance = CPlanDeFallos::Alcance;

struct CModoFallo {
    int error;
    Alcance alcance;
    bool todaLaClase = false; ///< no one call is meant, but all of a kind
};

/// By the numbers that inputs give them; what has no number here fails as the first.
constexpr CModoFallo kModos[] = {
    {EIO, Alcance::EsaSola},              // a spot of the disk
    {EINTR, Alcance::EsaSola},            // a signal in between, which is no fault
    {EACCES, Alcance::EsaSola},           // rights that are missing
    {EOPNOTSUPP, Alcance::EsaSola, true}, // a file system that has no such calls
    {ENOSPC, Alcance::YLasDeSuClase},     // a disk that is full
};
constexpr int kClases = static_cast<int>(sistema::Llamada::Crear) + 1;

} // namespace

CTropiezo::CTropiezo(const CEntrada& entrada)
{
    if (entrada.Fallo() == 0)
        return;
    const unsigned numero = entrada.ModoFallo();
    const CModoFallo& modo = kModos[numero < std::size(kModos) ? numero : 0];
    Plan() = {CPlanDeFallos::Que::FallaLlamada, entrada.Fallo(), modo.alcance, modo.error};
    if (modo.todaLaClase) {
        Plan().en = 0;
        Plan().clase = static_cast<sistema::Llamada>((entrada.Fallo() - 1) % kClases);
    }
}

CTropiezo::~CTropiezo()
{
    Plan() = {};
}

void Exige(bool vale, std::string_view que, std::string_view donde)
{
    if (vale)
        return;
    const std::string texto =
        "\nDoes not hold: " + std::string(que) + " " + std::string(donde) + "\n";
    std::fputs(texto.c_str(), stderr);
    std::abort();
}

void CGuionDeBanco::Olvida()
{
    cajas.clear();
    ayudas.clear();
    respuestas.clear();
    atendidos = 0;
    escritos = {};
}

bool CGuionDeBanco::HuboCierre() const
{
    return std::any_of(cajas.begin(), cajas.end(),
                       [](const CCajaVista& caja) { return caja.titulo == kFin; });
}

/// A long CString keeps its block's address with a mark in it, by which nothing that looks for
/// leaks sees that somebody has it. A bench's own live as long as the process.
extern "C" const char* __lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "leak:CBanco::CBanco\n";
}

CBanco::CBanco()
{
    m_aplicacion.SetRegistryKey("VexaSoft");
    m_aplicacion.Arranca(m_guion, RecursosDelPrograma(), {}, En("campiva.chm"));
}

void CBanco::Pon(std::string_view nombre, std::string_view bytes)
{
    const auto [puesto, nuevo] = m_puestos.try_emplace(std::string(nombre));
    if (!nuevo && puesto->second == bytes)
        return;
    puesto->second = bytes;
    m_carpeta.Pon(nombre, bytes);
}

void CBanco::Quita(std::string_view nombre)
{
    m_puestos.erase(std::string(nombre));
    fs::remove_all(Ruta() / nombre);
}

void CBanco::Vacia()
{
    m_puestos.clear();
    for (const fs::directory_entry& fichero : fs::directory_iterator(Ruta()))
        if (!fichero.is_directory())
            fs::remove(fichero);
}

void CBanco::Hace(const std::function<void()>& obra)
{
    obra();
    for (const fs::directory_entry& fichero : fs::directory_iterator(Ruta()))
        if (fichero.is_regular_file()) {
            const std::string nombre = fichero.path().filename().string();
            m_puestos[nombre] = m_carpeta.Lee(nombre);
        }
}

void CBanco::Ejecuta(const CEntrada& entrada, bool conCierre, const std::function<void()>& proceso)
{
    m_guion.Olvida();
    m_guion.alAtender = [&](CDialog& dialogo, int vez) {
        if (vez == entrada.Parada())
            dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
    };
    try {
        const CTropiezo tropiezo(entrada);
        proceso();
    } catch (const CFileException& fallo) {
        // of the settings, before the run; whoever starts the program tells it
        Exige(entrada.Fallo() != 0, "a file failed by itself:", fallo.what());
    }
    m_aplicacion.Conserva(nullptr); // who looks for leaks would find its texts
    if (entrada.Fallo() != 0)
        SanaConjuntos({En("entrada.txt")});
    Comprueba(conCierre);
}

void CBanco::Comprueba(bool conCierre)
{
    std::vector<std::string> escritos;
    const CString& log = m_guion.escritos.log;
    m_registro = log.IsEmpty() ? "" : m_carpeta.Lee(std::string_view(log));
    for (const CString& salida : m_guion.escritos.salidas)
        // Links are looked at where they lead to; what goes to a device can't be.
        if (const fs::path real = fs::canonical(std::string_view(salida));
            fs::is_regular_file(real))
            escritos.push_back(real.filename().string());
    if (conCierre)
        Exige(m_guion.HuboCierre() == !m_guion.escritos.salidas.empty(),
              "the closing box comes with the outputs");
    for (const fs::directory_entry& fichero : fs::directory_iterator(Ruta()))
        if (!fichero.is_symlink() && fichero.is_regular_file()) {
            const std::string nombre = fichero.path().filename().string();
            CompruebaFichero(nombre, escritos);
            Repon(nombre);
        }
    for (const std::string& nombre : escritos)
        Exige(false, "an output is there:", nombre);
}

/// Holds a file against what it was, and takes it from the outputs that are yet to be found.
void CBanco::CompruebaFichero(const std::string& nombre, std::vector<std::string>& escritos)
{
    const auto puesto = m_puestos.find(nombre);
    const auto suyo = std::find(escritos.begin(), escritos.end(), nombre);
    const bool escrito = suyo != escritos.end();
    if (escrito)
        escritos.erase(suyo);
    const std::string_view anterior = lado::kAnterior;
    if (nombre.ends_with(anterior)) { // of a suspicious input: what an output replaced
        const auto antes = m_puestos.find(nombre.substr(0, nombre.size() - anterior.size()));
        Exige(antes != m_puestos.end() && m_carpeta.Lee(nombre) == antes->second,
              "what is kept is what was there:", nombre);
    } else if (puesto == m_puestos.end())
        Exige(escrito || nombre.ends_with(kLog), "nothing else is left behind:", nombre);
    else if (!escrito)
        Exige(m_carpeta.Lee(nombre) == puesto->second, "a file stays as it was:", nombre);
    else
        Exige(m_carpeta.Lee(nombre) != kAntes, "an output is replaced:", nombre);
}

void CBanco::Repon(const std::string& nombre)
{
    const auto puesto = m_puestos.find(nombre);
    if (puesto == m_puestos.end())
        fs::remove(Ruta() / nombre);
    else if (m_carpeta.Lee(nombre) != puesto->second)
        m_carpeta.Pon(nombre, puesto->second);
}
