#include <algorithm>
#include <functional>

#include "evidence/report/findings/changes/contrast.h"
#include "generator/synthetic_municipality.h"
#include "tests/catastro_to_vexa/run_fixture.h"
#include "tests/evidence/report/report_fixture.h"

using testing::AnyOf;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

/// A parcel of a polygon with a surface below a hectare.
std::string DeMetros(int polig, int parcela, int metros, std::string_view titular = "0000001",
                     std::string_view paraje = "00001")
{
    const auto cifras = [](int numero, std::size_t ancho) {
        std::string texto = std::to_string(numero);
        return texto.insert(0, ancho - texto.size(), '0');
    };
    return Linea("PR045127", {{11, "01"},
                              {13, cifras(polig, 3)},
                              {16, cifras(parcela, 5)},
                              {21, "00000" + cifras(metros, 4)},
                              {46, titular},
                              {53, "PR"},
                              {71, paraje},
                              {76, " "}});
}

/// The lines of a municipality, by what they are, so that a case changes one of them.
struct CLineas {
    std::vector<std::string> gente = {Titular("0000001", "00100", "ANA", "11111111"),
                                      Titular("0000002", "00060", "LUIS", "22222222"),
                                      Titular("0000002", "00040", "EVA", "33333333")};
    std::vector<std::string> parajes = {Paraje("00001", "LA ERA"), Paraje("00002", "EL LLANO")};
    std::vector<std::string> parcelas = {DeMetros(1, 1, 500), DeMetros(1, 2, 700, "0000002"),
                                         DeMetros(2, 1, 900)};
    std::vector<std::string> subparcelas = {Suelo("00001", "   a", "00100"),
                                            Suelo("00001", "   b", "00200")};

    std::string Texto() const
    {
        std::string texto;
        for (const auto* unas : {&gente, &parcelas, &subparcelas, &parajes})
            for (const std::string& linea : *unas)
                texto += linea;
        return texto;
    }
};

/// What the sheet of changes says, without its head and the ends of its lines.
std::vector<std::string> FilasDe(const CCarpetaPrueba& carpeta, const char* hoja)
{
    std::vector<std::string> filas = carpeta.Lineas(hoja);
    filas.erase(filas.begin());
    return filas;
}

} // namespace

class Cambios : public Traduccion {
protected:
    /// The rows of the sheet for two exchange files.
    std::vector<std::string> Filas(const CLineas& antes, const CLineas& ahora)
    {
        carpeta.Pon("antes.txt", antes.Texto());
        carpeta.Pon("ahora.txt", ahora.Texto());
        return Compara("ahora.txt", "antes.txt");
    }
    std::vector<std::string> Compara(const char* ahora, const char* antes)
    {
        resultado = Resultado(carpeta, ahora,
                              {.html = carpeta.En("cambios.html"),
                               .contra = carpeta.En(antes),
                               .cambios = carpeta.En("cambios.csv")});
        EXPECT_THAT(resultado.quejas, IsEmpty());
        EXPECT_EQ(ReparosDePagina(carpeta.Lee("cambios.html")), "");
        return FilasDe(carpeta, "cambios.csv");
    }

    informe::CResultado resultado;
};

