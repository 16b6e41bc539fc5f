#include "platform/files/fault_point.h"

// Alone in its file, so that a test's own takes its place when the program is linked.

namespace sistema {

int Tropiezo(Llamada /*llamada*/)
{
    return 0;
}

} // namespace sistema
