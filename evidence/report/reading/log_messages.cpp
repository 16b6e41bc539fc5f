#include "evidence/report/reading/log_messages.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "evidence/report/reading/text.h"
#include "platform/files/cstdio_file.h"

namespace informe {
namespace {

/// All of the standard input. Raises CFileException where it can't be read to its end.
std::string Recibe()
{
    std::string todo;
    std::array<char, std::size_t{1} << 16U> bufer{};
    for (std::size_t leidos = 1; leidos > 0;) {
        leidos = std::fread(bufer.data(), 1, bufer.size(), stdin);
        todo.append(bufer.data(), leidos);
    }
    if (std::ferror(stdin) != 0)
        throw CFileException(kEstandar, std::make_error_code(std::errc::io_error), true);
    return todo;
}

/// The lines of a text, as those of a file are read.
void RecorreTexto(std::string_view texto, const std::function<void(const CString& texto)>& toma)
{
    while (!texto.empty()) {
        const std::size_t fin = std::min(texto.find('\n'), texto.size());
        std::string_view una = texto.substr(0, fin);
        if (una.ends_with('\r'))
            una.remove_suffix(1);
        toma(CString(una));
        texto.remove_prefix(std::min(fin + 1, texto.size()));
    }
}

} // namespace

std::int64_t CRegistroLeido::Cuenta(const CMensaje* mensaje) const
{
    const auto suya = m_cuentas.find(mensaje);
    return suya == m_cuentas.end() ? 0 : suya->second;
}

/// As the run counts: it takes E214, which raises no counter of its own, among the errors.
std::int64_t CRegistroLeido::Errores() const
{
    return Suma(Contador::Errores) + Cuenta(kSinNumImputa);
}

std::int64_t CRegistroLeido::Suma(Contador contador) const
{
    std::int64_t suma = 0;
    for (const auto& [mensaje, cuantos] : m_cuentas)
        if (mensaje != nullptr && mensaje->contador == contador)
            suma += cuantos;
    return suma;
}

CRegistroLeido::CRegistroLeido(const CString& nombre) : m_nombre(nombre)
{
    if (nombre == kEstandar)
        m_recibido = Recibe();
    Recorre([&](const CString& texto) {
        CAviso& aviso = avisos.emplace_back(LeeMensaje(texto));
        aviso.linea = static_cast<std::uint32_t>(avisos.size());
        ++m_cuentas[aviso.mensaje];
    });
}

void CRegistroLeido::Recorre(const std::function<void(const CString& texto)>& toma) const
{
    if (m_recibido)
        return RecorreTexto(*m_recibido, toma);
    if (m_nombre.IsEmpty())
        return;
    CStdioFile fichero;
    if (CFileException fallo; !fichero.Open(m_nombre, CFile::modeRead, &fallo))
        throw CFileException(m_nombre, fallo.m_causa, true);
    for (CString texto; fichero.ReadString(texto);)
        toma(texto);
}

void CRegistroLeido::RecorreConAvisos(
    const std::function<void(const CAviso& aviso, const CString& texto)>& toma) const
{
    auto aviso = avisos.begin();
    Recorre([&](const CString& texto) {
        if (aviso != avisos.end())
            toma(*aviso++, texto);
    });
}

std::string Enunciado(const CMensaje& mensaje)
{
    std::string_view texto = mensaje.texto;
    texto.remove_prefix(std::min(texto.find(": ") + 2, texto.size()));
    std::string enunciado;
    while (!texto.empty() && texto.front() != '\n') {
        if (texto.front() == '%') {
            AnalizaForma(texto);
            enunciado += "…";
        } else {
            enunciado += Texto(texto.substr(0, 1));
            texto.remove_prefix(1);
        }
    }
    return enunciado;
}

std::string Codigo(const CAviso& aviso)
{
    return aviso.mensaje == nullptr ? "-" : std::string(CodigoMensaje(*aviso.mensaje));
}

std::string Numero(int numero)
{
    return numero == CAviso::kNada ? "" : std::to_string(numero);
}

bool EsWarning(const CMensaje& mensaje)
{
    return mensaje.contador == Contador::Warnings;
}

} // namespace informe
