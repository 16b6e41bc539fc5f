#include "batch/batch_run.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <list>
#include <map>
#include <optional>
#include <thread>
#include <utility>

#include "batch/batch_texts.h"
#include "batch/job_states.h"
#include "batch/machines.h"
#include "batch/progress.h"
#include "batch/summary_run.h"
#include "platform/ansi.h"
#include "platform/files/cfile_exception.h"
#include "platform/files/target_lock.h"
#include "platform/files/temporary_folder.h"
#include "platform/system.h"

namespace lote {
namespace {

namespace fs = std::filesystem;
using Reloj = std::chrono::steady_clock;

/// One of the places at which jobs are worked off, with settings of its own.
class CPuesto {
public:
    explicit CPuesto(const fs::path& carpeta) : m_ajustes(kEmpresa, kPrograma, carpeta) {}

    /// Starts the job. False, with a word in the file for what it says, where it can't be started.
    bool Empieza(const CTrabajo& trabajo, const fs::path& programa, const fs::path& dicho,
                 CHijos& hijos)
    {
        m_trabajo = &trabajo;
        m_principio = Reloj::now();
        m_registro.emplace(trabajo);
        const auto suyos = AjustesDe(trabajo);
        if (const std::array valores = {suyos[0].valor, suyos[1].valor}; m_valores != valores) {
            m_ajustes.Escribe(suyos);
            m_valores = valores;
        }
        COrden orden = OrdenDe(trabajo);
        orden.programa = programa;
        orden.dicho = dicho;
        orden.entorno = {m_ajustes.Variable()};
        sistema::Error error;
        m_hijo = hijos.Empieza(orden, error);
        if (error)
            std::ofstream(dicho) << Formatea(textos::kNoEmpieza, trabajo.carpeta,
                                             ansi::AUtf8(CFileException("", error).Causa()));
        return !error;
    }
    CHecho Acaba(std::optional<int> estado, const fs::path& dicho)
    {
        m_hijo = 0;
        CHecho hecho;
        hecho.estado = estado.value_or(kMuerto);
        hecho.segundos = std::chrono::duration<double>(Reloj::now() - m_principio).count();
        hecho.cuenta = Cuenta(dicho, hecho.estado);
        return hecho;
    }
    const CTrabajo& Trabajo() const { return *m_trabajo; }
    bool EstaLibre() const { return m_hijo == 0; }
    bool Es(int hijo) const { return m_hijo == hijo; }

private:
    /// A log that can't be read is the job's failure, which is told behind what the job said.
    std::optional<CCuenta> Cuenta(const fs::path& dicho, int& estado) const
    {
        try {
            return m_registro->Acaba();
        } catch (const CFileException& fallo) {
            std::ofstream(dicho, std::ios::app) << ansi::AUtf8(fallo.Mensaje()) << '\n';
            estado = std::max<int>(estado, kAlgunFallo);
        }
        return std::nullopt;
    }

    CAlmacenAparte m_ajustes;
    std::array<CString, 2> m_valores; // what is stored there
    const CTrabajo* m_trabajo = nullptr;
    std::optional<CRegistro> m_registro;
    Reloj::time_point m_principio;
    int m_hijo = 0;
};

/// The jobs of a table that are still to be done.
class CLote {
public:
    CLote(const std::vector<CTrabajo>& trabajos, CEstados& estados) : m_estados(estados)
    {
        for (const CTrabajo& trabajo : trabajos)
            if (const CHecho* hecho = estados.De(trabajo); hecho == nullptr || hecho->estado != 0)
                m_pendientes.push_back(&trabajo);
    }
    /// \param temporal  for what nobody has use for afterwards
    void HazAqui(const fs::path& programa, std::size_t procesos, const fs::path& temporal)
    {
        for (std::size_t i = 0; i < std::min(procesos, m_pendientes.size()); ++i)
            m_puestos.emplace_back(temporal /
                                   (temporal.filename().string() + "-" + std::to_string(i)));
        CHijos hijos;
        try {
            Atiende(programa, hijos);
        } catch (...) { // nothing can be written down any more, so nothing is to go on unseen
            hijos.PideAcabar();
            while (HayEnMarcha())
                Recoge(hijos);
            throw;
        }
    }
    const std::vector<const CTrabajo*>& Pendientes() const { return m_pendientes; }

private:
    /// Keeps all places at work until nothing is left, or until the process is to end.
    void Atiende(const fs::path& programa, CHijos& hijos)
    {
        CAvance avance(static_cast<int>(m_pendientes.size()));
        for (bool avisados = false;;) {
            if (!sistema::HayQueAcabar())
                Reparte(programa, hijos);
            else if (!std::exchange(avisados, true))
                hijos.PideAcabar();
            if (!HayEnMarcha())
                return; // and nothing is to be begun any more
            if (const auto acabado = Recoge(hijos))
                m_estados.Anota(acabado->first, acabado->second);
            avance.Cuenta(m_estados.Acabados());
        }
    }

