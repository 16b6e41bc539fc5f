// Where a line ends decides which fields of a record it fills.

#include <variant>

#include "cadastre/exchange_format.h"
#include "cadastre/module_place.h"
#include "cadastre/parcel.h"
#include "tests/cadastre/record_lines.h"
#include "tests/cadastre/record_tools.h"

namespace {

const CParcela kNueva(0, 0, 0, "");

template <class R>
using CMiembro = std::variant<short R::*, int R::*, char R::*, CString R::*>;

/// A field as a person writes it down.
template <class R>
std::string Valor(const R& registro, const CMiembro<R>& cual)
{
    return std::visit(
        [&]<class C>(C R::*miembro) -> std::string {
            if constexpr (std::is_same_v<C, CString>)
                return std::string(std::string_view(registro.*miembro));
            else if constexpr (std::is_same_v<C, char>)
                return {registro.*miembro};
            else
                return std::to_string(registro.*miembro);
        },
        cual);
}

/// Three answers to where a line ends: one character short of a field's guard, at the guard, and at
/// the guard with the line end as the last character.
template <class R>
struct CGuarda {
    const char* campo;
    CMiembro<R> miembro;
    unsigned minimo;
    const char* corta;
    const char* justa;
    const char* conFin;
};

/// \param antes  record whose fields all differ from the line's
template <class R>
void CompruebaGuardas(std::string_view linea, int modo, const R& antes,
                      const std::vector<CGuarda<R>>& guardas)
{
    for (const CGuarda<R>& guarda : guardas) {
        const auto valor = [&](std::string_view cortada, const char* fin) {
            R registro = antes;
            registro.Lee(std::string(cortada) + fin, modo);
            return Valor(registro, guarda.miembro);
        };
        SCOPED_TRACE(guarda.campo + (" at " + std::to_string(guarda.minimo)));
        const unsigned n = guarda.minimo;
        EXPECT_EQ(valor(linea.substr(0, n - 1), ""), guarda.corta);
        EXPECT_EQ(valor(linea.substr(0, n - 2), "\n"), guarda.corta);
        EXPECT_EQ(valor(linea.substr(0, n), ""), guarda.justa);
        EXPECT_EQ(valor(linea.substr(0, n - 1), "\n"), guarda.conFin);
    }
}

} // namespace

TEST(Registros, ReadEachFieldOfTheReadLayoutFromItsGuardOn)
{
    using P = CParcela;
    CompruebaGuardas<P>(
        kLineaPR, kModoCatastro, DeFila(kNueva, kAntesPR),
        {
            {"Zona", &P::Zona, 13, "5", "12", "1"},
            {"Polig", &P::Polig, 15, "6", "34", "3"},
            {"Parcela", &P::Parcela, 18, "7", "67", "6"},
            {"hectares", &P::Superficie, 23, "0", "120000", "10000"},
            {"ares", &P::Superficie, 28, "123450000", "123456700", "123450600"},
            {"centiares", &P::Superficie, 30, "123456700", "123456789", "123456708"},
            {"valorCatastral", &P::valorCatastral, 32, "9", "98", "9"},
            {"añoVal", &P::añoVal, 44, "10", "19", "1"},
            {"numOrtofoto", &P::numOrtofoto, 57, "ANTES", "05", "0"},
            {"x", &P::x, 67, "11", "10", "1"},
            {"y", &P::y, 70, "12", "14", "1"},
            {"claveConc", &P::claveConc, 78, "k", "C", "C"}, // one column behind its place
        });
    using S = CSubparcela;
    CompruebaGuardas<S>(kLineaSP, kModoCatastro, DeFila(S(), kAntesSP),
                        {
                            {"letra", &S::letra, 23, "", "A", ""}, // no guard: as far as it goes
                            {"tipo", &S::tipo, 27, "t", "A", "A"},
                            {"cFiscal", &S::cFiscal, 28, "FI", "SX", "S"},
                            {"ejer", &S::ejer, 30, "72", "19", "1"},
                            {"hectares", &S::superfic, 34, "0", "120000", "10000"},
                            {"ares", &S::superfic, 39, "123450000", "123456700", "123450600"},
                            {"centiares", &S::superfic, 41, "123456700", "123456789", "123456708"},
                            {"cE", &S::cE, 43, "EE", "E1", "E"},
                            {"iE", &S::iE, 45, "71", "37", "3"},
                            {"cA", &S::cA, 47, "AA", "LR", "L"},
                            {"iA", &S::iA, 49, "73", "12", "1"},
                            {"ref1", &S::ref1, 51, "REF1", "RE", "R"},
                            {"ref2", &S::ref2, 58, "REF2", "RE", "R"},
                        });
    CompruebaGuardas<S>(kLineaSC, kModoCatastro, DeFila(S(), kAntesSP),
                        {
                            {"letra", &S::letra, 22, "", "A", ""},
                            {"compCons", &S::compCons, 27, "81", "12", "1"},
                            {"descComponente", &S::descComponente, 28, "ANTES", "", ""},
                            {"largo", &S::largo, 44, "82", "12", "1"},
                            {"ancho", &S::ancho, 47, "83", "45", "4"},
                            {"alto", &S::alto, 50, "84", "34", "3"},
                            {"volumen", &S::volumen, 52, "85", "60", "6"},
                            {"añoC", &S::añoC, 58, "87", "19", "1"},
                            {"iC", &S::iC, 62, "i", "a", "a"},
                            {"añoR", &S::añoR, 68, "88", "19", "1"},
                            {"iR", &S::iR, 72, "j", "b", "b"},
                            {"usoP", &S::usoP, 73, "86", "9", "9"},
                            {"estC", &S::estC, 74, "k", "c", "c"},
                            {"cSing", &S::cSing, 75, "s", "K", "\a"}, // characters 75 and 7
                        });
    using T = CTitular;
    CompruebaGuardas<T>(kLineaTL, kModoCatastro, DeFila(T(), kAntesTL),
                        {
                            {"NumOrden", &T::NumOrden, 12, "55", "7", "0"},
                            {"Nombre", &T::Nombre, 24, "ANTES", "P", ""},
                            {"CJurid", &T::CJurid, 84, "a", "F", "a"},
                            {"DNI", &T::DNI, 85, "DNIANTES", "0", ""},
                            {"letra", &T::letra, 93, "b", "L", "b"},
                            {"Exen", &T::Exen, 94, "c", "E", "c"},
                            {"Del", &T::Del, 95, "11", "3", "0"},
                            {"MunDom", &T::MunDom, 97, "22", "1", "0"},
                            {"sig", &T::sig, 100, "SG", "C", ""},
                            {"nombreVia", &T::nombreVia, 105, "VIA", "A", ""},
                            {"numPol", &T::numPol, 130, "33", "9", "0"},
                            {"bloq", &T::bloq, 145, "BL", "B", ""},
                            {"esc", &T::esc, 174, "ES", "2", ""},
                            {"plant", &T::plant, 176, "PL", "B", ""},
                            {"puert", &T::puert, 179, "PU", "D", ""},
                            {"CP", &T::CP, 182, "44", "4", "0"},
                        });
    using M = CModulo;
    CompruebaGuardas<M>(kLineaMD, kModoCatastro, DeFila(M(), kAntesMD),
                        {
                            {"Cal", &M::Cal, 13, "PD", "LR", "L"},
                            {"Inten", &M::Inten, 15, "9", "37", "3"},
                            {"Denominacion", &M::Denominacion, 18, "Prado", "La", "L"},
                            {"TipoEvalua", &M::TipoEvalua, 58, "8", "12", "1"},
                            {"Jornadas", &M::Jornadas, 64, "75", "12", "1"},
                            {"EConce1", &M::EConce1, 72, "91", "11", "1"},
                            {"VConce1", &M::VConce1, 76, "92", "21", "2"},
                            {"EConce2", &M::EConce2, 82, "93", "31", "3"},
                            {"VConce2", &M::VConce2, 86, "94", "41", "4"},
                            {"EConce3", &M::EConce3, 92, "95", "51", "5"},
                            {"VConce3", &M::VConce3, 96, "96", "61", "6"},
                            {"Exen", &M::Exen, 102, "a", "x", "x"},
                            {"ConIBI", &M::ConIBI, 103, "b", "y", "y"},
                            {"ConJornadas", &M::ConJornadas, 104, "c", "z", "z"},
                        });
}

