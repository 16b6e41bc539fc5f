#include "platform/cfile.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "platform/system.h"

namespace {

constexpr std::size_t kBufer = std::size_t{64} * 1024;
constexpr std::size_t kLoteTrasSalto =
    std::size_t{4} * 1024; // an entity of a drawing seldom has more
constexpr char kFinAntiguo = 0x1A;

/// The name with its letters small: those of ASCII, and those of the code page in UTF-8.
std::string EnMinusculas(const std::filesystem::path& nombre)
{
    std::string texto = nombre.string();
    bool trasC3 = false;
    for (char& c : texto) {
        const auto byte = static_cast<unsigned char>(c);
        const bool mayuscula =
            (c >= 'A' && c <= 'Z') || (trasC3 && byte >= 0x80 && byte <= 0x9E && byte != 0x97);
        trasC3 = byte == 0xC3;
        if (mayuscula)
            c = static_cast<char>(byte + 0x20U);
    }
    return texto;
}

/// The file itself if it is there; else the one file of its folder whose name differs in the case
/// of its letters alone; else the name as it was.
std::filesystem::path SinMayusculas(const std::filesystem::path& ruta)
{
    std::error_code error;
    if (std::filesystem::exists(ruta, error))
        return ruta;
    const std::filesystem::path carpeta = ruta.has_parent_path() ? ruta.parent_path() : ".";
    const std::string buscado = EnMinusculas(ruta.filename());
    std::filesystem::path hallado;
    std::filesystem::directory_iterator fichero(carpeta, error);
    for (; !error && fichero != std::filesystem::directory_iterator(); fichero.increment(error)) {
        if (EnMinusculas(fichero->path().filename()) != buscado)
            continue;
        if (!hallado.empty())
            return ruta;
        hallado = fichero->path();
    }
    return hallado.empty() ? ruta : hallado;
}

} // namespace

CFile::CFile() : m_lote(kBufer) {}

CFile::~CFile()
{
    Cierra();
}

bool CFile::Open(const CString& nombre, UINT modo)
{
    Cierra();
    m_nombre = nombre;
    std::filesystem::path ruta = sistema::Ruta(nombre);
    if ((modo & anyCase) != 0)
        ruta = SinMayusculas(ruta);
    std::error_code error;
    if (std::filesystem::is_directory(ruta, error))
        return false;
    if ((modo & modeWrite) == 0) {
        m_lectura = sistema::AbreLectura(ruta);
        m_longitud = m_lectura != nullptr ? sistema::Longitud(m_lectura) : 0;
    } else if ((modo & modeInPlace) != 0) {
        m_enSitio = sistema::AbreEscritura(ruta);
    } else {
        m_reemplazo.Abre(nombre);
    }
    const bool abierto = m_lectura != nullptr || Escribiendo();
    if (abierto && m_bufer == nullptr)
        m_bufer = std::make_unique<char[]>(kBufer);
    return abierto;
}

void CFile::Close()
{
    if (Escribiendo())
        Vacia();
    const bool confirmado = m_reemplazo.Fichero() == nullptr || m_reemplazo.Confirma();
    Cierra();
    if (!confirmado)
        throw CFileException(m_nombre);
}

void CFile::Cierra()
{
    if (m_lectura != nullptr)
        std::fclose(m_lectura);
    if (m_enSitio != nullptr) {
        Vuelca();
        std::fclose(m_enSitio);
    }
    m_reemplazo.Desecha();
    m_lectura = nullptr;
    m_enSitio = nullptr;
    m_lleno = 0;
    m_leido = 0;
    m_base = 0;
    m_longitud = 0;
    m_final = false;
    m_lote = kBufer;
}

void CFile::Flush()
{
    if (Escribiendo())
        Vacia();
}

CString CFile::RutaCompleta(const CString& nombre)
{
    std::error_code error;
    const std::filesystem::path entera = std::filesystem::absolute(sistema::Ruta(nombre), error);
    return error ? nombre : sistema::Nombre(entera.lexically_normal());
}

bool CFile::EsElMismo(const CString& uno, const CString& otro)
{
    std::error_code error;
    return std::filesystem::equivalent(sistema::Ruta(uno), sistema::Ruta(otro), error) && !error;
}

