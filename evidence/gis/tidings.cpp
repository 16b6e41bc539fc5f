#include "evidence/gis/tidings.h"

#include "evidence/gis/complaints.h"
#include "platform/ansi.h"

namespace {

constexpr int kPrimeras = 100; // of each kind: all kinds together stay below a thousand

} // namespace

bool CNoticias::EsDeLasPrimeras(const char* clase, double metros)
{
    CCuenta& cuenta = m_cuentas[clase];
    cuenta.metros += metros;
    return ++cuenta.veces <= kPrimeras;
}

void CNoticias::Advierte(const char* clase, const CString& texto, double metros)
{
    if (EsDeLasPrimeras(clase, metros))
        ::Advierte(texto);
}

void CNoticias::Falla(const char* clase, const CString& texto)
{
    if (EsDeLasPrimeras(clase, 0))
        ::Falla(texto);
}

void CNoticias::Apunta(const char* noticia, const CString& nombre)
{
    constexpr int kConNombre = 10;
    CNombrados& suyos = m_nombrados[noticia];
    if (++suyos.veces <= kConNombre)
        suyos.nombres += (suyos.nombres.IsEmpty() ? "" : ", ") + nombre;
    else if (suyos.veces == kConNombre + 1)
        suyos.nombres += "...";
}

void CNoticias::Dice()
{
    for (const auto& [noticia, suyos] : m_nombrados)
        AdvierteCon("%d %s: %s", suyos.veces, noticia, suyos.nombres);
    for (const auto& [clase, cuenta] : m_cuentas) {
        if (cuenta.veces <= kPrimeras)
            continue;
        ::Advierte(Formatea("%d %s en total, de los que se han dicho los %d primeros"_ansi,
                            cuenta.veces, clase, kPrimeras) +
                   (cuenta.metros > 0 ? Formatea("; suman %.2lf m2", cuenta.metros) : ""));
    }
    m_nombrados.clear();
    m_cuentas.clear();
}
