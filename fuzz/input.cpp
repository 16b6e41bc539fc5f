#include "fuzz/input.h"

#include <algorithm>

namespace {

/// What a character of the head counts: nothing up to the blank, then on from 1.
int Cuenta(char c)
{
    return std::max(static_cast<unsigned char>(c) - ' ', 0);
}

/// The same, so that the last calls of a run can be told, too: the far ones by twos.
int CuentaLejos(char c)
{
    constexpr int kCerca = 64;
    const int n = Cuenta(c);
    return n + std::max(n - kCerca, 0);
}

} // namespace

std::vector<std::string_view> Trocea(std::string_view cuerpo)
{
    std::vector<std::string_view> trozos;
    for (auto fin = cuerpo.find(kCorte); fin != std::string_view::npos; fin = cuerpo.find(kCorte)) {
        trozos.push_back(cuerpo.substr(0, fin));
        cuerpo.remove_prefix(fin + kCorte.size());
    }
    trozos.push_back(cuerpo);
    return trozos;
}

CEntrada::CEntrada(std::string_view bytes)
{
    if (bytes.size() < kBytesCabecera)
        return;
    m_opciones = static_cast<unsigned char>(bytes[0]);
    m_fallo = CuentaLejos(bytes[1]);
    m_parada = Cuenta(bytes[2]);
    m_trozos = Trocea(bytes.substr(kBytesCabecera));
}
