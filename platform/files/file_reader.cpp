#include "platform/files/file_reader.h"

#include <algorithm>
#include <utility>

#include "platform/files/cfile_exception.h"
#include "platform/system.h"

namespace {

constexpr std::size_t kLote = std::size_t{64} * 1024;
constexpr std::size_t kLoteTrasSalto =
    std::size_t{4} * 1024; // an entity of a drawing seldom has more
constexpr std::size_t kEnteroMayor = std::size_t{64} << 20U; // of a file read as a whole
constexpr char kMarcaAntigua = 0x1A;

} // namespace

bool CLectorFichero::Abre(const CString& nombre, const std::filesystem::path& ruta, bool entero,
                          sistema::Error& error)
{
    Cierra();
    m_fichero = sistema::Abre(ruta, sistema::Modo::Leer, error);
    if (m_fichero == sistema::kCerrado)
        return false;
    const sistema::CEstado estado = sistema::Mira(m_fichero, error);
    if (!error && estado.tipo == sistema::CEstado::Tipo::Carpeta)
        error = std::make_error_code(std::errc::is_a_directory);
    if (error) {
        Cierra();
        return false;
    }
    m_nombre = nombre;
    m_longitud = estado.largo;
    m_esRegular = estado.EsRegular();
    m_lote = kLote;
    if (!entero || !m_esRegular || m_longitud > kEnteroMayor) {
        m_bufer.Cabe(kLote);
        return true;
    }
    m_bufer.Cabe(static_cast<std::size_t>(m_longitud));
    Lee(static_cast<std::size_t>(m_longitud));
    m_final = true;
    QuitaMarca();
    return true;
}

void CLectorFichero::Cierra() noexcept
{
    m_fichero = {};
    m_longitud = 0;
    m_esRegular = false;
    m_bufer.Deja(0);
    m_leido = 0;
    m_base = 0;
    m_final = false;
}

void CLectorFichero::Rellena(std::size_t minimo)
{
    m_bufer.QuitaDelante(m_leido);
    m_base += m_leido;
    m_leido = 0;
    m_bufer.Cabe(minimo);
    Lee(std::max(std::exchange(m_lote, kLote), minimo));
    if (m_final)
        QuitaMarca();
}

/// Reads on until the buffer holds so many bytes, for which it has room, or the file ends.
void CLectorFichero::Lee(std::size_t hasta)
{
    while (m_bufer.Lleno() < hasta && !m_final) {
        sistema::Error error;
        const std::uint64_t posicion = m_base + m_bufer.Lleno();
        const std::size_t faltan = hasta - m_bufer.Lleno();
        if (!m_esRegular && !sistema::EsperaDatos(m_fichero, error))
            throw CInterrumpido();
        std::size_t n = 0;
        if (m_esRegular)
            n = sistema::LeeEn(m_fichero, m_bufer.Final(), faltan, posicion, error);
        else if (!error)
            n = sistema::Lee(m_fichero, m_bufer.Final(), faltan, error);
        if (!error && n == 0 && posicion < m_longitud)
            error = CFileException::AcortadoAlLeer();
        if (error)
            throw CFileException(m_nombre, error, true);
        m_final = n == 0;
        m_bufer.Crece(n);
    }
}

void CLectorFichero::QuitaMarca()
{
    if (m_fin == Fin::MarcaAntigua && m_bufer.Bytes().ends_with(kMarcaAntigua))
        m_bufer.Deja(m_bufer.Lleno() - 1);
}

void CLectorFichero::Seek(std::uint64_t posicion)
{
    if (posicion >= m_base && posicion <= m_base + m_bufer.Lleno()) {
        m_leido = static_cast<std::size_t>(posicion - m_base);
        return;
    }
    if (m_base == 0 && m_final) { // the whole file is here
        m_leido = m_bufer.Lleno();
        return;
    }
    m_base = posicion;
    m_bufer.Deja(0);
    m_leido = 0;
    m_lote = kLoteTrasSalto;
    m_final = false;
    if (!m_esRegular)
        throw CFileException(m_nombre, std::make_error_code(std::errc::invalid_seek), true);
}
