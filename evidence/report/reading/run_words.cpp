#include "evidence/report/reading/run_words.h"

#include <algorithm>
#include <string_view>

#include "platform/ansi.h"
#include "platform/files/side_names.h"

namespace informe {

std::vector<std::string> Observado(const std::string& dicho)
{
    constexpr std::string_view kError = "[Error]\n";
    constexpr std::string_view kHueco = "\n\n";
    std::vector<std::string> todo;
    const std::string visto = ansi::AUtf8(dicho);
    std::string_view quedan = visto;
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
