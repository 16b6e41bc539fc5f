#include "cadastre/module_place.h"

#include "cadastre/column_reader.h"
#include "cadastre/column_writer.h"
#include "cadastre/module_place_columns.h"
#include "cadastre/wrapping.h"

bool CModulo::Lee(std::string_view linea, int modo, CDatosLinea& datos)
{
    if (modo == kModoTabla) {
        if (!LeeFila<kColumnasModulo>(linea, *this, datos))
            return false;
        if (!datos.faltan)
            Jornadas = Corta(datos.jornadas * 100); // cut, not rounded: 0.29 days are 28 hundredths
    } else {
        LeeColumnas<kColumnasModulo, &CColumna<CModulo>::catastro>(CLineaFija(linea), *this, datos);
    }
    return true;
}

bool CModulo::Lee(std::string_view linea, int modo)
{
    CDatosLinea datos;
    return Lee(linea, modo, datos);
}

void CModulo::Graba(CStdioFile& fichero, short ger, short mun, short emenor, bool fijo) const
{
    CDatosLinea datos(ger, mun, emenor);
    datos.jornadas = Jornadas * 0.01;
    GrabaRegistro<kColumnasModulo, kAnchoModulo>(fichero, *this, datos, fijo);
}

bool CParaje::Lee(std::string_view linea, int modo, CDatosLinea& datos)
{
    if (modo == kModoTabla)
        return LeeFila<kColumnasParaje>(linea, *this, datos);
    LeeColumnas<kColumnasParaje, &CColumna<CParaje>::catastro>(CLineaFija(linea), *this, datos);
    return true;
}

bool CParaje::Lee(std::string_view linea, int modo)
{
    CDatosLinea datos;
    return Lee(linea, modo, datos);
}

bool CParaje::Lee(std::string_view linea)
{
    return Lee(linea, kModoCatastro);
}

void CParaje::Graba(CStdioFile& fichero, short ger, short mun, short emenor, bool fijo) const
{
    const CDatosLinea datos(ger, mun, emenor);
    GrabaRegistro<kColumnasParaje>(fichero, *this, datos, fijo);
}
