#include "platform/files/cfile.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "platform/files/any_case_name.h"
#include "platform/files/output_set.h"
#include "platform/files/system_files.h"

namespace {

constexpr std::size_t kBufer = std::size_t{64} * 1024;
constexpr std::size_t kLoteTrasSalto =
    std::size_t{4} * 1024; // an entity of a drawing seldom has more
constexpr std::size_t kEnteroMayor = std::size_t{64} << 20U; // of a file read as a whole

/// Stands in a log where lines of it couldn't be written.
constexpr std::string_view kMarcaHueco = "\r\n*** Faltan mensajes: no se pudieron escribir ***\r\n";

/// What stands at a path that the program knows by a name. A fault is no answer: two files that
/// can't be told apart could be one.
sistema::CEstado Mirado(const CString& nombre, const std::filesystem::path& ruta)
{
    sistema::Error error;
    const sistema::CEstado estado = sistema::Mira(ruta, error);
    if (error && !CFileException::EsCorriente(error))
        throw CFileException(nombre, error);
    return estado;
}

std::filesystem::path Destino(const CString& nombre)
{
    sistema::Error error;
    std::filesystem::path ruta = CReemplazo::DestinoReal(sistema::Ruta(nombre), error);
    if (error && !CFileException::EsCorriente(error))
        throw CFileException(nombre, error);
    return ruta;
}

} // namespace

CFile::CFile() : m_lote(kBufer) {}

CFile::~CFile()
{
    Suelta();
}

bool CFile::Open(const CString& nombre, UINT modo, CFileException* fallo,
                 CConjuntoSalidas* conjunto)
{
    Suelta();
    m_nombre = nombre;
    m_fallo = {};
    sistema::Error error;
    bool abierto = false;
    if ((modo & modeWrite) == 0)
        abierto = AbreLectura(nombre, modo, error);
    else if ((modo & modeInPlace) != 0)
        abierto = AbreEnSitio(nombre, error);
    else
        abierto = AbreSalida(nombre, conjunto, error);
    const CFileException como(nombre, error, (modo & modeWrite) == 0);
    if (!abierto && !CFileException::EsCorriente(error))
        throw CFileException(como);
    if (!abierto && fallo != nullptr)
        *fallo = como;
    return abierto;
}

bool CFile::AbreLectura(const CString& nombre, UINT modo, sistema::Error& error)
{
    std::filesystem::path ruta = sistema::Ruta(nombre);
    if ((modo & anyCase) != 0)
        ruta = SinMayusculas(ruta, error);
    if (error)
        return false;
    m_lectura = sistema::Abre(ruta, sistema::Modo::Leer, error);
    if (m_lectura == sistema::kCerrado)
        return false;
    const sistema::CEstado estado = sistema::Mira(m_lectura, error);
    if (!error && estado.tipo == sistema::CEstado::Tipo::Carpeta)
        error = std::make_error_code(std::errc::is_a_directory);
    m_longitud = estado.largo;
    m_esRegular = estado.tipo == sistema::CEstado::Tipo::Regular;
    if (error) {
        Suelta();
        return false;
    }
    const bool entero = (modo & modeWhole) != 0 && m_esRegular && m_longitud <= kEnteroMayor;
    Cabe(entero ? static_cast<std::size_t>(m_longitud) : kBufer);
    if (entero) {
        Llena(static_cast<std::size_t>(m_longitud));
        m_final = true;
    }
    return true;
}

bool CFile::AbreEnSitio(const CString& nombre, sistema::Error& error)
{
    const std::filesystem::path ruta = sistema::Ruta(nombre);
    if (sistema::Mira(ruta, error).tipo == sistema::CEstado::Tipo::Carpeta)
        error = std::make_error_code(std::errc::is_a_directory);
    if (error)
        return false;
    m_enSitio = sistema::Abre(ruta, sistema::Modo::EnSitio, error);
    if (m_enSitio == sistema::kCerrado)
        return false;
    const bool regular = sistema::Mira(m_enSitio, error).tipo == sistema::CEstado::Tipo::Regular;
    if (!error && regular && !sistema::Bloquea(m_enSitio, error) && !error)
        error = sistema::kDeOtro;
    if (!error && regular)
        sistema::Recorta(m_enSitio, 0, error);
    if (!error) {
        Cabe(kBufer);
        return true;
    }
    Suelta();
    if (error == sistema::kDeOtro)
        throw CFileException(nombre, error);
    return false;
}

