#include "evidence/report/writing/csv.h"

#include "evidence/report/reading/text.h"
#include "evidence/units.h"

namespace informe {
namespace {

/// A coordinate in metres, without points in the thousands: a sheet reads it as a number.
std::string Metros(int unidades)
{
    std::string texto = Fijo(EnMetros(unidades));
    texto[texto.find('.')] = ',';
    return texto;
}

std::string Clase(const CAviso& aviso)
{
    if (aviso.mensaje == nullptr)
        return "otra línea";
    return EsWarning(*aviso.mensaje) ? "warning" : "error";
}

std::string Fila(const CAviso& aviso, const CString& texto, const CLugaresDeAvisos* lugares)
{
    const auto sitio = lugares == nullptr ? std::nullopt : lugares->De(aviso);
    std::string fila = std::to_string(aviso.linea);
    for (const std::string& campo :
         {Codigo(aviso), Clase(aviso), Numero(aviso.polig), Numero(aviso.parcela),
          CampoCsv(Texto(aviso.letra)), CampoCsv(TextoSinBlancos(aviso.texto)),
          Numero(aviso.numero), Numero(aviso.superficie), Numero(aviso.suma),
          sitio ? Metros(sitio->X) : "", sitio ? Metros(sitio->Y) : "", CampoCsv(Texto(texto))})
        fila += ";" + campo;
    return fila + "\r\n";
}

} // namespace

void EscribeCsv(const CEscribe& escribe, const CRegistroLeido& registro,
                const CLugaresDeAvisos* lugares)
{
    escribe(kPrincipioMensajes);
    escribe("polígono;parcela;letra;nombre;número;superficie;suma;x;y;"
            "mensaje\r\n");
    registro.RecorreConAvisos(
        [&](const CAviso& aviso, const CString& texto) { escribe(Fila(aviso, texto, lugares)); });
}

std::string CampoCsv(std::string_view utf8)
{
    std::string campo;
    if (!utf8.empty() && std::string_view("=+-@").find(utf8.front()) != std::string_view::npos)
        campo = "'";
    campo += utf8;
    if (campo.find_first_of(";\"\r\n") == std::string::npos)
        return campo;
    std::string entreComillas = "\"";
    for (const char c : campo) {
        if (c == '"')
            entreComillas += '"';
        entreComillas += c;
    }
    return entreComillas + "\"";
}

} // namespace informe
