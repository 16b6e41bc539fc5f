#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "batch/job_command.h"
#include "platform/files/target_lock.h"

namespace lote {

/// Writes a file in the place of an older one. Raises CFileException.
void Escribe(const std::filesystem::path& ruta, const std::string& texto);

/// The jobs that have ended in this run.
struct CAcabados {
    int todos = 0;
    int fallidos = 0;
};

/// What became of the jobs. Each is written down as it ends, so that whoever kills the batch loses
/// no more than the jobs that were at work; the table of all is written at the end.
class CEstados {
public:
    /// \param carpeta  of the results, which is there
    explicit CEstados(std::filesystem::path carpeta) : m_carpeta(std::move(carpeta)) {}

    /// Tells whether there is anything to be taken up again.
    bool HayAlgo() const;
    /// What an earlier run wrote down. Raises CFileException.
    void Lee();
    /// Takes them for this run alone. Raises CLineaMala where another batch is at work on them.
    void Ocupa(CCandado& candado) const;
    /// Nothing is known of any job. Raises CFileException.
    void Empieza() const;
    /// Tells whether the folder has files, and nothing of a batch among them.
    bool EsDeOtro() const;
    /// Tells whether a file is, by whatever name, one of those that the results have.
    bool Tiene(const std::filesystem::path& ruta) const;
    /// From now on what ends is written down, and neither table nor summary of an earlier run
    /// passes for that of this one. Raises CFileException, as `Anota` does.
    void Abre();
    void Anota(const CTrabajo& trabajo, const CHecho& hecho);

    /// How the job ended the last time; null where it never did.
    const CHecho* De(const CTrabajo& trabajo) const;
    const CAcabados& Acabados() const { return m_acabados; }
    /// How many of the jobs failed, or weren't done.
    int Fallidos(const std::vector<CTrabajo>& trabajos) const;
    /// What an earlier run left of each job, its words and its report, gets the job's number where
    /// that is another one now, and goes with a job that is gone.
    void Renumera(const std::vector<CTrabajo>& trabajos) const;
    /// Keeps the jobs with what is written of them, and the folder from which theirs count, for who
    /// looks at the results afterwards. Raises CFileException.
    void GuardaTrabajos(const std::vector<CTrabajo>& trabajos) const;
    /// The folder from which the folders of the jobs that are kept count; empty where none is told.
    /// Raises CFileException.
    std::filesystem::path DesdeCarpeta() const;
    /// Writes the table of all, one line a job, in the order of the jobs. Raises CFileException.
    void EscribeTabla(const std::vector<CTrabajo>& trabajos) const;

    std::filesystem::path Diario() const { return m_carpeta / "trabajos.log"; }
    std::filesystem::path Tabla() const { return m_carpeta / "estado.tsv"; }
    std::filesystem::path Trabajos() const { return m_carpeta / "trabajos.tsv"; }
    /// What the jobs said.
    std::filesystem::path Dichos() const { return m_carpeta / "salidas"; }
    std::filesystem::path Dicho(int numero) const
    {
        return Dichos() / (std::to_string(numero) + ".err");
    }
    // What goes to other machines and comes back, and what was said of that.
    std::filesystem::path Partes() const { return m_carpeta / "partes"; }
    std::filesystem::path DichoParallel() const { return m_carpeta / "parallel.txt"; }
    // What the report makes of the results: its summary, what it said, and a page for each job.
    std::filesystem::path Pagina() const { return m_carpeta / "resumen.html"; }
    std::filesystem::path Hoja() const { return m_carpeta / "resumen.csv"; }
    std::filesystem::path DichoResumen() const { return m_carpeta / "resumen.txt"; }
    std::filesystem::path Informes() const { return m_carpeta / "informes"; }
    std::filesystem::path Informe(int numero) const
    {
        return Informes() / (std::to_string(numero) + ".html");
    }
    const std::filesystem::path& Carpeta() const { return m_carpeta; }
    /// How many lines of the jobs that ended aren't whole.
    int Cortadas() const { return m_cortadas; }
    std::size_t Cuantos() const { return m_hechos.size(); } ///< jobs that are known to have ended

private:
    void Exige(const std::ostream& diario) const;

    std::filesystem::path m_carpeta;
    std::ofstream m_diario;
    int m_cortadas = 0;
    CAcabados m_acabados;
    std::map<std::string, CHecho, std::less<>> m_hechos; // by the jobs' lines
};

} // namespace lote
