#include "evidence/row_keys.h"

#include <string>

#include <gtest/gtest.h>

#include "cadastre/co_holder.h"
#include "cadastre/exchange_format.h"
#include "cadastre/holder.h"
#include "cadastre/parcel.h"
#include "cadastre/subparcel.h"
#include "generator/synthetic_municipality.h"

// Keys are read without their records. Lines of any length and of characters that numbers, blanks
// and texts are made of must give what the records' own readers make of them.

using sintetico::CSorteo;

namespace {

constexpr int kLineas = 20000;

std::string AlAzar(CSorteo& sorteo, std::string_view letras, int mayor)
{
    std::string texto(static_cast<std::size_t>(sorteo.Hasta(mayor)), ' ');
    for (char& c : texto)
        c = letras[static_cast<std::size_t>(sorteo.Hasta(static_cast<int>(letras.size())))];
    return texto;
}

/// A row of fields that are often empty, and often cut before its end.
std::string Fila(CSorteo& sorteo)
{
    std::string fila;
    for (int i = sorteo.Hasta(14); i >= 0; --i)
        fila += (sorteo.UnoDeCada(8) ? "" : AlAzar(sorteo, " 0123-Aa\r", 9)) + (i > 0 ? "\t" : "");
    return fila;
}

CClaveRegistro ClaveDe(const CDatosLinea& datos)
{
    return CClaveRegistro::DeParcela(datos.Polig, datos.Parcela);
}

} // namespace

TEST(ClavesDeFila, AreThoseOfTheRecords)
{
    CSorteo sorteo(1);
    for (int i = 0; i < kLineas; ++i) {
        const std::string fila = Fila(sorteo);
        SCOPED_TRACE(fila);
        CDatosLinea parcela;
        CParcela(0, 0).Lee(fila, kModoTabla, parcela);
        ASSERT_EQ(NumerosDeFilaParcela(fila).Clave(), ClaveDe(parcela));
        ASSERT_EQ(NumerosDeFilaParcela(fila).numImputa, parcela.numImputa);
        CDatosLinea vinculo;
        CCotitular().Lee(fila, vinculo);
        ASSERT_EQ(NumerosDeFilaCotitular(fila).Clave(), ClaveDe(vinculo));
        ASSERT_EQ(NumerosDeFilaCotitular(fila).numImputa, vinculo.numImputa);
        CDatosLinea datos;
        CSubparcela subparcela;
        subparcela.Lee(fila, kModoTabla, datos);
        ASSERT_EQ(ClaveDeFilaSubparcela(fila),
                  CClaveRegistro::DeSubparcela(datos.Polig, datos.Parcela, subparcela.letra));
        CTitular titular;
        titular.Lee(fila, kModoTabla);
        ASSERT_EQ(ClaveDeFilaTitular(fila), CClaveRegistro::De(titular));
    }
}

TEST(ClavesDeLinea, AreThoseOfTheRecords)
{
    CSorteo sorteo(2);
    for (int i = 0; i < kLineas; ++i) {
        const std::string linea = (sorteo.UnoDeCada(2) ? "SP" : "SC") +
                                  AlAzar(sorteo, " 0123-Aa", 100) +
                                  (sorteo.UnoDeCada(9) ? "" : "\n");
        SCOPED_TRACE(linea);
        CDatosLinea datos;
        CParcela parcela(0, 0);
        parcela.Lee(linea, kModoCatastro, datos);
        const CNumerosDeLinea numeros = NumerosDeLineaParcela(linea);
        ASSERT_EQ(numeros.polig, parcela.Polig);
        ASSERT_EQ(numeros.parcela, parcela.Parcela);
        ASSERT_EQ(numeros.numParaje, datos.numParaje);
        ASSERT_EQ(numeros.numImputa, datos.numImputa);
        ASSERT_EQ(numeros.enlaza, !datos.Tit.IsEmpty());
        CDatosLinea suyos;
        CSubparcela subparcela;
        subparcela.Lee(linea, kModoCatastro, suyos);
        ASSERT_EQ(ClaveDeLineaSubparcela(linea),
                  CClaveRegistro::DeSubparcela(suyos.Polig, suyos.Parcela, subparcela.letra));
    }
}
