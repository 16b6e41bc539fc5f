#include "cadastre/holder.h"

#include <algorithm>

#include "cadastre/column_reader.h"
#include "cadastre/column_writer.h"
#include "cadastre/holder_columns.h"

namespace {

constexpr struct {
    std::string_view palabra;
    const char* sig;
} kTiposVia[] = {
    {"C/", "CL"},  {"CL", "CL"},   {"AVDA", "AV"}, {"AVDA.", "AV"}, {"AVD", "AV"},  {"PASEO", "PS"},
    {"PS", "PS"},  {"PLZA", "PZ"}, {"PZA", "PZ"},  {"PZ", "PZ"},    {"CMNO", "CM"}, {"CM", "CM"},
    {"URB", "UR"}, {"UR", "UR"},   {"CRTA", "CR"}, {"CR", "CR"},
};

/// Reads a line of fixed columns. An asterisk in the first column of the DNI pushes its eight
/// characters one column on, over the place of the letter.
template <auto Cual>
void LeeLinea(std::string_view linea, CTitular& titular, CDatosLinea& datos)
{
    const CLineaFija fija(linea);
    LeeColumnas<kColumnasTitular, Cual>(fija, titular, datos);
    if (!std::string_view(titular.DNI).starts_with('*'))
        return;
    constexpr CLectura kDonde = ColumnaDe(kColumnasTitular, &CTitular::DNI).*Cual;
    titular.DNI = fija.Texto(kDonde.columna + 1, kDonde.ancho);
    titular.letra = ' ';
}

} // namespace

CTitular::CTitular(const CString& direccion)
{
    const std::string_view linea = direccion;
    const std::string_view palabra = linea.substr(0, linea.find(' '));
    for (const auto& tipo : kTiposVia)
        if (tipo.palabra == palabra)
            sig = tipo.sig;
    const std::size_t detras = palabra.size() + 1;
    nombreVia = detras < linea.size() ? linea.substr(detras) : linea;
}

bool CTitular::Lee(std::string_view linea, int modo, CDatosLinea& datos)
{
    if (modo == kModoTabla)
        return LeeFila<kColumnasTitular>(linea, *this, datos);
    if (modo == kModoLista)
        LeeLinea<&CColumna<CTitular>::lista>(linea, *this, datos);
    else
        LeeLinea<&CColumna<CTitular>::catastro>(linea, *this, datos);
    return true;
}

bool CTitular::Lee(std::string_view linea, int modo)
{
    CDatosLinea datos;
    return Lee(linea, modo, datos);
}

void CTitular::Graba(CStdioFile& fichero, short ger, short mun, short emenor, bool fijo) const
{
    const CDatosLinea datos(ger, mun, emenor);
    GrabaRegistro<kColumnasTitular>(fichero, *this, datos, fijo);
}

int CTitular::InsertaPropiedad(int parcela, int partici, const CString& Tit)
{
    // The readers come with one parcel after the other: one behind all others needs no look-up.
    if (parcela <= m_mayorParcela &&
        m_porParcela.Busca(m_propiedades, &CPropiedad::parcela, parcela) >= 0)
        return kPropiedadRepetida;
    m_propiedades.push_back({parcela, partici, Tit});
    m_mayorParcela = std::max(m_mayorParcela, parcela);
    return 1;
}

void CTitular::RenumeraParcelas(const std::vector<int>& nuevos)
{
    m_mayorParcela = -1;
    for (CPropiedad& propiedad : m_propiedades) {
        propiedad.parcela = nuevos[static_cast<std::size_t>(propiedad.parcela)];
        m_mayorParcela = std::max(m_mayorParcela, propiedad.parcela);
    }
    m_porParcela.Olvida();
}
