#include "cadastre/message_catalogue.h"

#include <set>

#include "platform/ansi.h"
#include "tests/cadastre/record_tools.h"

namespace {

template <Mensaje numero, class... T>
std::string Escrito(const T&... argumentos)
{
    return Grabado([&](CStdioFile& f) { EscribeMensaje(f, numero, argumentos...); });
}

} // namespace

TEST(Mensajes, AreAllThereInAscendingOrder)
{
    std::vector<UINT> numeros;
    for (const CMensaje& mensaje : Catalogo()) {
        numeros.push_back(mensaje.numero);
        EXPECT_EQ(&DameMensaje(mensaje.numero), &mensaje);
    }
    std::vector<UINT> esperados;
    for (UINT numero = 155; numero <= 188; ++numero)
        if (numero != 185) // a status text stands there
            esperados.push_back(numero);
    EXPECT_EQ(numeros, esperados);
}

// A message with the wrong arguments doesn't compile.
static_assert(Encajan<int, const char*, double, char>("%d % 4s %.2lf %c\n"));
static_assert(!Encajan<int, int>("% 4d\n") && !Encajan<>("%d"), "their number");
static_assert(!Encajan<CString>("%d") && !Encajan<int>("%s") && !Encajan<int>("%.2lf") &&
                  !Encajan<double>("% 6d") && !Encajan<char>("%d") && !Encajan<bool>("%c"),
              "their kind");

TEST(Mensajes, RaiseTheCounterThatTheirRowNames)
{
    const std::set<UINT> ninguno = {155, 162, 163, 184, 186};
    const std::set<UINT> warnings = {171, 175, 187, 188};
    for (const CMensaje& mensaje : Catalogo()) {
        SCOPED_TRACE(mensaje.texto);
        int numErrores = 10;
        int numWarnings = 20;
        CStdioFile log;
        Cuenta({log, numErrores, numWarnings}, mensaje.contador);
        const bool esWarning = warnings.contains(mensaje.numero);
        const bool esError = !esWarning && !ninguno.contains(mensaje.numero);
        EXPECT_EQ(numErrores, esError ? 11 : 10);
        EXPECT_EQ(numWarnings, esWarning ? 21 : 20);
    }
}

