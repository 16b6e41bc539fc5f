#include "fuzz/work_bench.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "platform/cfile.h"
#include "platform/fault_point.h"
#include "platform/output_set.h"
#include "resources/resources.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kFin = "Fin del proceso";
constexpr std::string_view kLog = ".ERR";

/// How many calls to the system there are to the one that fails; 0: none does.
int& FaltanParaFallar()
{
    static int faltan = 0;
    return faltan;
}

} // namespace

int sistema::Tropiezo(Llamada /*llamada*/)
{
    int& faltan = FaltanParaFallar();
    if (faltan == 0)
        return 0;
    --faltan;
    return faltan == 0 ? EIO : 0;
}

CTropiezo::CTropiezo(int llamada)
{
    FaltanParaFallar() = llamada;
}

CTropiezo::~CTropiezo()
{
    FaltanParaFallar() = 0;
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
        const CTropiezo tropiezo(entrada.Fallo());
        proceso();
    } catch (const CFileException& fallo) {
        // of the settings, before the run; whoever starts the program tells it
        Exige(entrada.Fallo() != 0, "a file failed by itself:", fallo.what());
    }
    if (entrada.Fallo() != 0)
        CConjuntoSalidas::Sana({En("entrada.txt")});
    Comprueba(conCierre);
}

void CBanco::Comprueba(bool conCierre)
{
    std::vector<std::string> escritos;
    for (const CString& salida : m_guion.escritos.salidas)
        escritos.push_back(fs::path(std::string_view(salida)).filename().string());
    if (conCierre)
        Exige(m_guion.HuboCierre() == !escritos.empty(), "the closing box comes with the outputs");
    for (const fs::directory_entry& fichero : fs::directory_iterator(Ruta()))
        if (fichero.is_regular_file()) {
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
