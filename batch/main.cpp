#include <cstdio>
#include <exception>
#include <new>

#include "batch/batch_run.h"
#include "batch/batch_texts.h"
#include "batch/job_table.h"
#include "batch/version.h"
#include "platform/ansi.h"
#include "platform/files/cfile_exception.h"
#include "platform/system.h"

namespace {

int Atiende(const lote::COpciones& opciones)
{
    switch (opciones.pide) {
    case lote::COpciones::Pide::Ayuda:
        sistema::Imprime(stdout, lote::textos::kUso);
        return lote::kHecho;
    case lote::COpciones::Pide::Version:
        sistema::Imprime(stdout, Formatea("campiva-lote %s\n", lote::kVersion));
        return lote::kHecho;
    case lote::COpciones::Pide::NoSeEntiende:
        sistema::Imprime(stderr, lote::textos::kUso);
        return lote::kMal;
    case lote::COpciones::Pide::Trabajos:
        break;
    }
    return lote::Ejecuta(opciones);
}

void Quejate(const std::string& texto)
{
    sistema::Imprime(stderr, Formatea(lote::textos::kQueja, texto));
}

} // namespace

int main(int argc, char* argv[])
{
    sistema::PreparaFlujos();
    sistema::AguantaTuberiaRota(); // that nobody reads how far it is stops no job
    try {
        std::vector<std::string> argumentos = sistema::Argumentos(argc, argv);
        return Atiende(
            lote::LeeOpciones(std::span(argumentos).subspan(argumentos.empty() ? 0 : 1)));
    } catch (const lote::CLineaMala& mala) {
        Quejate(mala.what());
        return lote::kMal;
    } catch (const CFileException& fallo) {
        Quejate(ansi::AUtf8(fallo.Mensaje()));
    } catch (const std::bad_alloc&) {
        sistema::EscribeError(lote::textos::kSinMemoria);
    } catch (const CInterrumpido&) {
        return lote::kDetenido;
    } catch (const std::exception& fallo) {
        Quejate(fallo.what());
    }
    return lote::kAlgunFallo;
}