bool CFile::AbreSalida(const CString& nombre, CConjuntoSalidas* conjunto, sistema::Error& error)
{
    Cabe(kBufer);
    if (conjunto != nullptr) {
        m_salida = conjunto->Abre(nombre, error);
        return m_salida != nullptr;
    }
    const auto apertura = m_reemplazo.Abre(nombre, error);
    if (apertura == CReemplazo::Apertura::Ocupado)
        throw CFileException(nombre, sistema::kDeOtro);
    m_salida = apertura == CReemplazo::Apertura::Abierto ? &m_reemplazo : nullptr;
    return m_salida != nullptr;
}

void CFile::Close()
{
    if (Escribiendo())
        Vuelca();
    if (m_salida == &m_reemplazo) {
        const CSalidaNombrada sola[] = {{m_nombre, m_salida}};
        ConfirmaSalidas(sola);
    }
    Suelta();
}

void CFile::Suelta() noexcept
{
    sistema::Error error;
    if (m_lectura != sistema::kCerrado)
        sistema::Cierra(m_lectura, error);
    if (m_enSitio != sistema::kCerrado) {
        VuelcaEnSitio();
        if (m_hayHueco) // at the very end
            sistema::Escribe(m_enSitio, kMarcaHueco, error);
        sistema::Cierra(m_enSitio, error);
        if (error && !m_fallo.m_causa)
            m_fallo.m_causa = error;
    }
    m_reemplazo.Desecha();
    m_salida = nullptr;
    m_lectura = sistema::kCerrado;
    m_enSitio = sistema::kCerrado;
    m_hayHueco = false;
    m_lleno = 0;
    m_leido = 0;
    m_base = 0;
    m_longitud = 0;
    m_esRegular = false;
    m_final = false;
    m_lote = kBufer;
}

void CFile::Flush()
{
    if (Escribiendo())
        Vuelca();
}

CString CFile::RutaCompleta(const CString& nombre)
{
    return sistema::Nombre(sistema::EnteraSinPuntos(sistema::Ruta(nombre)));
}

CString CFile::EnDisco(const CString& nombre)
{
    sistema::Error error;
    const std::filesystem::path ruta = SinMayusculas(sistema::Ruta(nombre), error);
    if (error)
        throw CFileException(nombre, error, true);
    return sistema::Nombre(ruta);
}

bool CFile::EsElMismo(const CString& uno, const CString& otro)
{
    return Mirado(uno, sistema::Ruta(uno)).EsElMismo(Mirado(otro, sistema::Ruta(otro)));
}

bool CFile::EsAlguno(const CString& nombre, const std::vector<CString>& otros)
{
    return std::any_of(otros.begin(), otros.end(),
                       [&](const CString& otro) { return EsElMismo(nombre, otro); });
}

bool CFile::SeriaElMismo(const CString& uno, const CString& otro)
{
    using Tipo = sistema::CEstado::Tipo;
    if (uno.IsEmpty() || otro.IsEmpty())
        return false;
    const std::filesystem::path ruta = Destino(uno);
    const std::filesystem::path otra = Destino(otro);
    const sistema::CEstado estado = Mirado(uno, ruta);
    if (estado.tipo == Tipo::Regular)
        return estado.EsElMismo(Mirado(otro, otra));
    const auto carpeta = [](const CString& nombre, const std::filesystem::path& destino) {
        return Mirado(nombre, destino.has_parent_path() ? destino.parent_path() : ".");
    };
    return estado.tipo == Tipo::NoHay && ruta.filename() == otra.filename() &&
           carpeta(uno, ruta).EsElMismo(carpeta(otro, otra));
}

std::string_view CFile::Mira(std::size_t minimo)
{
    if (m_lleno - m_leido < minimo && !m_final) {
        std::memmove(m_bufer.get(), m_bufer.get() + m_leido, m_lleno - m_leido);
        m_lleno -= m_leido;
        m_base += m_leido;
        m_leido = 0;
        Cabe(minimo);
        Llena(std::max(m_lote, minimo));
        m_lote = kBufer;
        if (m_final) {
            std::string_view ultimo(m_bufer.get(), m_lleno);
            AlLlegarAlFinal(ultimo);
            m_lleno = ultimo.size();
        }
    }
    return {m_bufer.get() + m_leido, m_lleno - m_leido};
}

