#include "evidence/gis/writing/drawing_review.h"

#include <algorithm>
#include <set>

#include "evidence/outline_pieces.h"
#include "platform/ansi.h"
#include "vexa_libs/ring.h"

namespace {

constexpr ClaseTopologia kClases[] = {ClaseTopologia::Parcelas, ClaseTopologia::Subparcelas};

/// Tells what the way back will lose of each parcel, or letter, that stands in several outlines, if
/// one of these is new.
bool PermitePiezas(const CPoligonoDibujado& poligono, ClaseTopologia que,
                   const std::vector<CRecintoRevisado>& revisados, const CModoDibujo& modo)
{
    const std::vector<CRecintoDibujado>& recintos = poligono.Topologia(que).recintos;
    const auto piezas = ReunePiezas(recintos);
    std::set<CClavePiezas> conNuevas;
    for (std::size_t i = 0; i < recintos.size(); ++i)
        if (revisados[i].nuevoContorno || revisados[i].nuevoRotulo)
            conNuevas.insert(ClaveDePieza(recintos[i]));
    bool permitidas = true;
    for (const CRecintoDibujado& recinto : recintos) {
        const bool ultima = recinto.piezas > 1 && recinto.pieza == recinto.piezas;
        if (!recinto.EsDeParcela() || !ultima || !conNuevas.contains(ClaveDePieza(recinto)))
            continue;
        const double perdida = piezas.at(ClaveDePieza(recinto)).AreaPerdida();
        const CString frase =
            Formatea("%s del polígono %s está en %d recintos: la vuelta toma el último, de %.2lf "
                     "m2, y pierde %.2lf m2 de los otros"_ansi,
                     NombreDePieza(recinto, que), poligono.entrada, recinto.piezas,
                     recinto.areaRegistro, perdida);
        constexpr const char* kClase = "parcelas o letras en varios recintos"_ansi;
        if (modo.admitePiezas)
            modo.noticias->Advierte(kClase, frase, perdida);
        else
            modo.noticias->Falla(kClase, frase + ". Con la opción PIEZAS=SI se escribe así"_ansi);
        permitidas = permitidas && modo.admitePiezas;
    }
    return permitidas;
}

/// Tells of subparcels whose fields name another parcel than the one that they lie in: no label
/// says that, so it has no effect.
void AvisaDeOtraParcela(const CPoligonoDibujado& poligono,
                        const std::vector<CRecintoRevisado>& revisados, CNoticias& noticias)
{
    const std::vector<CRecintoDibujado>& recintos = poligono.subparcelas.recintos;
    for (std::size_t i = 0; i < recintos.size(); ++i) {
        const CRecintoRevisado& suyo = revisados[i];
        if (!suyo.nombre.IsEmpty() && (suyo.nuevoContorno || suyo.nuevoRotulo) &&
            suyo.parcelaDicha && recintos[i].EsDeParcela() &&
            recintos[i].parcela != *suyo.parcelaDicha)
            noticias.Apunta("subparcelas que caen en otra parcela que la que dicen"_ansi,
                            suyo.nombre);
    }
}

/// Tells of new parcels that lie in no outline of their polygon: Infograf asks that outline for the
/// polygon's number, and gets no record of them.
void AvisaDeFuera(const CPoligonoDibujado& poligono, const std::vector<CRecintoRevisado>& revisados,
                  CNoticias& noticias)
{
    const std::vector<CRecintoDibujado>& suyos = poligono.poligonos.recintos;
    for (std::size_t i = 0; i < revisados.size() && !suyos.empty(); ++i) {
        const CRecintoDibujado& parcela = poligono.parcelas.recintos[i];
        const bool dentro = std::ranges::any_of(suyos, [&](const CRecintoDibujado& suyo) {
            return vexageo::Situa(suyo.contorno, parcela.punto) != vexageo::Lugar::Fuera;
        });
        if (revisados[i].nuevoContorno && parcela.EsDeParcela() && !dentro)
            noticias.Apunta("parcelas que caen fuera del contorno de su polígono (capa poligonos), "
                            "así que no pasan a Infograf"_ansi,
                            revisados[i].nombre);
    }
}

} // namespace

bool RevisaDibujo(CPoligonoDibujado poligono, CRevisados revisados, const CModoDibujo& modo)
{
    Relaciona(poligono, {});
    bool bien = true;
    for (const ClaseTopologia que : kClases)
        AvisaSolapes(poligono.Topologia(que), que, revisados[que], poligono.entrada,
                     *modo.noticias);
    for (const ClaseTopologia que : kClases)
        bien = PermitePiezas(poligono, que, revisados[que], modo) && bien;
    AvisaDeFuera(poligono, revisados[ClaseTopologia::Parcelas], *modo.noticias);
    AvisaDeOtraParcela(poligono, revisados[ClaseTopologia::Subparcelas], *modo.noticias);
    return bien;
}
