#include "cadastre/co_holder.h"

#include "cadastre/co_holder_columns.h"
#include "cadastre/column_reader.h"

bool CCotitular::Lee(std::string_view fila, CDatosLinea& datos)
{
    return LeeFila<kColumnasCotitular>(fila, *this, datos);
}
