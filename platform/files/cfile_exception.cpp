#include "platform/files/cfile_exception.h"

#include <algorithm>
#include <iterator>

#include "platform/files/system_reasons.h"
#include "platform/layer_texts.h"

// What a failed read or write is told with.

CString CFileException::Causa() const
{
    if (m_causa == AcortadoAlLeer())
        return textos::kTerminaAntes;
    if (m_causa == sistema::kDeOtro)
        return textos::kLoEscribeOtro;
    return RazonDelSistema(m_causa);
}

CString CFileException::Mensaje() const
{
    CString texto;
    texto.Format(m_alLeer ? textos::kNoSeLee : textos::kNoSeEscribe, m_strFileName);
    return texto + Detalle();
}

CString CFileException::Detalle() const
{
    CString lineas = m_causa && !SeVe() ? "\n" + Causa() : CString();
    if (!m_nota.IsEmpty())
        lineas += "\n" + m_nota;
    if (!m_sinDevolver.empty())
        lineas += CString("\n") + textos::kSinDevolver;
    for (const CString& nombre : m_sinDevolver)
        lineas += "\n  " + nombre;
    return lineas;
}

bool CFileException::EsCorriente(const sistema::Error& error)
{
    using std::errc;
    constexpr errc kCorrientes[] = {
        errc::no_such_file_or_directory,
        errc::not_a_directory,
        errc::is_a_directory,
        errc::permission_denied,
        errc::operation_not_permitted,
        errc::read_only_file_system,
        errc::filename_too_long,
        errc::too_many_symbolic_link_levels,
        errc::file_exists,
        errc::no_such_device_or_address,
        errc::no_such_device,
        errc::invalid_argument,
        errc::device_or_resource_busy, // another program has it open and lets nobody else in
    };
    return std::any_of(std::begin(kCorrientes), std::end(kCorrientes),
                       [&](errc corriente) { return error == corriente; });
}

bool CFileException::SeVe() const
{
    return m_causa == std::errc::no_such_file_or_directory ||
           m_causa == std::errc::not_a_directory ||
           (m_causa == std::errc::is_a_directory && !m_alLeer);
}