void CFile::Cabe(std::size_t bytes)
{
    if (bytes <= m_cabe)
        return;
    std::unique_ptr<char[]> mayor(new char[bytes]); // not filled with zeros
    // No more than fits: g++ 14 sees a Mira(1) into an empty buffer that holds more.
    std::copy_n(m_bufer.get(), std::min(m_lleno, bytes), mayor.get());
    m_bufer = std::move(mayor);
    m_cabe = bytes;
}

void CFile::Llena(std::size_t hasta)
{
    while (m_lleno < hasta && !m_final) {
        sistema::Error error;
        char* destino = m_bufer.get() + m_lleno;
        const std::uint64_t posicion = m_base + m_lleno;
        const std::size_t n =
            m_esRegular ? sistema::LeeEn(m_lectura, destino, hasta - m_lleno, posicion, error)
                        : sistema::Lee(m_lectura, destino, hasta - m_lleno, error);
        if (!error && n == 0 && posicion < m_longitud)
            error = CFileException::AcortadoAlLeer();
        if (error)
            throw CFileException(m_nombre, error, true);
        m_final = n == 0;
        m_lleno += n;
    }
}

UINT CFile::Read(void* bytes, UINT n)
{
    auto* destino = static_cast<char*>(bytes);
    UINT leidos = 0;
    while (leidos < n) {
        const std::string_view resto = Mira(1);
        if (resto.empty())
            break;
        const std::size_t trozo = std::min(resto.size(), std::size_t{n} - leidos);
        std::memcpy(destino + leidos, resto.data(), trozo);
        Consume(trozo);
        leidos += static_cast<UINT>(trozo);
    }
    return leidos;
}

std::string_view CFile::Tramo(std::size_t n)
{
    const std::string_view tramo = Mira(n).substr(0, n);
    Consume(tramo.size());
    return tramo;
}

void CFile::Seek(std::uint64_t posicion)
{
    if (posicion >= m_base && posicion <= m_base + m_lleno) {
        m_leido = static_cast<std::size_t>(posicion - m_base);
        return;
    }
    if (m_base == 0 && m_final) { // the whole file is here
        m_leido = m_lleno;
        return;
    }
    m_base = posicion;
    m_lleno = 0;
    m_leido = 0;
    m_lote = kLoteTrasSalto;
    m_final = false;
    if (!m_esRegular)
        throw CFileException(m_nombre, std::make_error_code(std::errc::invalid_seek), true);
}

void CFile::Write(const void* bytes, UINT n)
{
    Escribe({static_cast<const char*>(bytes), n});
}

void CFile::Escribe(std::string_view bytes)
{
    while (!bytes.empty()) {
        if (m_lleno == m_cabe)
            Vuelca();
        const std::size_t n = std::min(bytes.size(), m_cabe - m_lleno);
        std::memcpy(m_bufer.get() + m_lleno, bytes.data(), n);
        m_lleno += n;
        bytes.remove_prefix(n);
    }
}

char* CFile::Sitio(std::size_t bytes)
{
    if (m_cabe - m_lleno < bytes)
        Vuelca();
    Cabe(bytes);
    return m_bufer.get() + m_lleno;
}

void CFile::Vuelca()
{
    if (m_enSitio != sistema::kCerrado)
        return VuelcaEnSitio();
    sistema::Error error;
    m_salida->Escribe({m_bufer.get(), m_lleno}, error);
    m_base += m_lleno;
    m_lleno = 0;
    if (!error)
        return;
    m_salida->Desecha();
    m_salida = nullptr;
    throw CFileException(m_nombre, error);
}

void CFile::VuelcaEnSitio()
{
    std::string_view bytes(m_bufer.get(), m_lleno);
    m_base += m_lleno;
    m_lleno = 0;
    sistema::Error error;
    if (m_hayHueco && !bytes.empty()) {
        // The buffer may begin inside a line whose start is lost.
        bytes.remove_prefix(std::min(bytes.find('\n'), bytes.size() - 1) + 1);
        sistema::Escribe(m_enSitio, kMarcaHueco, error);
        m_hayHueco = static_cast<bool>(error);
    }
    if (!error)
        sistema::Escribe(m_enSitio, bytes, error);
    if (!error)
        return;
    m_hayHueco = true;
    if (!m_fallo.m_causa)
        m_fallo.m_causa = error;
}