TEST(Registros, ReadEachFieldOfTheListFromItsGuardOn)
{
    using P = CParcela;
    CompruebaGuardas<P>(kListaPR, kModoLista, DeFila(kNueva, kAntesPR),
                        {
                            {"Zona", &P::Zona, 21, "5", "12", "1"},
                            {"Polig", &P::Polig, 23, "6", "34", "3"},
                            {"Parcela", &P::Parcela, 26, "7", "67", "6"},
                            {"Superficie", &P::Superficie, 69, "0", "12", "1"},
                        });
    using S = CSubparcela;
    S antes = DeFila(S(), kAntesSP);
    antes.descCultivo = "CULTIVO";
    CompruebaGuardas<S>(kListaSP, kModoLista, antes,
                        {
                            {"letra", &S::letra, 30, "ZZ", "A", ""},
                            {"cA", &S::cA, 34, "AA", "L", ""},
                            {"iA", &S::iA, 36, "73", "1", "0"},
                            {"descCultivo", &S::descCultivo, 38, "CULTIVO", "V", ""},
                            {"superfic", &S::superfic, 78, "0", "1", "0"},
                            {"tipo", &S::tipo, 88, "t", "A", "t"},
                        });
    using T = CTitular;
    CompruebaGuardas<T>(kListaTL, kModoLista, DeFila(T(), kAntesTL),
                        {
                            {"NumOrden", &T::NumOrden, 9, "55", "7", "0"},
                            {"DNI", &T::DNI, 41, "DNIANTES", "0", ""},
                            {"letra", &T::letra, 49, "b", "L", "b"},
                            {"Nombre", &T::Nombre, 50, "ANTES", "P", ""},
                            {"CJurid", &T::CJurid, 112, "a", "F", "a"},
                            {"Del", &T::Del, 113, "11", "3", "0"},
                            {"MunDom", &T::MunDom, 130, "22", "1", "0"},
                            {"sig", &T::sig, 168, "SG", "C", ""},
                            {"nombreVia", &T::nombreVia, 173, "VIA", "A", ""},
                            {"numPol", &T::numPol, 198, "33", "9", "0"},
                            {"esc", &T::esc, 203, "ES", "2", ""},
                            {"plant", &T::plant, 205, "PL", "B", ""},
                            {"puert", &T::puert, 208, "PU", "D", ""},
                            {"CP", &T::CP, 211, "44", "4", "0"},
                        });
}
