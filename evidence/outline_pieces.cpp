#include "evidence/outline_pieces.h"

namespace {

void Reune(const std::vector<CRecintoDibujado>& recintos, std::map<CClavePiezas, CPiezas>& piezas)
{
    for (const CRecintoDibujado& recinto : recintos)
        if (recinto.EsDeParcela())
            piezas[ClaveDePieza(recinto)].Toma(recinto);
}

} // namespace

double CPiezas::Suma(std::size_t primeras) const
{
    double suma = 0;
    for (std::size_t i = 0; i < primeras; ++i)
        suma += m_recintos[i]->areaRegistro;
    return suma;
}

CClavePiezas ClaveDePieza(const CRecintoDibujado& recinto)
{
    return {recinto.parcela, recinto.letra};
}

std::map<CClavePiezas, CPiezas> ReunePiezas(const std::vector<CRecintoDibujado>& recintos)
{
    std::map<CClavePiezas, CPiezas> piezas;
    Reune(recintos, piezas);
    return piezas;
}

std::map<CClavePiezas, CPiezas> ReunePiezas(std::span<const CPoligonoDibujado> dibujos,
                                            ClaseTopologia que)
{
    std::map<CClavePiezas, CPiezas> piezas;
    for (const CPoligonoDibujado& dibujo : dibujos)
        Reune(dibujo.Topologia(que).recintos, piezas);
    return piezas;
}

CString NombreDePieza(const CRecintoDibujado& recinto, ClaseTopologia que)
{
    const CString nombre = Formatea("la parcela %d", recinto.parcela);
    return que == ClaseTopologia::Subparcelas ? "la letra " + recinto.letra + " de " + nombre
                                              : nombre;
}
