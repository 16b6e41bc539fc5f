#include "evidence/report/reading/log_messages.h"

#include <utility>

#include "evidence/report/reading/text.h"
#include "platform/files/cstdio_file.h"

namespace informe {

std::int64_t CRegistroLeido::Cuenta(Mensaje mensaje) const
{
    const auto suya = m_cuentas.find(&DameMensaje(mensaje));
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
        if (mensaje->contador == contador)
            suma += cuantos;
    return suma;
}

void CRegistroLeido::Añade(CAviso aviso)
{
    if (aviso.mensaje == nullptr)
        ++m_ajenas;
    else
        ++m_cuentas[aviso.mensaje];
    avisos.push_back(std::move(aviso));
}

void RecorreRegistro(const CString& nombre,
                     const std::function<void(std::uint32_t linea, const CString& texto)>& toma)
{
    CStdioFile fichero;
    if (CFileException fallo; !fichero.Open(nombre, CFile::modeRead, &fallo))
        throw CFileException(nombre, fallo.m_causa, true);
    CString texto;
    for (std::uint32_t linea = 1; fichero.ReadString(texto); ++linea)
        toma(linea, texto);
}

CRegistroLeido LeeRegistro(const CString& nombre)
{
    CRegistroLeido registro;
    RecorreRegistro(nombre, [&](std::uint32_t linea, const CString& texto) {
        CAviso aviso = LeeMensaje(texto);
        aviso.linea = linea;
        registro.Añade(std::move(aviso));
    });
    return registro;
}

void RecorreConAvisos(const CRegistroLeido& registro, const CString& nombre,
                      const std::function<void(const CAviso& aviso, const CString& texto)>& toma)
{
    auto aviso = registro.avisos.begin();
    RecorreRegistro(nombre, [&](std::uint32_t /*linea*/, const CString& texto) {
        if (aviso != registro.avisos.end())
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
