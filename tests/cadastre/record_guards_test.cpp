// Where a line ends decides which fields of a record it fills.

#include <map>
#include <string>
#include <string_view>
#include <type_traits>

#include "cadastre/column_reader.h"
#include "cadastre/holder_columns.h"
#include "cadastre/module_place_columns.h"
#include "cadastre/parcel_columns.h"
#include "cadastre/subparcel_columns.h"
#include "tests/cadastre/record_lines.h"
#include "tests/cadastre/record_tools.h"

namespace {

/// A record of no cadastre, with a field of each kind.
struct CPozo {
    int cota = 7;
    char clase = 'k';
    CString nombre = "ANTES";
};

constexpr auto kColumnasPozo = std::to_array<CColumna<CPozo>>({
    {&CPozo::cota, {2, 3, 4}, kNoSeLee, kNoSeEscribe, kSinTabla},
    {&CPozo::clase, {5, 1, 6}, kNoSeLee, kNoSeEscribe, kSinTabla},
    {&CPozo::nombre, {6, 4, 8}, kNoSeLee, kNoSeEscribe, kSinTabla, kSinCola},
});

/// Places of the fields that a layout has, with the length that a line must have for each.
template <class R, std::size_t N>
std::map<int, int> Guardas(const std::array<CColumna<R>, N>& tabla, CLectura CColumna<R>::*layout)
{
    std::map<int, int> guardas;
    for (const CColumna<R>& columna : tabla)
        if (const CLectura donde = columna.*layout; donde.columna >= 0)
            guardas[donde.columna] = donde.minimo;
    return guardas;
}

} // namespace

TEST(Registros, ReadAFieldOnceTheLineIsAsLongAsItAsks)
{
    constexpr struct {
        const char* motivo;
        const char* linea;
        int cota;
        char clase;
        const char* nombre;
    } kCasos[] = {
        {"nothing of it", "PZ", 7, 'k', "ANTES"},
        {"one short of the least length", "PZ1", 7, 'k', "ANTES"},
        {"the line end counts, and is no part of the field", "PZ1\n", 1, 'k', "ANTES"},
        {"as far as the line goes", "PZ12", 12, 'k', "ANTES"},
        {"its width", "PZ1234", 123, '4', "ANTES"},
        {"a character where the line end stands stays what it was", "PZ123\n", 123, 'k', "ANTES"},
        {"a text one short", "PZ123CA", 123, 'C', "ANTES"},
        {"a text cut by the line end", "PZ123CA\n", 123, 'C', "A"},
        {"a text whole, and its neighbour isn't in it", "PZ123CABCDE\n", 123, 'C', "ABCD"},
        {"a text without the blanks behind it", "PZ123C A  E\n", 123, 'C', " A"},
        {"a number of blanks is 0", "PZ   C\n", 0, 'C', "ANTES"},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CPozo pozo;
        CDatosLinea datos;
        LeeColumnas<kColumnasPozo, &CColumna<CPozo>::catastro>(CLineaFija(caso.linea), pozo, datos);
        EXPECT_EQ(pozo.cota, caso.cota);
        EXPECT_EQ(pozo.clase, caso.clase);
        EXPECT_EQ(pozo.nombre, caso.nombre);
    }
}

TEST(Registros, AskForOneMeasureOfTheLineInEachLayout)
{
    const struct {
        const char* motivo;
        std::map<int, int> guardas;
        int sobre;                 ///< how far a line must reach over the place of a field
        std::map<int, int> aparte; ///< fields that ask for another length
    } casos[] = {
        {"a parcel: holder, title and place all or none",
         Guardas(kColumnasParcela, &CColumna<CParcela>::catastro),
         2,
         {{46, 72}, {53, 72}, {71, 72}}},
        {"a parcel of the list: the name of its place as far as it goes",
         Guardas(kColumnasParcela, &CColumna<CParcela>::lista),
         2,
         {{35, 0}, {65, 66}}},
        {"what subparcels have in common: the parcel's numbers both or none",
         Guardas(kColumnasComunes, &CColumna<CSubparcela>::catastro),
         2,
         {{13, 17}, {16, 17}, {21, 0}}},
        {"land", Guardas(kColumnasSuelo, &CColumna<CSubparcela>::catastro), 2, {}},
        {"construction: its text is emptied where the line ends",
         Guardas(kColumnasConstruccion, &CColumna<CSubparcela>::catastro),
         2,
         {{28, 28}}},
        {"a subparcel of the list",
         Guardas(kColumnasSubparcela, &CColumna<CSubparcela>::lista),
         1,
         {}},
        {"a holder", Guardas(kColumnasTitular, &CColumna<CTitular>::catastro), 1, {}},
        {"a holder of the list", Guardas(kColumnasTitular, &CColumna<CTitular>::lista), 1, {}},
        {"a module", Guardas(kColumnasModulo, &CColumna<CModulo>::catastro), 2, {}},
        {"a place", Guardas(kColumnasParaje, &CColumna<CParaje>::catastro), 1, {}},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_FALSE(caso.guardas.empty());
        for (const auto& [columna, minimo] : caso.guardas) {
            const auto suya = caso.aparte.find(columna);
            EXPECT_EQ(minimo, suya == caso.aparte.end() ? columna + caso.sobre : suya->second)
                << "of the field at " << columna;
        }
        for (const auto& [columna, minimo] : caso.aparte)
            EXPECT_TRUE(caso.guardas.contains(columna)) << columna;
    }
}

