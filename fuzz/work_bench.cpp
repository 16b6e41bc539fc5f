#include "fuzz/work_bench.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "platform/files/cfile.h"
#include "platform/files/fault_point.h"
#include "platform/files/set_healing.h"
#include "resources/program_resources.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kFin = "Fin del proceso";
constexpr std::string_view kLog = ".ERR";

struct CModoFallo {
    int error;
    enum { UnaVez, DesdeEntonces, Clase } cuando; ///< later ones of its kind, too; all of a kind
};

/// By the numbers that inputs give them; what has no number here fails as the first.
constexpr CModoFallo kModos[] = {
    {EIO, CModoFallo::UnaVez},           // a spot of the disk
    {EINTR, CModoFallo::UnaVez},         // a signal in between, which is no fault
    {EACCES, CModoFallo::UnaVez},        // rights that are missing
    {EOPNOTSUPP, CModoFallo::Clase},     // a file system that has no such calls
    {ENOSPC, CModoFallo::DesdeEntonces}, // a disk that is full
};
constexpr int kClases = static_cast<int>(sistema::Llamada::Crear) + 1;

/// What is to fail.
struct CPlan {
    int faltan = 0; ///< calls to the one that fails; 0: none does, or it is over
    CModoFallo modo = kModos[0];
    std::optional<sistema::Llamada> clase; ///< of the calls that fail from now on
};

CPlan& Plan()
{
    static CPlan plan;
    return plan;
}

} // namespace

int sistema::Tropiezo(Llamada llamada)
{
    CPlan& plan = Plan();
    if (plan.faltan == 0)
        return plan.clase == llamada ? plan.modo.error : 0;
    --plan.faltan;
    if (plan.faltan > 0)
        return 0;
    if (plan.modo.cuando == CModoFallo::DesdeEntonces)
        plan.clase = llamada;
    return plan.modo.error;
}

CTropiezo::CTropiezo(const CEntrada& entrada)
{
    const unsigned modo = entrada.ModoFallo();
    Plan().modo = kModos[modo < std::size(kModos) ? modo : 0];
    if (entrada.Fallo() > 0 && Plan().modo.cuando == CModoFallo::Clase)
        Plan().clase = static_cast<sistema::Llamada>((entrada.Fallo() - 1) % kClases);
    else
        Plan().faltan = entrada.Fallo();
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

void CGuionAtento::FinDeProceso(const CDialog& /*dialogo*/, const CEscritos& suyos)
{
    escritos = suyos;
}

void CGuionAtento::Olvida()
{
    cajas.clear();
    ayudas.clear();
    respuestas.clear();
    atendidos = 0;
    escritos = {};
}

bool CGuionAtento::HuboCierre() const
{
    return std::any_of(cajas.begin(), cajas.end(),
                       [](const CCajaVista& caja) { return caja.titulo == kFin; });
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
    if (puesto == m_puestos.end())
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
