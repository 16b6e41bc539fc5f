#include "batch/machines.h"

#include <algorithm>
#include <utility>

#include "batch/batch_texts.h"
#include "batch/progress.h"
#include "platform/files/cfile_exception.h"
#include "platform/system.h"

namespace lote {
namespace {

namespace fs = std::filesystem;

/// Tells whether a folder holds the results of a part.
bool EsParte(const fs::path& carpeta)
{
    return TieneNumero(carpeta.filename(), "") && CEstados(carpeta).HayAlgo();
}

/// A job, here and as the batch on another machine has it: by the whole path of its folder.
struct CSuyo {
    const CTrabajo* aqui;
    CTrabajo alli;
    bool anotado = false; ///< that it has ended, in this run
};

/// A part of the jobs, worked off by a batch on another machine.
struct CParte {
    fs::path tabla;
    fs::path resultados;
    std::vector<CSuyo> suyos;
};

/// The job where another current folder is.
CTrabajo DesdeOtraCarpeta(const CTrabajo& trabajo)
{
    CTrabajo otro = trabajo;
    // Behind the translation, which may have tabs in front, and a name in it like the folder's.
    const std::string_view traduccion = NombreDe(trabajo.traduccion);
    const std::size_t fin = otro.linea.find(traduccion) + traduccion.size();
    otro.carpeta = sistema::Nombre(fs::absolute(sistema::Ruta(trabajo.carpeta)));
    otro.linea.replace(otro.linea.find(trabajo.carpeta, fin), trabajo.carpeta.size(), otro.carpeta);
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
            partes.push_back({carpeta / (numero + ".tsv"), carpeta / numero, {}});
        }
        partes.back().suyos.push_back({trabajo, DesdeOtraCarpeta(*trabajo)});
    }
    for (const CParte& parte : partes) {
        std::string tabla;
        for (const CSuyo& suyo : parte.suyos)
            tabla += suyo.alli.linea + "\n";
        Escribe(parte.tabla, tabla);
    }
    return partes;
}

/// Writes down what has ended since the last look, and brings what it said.
void Recoge(std::vector<CParte>& partes, CEstados& estados)
{
    for (CParte& parte : partes) {
        CEstados deParte(parte.resultados);
        if (std::ranges::all_of(parte.suyos, &CSuyo::anotado) || !deParte.HayAlgo())
            continue;
        deParte.Lee();
        for (std::size_t i = 0; i < parte.suyos.size(); ++i) {
            CSuyo& suyo = parte.suyos[i];
            const CHecho* const hecho = deParte.De(suyo.alli);
            if (hecho == nullptr || std::exchange(suyo.anotado, true))
                continue;
            estados.Anota(*suyo.aqui, *hecho);
            std::error_code error; // what it said is no more than a help
            fs::copy_file(deParte.Dicho(static_cast<int>(i) + 1), estados.Dicho(suyo.aqui->numero),
                          fs::copy_options::overwrite_existing, error);
        }
    }
}

/// \param lista  for the names of tables and results
COrden OrdenDeParallel(const std::vector<CParte>& partes, const COpciones& opciones,
                       const fs::path& parallel, const fs::path& lista)
{
    COrden orden;
    orden.programa = parallel;
    orden.argumentos = {"--will-cite",
                        "--quote", // a folder's blanks, and what a shell takes for more
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

void ExigePartesLibres(const CEstados& estados)
{
    sistema::Error error;
    for (const fs::path& nombre : sistema::Lista(estados.Partes(), error)) {
        const fs::path parte = estados.Partes() / nombre;
        CCandado candado;
        if (EsParte(parte))
            CEstados(parte).Ocupa(candado);
    }
}

void HazEnMaquinas(const std::vector<const CTrabajo*>& trabajos, const COpciones& opciones,
                   const fs::path& parallel, CEstados& estados)
{
    constexpr std::chrono::seconds kEntreCuentas{2};
    const fs::path donde = estados.Partes();
    sistema::Error error;
    for (const fs::path& nombre : sistema::Lista(donde, error))
        if (TieneNumero(nombre, ".tsv") ||
            EsParte(donde / nombre)) // what else is there is somebody's
            fs::remove_all(donde / nombre, error);
    sistema::CreaCarpetas(donde, error);
    CFileException::Exige(error, sistema::Nombre(donde));
    std::vector<CParte> partes = Partes(trabajos, donde);
    COrden orden = OrdenDeParallel(partes, opciones, parallel, donde / "partes.tsv");
    orden.carpeta = estados.Carpeta();
    orden.dicho = estados.DichoParallel();
    orden.sobrevive = true; // its parts are batches of their own, which note what they do
    CAvance avance(static_cast<int>(trabajos.size()));
    const auto estado = Corre(orden, error, kEntreCuentas, [&] {
        Recoge(partes, estados);
        avance.Cuenta(estados.Acabados());
    });
    CFileException::Exige(error, sistema::Nombre(orden.programa));
    Recoge(partes, estados);
    if (estado != 0)
        sistema::Imprime(stderr, LoDicho(orden.dicho));
}

} // namespace lote
