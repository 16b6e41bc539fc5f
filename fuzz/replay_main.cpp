#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Runs a target once on each file that is named, or stands in a folder that is named: the stored
// inputs as a test, or a find under a debugger.

namespace fs = std::filesystem;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t n);

namespace {

std::vector<fs::path> Ficheros(int argc, const char* const* argv)
{
    std::vector<fs::path> ficheros;
    for (int i = 1; i < argc; ++i) {
        if (!fs::is_directory(argv[i])) {
            ficheros.emplace_back(argv[i]);
            continue;
        }
        for (const fs::directory_entry& fichero : fs::directory_iterator(argv[i]))
            ficheros.push_back(fichero.path());
    }
    std::sort(ficheros.begin(), ficheros.end());
    return ficheros;
}

} // namespace

int main(int argc, char* argv[])
{
    std::setlocale(LC_ALL, "");
    const std::vector<fs::path> ficheros = Ficheros(argc, argv);
    for (const fs::path& ruta : ficheros) {
        std::ifstream fichero(ruta, std::ios::binary);
        if (!fichero) {
            std::fprintf(stderr, "cannot read %s\n", ruta.c_str());
            return EXIT_FAILURE;
        }
        const std::vector<char> bytes{std::istreambuf_iterator<char>(fichero), {}};
        std::fprintf(stderr, "%s\n", ruta.filename().c_str());
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::fprintf(stderr, "%zu inputs\n", ficheros.size());
    return ficheros.empty() ? EXIT_FAILURE : EXIT_SUCCESS;
}