std::string_view CFile::Mira(std::size_t minimo)
{
    if (m_lleno - m_leido < minimo && !m_final) {
        std::memmove(m_bufer.get(), m_bufer.get() + m_leido, m_lleno - m_leido);
        m_lleno -= m_leido;
        m_base += m_leido;
        m_leido = 0;
        const std::size_t hasta = std::clamp(m_lote, minimo, kBufer);
        while (m_lleno < hasta && !m_final) {
            const std::size_t n =
                std::fread(m_bufer.get() + m_lleno, 1, hasta - m_lleno, m_lectura);
            m_final = n == 0;
            m_lleno += n;
        }
        m_lote = kBufer;
        if (m_final) {
            std::string_view ultimo(m_bufer.get(), m_lleno);
            AlLlegarAlFinal(ultimo);
            m_lleno = ultimo.size();
        }
    }
    return {m_bufer.get() + m_leido, m_lleno - m_leido};
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

void CFile::Seek(std::uint64_t posicion)
{
    if (posicion >= m_base && posicion <= m_base + m_lleno) {
        m_leido = static_cast<std::size_t>(posicion - m_base);
        return;
    }
    m_base = posicion;
    m_lleno = 0;
    m_leido = 0;
    m_lote = kLoteTrasSalto;
    m_final = !sistema::Posiciona(m_lectura, posicion);
}

void CFile::Write(const void* bytes, UINT n)
{
    Escribe({static_cast<const char*>(bytes), n});
}

void CFile::Escribe(std::string_view bytes)
{
    while (!bytes.empty()) {
        if (m_lleno == kBufer)
            Vacia();
        const std::size_t n = std::min(bytes.size(), kBufer - m_lleno);
        std::memcpy(m_bufer.get() + m_lleno, bytes.data(), n);
        m_lleno += n;
        bytes.remove_prefix(n);
    }
}

bool CFile::Vuelca()
{
    const std::size_t pendientes = m_lleno;
    m_base += pendientes;
    m_lleno = 0;
    std::FILE* destino = m_enSitio != nullptr ? m_enSitio : m_reemplazo.Fichero();
    return std::fwrite(m_bufer.get(), 1, pendientes, destino) == pendientes;
}

void CFile::Vacia()
{
    if (!Vuelca() && m_enSitio == nullptr) {
        m_reemplazo.Desecha();
        throw CFileException(m_nombre);
    }
}

void CStdioFile::AlLlegarAlFinal(std::string_view& ultimo) const
{
    if (!ultimo.empty() && ultimo.back() == kFinAntiguo)
        ultimo.remove_suffix(1);
}

char* CStdioFile::ReadString(char* bufer, UINT n)
{
    const std::size_t cabe = n - 1U;
    const std::string_view resto = Mira(cabe + 1); // one more: a CR must see what follows it
    std::size_t largo = std::min(cabe, resto.size());
    std::size_t consumo = largo;
    bool entera = false;
    if (const auto fin = resto.substr(0, cabe + 1).find('\n'); fin != std::string_view::npos) {
        const std::size_t sinFin = fin > 0 && resto[fin - 1] == '\r' ? fin - 1 : fin;
        entera =
            sinFin < cabe; // else the characters fill the buffer and the end waits for its turn
        largo = entera ? sinFin : largo;
        consumo = entera ? fin + 1 : largo;
    }
    if (consumo == 0)
        return nullptr;
    std::replace_copy(resto.begin(), resto.begin() + static_cast<std::ptrdiff_t>(largo), bufer,
                      '\0', ' ');
    if (entera)
        bufer[largo++] = '\n';
    bufer[largo] = '\0';
    Consume(consumo);
    return bufer;
}

bool CStdioFile::ReadString(CString& linea)
{
    m_linea.clear();
    bool hubo = false;
    for (bool entera = false; !entera;) {
        const std::string_view resto = Mira(2); // a CR must see what follows it
        if (resto.empty())
            break;
        hubo = true;
        const auto fin = resto.find('\n');
        entera = fin != std::string_view::npos;
        std::size_t largo = entera ? fin : resto.size() - (AlFinal() ? 0U : 1U);
        Consume(entera ? fin + 1 : largo);
        if (entera && fin > 0 && resto[fin - 1] == '\r')
            --largo;
        m_linea.append(resto.substr(0, largo));
    }
    std::replace(m_linea.begin(), m_linea.end(), '\0', ' ');
    linea = std::string_view(m_linea);
    return hubo;
}

void CStdioFile::WriteString(std::string_view texto)
{
    while (!texto.empty()) {
        const auto fin = texto.find('\n');
        Escribe(texto.substr(0, fin));
        if (fin == std::string_view::npos)
            return;
        Escribe("\r\n");
        texto.remove_prefix(fin + 1);
    }
}
