#include "platform/files/short_wait.h"

#include <thread>

#include "platform/files/fault_point.h"
#include "platform/system.h"

bool CEspera::Sigue() const
{
    constexpr std::chrono::milliseconds kPoco{10};
    if (sistema::HayQueAcabar())
        throw CInterrumpido();
    if (sistema::Tropiezo(sistema::Llamada::Esperar) != 0 ||
        std::chrono::steady_clock::now() >= m_fin)
        return false;
    std::this_thread::sleep_for(kPoco);
    return true;
}