TEST_F(Cambios, TellEachKindOfDifference)
{
    const struct {
        const char* motivo;
        std::function<void(CLineas&)> cambia;
        std::vector<std::string> filas;
    } kCasos[] = {
        {"nothing", [](CLineas&) {}, {}},
        {"the order of lines is none",
         [](CLineas& l) {
             std::swap(l.parcelas[0], l.parcelas[2]);
             std::swap(l.subparcelas[0], l.subparcelas[1]);
             std::swap(l.gente[1], l.gente[2]);
         },
         {}},
        {"nor are the numbers of places and holders",
         [](CLineas& l) {
             l.parajes = {Paraje("00007", "LA ERA"), Paraje("00001", "EL LLANO")};
             l.gente[0] = Titular("0000009", "00100", "ANA", "11111111");
             l.parcelas = {DeMetros(1, 1, 500, "0000009", "00007"),
                           DeMetros(1, 2, 700, "0000002", "00007"),
                           DeMetros(2, 1, 900, "0000009", "00007")};
         },
         {}},
        {"new",
         [](CLineas& l) { l.parcelas.push_back(DeMetros(2, 9, 80)); },
         {"parcela nueva;127;2;9;;;80;80;"}},
        {"gone",
         [](CLineas& l) { l.parcelas.pop_back(); },
         {"parcela desaparecida;127;2;1;;900;;-900;"}},
        {"of several lines with one number the first one counts",
         [](CLineas& l) { l.parcelas.push_back(DeMetros(1, 1, 900)); },
         {}},
        {"surface",
         [](CLineas& l) { l.parcelas[0] = DeMetros(1, 1, 510); },
         {"superficie;127;1;1;;500;510;10;"}},
        {"another holder",
         [](CLineas& l) { l.parcelas[0] = DeMetros(1, 1, 500, "0000002"); },
         {"titular;127;1;1;;ANA, 11111111 (PR 100);"
          "LUIS, 22222222 (PR 60) y EVA, 33333333 (PR 40);;"}},
        {"a share",
         [](CLineas& l) { l.gente[2] = Titular("0000002", "00045", "EVA", "33333333"); },
         {"participación;127;1;2;;LUIS, 22222222 (PR 60) y EVA, 33333333 (PR 40);"
          "LUIS, 22222222 (PR 60) y EVA, 33333333 (PR 45);;"}},
        {"a place",
         [](CLineas& l) { l.parcelas[2] = DeMetros(2, 1, 900, "0000001", "00002"); },
         {"paraje;127;2;1;;LA ERA;EL LLANO;;"}},
        {"a place that isn't there",
         [](CLineas& l) { l.parcelas[2] = DeMetros(2, 1, 900, "0000001", "00003"); },
         {"paraje;127;2;1;;LA ERA;;;"}},
        {"subparcels: one gone, one new, one of another surface",
         [](CLineas& l) {
             l.subparcelas = {Suelo("00001", "   b", "00230"), Suelo("00001", "   c", "00100")};
         },
         {"subparcela;127;1;1;a;100 m², C- 00;;-100;",
          "subparcela;127;1;1;b;200 m², C- 00;230 m², C- 00;30;",
          "subparcela;127;1;1;c;;100 m², C- 00;100;"}},
        {"one with another class",
         [](CLineas& l) { l.subparcelas[0].insert(43, "00CR02"); },
         {"subparcela;127;1;1;a;100 m², C- 00;100 m², C- 00 / CR 02;;"}},
        {"one with the same class once more",
         [](CLineas& l) { l.subparcelas[0].insert(43, "00C-00"); },
         {"subparcela;127;1;1;a;100 m², C- 00 / —;100 m², C- 00 / C- 00;;"}},
        {"a letter that stands twice, once without a surface",
         [](CLineas& l) { l.subparcelas.push_back(Suelo("00001", "   a", "00000")); },
         {"subparcela;127;1;1;a;;100 m², C- 00;100;"}},
        {"one of no parcel",
         [](CLineas& l) { l.subparcelas.push_back(Suelo("00009", "   a", "1")); },
         {}},
        {"a holder of another name",
         [](CLineas& l) { l.gente[0] = Titular("0000001", "00100", "ANA MARÍA"_ansi, "11111111"); },
         {"titular otro nombre;;;;;ANA, 11111111;ANA MARÍA, 11111111;;"}},
        {"of another DNI",
         [](CLineas& l) { l.gente[0] = Titular("0000001", "00100", "ANA", "44444444"); },
         {"titular otro DNI;;;;;ANA, 11111111;ANA, 44444444;;"}},
        {"one that holds nothing",
         [](CLineas& l) { l.gente.push_back(Titular("0000003", "00100", "INÉS"_ansi, "5")); },
         {"titular nuevo;;;;;;INÉS, 5;;"}},
        {"one in the place of another",
         [](CLineas& l) { l.gente[0] = Titular("0000001", "00100", "INÉS"_ansi, "5"); },
         {"titular;127;1;1;;ANA, 11111111 (PR 100);INÉS, 5 (PR 100);;",
          "titular;127;2;1;;ANA, 11111111 (PR 100);INÉS, 5 (PR 100);;",
          "titular desaparecido;;;;;ANA, 11111111;;-1400;", "titular nuevo;;;;;;INÉS, 5;1400;"}},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CLineas ahora;
        caso.cambia(ahora);
        EXPECT_THAT(Filas({}, ahora), ElementsAreArray(caso.filas));
    }
}

