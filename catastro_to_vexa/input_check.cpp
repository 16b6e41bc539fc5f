#include "catastro_to_vexa/input_check.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "cadastre/exchange_lines.h"
#include "platform/ansi.h"
#include "platform/files/cstdio_file.h"
#include "platform/plain_texts.h"

namespace {

constexpr int kLineasQueDicenAlgo = 10; // a few lines may all be short by chance

/// Form of an input: how its records are known, and how long they are.
struct CFormaEntrada {
    bool (*esRegistro)(const CLineaFija& linea);
    std::size_t masLarga; ///< characters that its reader takes, without the line end
    std::size_t masCorta; ///< up to the last column of its shortest record
};

bool EsDeIntercambio(const CLineaFija& linea)
{
    constexpr std::string_view kTipos[] = {"MD", "TL", "PR", "SP", "SC", "PJ"};
    return std::find(std::begin(kTipos), std::end(kTipos), linea.Texto(kLeeTipo)) !=
           std::end(kTipos);
}

bool EsDeRelacion(const CLineaFija& linea)
{
    const int tipo = linea.Entero(kLeeTipo);
    return tipo >= kLineaTitular && tipo <= kLineaIgnorada;
}

constexpr CFormaEntrada kIntercambio = {EsDeIntercambio, kLineaCatastro - 1, 45};
constexpr CFormaEntrada kRelacion = {EsDeRelacion, kLineaLista - 1, 76};

/// What the first lines came to.
struct CMuestra {
    int lineas = 0; ///< those that aren't empty
    int registros = 0;
    int largas = 0;
    int cortas = 0;
    int retornos = 0; ///< those that are several
    ansi::CMiraUtf8 utf8;

    void Toma(std::string_view linea, const CFormaEntrada& forma)
    {
        ++lineas;
        registros += forma.esRegistro(CLineaFija(linea)) ? 1 : 0;
        largas += linea.size() > forma.masLarga ? 1 : 0;
        cortas += linea.size() < forma.masCorta ? 1 : 0;
        retornos += SonVariasLineas(linea) ? 1 : 0;
        utf8.Toma(linea);
    }
};

} // namespace

SospechaEntrada MiraEntrada(CStdioFile& entrada, int tipoEntrada)
{
    if (entrada.GetPosition() == 0)
        return SospechaEntrada::Vacia;
    if (entrada.GetLength() == 0)
        return SospechaEntrada::Ninguna;
    entrada.Seek(0);
    const CFormaEntrada& forma = tipoEntrada == 0 ? kIntercambio : kRelacion;
    CMuestra muestra;
    for (CString linea;
         entrada.GetPosition() < ansi::CMiraUtf8::kBastan && entrada.ReadString(linea);)
        if (!linea.IsEmpty())
            muestra.Toma(linea, forma);
    if (muestra.lineas == 0)
        return SospechaEntrada::Vacia;
    if (muestra.retornos == muestra.lineas)
        return SospechaEntrada::SoloRetornos;
    if (muestra.registros == 0)
        return SospechaEntrada::OtraForma;
    if (muestra.utf8.EsUtf8())
        return SospechaEntrada::EsUtf8;
    if (muestra.lineas >= kLineasQueDicenAlgo && muestra.largas == muestra.lineas)
        return SospechaEntrada::LineasLargas;
    if (muestra.lineas >= kLineasQueDicenAlgo && muestra.cortas == muestra.lineas)
        return SospechaEntrada::LineasCortas;
    return SospechaEntrada::Ninguna;
}
