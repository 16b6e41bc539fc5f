#include "tests/support/files.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>

#include <gtest/gtest.h>

#include "platform/ansi.h"
#include "platform/files/system_files.h"
#ifdef _WIN32
#include "tests/support/files_windows.h"
#endif

namespace fs = std::filesystem;

namespace {

/// Keeps the settings of a test away from its user's own.
void ApartaAjustes(const fs::path& carpeta)
{
#ifdef _WIN32
    EmpiezaRegistroPropio(carpeta.filename().native());
#else
    setenv("XDG_CONFIG_HOME", (carpeta / "config").c_str(), 1);
#endif
}

} // namespace

CCarpetaPrueba::CCarpetaPrueba()
{
    std::random_device azar;
    do {
        m_ruta = fs::temp_directory_path() / ("campiva_test_" + std::to_string(azar()));
    } while (!fs::create_directory(m_ruta));
    ApartaAjustes(m_ruta);
}

CCarpetaPrueba::~CCarpetaPrueba()
{
#ifdef _WIN32
    AcabaRegistroPropio(m_ruta.filename().native());
#endif
    std::error_code error;
    fs::remove_all(m_ruta, error);
}

CString CCarpetaPrueba::En(std::string_view nombre) const
{
    return sistema::Nombre(m_ruta / sistema::Ruta(nombre));
}

CString CCarpetaPrueba::Pon(std::string_view nombre, std::string_view bytes) const
{
    const fs::path ruta = m_ruta / sistema::Ruta(nombre);
    fs::create_directories(ruta.parent_path());
    std::ofstream fichero(ruta, std::ios::binary);
    fichero.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return En(nombre);
}

std::string CCarpetaPrueba::Lee(std::string_view nombre) const
{
    std::ifstream fichero(m_ruta / sistema::Ruta(nombre), std::ios::binary);
    if (!fichero)
        return "(no file)";
    return {std::istreambuf_iterator<char>(fichero), std::istreambuf_iterator<char>()};
}

std::vector<std::string> CCarpetaPrueba::Lineas(std::string_view nombre) const
{
    std::vector<std::string> lineas;
    std::string texto = Lee(nombre);
    for (auto fin = texto.find("\r\n"); fin != std::string::npos; fin = texto.find("\r\n")) {
        lineas.push_back(ansi::AUtf8(texto.substr(0, fin)));
        texto.erase(0, fin + 2);
    }
    EXPECT_EQ(texto, "") << "a line of " << nombre << " has no end";
    return lineas;
}

std::string CCarpetaPrueba::SinRuta(std::string texto) const
{
    const std::string ruta(std::string_view(En("")));
    if (const auto i = texto.find(ruta); i != std::string::npos)
        texto.erase(i, ruta.size());
    return texto;
}

int CCarpetaPrueba::Cuantos() const
{
    return static_cast<int>(
        std::distance(fs::directory_iterator(m_ruta), fs::directory_iterator()));
}