TEST_F(Cambios, TellSplitsAndJoinsByTheirSurfaces)
{
    struct CMedida {
        int parcela, metros;
        int polig = 1;
    };
    const struct {
        const char* motivo;
        std::vector<CMedida> antes;
        std::vector<CMedida> ahora;
        const char* dicho = ""; // nothing
        int filas = 0;          // that say so
    } kCasos[] = {
        {"split in two", {{1, 500}}, {{7, 200}, {8, 300}}, "1-1 se divide en 1-7 y 1-8", 3},
        {"rounded by half a square metre each",
         {{1, 500}},
         {{7, 200}, {8, 301}},
         "1-1 se divide en 1-7 y 1-8",
         3},
        {"the same of four that it is the sum of",
         {{1, 500}},
         {{7, 200}, {8, 201}, {9, 101}},
         "1-1 se divide en 1-7, 1-8 y 1-9",
         4},
        {"by more than that", {{1, 500}}, {{7, 202}, {8, 302}}},
        {"parts of another polygon", {{1, 500}}, {{7, 200}, {8, 300, 2}}},
        {"not all new ones, and no run of numbers",
         {{1, 500}},
         {{7, 200}, {8, 90}, {9, 300}},
         "1-1 se divide en 1-7 y 1-9",
         3},
        {"the same, by more than a square metre", {{1, 500}}, {{7, 200}, {8, 90}, {9, 302}}},
        {"in one way as well as in another",
         {{1, 500}},
         {{7, 200}, {8, 90}, {9, 300}, {10, 95}, {11, 110}}},
        {"too many parts of any numbers",
         {{1, 500}},
         {{6, 100}, {7, 120}, {8, 950}, {9, 130}, {10, 150}}},
        {"among too many new ones",
         {{1, 500}},
         {{2, 910}, {3, 920}, {4, 930}, {5, 940}, {6, 950}, {7, 200}, {8, 90}, {9, 300}}},
        {"numbers that don't follow one another, among too many new ones",
         {{1, 500}},
         {{2, 910}, {12, 920}, {22, 930}, {32, 940}, {42, 950}, {52, 960}, {62, 200}, {72, 300}}},
        {"the same but for one that is somebody's",
         {{1, 500}},
         {{2, 910}, {12, 920}, {22, 930}, {32, 940}, {42, 950}, {52, 960}, {62, 200}, {64, 300}},
         "1-1 se divide en 1-62 y 1-64",
         3},
        {"all that are new, whatever their numbers",
         {{1, 500}},
         {{12, 110}, {22, 90}, {32, 105}, {42, 195}},
         "1-1 se divide en 1-12, 1-22, 1-32 y 1-42",
         5},
        {"from the middle of a run, where others come as near",
         {{1, 500}},
         {{7, 230}, {8, 240}, {9, 260}, {10, 245}, {11, 220}}},
        {"from there, where none does",
         {{1, 500}},
         {{7, 930}, {8, 240}, {9, 260}, {10, 945}, {11, 920}},
         "1-1 se divide en 1-8 y 1-9",
         3},
        {"part of a parcel that stays",
         {{1, 500}},
         {{1, 350}, {2, 150}},
         "de 1-1, que sigue, sale 1-2",
         2},
        {"too little to tell", {{1, 500}}, {{1, 490}, {2, 10}}},
        {"join of two", {{1, 200}, {2, 300}}, {{3, 500}}, "1-1 y 1-2 se agrupan en 1-3", 3},
        {"to one that was there",
         {{1, 200}, {2, 300}},
         {{1, 500}},
         "1-2 se agrega a 1-1, que ya estaba",
         2},
        {"another number", {{1, 500}}, {{9, 500}}, "1-1 pasa a ser 1-9", 2},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CLineas antes;
        CLineas ahora;
        const auto lineas = [](const std::vector<CMedida>& piezas) {
            std::vector<std::string> suyas;
            for (const CMedida& una : piezas)
                suyas.push_back(DeMetros(una.polig, una.parcela, una.metros));
            return suyas;
        };
        antes.parcelas = lineas(caso.antes);
        ahora.parcelas = lineas(caso.ahora);
        antes.subparcelas = ahora.subparcelas = {};
        const std::vector<std::string> filas = Filas(antes, ahora);
        for (const std::string& fila : filas)
            EXPECT_THAT(fila.substr(fila.rfind(';') + 1), AnyOf(caso.dicho, ""));
        const auto enDos = [&](const std::string& fila) {
            return *caso.dicho != '\0' && fila.ends_with(caso.dicho);
        };
        EXPECT_EQ(std::count_if(filas.begin(), filas.end(), enDos), caso.filas);
        EXPECT_EQ(Veces(carpeta.Lee("cambios.html"), "<ul class=\"repartos\">"),
                  *caso.dicho == '\0' ? 0 : 1);
    }
}

