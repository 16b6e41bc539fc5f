#include <cstdio>
#include <ctime>
#include <memory>
#include <new>
#include <utility>

#include "evidence/report/page_names.h"
#include "evidence/report/report.h"
#include "evidence/report/version.h"
#include "platform/system.h"

namespace {

constexpr int kHecho = 0;
constexpr int kFallo = 1;
constexpr int kNoSeEntiende = 2;
constexpr int kHayPerdidas = 3;

/// Leaves what a report was made of to the end of the process.
void Conserva(std::shared_ptr<const void> leido)
{
#ifdef __SANITIZE_ADDRESS__
    leido.reset(); // so that what nobody else frees comes to light
#else
    static auto* const conservado = new std::shared_ptr<const void>; // never destroyed
    *conservado = std::move(leido);
#endif
}

int Informa(const informe::COpciones& opciones)
{
    int estado = kHecho;
    const auto di = [&](const informe::CResultado& resultado) {
        std::fputs(resultado.resumen.c_str(), stdout);
        for (const std::string& queja : resultado.quejas) {
            std::fprintf(stderr, "campiva-informe: %s\n", queja.c_str());
            estado = kFallo;
        }
        if (opciones.estricto && resultado.hayPerdidas && estado == kHecho)
            estado = kHayPerdidas;
    };
    if (const std::string reparo = informe::ReparoDeRegistros(opciones); !reparo.empty()) {
        std::fprintf(stderr, "campiva-informe: %s\n", reparo.c_str());
        return kFallo;
    }
    const informe::CFirma firma{informe::kVersion, std::time(nullptr)};
    if (!opciones.resumen.IsEmpty())
        di(informe::HazResumen(opciones, firma));
    for (const CString& registro : opciones.registros) {
        informe::CResultado resultado = informe::HazInforme(registro, opciones, firma);
        di(resultado);
        if (&registro == &opciones.registros.back())
            Conserva(std::move(resultado.leido));
    }
    return estado;
}

int Atiende(const std::vector<std::string>& argumentos)
{
    std::string queja;
    const auto opciones =
        informe::LeeOpciones(std::span(argumentos).subspan(argumentos.empty() ? 0 : 1), queja);
    if (!opciones) {
        std::fprintf(stderr, "campiva-informe: %s.\nPruebe campiva-informe --help.\n",
                     queja.c_str());
        return kNoSeEntiende;
    }
    if (opciones->pide == informe::COpciones::Pide::Informes)
        return Informa(*opciones);
    if (opciones->pide == informe::COpciones::Pide::Ayuda)
        std::fputs(informe::kUso, stdout);
    else
        std::printf("campiva-informe %s\n", informe::kVersion);
    return kHecho;
}

} // namespace

int main(int argc, char* argv[])
{
    sistema::PreparaFlujos();
    int estado = kFallo;
    try {
        estado = Atiende(sistema::Argumentos(argc, argv));
    } catch (const std::bad_alloc&) {
        sistema::EscribeError("campiva-informe: no hay memoria bastante\n");
    }
    const bool dicho = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    if (dicho || estado == kNoSeEntiende)
        return estado;
    if (estado != kFallo) // else something was told already
        sistema::EscribeError("campiva-informe: no se ha podido escribir en la salida\n");
    return kFallo;
}
