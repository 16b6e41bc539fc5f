#include "platform/cfile.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "platform/ansi.h"
#include "platform/output_set.h"
#include "platform/system_files.h"

namespace {

constexpr std::size_t kBufer = std::size_t{64} * 1024;
constexpr std::size_t kLoteTrasSalto =
    std::size_t{4} * 1024; // an entity of a drawing seldom has more
constexpr std::size_t kEnteroMayor = std::size_t{64} << 20U; // of a file read as a whole
constexpr char kFinAntiguo = 0x1A;
constexpr std::string_view kFinLinea = "\r\n";

// Reasons of ours, by numbers of the system that no call on a file gives.
const sistema::Error kAcortado = std::make_error_code(std::errc::no_message_available);

constexpr const char* kNoSeEscribe = "Imposible escribir el archivo %s";
constexpr const char* kNoSeLee = "Imposible leer el archivo %s";

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

/// The name with its letters small: those of ASCII, and those of the code page in UTF-8.
std::string EnMinusculas(std::string texto)
{
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

/// One file, or the knowledge that there are several.
struct CCandidato {
    std::filesystem::path nombre;
    bool varios = false;

    void Pon(const std::filesystem::path& otro)
    {
        varios = varios || !nombre.empty();
        nombre = otro;
    }
    bool Sirve() const { return !nombre.empty() && !varios; }
};

/// The file itself if it is there. Else the one file of its folder whose name has the same letters,
/// in the code page or in UTF-8; else the one whose letters differ in their case alone; else the
/// name as it was.
std::filesystem::path SinMayusculas(const std::filesystem::path& ruta, sistema::Error& error)
{
    if (sistema::Mira(ruta, error).tipo != sistema::CEstado::Tipo::NoHay || error)
        return ruta;
    const std::string mismas = ansi::AUtf8(sistema::Nombre(ruta.filename()));
    const std::string parecidas = EnMinusculas(mismas);
    CCandidato igual;
    CCandidato parecido;
    for (const std::filesystem::path& otro : sistema::Lista(ruta.parent_path(), error)) {
        const std::string letras = ansi::AUtf8(sistema::Nombre(otro));
        if (letras == mismas)
            igual.Pon(otro);
        else if (EnMinusculas(letras) == parecidas)
            parecido.Pon(otro);
    }
    if (error == std::errc::no_such_file_or_directory || error == std::errc::permission_denied ||
        error == std::errc::not_a_directory)
        error.clear(); // opening it will tell
    const CCandidato& mejor = igual.nombre.empty() ? parecido : igual;
    return mejor.Sirve() ? ruta.parent_path() / mejor.nombre : ruta;
}

} // namespace

CFile::CFile() : m_lote(kBufer) {}

CFile::~CFile()
{
    Cierra();
}

CString CFileException::Causa() const
{
    if (m_causa == kAcortado)
        return "Termina antes de la longitud que tenía"_ansi;
    if (m_causa == sistema::kDeOtro)
        return "Otro proceso lo está escribiendo"_ansi;
    return m_causa.message();
}

CString CFileException::Mensaje() const
{
    CString texto;
    texto.Format(m_alLeer ? kNoSeLee : kNoSeEscribe, m_strFileName);
    return texto + Detalle();
}

CString CFileException::Detalle() const
{
    return m_causa && !SeVe() ? "\n" + Causa() : CString();
}

bool CFileException::EsCorriente(const sistema::Error& error)
{
    using std::errc;
    constexpr errc kCorrientes[] = {
        errc::no_such_file_or_directory,
        errc::not_a_directory,
        errc::is_a_directory,
        errc::permission_denied,
        errc::operation_not_permitted,
        errc::read_only_file_system,
        errc::filename_too_long,
        errc::too_many_symbolic_link_levels,
        errc::file_exists,
        errc::no_such_device_or_address,
        errc::no_such_device,
        errc::invalid_argument,
    };
    return std::any_of(std::begin(kCorrientes), std::end(kCorrientes),
                       [&](errc corriente) { return error == corriente; });
}

bool CFileException::SeVe() const
{
    return m_causa == std::errc::no_such_file_or_directory ||
           m_causa == std::errc::not_a_directory ||
           (m_causa == std::errc::is_a_directory && !m_alLeer);
}

bool CFile::Open(const CString& nombre, UINT modo, CFileException* fallo,
                 CConjuntoSalidas* conjunto)
{
    Cierra();
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
        Cierra();
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
    Cierra();
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
        Vacia();
    if (m_salida == &m_reemplazo) {
        const CSalidaNombrada sola[] = {{m_nombre, m_salida}};
        ConfirmaSalidas(sola);
    }
    Cierra();
}

void CFile::Cierra() noexcept
{
    sistema::Error error;
    if (m_lectura != sistema::kCerrado)
        sistema::Cierra(m_lectura, error);
    if (m_enSitio != sistema::kCerrado) {
        VaciaEnSitio();
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
        Vacia();
}

CString CFile::RutaCompleta(const CString& nombre)
{
    return sistema::Nombre(sistema::EnteraSinPuntos(sistema::Ruta(nombre)));
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
    std::copy_n(m_bufer.get(), m_lleno, mayor.get());
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
            error = kAcortado;
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
            Vacia();
        const std::size_t n = std::min(bytes.size(), m_cabe - m_lleno);
        std::memcpy(m_bufer.get() + m_lleno, bytes.data(), n);
        m_lleno += n;
        bytes.remove_prefix(n);
    }
}

char* CFile::Sitio(std::size_t bytes)
{
    if (m_cabe - m_lleno < bytes)
        Vacia();
    Cabe(bytes);
    return m_bufer.get() + m_lleno;
}

void CFile::Vacia()
{
    if (m_enSitio != sistema::kCerrado)
        return VaciaEnSitio();
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

void CFile::VaciaEnSitio()
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

char* CStdioFile::EmpiezaLinea(std::size_t cota)
{
    m_compuesta = Sitio(cota + kFinLinea.size());
    return m_compuesta;
}

void CStdioFile::AcabaLinea(const char* fin)
{
    const std::string_view linea(m_compuesta, static_cast<std::size_t>(fin - m_compuesta));
    if (linea.find('\n') == std::string_view::npos) {
        std::memcpy(m_compuesta + linea.size(), kFinLinea.data(), kFinLinea.size());
        Escrito(linea.size() + kFinLinea.size());
        return;
    }
    Borrador().append(linea) += '\n'; // a line end among its characters is one like any other
    WriteString(m_borrador);
}

void CStdioFile::WriteString(std::string_view texto)
{
    while (!texto.empty()) {
        const auto fin = texto.find('\n');
        Escribe(texto.substr(0, fin));
        if (fin == std::string_view::npos)
            return;
        Escribe(kFinLinea);
        texto.remove_prefix(fin + 1);
    }
}
