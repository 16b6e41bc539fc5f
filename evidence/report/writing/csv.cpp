#include "evidence/report/writing/csv.h"

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/escapes.h"
#include "evidence/report/writing/output_file.h"
#include "platform/format.h"

namespace informe {
namespace {

constexpr std::string_view kMarca = "\xEF\xBB\xBF";

std::string Numero(int numero)
{
    return numero == CAviso::kNada ? "" : std::to_string(numero);
}

/// Hundredths of a metre as metres, without points in the thousands: a sheet reads it as a number.
std::string Metros(int centesimas)
{
    constexpr double kMetro = 0.01;
    std::string texto;
    AnexaFormato(texto, "%.2lf", {centesimas * kMetro});
    texto[texto.find('.')] = ',';
    return texto;
}

std::string Clase(const CAviso& aviso)
{
    if (aviso.mensaje == nullptr)
        return "otra línea";
    return EsWarning(*aviso.mensaje) ? "warning" : "error";
}

std::string Fila(const CAviso& aviso, const CString& texto, const CSitios* sitios)
{
    const auto sitio = sitios == nullptr ? std::nullopt : sitios->De(aviso);
    std::string fila = std::to_string(aviso.linea);
    for (const std::string& campo :
         {Codigo(aviso), Clase(aviso), Numero(aviso.polig), Numero(aviso.parcela),
          CampoCsv(Texto(aviso.letra)), CampoCsv(SinBlancos(Texto(aviso.texto))),
          Numero(aviso.numero), Numero(aviso.superficie), Numero(aviso.suma),
          sitio ? Metros(sitio->X) : "", sitio ? Metros(sitio->Y) : "", CampoCsv(Texto(texto))})
        fila += ";" + campo;
    return fila + "\r\n";
}

} // namespace

void EscribeCsv(const CString& nombre, const CRegistroLeido& registro,
                const CString& ficheroRegistro, const CSitios* sitios)
{
    CSalida salida(nombre);
    salida.Escribe(kMarca);
    salida.Escribe("línea;código;clase;polígono;parcela;letra;nombre;número;superficie;suma;x;y;"
                   "mensaje\r\n");
    auto aviso = registro.avisos.begin();
    RecorreRegistro(ficheroRegistro, [&](std::uint32_t /*linea*/, const CString& texto) {
        if (aviso != registro.avisos.end())
            salida.Escribe(Fila(*aviso++, texto, sitios));
    });
    salida.Cierra();
}

} // namespace informe