TEST(Registros, AddASurfaceUpFromThePartsThatTheLineReaches)
{
    constexpr struct {
        const char* motivo;
        std::size_t parcela, suelo; ///< lengths of the two lines
        int superficie;
    } kCasos[] = {
        {"none: what was there goes", 22, 33, 0}, {"two figures of the hectares", 23, 34, 120000},
        {"the hectares", 27, 38, 123450000},      {"the ares", 28, 39, 123456700},
        {"all three", 30, 41, 123456789},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CParcela parcela = DeFila(CParcela(0, 0, 0, ""), kAntesPR);
        parcela.Lee(kLineaPR.substr(0, caso.parcela), kModoCatastro);
        EXPECT_EQ(parcela.Superficie, caso.superficie);
        CSubparcela suelo = DeFila(CSubparcela(), kAntesSP);
        suelo.Lee(kLineaSP.substr(0, caso.suelo), kModoCatastro);
        EXPECT_EQ(suelo.superfic, caso.superficie);
    }
}

TEST(Registros, ForgetTheSurfaceThatALineOfTheListIsTooShortFor)
{
    CParcela parcela = DeFila(CParcela(0, 0, 0, ""), "||5|6|7|8");
    parcela.Lee(kListaPR.substr(0, 68), kModoLista);
    EXPECT_EQ(parcela.Superficie, 0);
    CSubparcela sub = DeFila(CSubparcela(), kAntesSP);
    sub.Lee(kListaSP.substr(0, 77), kModoLista);
    EXPECT_EQ(sub.superfic, 0);
}

namespace {

/// Reads a line cut at each place both as one that may have all its fields and by asking for each.
/// What was cut stands behind it, so that who reads on is seen.
template <const auto& Tabla, auto Cual, class R>
void LeeIgualQueCampoACampo()
{
    const std::size_t fin = columnas::FinCampos<Cual>(Tabla);
    std::string entera;
    for (std::size_t i = 0; i < fin + 5; ++i)
        entera += static_cast<char>('1' + i % 9);
    for (std::size_t largo = 0; largo <= fin + 1; ++largo) {
        SCOPED_TRACE(largo);
        const CLineaFija linea(std::string_view(entera).substr(0, largo));
        R registro, campoACampo;
        CDatosLinea datos, susDatos;
        LeeColumnas<Tabla, Cual>(linea, registro, datos);
        columnas::LeeCampos<Tabla, Cual, false>(linea, campoACampo, susDatos);
        columnas::EnCadaFila<Tabla>([&](auto fila) {
            constexpr auto kCampo = kMiembro<Tabla, fila>;
            if constexpr (columnas::kDelRegistro<Tabla, fila, R>) {
                EXPECT_EQ(registro.*kCampo, campoACampo.*kCampo);
            } else if constexpr (std::is_invocable_v<decltype(kCampo), CDatosLinea&>) {
                EXPECT_EQ(datos.*kCampo, susDatos.*kCampo);
            }
        });
    }
}

template <const auto& Tabla, class R>
void LeeIgualEnSusFormas()
{
    LeeIgualQueCampoACampo<Tabla, &CColumna<R>::catastro, R>();
    LeeIgualQueCampoACampo<Tabla, &CColumna<R>::lista, R>();
}

} // namespace

TEST(Registros, ReadALineThatHasAllFieldsAsOneWhoseFieldsAreAskedForOneByOne)
{
    LeeIgualEnSusFormas<kColumnasParcela, CParcela>();
    LeeIgualEnSusFormas<kColumnasTitular, CTitular>();
    LeeIgualEnSusFormas<kColumnasComunes, CSubparcela>();
    LeeIgualEnSusFormas<kColumnasSuelo, CSubparcela>();
    LeeIgualEnSusFormas<kColumnasConstruccion, CSubparcela>();
}
