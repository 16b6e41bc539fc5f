#include "evidence/gis/writing/contradictions.h"

#include "platform/ansi.h"
#include "vexa_libs/ccadena.h"

namespace {

/// Tells whether label and fields are those that the driver shows of an outline.
bool EsComoSeLee(const CRecintoEntrante& recinto, const CDibujoAntes::CRegistro& antes,
                 const CDibujoAntes& dibujo)
{
    if (!EsElMismoRotulo(recinto, antes.dibujado))
        return false;
    switch (recinto.clase) {
    case ClaseTopologia::Parcelas:
        return recinto.parcela.value_or(-1) == antes.dibujado.parcela;
    case ClaseTopologia::Subparcelas:
        // Which parcel it lies in depends on the tables.
        return (!recinto.letra || SeVenIgual(*recinto.letra, antes.dibujado.letra)) &&
               (!recinto.parcela || *recinto.parcela == antes.dibujado.parcela ||
                dibujo.CaeEnParcela(antes.dibujado.punto, *recinto.parcela));
    case ClaseTopologia::Poligonos:
        return recinto.de.poligono == LeeEntero(recinto.de.entrada);
    case ClaseTopologia::Hojas:
        return true;
    }
    return true;
}

} // namespace

void AvisaContradiccion(const CModoDibujo& modo, const char* clase, const CString& frase,
                        const char* numeros, const char* rotulos)
{
    if (modo.ganan == Ganan::Nadie)
        modo.noticias->Falla(clase, frase + ". Vale uno de los dos con la opción GANAN=NUMEROS o "
                                            "GANAN=ROTULOS"_ansi);
    else
        modo.noticias->Advierte(clase, frase + ": vale " +
                                           (modo.ganan == Ganan::Numeros ? numeros : rotulos));
}

bool Resuelve(CRecintoEntrante& recinto, const CPareja& pareja, const CDibujoAntes& antes,
              const CModoDibujo& modo)
{
    if (recinto.contradiccion.IsEmpty() ||
        (pareja.mismoContorno && EsComoSeLee(recinto, *pareja.antes, antes)))
        return true;
    AvisaContradiccion(modo, "recintos cuyos campos se contradicen",
                       recinto.nombre + ": " + recinto.contradiccion, "el campo", "el rótulo"_ansi);
    if (modo.ganan != Ganan::Numeros)
        return modo.ganan == Ganan::Rotulos;
    recinto.rotulo = recinto.porNumeros;
    if (EstadoPorRotulo(recinto.clase, recinto.Codigo(), recinto.Borrado()) !=
        EstadoRecinto::Valido) {
        recinto.borrado = false;
        recinto.codigo.reset();
        recinto.codigo = recinto.Codigo();
    }
    return true;
}