TEST(Mensajes, StandInTheLogAsTheyAlwaysDid)
{
    const CString ana = "ANA MUÑOZ"_ansi;
    const struct {
        std::string escrito;
        const char* linea;
    } kCasos[] = {
        {Escrito<kTitularNoEncontrado>(7, 12, 345),
         "E101: Titular      7 no encontrado en parcela   12    345\r\n"},
        {Escrito<kParajeNoEncontrado>(42, 12, 345),
         "E102: Paraje   42 no encontrado en parcela   12    345\r\n"},
        {Escrito<kSubparcelaSinParcela>(12, 345, "AB"),
         "E103: Parcela   12    345 inexistente en subparcela AB\r\n"},
        {Escrito<kCotitularSinParcela>(12, 345),
         "E104: Parcela   12    345 no encontrada en el fichero de cotitulares.\r\n"},
        {Escrito<kCotitularSinTitular>(-1),
         "E105: Titular     -1 no encontrado en el fichero de cotitulares.\r\n"},
        {Escrito<kParcelaNoEnBase>(12, 345),
         "E106: La parcela   12    345 en gráfico no tiene correspondencia en base de "
         "datos\r\n"_ansi},
        {Escrito<kParFueraDeFecha>("012"),
         "E107: Archivo topológico del polígono 012.PAR fuera de fecha\r\n"_ansi},
        {Escrito<kSubFueraDeFecha>("012"),
         "E108: Archivo topológico del polígono 012.SUB fuera de fecha\r\n"_ansi},
        {Escrito<kSubparcelaFuera>("A", 123456.78, -0.5),
         "E109: La subparcela    A de coordenadas 123456.78 -0.50 no se encuentra en ninguna "
         "parcela\r\n"},
        {Escrito<kSubparcelaNoEnBase>(12, 345, "A"),
         "E110: La subparcela   12    345    A en gráfico no tiene correspondencia en base de "
         "datos\r\n"_ansi},
        {Escrito<kParcelaNoEnGrafico>(12, 345),
         "E111: La parcela   12    345 en base de datos no tiene correspondencia en "
         "gráfico\r\n"_ansi},
        {Escrito<kSuperficieDifiere>(12, 345, 1000, -1),
         "E112: La parcela   12    345 difiere en superficie     1000 de sus subparcelas "
         "      -1\r\n"},
        {Escrito<kSubparcelaNoEnGrafico>(12, 345, "A"),
         "E113: La subparcela   12    345    A en base de datos no tiene correspondencia en "
         "gráfico\r\n"_ansi},
        {Escrito<kSinSubparcelas>(12, 345), "E201: Parcela   12    345 sin subparcelas\r\n"},
        {Escrito<kSinPropietarios>(12, 345), "E202: Parcela   12    345 sin propietarios\r\n"},
        {Escrito<kModuloRepetido>("Viña"_ansi, "LR", 3),
         "E203: El módulo Viña con calificación LR e intensidad 3 ya insertado.\r\n"_ansi},
        {Escrito<kMismoNombre>(ana),
         "E204: Ya existe otro titular con el mismo nombre y distinto DNI para ANA MUÑOZ\r\n"_ansi},
        {Escrito<kMismoDNI>("01234567"),
         "E205: Ya existe otro titular con el mismo DNI y distinto nombre que 01234567\r\n"},
        {Escrito<kParcelaRepetida>(12, 345), "E206: La parcela   12    345 ya existe\r\n"},
        {Escrito<kParcelaNoValida>(0, 345),
         "E207: Referencia de parcela    0    345 no válida\r\n"_ansi},
        {Escrito<kSubparcelaRepetida>(12, 345, "A"),
         "E208: La subparcela   12    345    A ya existe\r\n"},
        {Escrito<kSubparcelaSinSuperficie>(12, 345, "A"),
         "E209: Subparcela   12    345 A con superficie 0\r\n"},
        {Escrito<kMismoIndice>(12, 345, ana),
         "E210: Existe otro titular con el mismo índice en la parcela   12    345 el titular "
         "ANA MUÑOZ\r\n"_ansi},
        {Escrito<kYaCotitular>(12, 345, ana),
         "E211: Ya existía como cotitular en la parcela   12    345 el titular ANA MUÑOZ\r\n"_ansi},
        {Escrito<kYaTitular>(ana, 12, 345),
         "E212: El cotitular ANA MUÑOZ ya era titular en la parcela   12    345\r\n"_ansi},
        {Escrito<kParcelaNoInsertada>(12, 345),
         "E213: La parcela   12    345 no pudo ser insertada.\r\n"},
        {Escrito<kSinNumImputa>(ana, 8),
         "E214: El cotitular ANA MUÑOZ no tiene asignado número imputación. Se le asigna el número "
         "8.\r\n"_ansi},
        {Escrito<kSubparcelaDuplicada>(1234, 1234567, "ABCDE"), // wide values: the line grows
         "W301: La subparcela  1234  1234567 ABCDE está duplicada\r\n"_ansi},
        {Escrito<kSinTitular>(12, 345), "W302: Parcela   12    345 no tiene titular\r\n"},
        {Escrito<kAbstractaDifiere>(12, 345, "A", -7),
         "W303: La subparcela abstracta   12    345    A difiere en superficie       -7 del "
         "gráfico\r\n"_ansi},
        {Escrito<kSuperficieCorregida>(12, 345, 1000, 1003),
         "W304: La parcela   12    345 difiere en superficie     1000 de sus subparcelas     1003. "
         "Se asigna nueva superficie a la parcela\r\n"},
        {Escrito<kResumenCatastro>(1, 2, 3, 4, 1234567),
         "Proceso finalizado con éxito.\r\n\r\n"
         "Número de municipios leidos  :      1\r\n"
         "Número de parcelas leidas    :      2\r\n"
         "Número de titulares leidos   :      3\r\n\r\n"
         "Número de errores producidos :      4\r\n"
         "Número de warnings producidos :  1234567\r\n"_ansi},
        {Escrito<kResumenVexa>(28, 79, 2, 3, 4, 5),
         "Proceso finalizado con éxito.\r\n\r\n"
         "Muncipio leido  : 028 079\r\n"
         "Número de parcelas leidas    :      2\r\n"
         "Número de titulares leidos   :      3\r\n\r\n"
         "Número de errores producidos :      4\r\n"
         "Número de warnings producidos :      5\r\n"_ansi},
    };
    EXPECT_EQ(std::size(kCasos), Catalogo().size());
    for (const auto& caso : kCasos)
        EXPECT_EQ(caso.escrito, caso.linea);
}
