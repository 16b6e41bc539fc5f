#include "evidence/report/writing/page.h"

#include <algorithm>
#include <array>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/escapes.h"
#include "evidence/report/writing/svg_map.h"

namespace informe {
namespace {

const char* NombreSentido(Sentido sentido)
{
    switch (sentido) {
    case Sentido::Ida:
        return "Ida: de Catastro a Vexa";
    case Sentido::Vuelta:
        return "Vuelta: de Vexa a Catastro";
    case Sentido::Ninguno:
        break;
    }
    return "Proceso sin identificar: no se halló ni su entrada ni su lista";
}

std::string Cifra(std::int64_t cuantos, const char* que, const char* clase)
{
    return std::string("<li class=\"") + (cuantos == 0 ? "cero" : clase) + "\"><b>" +
           Miles(cuantos) + "</b> " + que + "</li>\n";
}

std::string Cabecera(const CInforme& informe)
{
    const std::string nombre = Html(Texto(informe.ficheros.base));
    const std::int64_t sinExplicar = informe.SinExplicar();
    std::string html = "<header>\n<p class=\"sobre\">Informe del proceso</p>\n<h1>" + nombre +
                       "</h1>\n<p class=\"sentido\">" + NombreSentido(informe.ficheros.sentido) +
                       "</p>\n<ul class=\"cifras\">\n";
    html += Cifra(informe.registro.Errores(), informe.registro.Errores() == 1 ? "error" : "errores",
                  "err");
    html += Cifra(informe.registro.Warnings(),
                  informe.registro.Warnings() == 1 ? "warning" : "warnings", "avi");
    html += Cifra(informe.asuntos.cuantos, informe.asuntos.cuantos == 1 ? "asunto" : "asuntos", "");
    html += Cifra(sinExplicar, "sin explicar", "err");
    html += "</ul>\n";
    if (informe.Detenido())
        html += "<p class=\"alarma\">El proceso se detuvo, o no llegó a su fin: el registro está, "
                "y lo que debía escribir falta o es más viejo que él.</p>\n";
    html += "<nav><a href=\"#ficheros\">Ficheros</a> <a href=\"#balance\">Balance</a> <a "
            "href=\"#asuntos\">Asuntos</a> <a href=\"#numeros\">Por número</a> <a "
            "href=\"#mensajes\">Mensajes</a>";
    if (!informe.mapas.empty())
        html += " <a href=\"#mapas\">Mapas</a>";
    return html + "</nav>\n</header>\n";
}

std::string Pie(const CInforme& informe)
{
    return "<footer><p class=\"fecha\">Hecho el " + Fecha(informe.hecho) + " por campiva-informe " +
           Html(informe.version) + ".</p></footer>\n";
}

void SeccionMapas(const CInforme& informe, const CEscribe& escribe)
{
    if (informe.mapas.empty())
        return;
    escribe("<section id=\"mapas\">\n<h2>Mapas</h2>\n" + LeyendaSvg());
    for (const CMapaHecho& mapa : informe.mapas) {
        escribe("<article class=\"poligono\"><h3>" + Html(mapa.titulo) + "</h3>\n");
        escribe(mapa.svg);
        escribe("</article>\n");
    }
    escribe("</section>\n");
}

} // namespace

std::string CInforme::Ancla(std::uint32_t posicion) const
{
    return mostradas.contains(posicion) ? "m" + std::to_string(registro.avisos[posicion].linea)
                                        : std::string();
}

std::int64_t CInforme::SinExplicar() const
{
    std::int64_t suma = balance.SinExplicar();
    if (dibujo)
        suma += std::count_if(dibujo->desajustes.begin(), dibujo->desajustes.end(),
                              [](const CDesajuste& uno) { return uno.motivo.empty(); });
    return suma;
}

std::string Fecha(std::time_t fecha)
{
    std::array<char, 32> bufer{};
    const std::tm* const partes = std::localtime(&fecha);
    if (partes == nullptr)
        return "sin fecha";
    std::strftime(bufer.data(), bufer.size(), "%d/%m/%Y %H:%M", partes);
    return bufer.data();
}

std::string YMas(const CInforme& informe, std::int64_t cuantos)
{
    if (cuantos <= 0)
        return {};
    return "<p class=\"nota\">y " + Miles(cuantos) + " más, " +
           (informe.csv.empty() ? std::string("en el registro; --csv los da en una hoja")
                                : "en " + Html(informe.csv)) +
           ".</p>\n";
}

void EscribePagina(const CInforme& informe, const CEscribe& escribe)
{
    escribe(
        "<!DOCTYPE html>\n<html lang=\"es\">\n<head>\n<meta charset=\"utf-8\">\n<meta "
        "name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>Informe de " +
        Html(Texto(informe.ficheros.base)) + "</title>\n<style>\n" + Estilo() +
        "</style>\n</head>\n<body>\n");
    escribe(Cabecera(informe));
    escribe("<main>\n");
    escribe(SeccionFicheros(informe));
    escribe(SeccionBalance(informe));
    escribe(SeccionAsuntos(informe));
    escribe(SeccionNumeros(informe));
    SeccionMapas(informe, escribe);
    SeccionMensajes(informe, escribe);
    escribe("</main>\n" + Pie(informe) + "<script>\n" + Guion() + "</script>\n</body>\n</html>\n");
}

} // namespace informe
