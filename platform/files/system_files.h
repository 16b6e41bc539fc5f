#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

// What the layer asks of the operating system about files and their names: one source for each
// system, chosen by the build. Each call asks the fault point first (fault_point.h).

namespace sistema {

/// What may stand in front of a file's name in its path.
extern const std::string_view kSeparadores;

/// The path that a name of the program stands for. Names are bytes of the program, code page 1252
/// or UTF-8.
std::filesystem::path Ruta(std::string_view nombre);
/// The name by which the program knows a path.
std::string Nombre(const std::filesystem::path& ruta);
/// The path from the root; itself where the system doesn't tell.
std::filesystem::path Entera(const std::filesystem::path& ruta);
/// The same without "." and "..", by the letters alone.
std::filesystem::path EnteraSinPuntos(const std::filesystem::path& ruta);

// Files. What fails tells the system's reason in `error`, which is clear otherwise; a call that a
// signal interrupted is repeated. Who waits for a pipe fails as interrupted where the process is to
// end (HayQueAcabar).
using Error = std::error_code;

inline constexpr int kCerrado = -1; ///< number of no open file

/// Reason of ours: another program is writing the file.
inline const Error kDeOtro = std::make_error_code(std::errc::text_file_busy);

enum class Modo {
    Leer,
    LeerEse, ///< the same; no link is followed
    EnSitio, ///< for writing; made if it isn't there, and not emptied
    // To be read and written; no link is followed.
    Cambiar,       ///< a file that is there
    Tomar,         ///< made if it isn't there
    Crear,         ///< one that isn't there yet
    CrearSinOtros, ///< the same; nobody but its owner is to write it
    CrearPrivado   ///< the same; nobody else is to read it either, until it gets other rights
};

void Cierra(int fichero, Error& error);

/// The number of an open file, which is closed with the object.
class CAbierto {
public:
    CAbierto() = default;
    explicit CAbierto(int numero) : m_numero(numero) {}
    CAbierto(CAbierto&& otro) noexcept : m_numero(std::exchange(otro.m_numero, kCerrado)) {}
    CAbierto& operator=(CAbierto otro) noexcept
    {
        std::swap(m_numero, otro.m_numero);
        return *this;
    }
    ~CAbierto()
    {
        Error error;
        Cierra(error);
    }
    operator int() const& { return m_numero; }
    operator int() const&& = delete; // it would be closed already
    /// Closes it now, for who must know whether that went well.
    void Cierra(Error& error)
    {
        error.clear();
        if (m_numero != kCerrado)
            sistema::Cierra(std::exchange(m_numero, kCerrado), error);
    }

private:
    int m_numero = kCerrado;
};

/// Opens a file; kCerrado on failure. It is binary and has no buffer.
CAbierto Abre(const std::filesystem::path& ruta, Modo modo, Error& error);
/// A file without a name, in the system's folder for such, to be read and written.
CAbierto CreaAnonimo(Error& error);
/// Reads up to `n` bytes: the next ones, or those at a position. Gives how many were read, which
/// may be fewer; 0 at the end of the file and on failure.
std::size_t Lee(int fichero, char* bytes, std::size_t n, Error& error);
std::size_t LeeEn(int fichero, char* bytes, std::size_t n, std::uint64_t posicion, Error& error);
/// Waits until there is something to be read of a pipe or device, or its end. False where the
/// process is to end before that.
bool EsperaDatos(int fichero, Error& error);
/// Writes all bytes behind those written last.
void Escribe(int fichero, std::string_view bytes, Error& error);
/// Goes to the start of a file and cuts it to a length.
void Recorta(int fichero, std::uint64_t largo, Error& error);
/// Waits until what was written, or what a folder holds, stands on the disk.
void Asegura(int fichero, Error& error);
void AseguraCarpeta(const std::filesystem::path& carpeta, Error& error);

/// What stands behind a name or an open file.
struct CEstado {
    enum class Tipo { NoHay, Regular, Carpeta, Enlace, Otro };

