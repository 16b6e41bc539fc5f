#include "evidence/gis/writing/contradictions.h"

#include "platform/ansi.h"

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
