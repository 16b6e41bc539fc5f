#include "batch/job_states.h"

#include <algorithm>
#include <cerrno>
#include <optional>

#include "batch/batch_texts.h"
#include "platform/files/cstdio_file.h"
#include "platform/files/side_names.h"
#include "platform/plain_texts.h"

namespace lote {
namespace {

constexpr std::string_view kSinCuenta = "-\t-"; // of a job that left no log

/// The four numbers of a job that has ended, between tabs.
std::string Numeros(const CHecho& hecho)
{
    const std::string cuenta =
        hecho.cuenta ? Formatea("%d\t%d", hecho.cuenta->errores, hecho.cuenta->warnings)
                     : std::string(kSinCuenta);
    return Formatea("%d\t%s\t%.2f", hecho.estado, cuenta, hecho.segundos);
}

/// Takes a number and the tab behind it.
template <class T>
bool Toma(std::string_view& quedan, T& valor)
{
    const std::size_t fin = quedan.find('\t');
    const auto numero = NumeroDe<T>(quedan.substr(0, fin));
    if (fin == std::string_view::npos || !numero)
        return false;
    valor = *numero;
    quedan.remove_prefix(fin + 1);
    return true;
}

/// Takes the two numbers of a log, or what stands for those of none.
bool Toma(std::string_view& quedan, std::optional<CCuenta>& cuenta)
{
    if (quedan.starts_with(kSinCuenta) && quedan.substr(kSinCuenta.size()).starts_with('\t')) {
        quedan.remove_prefix(kSinCuenta.size() + 1);
        return true;
    }
    cuenta.emplace();
    return Toma(quedan, cuenta->errores) && Toma(quedan, cuenta->warnings);
}

/// Takes the numbers at the start of a line, behind which the job's own stands. Nothing for a line
/// that was cut short.
std::optional<CHecho> TomaNumeros(std::string_view& linea)
{
    CHecho hecho;
    if (Toma(linea, hecho.estado) && Toma(linea, hecho.cuenta) && Toma(linea, hecho.segundos))
        return hecho;
    return std::nullopt;
}

/// The jobs of the run that left a table; none where they can't be told any more.
std::vector<CTrabajo> TrabajosDeAntes(const std::filesystem::path& tabla)
{
    try {
        return LeeTabla(sistema::Nombre(tabla));
    } catch (const CLineaMala&) {
        return {};
    }
}

/// Takes a file of an earlier run away, if it is there.
void Quita(const std::filesystem::path& ruta)
{
    sistema::Error error;
    sistema::Borra(ruta, error);
    if (error != std::errc::no_such_file_or_directory)
        CFileException::Exige(error, sistema::Nombre(ruta));
}

} // namespace

void Escribe(const std::filesystem::path& ruta, const std::string& texto)
{
    CFile fichero;
    CFileException fallo;
    if (!fichero.Open(sistema::Nombre(ruta), CFile::modeCreate | CFile::modeWrite, &fallo))
        throw CFileException(fallo);
    fichero.Write(texto.data(), static_cast<UINT>(texto.size()));
    fichero.Close();
}

bool CEstados::HayAlgo() const
{
    std::error_code error;
    return std::filesystem::is_regular_file(Diario(), error);
}

void CEstados::Lee()
{
    CFile fichero;
    CFileException fallo;
    if (!fichero.Open(sistema::Nombre(Diario()), CFile::modeRead, &fallo))
        throw CFileException(fallo);
    const std::string todo(fichero.Tramo(static_cast<std::size_t>(fichero.GetLength())));
    std::string_view quedan = todo;
    for (std::size_t fin = quedan.find('\n'); fin != std::string_view::npos;
         fin = quedan.find('\n')) {
        const std::string_view linea = quedan.substr(0, fin);
        quedan.remove_prefix(fin + 1);
        std::string_view suya = linea; // the job's own, once its numbers are taken
        if (const auto hecho = TomaNumeros(suya))
            m_hechos[std::string(suya)] = *hecho;
        else
            m_cortadas += linea.empty() ? 0 : 1;
    }
    m_cortadas += quedan.empty() ? 0 : 1;
}

void CEstados::Ocupa(CCandado& candado) const
{
    sistema::Error error; // where there can be no lock it does without
    if (candado.Toma(lado::De(Diario(), lado::kCandado), error) == sistema::Bloqueo::DeOtro)
        throw CLineaMala(Formatea(textos::kEnManosDeOtro, sistema::Nombre(m_carpeta)));
}

void CEstados::Empieza() const
{
    errno = 0;
    Exige(std::ofstream(Diario(), std::ios::trunc));
}

/// Raises the system's reason where a stream to the diary has failed.
void CEstados::Exige(const std::ostream& diario) const
{
    if (!diario)
        throw CFileException(sistema::Nombre(Diario()),
                             sistema::Error(errno != 0 ? errno : EIO, std::generic_category()));
}

bool CEstados::EsDeOtro() const
{
    sistema::Error error;
    const auto nombres = sistema::Lista(m_carpeta, error);
    const auto esFichero = [](const std::filesystem::path& nombre) { // no lock of a killed run
        return lado::Parte(nombre).sufijo.empty();
    };
    return !HayAlgo() && !std::filesystem::is_regular_file(Tabla(), error) &&
           std::ranges::any_of(nombres, esFichero);
}

bool CEstados::Tiene(const std::filesystem::path& ruta) const
{
    sistema::Error error;
    const std::filesystem::path ficheros[] = {Diario(), Tabla(),        Trabajos(),     Pagina(),
                                              Hoja(),   DichoResumen(), DichoParallel()};
    const std::filesystem::path carpetas[] = {Dichos(), Informes(), Partes()};
    const auto es = [&](const std::filesystem::path& una, const auto& suyas) {
        return std::ranges::any_of(suyas, [&](const std::filesystem::path& suya) {
            return sistema::Mira(una, error).EsElMismo(sistema::Mira(suya, error));
        });
    };
    return es(ruta, ficheros) ||
           es(std::filesystem::canonical(ruta, error).parent_path(), carpetas);
}

void CEstados::Abre()
{
    for (const std::filesystem::path& deAntes : {Tabla(), Pagina(), Hoja(), DichoResumen()})
        Quita(deAntes);
    errno = 0;
    m_diario.open(Diario(), std::ios::app | std::ios::binary);
    if (m_diario.tellp() > 0)
        m_diario << "\n"; // behind a line that a killed run may have left unfinished
    Exige(m_diario.flush());
}

void CEstados::Anota(const CTrabajo& trabajo, const CHecho& hecho)
{
    m_hechos[trabajo.linea] = hecho;
    ++m_acabados.todos;
    m_acabados.fallidos += hecho.estado != 0 ? 1 : 0;
    errno = 0;
    m_diario << Numeros(hecho) << '\t' << trabajo.linea << '\n';
    Exige(m_diario.flush());
}

const CHecho* CEstados::De(const CTrabajo& trabajo) const
{
    const auto hecho = m_hechos.find(trabajo.linea);
    return hecho != m_hechos.end() ? &hecho->second : nullptr;
}

int CEstados::Fallidos(const std::vector<CTrabajo>& trabajos) const
{
    return static_cast<int>(std::ranges::count_if(trabajos, [&](const auto& t) {
        const CHecho* const hecho = De(t);
        return hecho == nullptr || hecho->estado != 0;
    }));
}

void CEstados::EscribeTabla(const std::vector<CTrabajo>& trabajos) const
{
    std::string tabla = textos::kCabeceraEstado;
    for (const CTrabajo& trabajo : trabajos) {
        const CHecho* const hecho = De(trabajo);
        tabla +=
            Formatea("%d\t%s\t%s\t", trabajo.numero, NombreDe(trabajo.traduccion), trabajo.carpeta);
        tabla += (hecho != nullptr ? Numeros(*hecho) : "-\t-\t-\t-") + "\n";
    }
    Escribe(Tabla(), tabla);
}

void CEstados::Renumera(const std::vector<CTrabajo>& trabajos) const
{
    std::map<std::string, int, std::less<>> ahora; // by their lines, as they are known
    for (const CTrabajo& trabajo : trabajos)
        ahora.emplace(trabajo.linea, trabajo.numero);
    const std::vector<CTrabajo> deAntes = TrabajosDeAntes(Trabajos());
    sistema::Error error;
    for (const auto suyo : {&CEstados::Dicho, &CEstados::Informe}) {
        std::vector<std::pair<std::filesystem::path, int>> aparte; // so that none meets another
        for (const CTrabajo& trabajo : deAntes) {
            const auto otro = ahora.find(trabajo.linea);
            const int numero = otro != ahora.end() ? otro->second : 0;
            const std::filesystem::path ruta = (this->*suyo)(trabajo.numero);
            const std::filesystem::path libre = lado::De(ruta, lado::kAntes, lado::Marca());
            if (numero != trabajo.numero)
                sistema::Renombra(ruta, libre, error);
            if (numero != trabajo.numero && !error)
                aparte.emplace_back(libre, numero);
        }
        for (const auto& [ruta, numero] : aparte)
            if (numero != 0)
                sistema::Renombra(ruta, (this->*suyo)(numero), error);
            else
                sistema::Borra(ruta, error);
    }
}

void CEstados::GuardaTrabajos(const std::vector<CTrabajo>& trabajos) const
{
    std::string tabla =
        std::string(kDesdeCarpeta) + sistema::Nombre(sistema::EnteraSinPuntos(".")) + "\n";
    for (const CTrabajo& trabajo : trabajos)
        tabla += trabajo.linea + "\n";
    Escribe(Trabajos(), tabla);
}

std::filesystem::path CEstados::DesdeCarpeta() const
{
    CStdioFile fichero;
    CFileException fallo;
    CString primera;
    if (!fichero.Open(sistema::Nombre(Trabajos()), CFile::modeRead, &fallo))
        throw CFileException(sistema::Nombre(Trabajos()), fallo.m_causa, true);
    fichero.ReadString(primera);
    std::string_view linea = primera;
    if (!linea.starts_with(kDesdeCarpeta))
        return {};
    linea.remove_prefix(kDesdeCarpeta.size());
    return sistema::Ruta(linea);
}

} // namespace lote