    bool HayEnMarcha() const
    {
        return std::ranges::any_of(m_puestos,
                                   [](const CPuesto& puesto) { return !puesto.EstaLibre(); });
    }

    /// Waits a while for the end of a job, whose place is free then.
    std::optional<std::pair<const CTrabajo&, CHecho>> Recoge(CHijos& hijos)
    {
        const auto fin = hijos.Espera(kUnRato);
        for (CPuesto& puesto : m_puestos)
            if (fin && puesto.Es(fin->hijo)) {
                const CTrabajo& trabajo = puesto.Trabajo();
                return {{trabajo, puesto.Acaba(fin->estado, m_estados.Dicho(trabajo.numero))}};
            }
        return std::nullopt;
    }

    /// Gives each free place a job.
    void Reparte(const fs::path& programa, CHijos& hijos)
    {
        for (CPuesto& puesto : m_puestos)
            while (puesto.EstaLibre() && m_siguiente < m_pendientes.size()) {
                const CTrabajo& trabajo = *m_pendientes[m_siguiente++];
                const fs::path dicho = m_estados.Dicho(trabajo.numero);
                if (!puesto.Empieza(trabajo, programa, dicho, hijos))
                    m_estados.Anota(trabajo, puesto.Acaba(kAlgunFallo, dicho));
            }
    }