TEST_F(Cambios, AddUpFromOneStateToTheOther)
{
    CLineas ahora;
    ahora.parcelas = {DeMetros(1, 1, 510), DeMetros(1, 2, 695, "0000002"), DeMetros(2, 5, 33)};
    Filas({}, ahora);
    const std::string pagina = carpeta.Lee("cambios.html");
    for (const char* fila :
         {"<td>Antes</td><td class=\"n\">3</td><td class=\"n\">0,2100</td>",
          "<td>desaparecen</td><td class=\"n\">−1</td><td class=\"n\">−0,0900</td>",
          "<td>nuevas</td><td class=\"n\">+1</td><td class=\"n\">+0,0033</td>",
          "<td>crecen</td><td class=\"n\">(1)</td><td class=\"n\">+0,0010</td>",
          "<td>menguan</td><td class=\"n\">(1)</td><td class=\"n\">−0,0005</td>",
          "<td>Ahora</td><td class=\"n\">3</td><td class=\"n\">0,1238</td>"})
        EXPECT_THAT(pagina, HasSubstr(fila));
    EXPECT_THAT(resultado.resumen,
                HasSubstr("1 parcela nueva, 1 desaparecida, 2 cambiadas, 0 divisiones o "
                          "agrupaciones, 0 cambios de titulares, -0,0862 ha"));
}

TEST_F(Cambios, HaveARowForEachParcelWithAllThatDiffers)
{
    CLineas ahora;
    ahora.parcelas = {DeMetros(1, 1, 510, "0000002"), DeMetros(1, 2, 700, "0000002", "00002"),
                      DeMetros(2, 9, 80)};
    ahora.subparcelas.pop_back();
    Filas({}, ahora);
    const std::string pagina = carpeta.Lee("cambios.html");
    for (const char* fila :
         {"<tr><td>1-1</td><td class=\"n\">500</td><td class=\"n\">510</td><td "
          "class=\"n\">+10</td><td><b>titular</b>: ANA, 11111111 (PR 100) → LUIS, 22222222 (PR "
          "60) y EVA, 33333333 (PR 40)<br><b>subparcela b</b>: 200 m², C- 00 → ya no "
          "está</td></tr>",
          "<tr><td>1-2</td><td class=\"n\">700</td><td class=\"n\"></td><td "
          "class=\"n\"></td><td><b>paraje</b>: LA ERA → EL LLANO</td></tr>",
          "<tr><td>2-1</td><td class=\"n\">900</td><td>ANA, 11111111 (PR 100)</td><td>LA "
          "ERA</td><td></td></tr>",
          "<tr><td>2-9</td><td class=\"n\">80</td><td>ANA, 11111111 (PR 100)</td><td>LA "
          "ERA</td><td></td></tr>"})
        EXPECT_THAT(pagina, HasSubstr(fila));
}

TEST_F(Cambios, AreNoneBetweenTheFormsOfOneMunicipality)
{
    for (const int semilla : {1, 2, 3}) {
        const auto municipio = sintetico::Genera({300, 0, 0}, static_cast<std::uint64_t>(semilla));
        std::string texto;
        for (const auto& linea : sintetico::LineasDeEntrada(municipio, false, false))
            texto += linea + "\r\n";
        Ejecuta(texto);
        EXPECT_THAT(Compara("entrada.txt", ""), IsEmpty());
        EXPECT_THAT(Compara("", "entrada.txt"), IsEmpty());
        EXPECT_THAT(carpeta.Lee("cambios.html"), HasSubstr("✓ Sin cambios en titulares, "));
    }
}

TEST_F(Cambios, OfAFaultyInputAreWhatTheTranslationDropped)
{
    std::string texto;
    for (const auto& linea :
         sintetico::LineasDeEntrada(sintetico::Genera({300, 0, 0}, 1), false, true))
        texto += linea + "\r\n";
    Ejecuta(texto);
    int sinParaje = 0;
    for (const std::string& mensaje : Mensajes())
        sinParaje += mensaje.starts_with("E102") ? 1 : 0;
    ASSERT_GT(sinParaje, 0);
    const std::vector<std::string> filas = Compara("", "entrada.txt");
    EXPECT_EQ(filas.size(), sinParaje);
    for (const std::string& fila : filas)
        EXPECT_THAT(fila, testing::StartsWith("parcela desaparecida;"));
}

