#include "evidence/log_reader.h"

#include <gtest/gtest.h>

#include "evidence/message_advice.h"
#include "platform/ansi.h"

namespace {

template <class... T>
std::string Linea(Mensaje numero, const T&... argumentos)
{
    std::string linea;
    AnexaFormato(linea, DameMensaje(numero).texto, {CArgumento(argumentos)...});
    linea.pop_back(); // its end
    return linea;
}

/// What a message says, but for what it doesn't.
std::string Dicho(const CAviso& leido)
{
    std::string dicho;
    const auto numero = [&](const char* nombre, int valor) {
        if (valor != CAviso::kNada)
            dicho += nombre + std::to_string(valor) + ' ';
    };
    numero("polig ", leido.polig);
    numero("parcela ", leido.parcela);
    numero("numero ", leido.numero);
    numero("superficie ", leido.superficie);
    numero("suma ", leido.suma);
    numero("x ", leido.x);
    numero("y ", leido.y);
    dicho += '[' + std::string(std::string_view(leido.letra)) + "][" +
             std::string(std::string_view(leido.texto)) + ']';
    return dicho;
}

} // namespace

TEST(LogReader, ReadsBackWhatAMessageSpeaksOf)
{
    const CString nombre = "PÉREZ ya era titular en la parcela  "_ansi;
    const struct {
        std::string linea;
        Mensaje mensaje;
        std::string dicho;
    } casos[] = {
        {Linea(kTitularNoEncontrado, 7, 12, 345), kTitularNoEncontrado,
         "polig 12 parcela 345 numero 7 [][]"},
        {Linea(kParajeNoEncontrado, 0, 12, 345), kParajeNoEncontrado,
         "polig 12 parcela 345 numero 0 [][]"},
        {Linea(kSubparcelaSinParcela, 1, 2, "a"), kSubparcelaSinParcela, "polig 1 parcela 2 [a][]"},
        {Linea(kSubparcelaSinParcela, 1, 2, ""), kSubparcelaSinParcela, "polig 1 parcela 2 [][]"},
        {Linea(kCotitularSinTitular, -3), kCotitularSinTitular, "numero -3 [][]"},
        {Linea(kSubparcelaFuera, "ab", 483123.45, -12.5), kSubparcelaFuera,
         "x 48312345 y -1250 [ab][]"},
        {Linea(kSubparcelaNoEnBase, 12345, 1234567, "abcdef"), kSubparcelaNoEnBase,
         "polig 12345 parcela 1234567 [abcdef][]"},
        {Linea(kSuperficieDifiere, 1, 2, -123456789, 40), kSuperficieDifiere,
         "polig 1 parcela 2 superficie -123456789 suma 40 [][]"},
        {Linea(kSuperficieCorregida, 1, 2, 30, 31), kSuperficieCorregida,
         "polig 1 parcela 2 superficie 30 suma 31 [][]"},
        {Linea(kAbstractaDifiere, 1, 2, "a", -1), kAbstractaDifiere,
         "polig 1 parcela 2 superficie -1 [a][]"},
        {Linea(kModuloRepetido, "OLIVAR con calificación "_ansi, "AM", 2), kModuloRepetido,
         "numero 2 [][" + std::string(std::string_view("OLIVAR con calificación "_ansi)) + "]"},
        {Linea(kYaTitular, nombre, 1, 2), kYaTitular,
         "polig 1 parcela 2 [][" + std::string(std::string_view(nombre)) + "]"},
        {Linea(kYaCotitular, 1, 2, "<script>"), kYaCotitular, "polig 1 parcela 2 [][<script>]"},
        {Linea(kSinNumImputa, "ANA", 9), kSinNumImputa, "numero 9 [][ANA]"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.linea);
        const CAviso leido = LeeMensaje(caso.linea);
        ASSERT_NE(leido.mensaje, nullptr);
        EXPECT_EQ(leido.mensaje->numero, caso.mensaje);
        EXPECT_EQ(Dicho(leido), caso.dicho);
    }
}

TEST(LogReader, TakesNoOtherLineForAMessage)
{
    for (const char* linea : {"", "E1", "E999: nada", "E206: La parcela    1      2 ya existe.",
                              "E206: La parcela    1      2 ya", "E206: La parcela",
                              "E206: La parcela x y ya existe", "e206: La parcela 1 2 ya existe"})
        EXPECT_EQ(LeeMensaje(linea).mensaje, nullptr) << linea;
}

TEST(MessageAdvice, TellsCauseAndRemedyOfEachMessage)
{
    for (const CMensaje& mensaje : Catalogo()) {
        const std::string_view codigo = CodigoMensaje(mensaje);
        if (codigo.empty())
            continue; // a summary
        const CConsejo consejo = DameConsejo(codigo);
        for (const std::string& texto : {consejo.causa, consejo.remedio}) {
            EXPECT_GT(texto.size(), 10U) << codigo;
            EXPECT_EQ(texto.find_first_of("<>"), std::string::npos) << texto;
        }
    }
    EXPECT_EQ(DameConsejo("E208").remedio, "El de W301.");
    EXPECT_EQ(DameConsejo("E999").causa, "");
}
