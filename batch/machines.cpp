#include "batch/machines.h"

#include "batch/batch_texts.h"
#include "batch/progress.h"
#include "platform/files/cfile_exception.h"
#include "platform/system.h"

namespace lote {
namespace {

namespace fs = std::filesystem;

/// A part of the jobs, as the batch on another machine has it.
struct CParte {
    fs::path tabla;
    fs::path resultados;
    std::vector<const CTrabajo*> suyos;
    std::vector<CTrabajo> alli; ///< the same, their folders by whole paths
};

/// The job where another current folder is.
CTrabajo DesdeOtraCarpeta(const CTrabajo& trabajo)
{
    CTrabajo otro = trabajo;
    const std::size_t donde = otro.linea.find(trabajo.carpeta, otro.linea.find('\t'));
    otro.carpeta = sistema::Nombre(fs::absolute(sistema::Ruta(trabajo.carpeta)));
    otro.linea.replace(donde, trabajo.carpeta.size(), otro.carpeta);
    return otro;
}

std::vector<CParte> Partes(const std::vector<const CTrabajo*>& trabajos, const fs::path& carpeta)
{
    constexpr std::size_t kComoMucho = 100; // so that a slow machine keeps nobody waiting for long
    const std::size_t cada = (trabajos.size() + kComoMucho - 1) / kComoMucho;
    std::vector<CParte> partes;
    for (const CTrabajo* trabajo : trabajos) {
        if (partes.empty() || partes.back().suyos.size() == cada) {
            const std::string numero = std::to_string(partes.size() + 1);
            partes.push_back({carpeta / (numero + ".tsv"), carpeta / numero, {}, {}});
        }
        partes.back().suyos.push_back(trabajo);
        partes.back().alli.push_back(DesdeOtraCarpeta(*trabajo));
    }
    for (const CParte& parte : partes) {
        std::string tabla;
        for (const CTrabajo& trabajo : parte.alli)
            tabla += trabajo.linea + "\n";
        Escribe(parte.tabla, tabla);
    }
    return partes;
}

/// What has been done of the parts until now: each of their jobs that has ended, how, and what it
/// said.
template <class F>
void RecorreHechos(const std::vector<CParte>& partes, F toma)
{
    for (const CParte& parte : partes) {
        CEstados suyos(parte.resultados);
        if (!suyos.HayAlgo())
            continue;
        suyos.Lee();
        for (std::size_t i = 0; i < parte.suyos.size(); ++i)
            if (const CHecho* const hecho = suyos.De(parte.alli[i]); hecho != nullptr)
                toma(*parte.suyos[i], *hecho, suyos.Dicho(static_cast<int>(i) + 1));
    }
}

void Recoge(const std::vector<CParte>& partes, CEstados& estados)
{
    RecorreHechos(partes, [&](const CTrabajo& suyo, const CHecho& hecho, const fs::path& dicho) {
        estados.Anota(suyo, hecho);
        std::error_code error; // what it said is no more than a help
        fs::copy_file(dicho, estados.Dicho(suyo.numero), fs::copy_options::overwrite_existing,
                      error);
    });
}

/// How far the parts are.
void Cuenta(const std::vector<CParte>& partes, CAvance& avance)
{
    int hechos = 0;
    int fallidos = 0;
    RecorreHechos(partes, [&](const CTrabajo&, const CHecho& hecho, const fs::path&) {
        ++hechos;
        fallidos += hecho.estado != 0 ? 1 : 0;
    });
    avance.Cuenta(hechos, fallidos);
}

/// \param lista  for the names of tables and results
COrden OrdenDeParallel(const std::vector<CParte>& partes, const COpciones& opciones,
                       const fs::path& parallel, const fs::path& lista)
{
    COrden orden;
    orden.programa = parallel;
    orden.argumentos = {"--will-cite",
                        "-j1",
                        "--sshlogin",
                        opciones.maquinas,
                        "--env",
                        "CAMPIVA",
                        "--colsep",
                        "\t",
                        "--arg-file",
                        sistema::Nombre(lista),
                        sistema::Nombre(sistema::FicheroPrograma())};
    if (opciones.procesos > 0)
        orden.argumentos.insert(orden.argumentos.end(),
                                {"--procesos", std::to_string(opciones.procesos)});
    orden.argumentos.insert(orden.argumentos.end(), {"--resultados", "{2}", "{1}"});
    std::string nombres;
    for (const CParte& parte : partes)
        nombres += sistema::Nombre(parte.tabla) + "\t" + sistema::Nombre(parte.resultados) + "\n";
    Escribe(lista, nombres);
    return orden;
}

} // namespace

fs::path Parallel()
{
    fs::path programa = sistema::BuscaPrograma("parallel");
    if (programa.empty())
        throw CLineaMala(textos::kSinParallel);
    return programa;
}

void HazEnMaquinas(const std::vector<const CTrabajo*>& trabajos, const COpciones& opciones,
                   const fs::path& parallel, CEstados& estados)
{
    constexpr std::chrono::seconds kEntreCuentas{2};
    const fs::path& carpeta = estados.Carpeta();
    const fs::path donde = carpeta / "partes";
    sistema::Error error;
    for (const fs::path& nombre : sistema::Lista(donde, error))
        if (TieneNumero(nombre, ".tsv") || // of an earlier run; what else is there is somebody's
            (TieneNumero(nombre, "") && CEstados(donde / nombre).HayAlgo()))
            fs::remove_all(donde / nombre, error);
    sistema::CreaCarpetas(donde, error);
    CFileException::Exige(error, sistema::Nombre(donde));
    const std::vector<CParte> partes = Partes(trabajos, donde);
    COrden orden = OrdenDeParallel(partes, opciones, parallel, donde / "partes.tsv");
    orden.carpeta = carpeta;
    orden.dicho = carpeta / "parallel.txt";
    CAvance avance(static_cast<int>(trabajos.size()));
    const auto estado = Corre(orden, error, kEntreCuentas, [&] { Cuenta(partes, avance); });
    CFileException::Exige(error, sistema::Nombre(orden.programa));
    Recoge(partes, estados);
    if (estado != 0)
        sistema::Imprime(stderr, LoDicho(orden.dicho));
}

} // namespace lote