TEST_F(Cambios, TellThatOneOfTheStatesIsInAnotherCodePage)
{
    CLineas antes;
    antes.gente.push_back(Titular("0000003", "00100", "MUÑOZ"_ansi, "44444444"));
    CLineas ahora = antes;
    ahora.gente.back() = Titular("0000003", "00100", "MUÑOZ", "44444444");
    const std::string dice = " parece estar en UTF-8, y lo que difiere por sus acentos";
    EXPECT_EQ(Filas(antes, ahora).size(), 1U);
    EXPECT_THAT(resultado.resumen, HasSubstr("ahora.txt" + dice));
    EXPECT_THAT(carpeta.Lee("cambios.html"), HasSubstr("ahora.txt" + dice));
    EXPECT_THAT(Filas(ahora, ahora), IsEmpty());
    EXPECT_THAT(resultado.resumen, Not(HasSubstr(dice))) << "both are";
}

TEST_F(Cambios, AreNamedOnThePageBehindAsManyHoldersAsItHasRoomFor)
{
    CLineas antes;
    for (const char* dni : {"44444444", "55555555", "66666666"})
        antes.gente.push_back(Titular("0000002", "00010", "INÉS"_ansi, dni));
    CLineas ahora = antes;
    ahora.gente.back() = Titular("0000002", "00020", "INÉS"_ansi, "66666666");
    EXPECT_EQ(Filas(antes, ahora).size(), 1U);
    for (const char* dice : {"INÉS, 66666666 (PR 10)", "INÉS, 66666666 (PR 20)"})
        EXPECT_THAT(carpeta.Lee("cambios.html"), HasSubstr(dice));
}

TEST_F(Cambios, StandInThePageOfARunAndBesideItsSummary)
{
    carpeta.Pon("antes.txt", CLineas().Texto());
    CLineas ahora;
    ahora.parcelas[0] = DeMetros(1, 1, 510);
    Ejecuta(ahora.Texto());
    const CInformePrueba informe(carpeta, "entrada.ERR", {.contra = carpeta.En("antes.txt")});
    EXPECT_TRUE(informe.Dice("<section id=\"cambios\">"));
    EXPECT_TRUE(informe.Dice("Cambian de superficie 1; 2 parcelas quedan como estaban."));
    EXPECT_THAT(informe.resultado.resumen, HasSubstr("  Cambios contra "));
    EXPECT_FALSE(CInformePrueba(carpeta, "entrada.ERR").Dice("cambios"));
}

TEST_F(Cambios, LookAtTheMunicipalitiesOfTheNewerStateAlone)
{
    CLineas antes;
    std::string deOtro = DeMetros(1, 5, 100);
    antes.parcelas.push_back(deOtro.replace(5, 3, "128"));
    EXPECT_THAT(Filas(antes, {}), IsEmpty());
    EXPECT_THAT(carpeta.Lee("cambios.html"), HasSubstr("No se miran 1 parcela de otro municipio"));
    // Who goes on in another one is gone from this one all the same.
    std::string deLaOtra = antes.gente.back();
    CLineas ahora;
    ahora.gente.pop_back();
    for (CLineas* uno : {&antes, &ahora})
        uno->gente.push_back(deLaOtra.replace(5, 3, "128"));
    ahora.parcelas.push_back(antes.parcelas.back());
    EXPECT_THAT(Filas(antes, ahora),
                testing::Contains(testing::StartsWith("titular desaparecido;;;;;EVA, 33333333;")));
}