    CEstados& m_estados;
    std::vector<const CTrabajo*> m_pendientes;
    std::list<CPuesto> m_puestos;
    std::size_t m_siguiente = 0;
};

fs::path Programa()
{
    const char* const dicho = std::getenv("CAMPIVA");
    fs::path programa = dicho != nullptr ? sistema::Ruta(dicho) : sistema::BuscaPrograma("campiva");
    if (programa.empty())
        throw CLineaMala(textos::kSinPrograma);
    return fs::absolute(programa);
}

std::size_t Procesos(const COpciones& opciones)
{
    const std::size_t nucleos = std::max(1U, std::thread::hardware_concurrency());
    const std::size_t pedidos =
        opciones.procesos > 0 ? static_cast<std::size_t>(opciones.procesos) : nucleos;
    return std::min(pedidos, CHijos::kComoMucho);
}

/// What the jobs of an earlier run said, and its reports.
void BorraLoDeAntes(const CEstados& estados)
{
    sistema::Error error;
    const std::pair<fs::path, std::string_view> deAntes[] = {{estados.Dichos(), ".err"},
                                                             {estados.Informes(), ".html"}};
    for (const auto& [donde, extension] : deAntes)
        for (const fs::path& nombre : sistema::Lista(donde, error))
            if (TieneNumero(nombre, extension)) // what else is there is somebody's
                sistema::Borra(donde / nombre, error);
}

/// Raises CLineaMala for two jobs that write the same file, of which both would end well and one's
/// would be gone: be it a log alone, that of a way back and that of Infograf. And for one that
/// reads a table which another one writes, as it would read the old one or the new one by chance.
void ExigeFicherosPropios(const std::vector<CTrabajo>& trabajos, const std::string& tabla)
{
    std::map<fs::path, int> deQuien;
    const auto rehusa = [&](const CTrabajo& trabajo, const char* porque, const fs::path& fichero,
                            int otra) {
        throw CLineaMala(Formatea(textos::kEnLinea, tabla, trabajo.fila,
                                  Formatea(porque, sistema::Nombre(fichero), otra)));
    };
    for (const CTrabajo& trabajo : trabajos)
        for (const fs::path& salida : SalidasDe(trabajo)) {
            const auto [suya, nueva] =
                deQuien.try_emplace(sistema::EnteraSinPuntos(salida), trabajo.fila);
            if (!nueva && suya->second != trabajo.fila)
                rehusa(trabajo, textos::kEscribeLoMismo, salida, suya->second);
        }
    for (const CTrabajo& trabajo : trabajos)
        for (const fs::path& leida : LeidasDe(trabajo)) {
            const auto suya = deQuien.find(sistema::EnteraSinPuntos(leida));
            if (suya != deQuien.end() && suya->second != trabajo.fila)
                rehusa(trabajo, textos::kLeeLoQueEscribe, leida, suya->second);
        }
}

/// Raises CLineaMala where the lines of the table name folders from another place than those whose
/// ends are known: they would pass for done.
void ExigeMismaCarpeta(const std::vector<CTrabajo>& trabajos, const CEstados& estados)
{
    if (std::ranges::all_of(trabajos, [](const CTrabajo& trabajo) {
            return sistema::Ruta(trabajo.carpeta).is_absolute();
        }))
        return;
    sistema::Error error;
    if (!fs::exists(estados.Trabajos(), error))
        return; // the batch was killed before it began
    const fs::path suya = estados.DesdeCarpeta();
    const sistema::CEstado estado = sistema::Mira(suya, error);
    if (!suya.empty() && estado.tipo != sistema::CEstado::Tipo::NoHay && // it hasn't moved
        !estado.EsElMismo(sistema::Mira(fs::path("."), error)))
        throw CLineaMala(Formatea(textos::kDesdeOtraCarpeta, sistema::Nombre(estados.Carpeta()),
                                  sistema::Nombre(suya)));
}

/// Makes the folder of the results ready for this run alone.
void Prepara(const fs::path& carpeta, CEstados& estados, CCandado& candado, bool reanuda)
{
    sistema::Error error;
    if (reanuda && !estados.HayAlgo())
        throw CLineaMala(Formatea(textos::kNadaQueReanudar, sistema::Nombre(carpeta)));
    const auto crea = [&](const fs::path& ruta) {
        sistema::CreaCarpetas(ruta, error);
        CFileException::Exige(error, sistema::Nombre(ruta));
    };
    crea(carpeta);
    estados.Ocupa(candado);
    ExigePartesLibres(estados);
    if (estados.EsDeOtro())
        throw CLineaMala(Formatea(textos::kNoEsDeResultados, sistema::Nombre(carpeta)));
    if (reanuda)
        estados.Lee();
    else
        estados.Empieza();
    crea(estados.Dichos());
    if (!reanuda)
        BorraLoDeAntes(estados);
}

} // namespace

EstadoDeSalida Ejecuta(const COpciones& opciones)
{
    const fs::path programa = Programa();
    const std::vector<CTrabajo> trabajos = LeeTabla(opciones.tabla);
    ExigeFicherosPropios(trabajos, opciones.tabla);
    const fs::path carpeta = fs::absolute(sistema::Ruta(opciones.resultados));
    CEstados estados(carpeta);
    if (estados.Tiene(sistema::Ruta(opciones.tabla)))
        throw CLineaMala(
            Formatea(textos::kEsDeResultados, opciones.tabla, sistema::Nombre(carpeta)));
    // What is needed is looked for before the state of a former run goes.
    const bool aqui = opciones.maquinas.empty();
    const fs::path parallel = aqui ? fs::path() : Parallel();
    sistema::VigilaSenales(false);
    std::optional<CCarpetaTemporal> temporal;
    if (aqui)
        temporal.emplace("campiva-lote");
    CCandado candado;
    Prepara(carpeta, estados, candado, opciones.reanuda);
    if (opciones.reanuda) {
        ExigeMismaCarpeta(trabajos, estados);
        estados.Renumera(trabajos);
    }
    estados.GuardaTrabajos(trabajos);
    estados.Abre();
    CLote lote(trabajos, estados);
    if (aqui)
        lote.HazAqui(programa, Procesos(opciones), temporal->Ruta());
    else
        HazEnMaquinas(lote.Pendientes(), opciones, parallel, estados);
    estados.EscribeTabla(trabajos);
    const int fallidos = estados.Fallidos(trabajos);
    sistema::Imprime(stdout, Formatea(textos::kFin, static_cast<int>(trabajos.size()), fallidos,
                                      sistema::Nombre(sistema::Ruta(opciones.resultados) /
                                                      estados.Tabla().filename())));
    if (opciones.resume && !sistema::HayQueAcabar())
        Resume(estados);
    if (sistema::HayQueAcabar())
        return kDetenido;
    return fallidos == 0 ? kHecho : kAlgunFallo;
}

} // namespace lote
