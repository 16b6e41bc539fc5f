#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <unistd.h>

// Runs a target once on each file that is named, or stands in a folder that is named: the stored
// inputs as a test, or a find under a debugger.

namespace fs = std::filesystem;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t n);

/// The sanitizers' own, where they are linked: where they tell what they find.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" __attribute__((weak)) void __sanitizer_set_report_fd(void* fichero);

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
    if (__sanitizer_set_report_fd != nullptr) { // a target may put a terminal in the way
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the form that its function wants
        __sanitizer_set_report_fd(reinterpret_cast<void*>(std::intptr_t{dup(STDERR_FILENO)}));
    }
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