TEST_F(Cambios, TellWhoIsTheMainHolderWhereTheTablesSayIt)
{
    CLineas lineas;
    lineas.gente[1] = Titular("0000002", "00050", "LUIS", "22222222");
    lineas.gente[2] = Titular("0000002", "00050", "EVA", "33333333");
    Ejecuta(lineas.Texto());
    CopiaTablas(carpeta, "antes");
    EXPECT_THAT(Compara("", "antes"), IsEmpty());
    // The two of 1-2 change places, and their shares are the same.
    const auto cambia = [&](const char* tabla, std::size_t fila, unsigned campo,
                            const std::string& valor) {
        std::string texto = carpeta.Lee(tabla);
        std::size_t desde = 0;
        for (std::size_t i = 0; i <= fila; ++i)
            desde = texto.find('\n', desde) + 1;
        for (unsigned i = 0; i < campo; ++i)
            desde = texto.find('\t', desde) + 1;
        carpeta.Pon(tabla, texto.replace(desde, texto.find('\t', desde) - desde, valor));
    };
    const std::string principal = Campo("Parcelas.txt", 1, 8);
    const std::string otro = Campo("Cotitulares.txt", 0, 5);
    ASSERT_NE(principal, otro);
    cambia("Parcelas.txt", 1, 8, otro);
    cambia("Cotitulares.txt", 0, 5, principal);
    EXPECT_THAT(Compara("", "antes"),
                ElementsAre("titular;127;1;2;;LUIS, 22222222 (PR 50) y EVA, 33333333 (PR "
                            "50);EVA, 33333333 (PR 50) y LUIS, 22222222 (PR 50);;"));
    EXPECT_THAT(Compara("entrada.txt", ""), IsEmpty()) << "lines name all alike";
}

TEST_F(Cambios, TellWhatTheyCannotCompare)
{
    carpeta.Pon("estado.txt", CLineas().Texto());
    std::string otro = CLineas().Texto();
    std::string deOtraGerencia = otro;
    for (std::size_t i = otro.find("045127"); i != std::string::npos; i = otro.find("045127")) {
        otro.replace(i, 6, "045128");
        deOtraGerencia.replace(i, 6, "046127");
    }
    Ejecuta(deOtraGerencia);
    carpeta.Pon("otro.txt", otro);
    carpeta.Pon("de_otra_gerencia.txt", deOtraGerencia);
    carpeta.Pon("nada.txt", "hola\r\n");
    carpeta.Pon("vacio.txt", "");
    carpeta.Pon("gente.txt", Titular("0000001", "00100", "ANA", "1"));
    std::filesystem::create_directory(carpeta.Ruta() / "sin_tablas");
    const struct {
        const char* contra;
        const char* queja;
    } kCasos[] = {
        {"falta.txt", "falta.txt no existe"},
        {"nada.txt", "nada.txt no es un fichero de Catastro, ni un fichero R, ni la carpeta"},
        {"vacio.txt", "vacio.txt no es un fichero de Catastro"},
        {"gente.txt", "gente.txt no tiene ninguna parcela"},
        {"sin_tablas", "le falta la tabla"},
        {"otro.txt", "otro.txt es de otro municipio que "},
        {"de_otra_gerencia.txt", "de_otra_gerencia.txt es de otro municipio que "},
        {"", " es de otro municipio que "},
    };
    for (const auto& caso : kCasos) {
        EXPECT_THAT(Resultado(carpeta, "estado.txt", {.contra = carpeta.En(caso.contra)}).quejas,
                    ElementsAre(HasSubstr(caso.queja)))
            << caso.contra;
    }
    EXPECT_EQ(carpeta.Lee("estado_cambios.html"), "(no file)");
    EXPECT_THAT(Resultado(carpeta, "vacio.txt", {.contra = carpeta.En("estado.txt")}).quejas,
                ElementsAre(HasSubstr("vacio.txt no es un registro, ni otro estado")));
    const CString otroEstado = carpeta.En("otro.txt");
    EXPECT_THAT(Resultado(carpeta, "estado.txt", {.html = otroEstado, .contra = otroEstado}).quejas,
                ElementsAre(HasSubstr("no se escribe, porque se lee")));
    EXPECT_THAT(
        Resultado(carpeta, "estado.txt", {.lista = otroEstado, .contra = otroEstado}).quejas,
        ElementsAre(HasSubstr("no es un registro: no caben las opciones")));
}

TEST_F(Cambios, OfARunThatLeftNothingCannotBeTold)
{
    Ejecuta(CLineas().Texto());
    carpeta.Pon("antes.txt", CLineas().Texto());
    std::filesystem::remove(carpeta.Ruta() / "Subparcelas.txt");
    const informe::COpciones opciones = {.contra = carpeta.En("antes.txt")};
    EXPECT_THAT(Resultado(carpeta, "entrada.ERR", opciones).quejas,
                ElementsAre(HasSubstr("le falta la tabla")));
    EXPECT_EQ(carpeta.Lee("entrada.html"), "(no file)");
    const CEnCarpeta aqui(carpeta.Ruta());
    EXPECT_THAT(informe::HazInforme("entrada.ERR", opciones, {"1", 0}).quejas.front(),
                testing::StartsWith("La carpeta de trabajo no se puede comparar: "));
}
