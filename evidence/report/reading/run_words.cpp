#include "evidence/report/reading/run_words.h"

#include <algorithm>
#include <string_view>

#include "platform/ansi.h"
#include "platform/files/side_names.h"

namespace informe {
namespace {

constexpr std::string_view kSangrado = "  "; // of a dialog's lines below its title

void QuitaLinea(std::string_view& texto)
{
    texto.remove_prefix(std::min(texto.find('\n'), texto.size() - 1) + 1);
}

/// What was said behind the dialogs that the program shows where a job works them.
std::string_view TrasLosDialogos(std::string_view dicho)
{
    for (;;) {
        std::string_view trasTitulo = dicho;
        if (!dicho.empty())
            QuitaLinea(trasTitulo);
        if (!trasTitulo.starts_with(kSangrado))
            return dicho;
        dicho = trasTitulo;
        while (dicho.starts_with(kSangrado))
            QuitaLinea(dicho);
    }
}

} // namespace

std::vector<std::string> Observado(const std::string& dicho)
{
    constexpr std::string_view kError = "[Error]\n";
    constexpr std::string_view kHueco = "\n\n";
    std::vector<std::string> todo;
    const std::string visto = ansi::AUtf8(dicho);
    std::string_view quedan = TrasLosDialogos(visto);
    for (std::size_t fin = quedan.find(kHueco); fin != std::string_view::npos;
         fin = quedan.find(kHueco)) {
        if (quedan.starts_with(kError)) {
            std::string caja(quedan.substr(kError.size(), fin - kError.size()));
            std::ranges::replace(caja, '\n', ' ');
            todo.push_back(std::move(caja));
        }
        quedan.remove_prefix(fin + kHueco.size());
    }
    while (!quedan.empty()) {
        const std::string_view linea = quedan.substr(0, quedan.find('\n'));
        if (!linea.empty() && !linea.ends_with(lado::kAnterior))
            todo.emplace_back(linea);
        quedan.remove_prefix(std::min(linea.size() + 1, quedan.size()));
    }
    return todo;
}

} // namespace informe