    Tipo tipo = Tipo::NoHay;
    std::uint64_t largo = 0; ///< in bytes, of a regular file
    std::uint64_t disco = 0; ///< this and `numero` tell one file from all others
    std::uint64_t numero = 0;
    std::uint32_t dueño = 0;
    std::uint32_t permisos = 0;
    std::uint64_t nombres = 1; ///< that the file has
    std::int64_t escrito = 0;  ///< when it was last written; tells earlier from later on one disk

    bool EsRegular() const { return tipo == Tipo::Regular; }
    /// Tells of a folder that its users may not put away one another's files.
    bool EsDeTodosConDueño() const
    {
        constexpr std::uint32_t kPegajosa = 01000;
        return (permisos & kPegajosa) != 0;
    }
    /// Tells whether others than the owner may write it.
    bool EscribenOtros() const
    {
        constexpr std::uint32_t kOtros = 0022;
        return (permisos & kOtros) != 0;
    }
    bool EsElMismo(const CEstado& otro) const
    {
        return tipo != Tipo::NoHay && tipo == otro.tipo && disco == otro.disco &&
               numero == otro.numero;
    }
};
/// A name behind which nothing stands is no failure.
CEstado Mira(const std::filesystem::path& ruta, Error& error);
CEstado MiraEnlace(const std::filesystem::path& ruta, Error& error); ///< of a link, the link itself
CEstado Mira(int fichero, Error& error);
/// Tells whether the file is the user's own.
bool EsMio(const CEstado& estado);
/// By which name people know the owner of what stands there.
std::string NombreDelDueño(const std::filesystem::path& ruta);
/// Tells whether a link in the folder may be followed: where users may not touch one another's
/// files they don't lead one another's programs astray either.
bool SePuedeSeguir(const CEstado& enlace, const CEstado& carpeta);
/// Tells whether two names of one folder are, or would be, one file's.
bool SonElMismoNombre(const std::filesystem::path& uno, const std::filesystem::path& otro);
/// The programs that have the file open, as people know them; empty where the system doesn't tell.
std::string ProgramasQueTienen(const std::filesystem::path& ruta);
/// The path that a link leads to.
std::filesystem::path LeeEnlace(const std::filesystem::path& ruta, Error& error);
/// Leaves `error` clear where the process may change the content of the file that is there.
void PuedeEscribir(const std::filesystem::path& ruta, Error& error);
/// Tells whether the process may put another file in the place of the one that is there.
bool PuedeReemplazar(const std::filesystem::path& ruta, const CEstado& destino,
                     const CEstado& carpeta);
/// Gives the open file the owner and all permissions of the one at `modelo`, as far as a file
/// doesn't have them from its folder.
void CopiaDerechos(int fichero, const std::filesystem::path& modelo, Error& error);

/// Lets all who may use its folder write the file, which is the user's own.
void AbreATodos(int fichero, const CEstado& estado);

enum class Bloqueo {
    Mio,
    DeOtro, ///< another process has it; also with an error
    NoHay   ///< the share knows no locks: nobody can be kept out
};
/// Takes the file for this process alone, until it is closed.
Bloqueo Bloquea(int fichero, Error& error);

void Renombra(const std::filesystem::path& antes, const std::filesystem::path& ahora, Error& error);
void Borra(const std::filesystem::path& ruta, Error& error);
/// Gives the file a second name.
void Enlaza(const std::filesystem::path& ruta, const std::filesystem::path& segunda, Error& error);
/// Names in the folder, without their path.
std::vector<std::filesystem::path> Lista(const std::filesystem::path& carpeta, Error& error);
/// Makes a folder that isn't there yet, for nobody but its owner.
void CreaCarpeta(const std::filesystem::path& carpeta, Error& error);
/// Makes the folder and those around it; one that is there is no failure.
void CreaCarpetas(const std::filesystem::path& carpeta, Error& error);

/// Tells whether another file may take the place of one that is open. What `Abre` opened may change
/// its name and be deleted everywhere.
extern const bool kSeReemplazaAbierto;

} // namespace sistema
