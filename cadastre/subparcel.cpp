#include "cadastre/subparcel.h"

#include "cadastre/column_reader.h"
#include "cadastre/column_writer.h"
#include "cadastre/record_types.h"
#include "cadastre/subparcel_columns.h"

namespace {

/// The read layout carries land and construction in two kinds of line.
void LeeCatastro(const CLineaFija& linea, CSubparcela& subparcela, CDatosLinea& datos)
{
    constexpr auto kCual = &CColumna<CSubparcela>::catastro;
    LeeColumnas<kColumnasComunes, kCual>(linea, subparcela, datos);
    if (linea.Texto(kLeeTipo) == kTipoSuelo) {
        LeeColumnas<kColumnasSuelo, kCual>(linea, subparcela, datos);
        subparcela.superfic = datos.DameSuperficie();
        return;
    }
    LeeColumnas<kColumnasConstruccion, kCual>(linea, subparcela, datos);
    // The line gives the character's number, and a zero byte would cut the row that it is written
    // to.
    if (const char cSing = static_cast<char>(datos.cSing & 0xFF); cSing != '\0')
        subparcela.cSing = cSing;
}

} // namespace

bool CSubparcela::Lee(std::string_view linea, int modo, CDatosLinea& datos)
{
    if (modo == kModoTabla)
        return LeeFila<kColumnasSubparcela>(linea, *this, datos);
    if (modo == kModoLista) {
        superfic = 0;
        LeeColumnas<kColumnasSubparcela, &CColumna<CSubparcela>::lista>(CLineaFija(linea), *this,
                                                                        datos);
        return true;
    }
    LeeCatastro(CLineaFija(linea), *this, datos);
    return true;
}

bool CSubparcela::Lee(std::string_view linea, int modo)
{
    CDatosLinea datos;
    return Lee(linea, modo, datos);
}

void CSubparcela::Graba(CStdioFile& fichero, short ger, short mun, short emenor, short zona,
                        short polig, int parcela, bool fijo) const
{
    if (fijo && !salvar)
        return;
    CDatosLinea datos(ger, mun, emenor, zona, polig, parcela);
    datos.PonSuperficie(superfic);
    GrabaRegistro<kColumnasSubparcela>(fichero, *this, datos, fijo);
}
