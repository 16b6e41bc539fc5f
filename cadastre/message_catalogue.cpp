#include "cadastre/message_catalogue.h"

#include "cadastre/wrapping.h"

void Cuenta(const CAvisos& avisos, Contador contador)
{
    if (contador == Contador::Errores)
        avisos.numErrores = Suma(avisos.numErrores, 1);
    else if (contador == Contador::Warnings)
        avisos.numWarnings = Suma(avisos.numWarnings, 1);
}
