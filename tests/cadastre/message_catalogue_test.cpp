#include "cadastre/message_catalogue.h"

#include <set>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "platform/files/cfile.h"

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

TEST(Mensajes, RaiseTheCounterThatTheirCodesLetterNames)
{
    // Two that a box shows, and one whose count is its caller's.
    const std::set<UINT> aparte = {kParFueraDeFecha, kSubFueraDeFecha, kSinNumImputa};
    for (const CMensaje& mensaje : Catalogo()) {
        SCOPED_TRACE(mensaje.texto);
        int numErrores = 10;
        int numWarnings = 20;
        CStdioFile log;
        Cuenta({log, numErrores, numWarnings}, mensaje.contador);
        const bool cuenta = !aparte.contains(mensaje.numero);
        const std::string_view texto = mensaje.texto;
        EXPECT_EQ(numErrores, cuenta && texto.starts_with("E") ? 11 : 10);
        EXPECT_EQ(numWarnings, cuenta && texto.starts_with("W") ? 21 : 20);
    }
}
