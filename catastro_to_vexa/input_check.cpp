#include "catastro_to_vexa/input_check.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "cadastre/exchange_lines.h"
#include "cadastre/module_place_columns.h"
#include "cadastre/parcel_columns.h"
#include "cadastre/record_types.h"
#include "platform/ansi.h"
#include "platform/files/cstdio_file.h"
#include "platform/plain_texts.h"

namespace {

constexpr int kLineasQueDicenAlgo = 10; // a few lines may all be short by chance

/// Form of an input: how its records are known, and how long they are.
struct CFormaEntrada {
    bool (*esRegistro)(const CLineaFija& linea);
    std::size_t masLarga; ///< characters that its reader takes, without the line end
    CLectura ultimo;      ///< the last field of its shortest record
};

bool EsDeIntercambio(const CLineaFija& linea)
{
    return EsTipoDeIntercambio(linea.Texto(kLeeTipo));
}

bool EsDeRelacion(const CLineaFija& linea)
{
    const int tipo = linea.Entero(kLeeTipo);
    return tipo >= kLineaTitular && tipo <= kLineaIgnorada;
}

constexpr CFormaEntrada kIntercambio = {EsDeIntercambio, kLineaCatastro - 1,
                                        ColumnaDe(kColumnasParaje, &CParaje::Nombre).catastro};
constexpr CFormaEntrada kRelacion = {EsDeRelacion, kLineaLista - 1,
                                     ColumnaDe(kColumnasParcela, &CParcela::Superficie).lista};

constexpr std::size_t kBastan = std::size_t{64} * 1024; // bytes of the input that are looked at

/// What the first lines came to.
struct CMuestra {
    int lineas = 0; ///< those that aren't empty
    int registros = 0;
    int largas = 0;
    int cortas = 0;
    int retornos = 0; ///< those that are several

    void Toma(std::string_view linea, const CFormaEntrada& forma)
    {
        ++lineas;
        registros += forma.esRegistro(CLineaFija(linea)) ? 1 : 0;
        largas += linea.size() > forma.masLarga ? 1 : 0;
        const int ultima = forma.ultimo.columna + forma.ultimo.ancho - 1;
        cortas += std::cmp_less(linea.size(), ultima) ? 1 : 0;
        retornos += SonVariasLineas(linea) ? 1 : 0;
    }
};

/// The lines that begin a text: none in half, unless there is no other.
CMuestra Muestra(std::string_view texto, const CFormaEntrada& forma)
{
    CMuestra muestra;
    const bool esTodo = texto.size() < kBastan;
    while (!texto.empty()) {
        const std::size_t fin = texto.find('\n');
        if (fin == std::string_view::npos && muestra.lineas > 0 && !esTodo)
            break;
        std::string_view linea = texto.substr(0, fin);
        texto.remove_prefix(std::min(linea.size() + 1, texto.size()));
        if (linea.ends_with('\r') && fin != std::string_view::npos)
            linea.remove_suffix(1);
        if (!linea.empty())
            muestra.Toma(linea, forma);
    }
    return muestra;
}

/// Tells whether a text is in UTF-16, by its mark or by its first character.
bool EsUtf16(std::string_view texto)
{
    return texto.starts_with("\xFF\xFE") || texto.starts_with("\xFE\xFF") ||
           (texto.size() > 1 && (texto[0] == '\0') != (texto[1] == '\0'));
}

} // namespace

SospechaEntrada MiraEntrada(CStdioFile& entrada, int tipoEntrada)
{
    if (entrada.GetPosition() == 0)
        return SospechaEntrada::Vacia;
    if (entrada.GetLength() == 0)
        return SospechaEntrada::Ninguna;
    entrada.Seek(0);
    const std::string_view texto = entrada.Tramo(kBastan);
    if (texto.starts_with(ansi::kMarcaUtf8))
        return SospechaEntrada::ConMarca;
    if (EsUtf16(texto))
        return SospechaEntrada::EsUtf16;
    const CMuestra muestra = Muestra(texto, tipoEntrada == 0 ? kIntercambio : kRelacion);
    if (muestra.lineas == 0)
        return SospechaEntrada::Vacia;
    if (muestra.retornos == muestra.lineas)
        return SospechaEntrada::SoloRetornos;
    if (muestra.registros == 0)
        return SospechaEntrada::OtraForma;
    if (muestra.lineas >= kLineasQueDicenAlgo && muestra.largas == muestra.lineas)
        return SospechaEntrada::LineasLargas;
    if (muestra.lineas >= kLineasQueDicenAlgo && muestra.cortas == muestra.lineas)
        return SospechaEntrada::LineasCortas;
    return SospechaEntrada::Ninguna;
}
