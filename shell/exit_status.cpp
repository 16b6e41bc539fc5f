#include "shell/exit_status.h"

#include "platform/cwinapp.h"
#include "shell/command_line.h"

int EstadoSalida(const CWinApp& aplicacion)
{
    if (aplicacion.Interrumpida())
        return estado::kHuboError;
    const CGuionMandatos guion = aplicacion.Frontal().Guion();
    const Ruta ruta = EligeRuta(ParteMandato(aplicacion.m_lpCmdLine));
    const bool dialogos = ruta == Ruta::Dialogos;
    if (dialogos && !guion.hay)
        return estado::kHecho;
    if (ruta == Ruta::Ninguna || (dialogos && guion.leidos == 0))
        return estado::kNadaPedido;
    if (aplicacion.HuboParada())
        return estado::kDetenido;
    return aplicacion.HuboCajaDeError() || guion.fallidos > 0 ? estado::kHuboError : estado::kHecho;
}
