#include "tests/support/files.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>

namespace fs = std::filesystem;

namespace {

void PonEntorno(const char* variable, const std::string& valor)
{
#ifdef _WIN32
    _putenv_s(variable, valor.c_str());
#else
    setenv(variable, valor.c_str(), 1);
#endif
}

} // namespace

CCarpetaPrueba::CCarpetaPrueba()
{
    std::random_device azar;
    do {
        m_ruta = fs::temp_directory_path() / ("campiva_test_" + std::to_string(azar()));
    } while (!fs::create_directory(m_ruta));
    PonEntorno("XDG_CONFIG_HOME", (m_ruta / "config").string());
}

CCarpetaPrueba::~CCarpetaPrueba()
{
    std::error_code error;
    fs::remove_all(m_ruta, error);
}

CString CCarpetaPrueba::En(std::string_view nombre) const
{
    return (m_ruta / nombre).string();
}

CString CCarpetaPrueba::Pon(std::string_view nombre, std::string_view bytes) const
{
    std::ofstream fichero(m_ruta / nombre, std::ios::binary);
    fichero.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return En(nombre);
}

std::string CCarpetaPrueba::Lee(std::string_view nombre) const
{
    std::ifstream fichero(m_ruta / nombre, std::ios::binary);
    if (!fichero)
        return "(no file)";
    return {std::istreambuf_iterator<char>(fichero), std::istreambuf_iterator<char>()};
}

int CCarpetaPrueba::Cuantos() const
{
    return static_cast<int>(
        std::distance(fs::directory_iterator(m_ruta), fs::directory_iterator()));
}
