#include <algorithm>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/change_texts.h"
#include "evidence/report/writing/page_content.h"
#include "evidence/report/writing/page_parts.h"

namespace informe {
namespace {

const char* NombreCorto(Sentido sentido)
{
    constexpr const char* kNombres[] = {"", "ida, ", "vuelta, ", "a Infograf, "};
    return kNombres[static_cast<std::size_t>(sentido)];
}

std::string Renglon(std::string_view codigo, std::int64_t cuantos, const std::string& que)
{
    return Formatea("  %s %9s  %s\n", codigo, Miles(cuantos), que);
}

std::string Mensajes(const CProceso& proceso)
{
    if (proceso.ficheros.sentido != Sentido::Infograf)
        return Cuantos(proceso.registro.Errores(), "error", "errores") + ", " +
               Cuantos(proceso.registro.Warnings(), "warning", "warnings");
    const CEvidenciaInfograf& infograf = proceso.infograf;
    const auto& [parcelas, poligonos, subparcelas] = infograf.clases;
    return Cuantos(parcelas.registros, "parcela", "parcelas") + ", " +
           Cuantos(poligonos.registros, "polígono", "polígonos") + ", " +
           Cuantos(subparcelas.registros, "subparcela", "subparcelas") + ", " +
           Miles(infograf.sinPadre.size()) + " sin padre";
}

/// How many parts of the balance nothing can be said of, where there are some.
std::string CuantasSinComprobar(const CBalance& balance)
{
    const auto cuantas = std::ranges::count_if(
        balance.partidas, [](const CPartida& partida) { return !partida.SePuedeDecir(); });
    return cuantas == 0 ? std::string()
                        : ", " + Cuantos(cuantas, "partida", "partidas") + " sin comprobar";
}

/// What no message of the run says of its records: those that it lost, and what is wrong with those
/// that are there.
std::string LoPerdido(const CBalance& balance)
{
    std::string texto;
    for (const CPartida& partida : balance.partidas) {
        const std::string suyo = std::string("  ") + partida.Titulo() + ": ";
        for (const CPartida::CRenglon& renglon : partida.sale)
            if (renglon.EsPerdida())
                texto += suyo + Miles(renglon.cuantos) + " " + renglon.texto + "\n";
        if (!partida.reparo.empty())
            texto += suyo + partida.reparo + "\n";
    }
    return texto;
}

/// What was lost of the surface, where something was.
std::string EnBreve(const CContenido& contenido)
{
    std::string texto;
    for (const CContenido::CPerdida& perdida : contenido.Perdidas())
        if (perdida.metros > 0)
            texto += Superficie(perdida.metros) + " " + perdida.que + ", ";
    return texto;
}

} // namespace

std::vector<CContenido::CPerdida> CContenido::Perdidas() const
{
    if (!dibujo || !dibujo->HayEscritas())
        return {};
    const auto perdida = [](const CPerdidas& suyas, const char* que, const char* cuyas) {
        return CPerdida{SumaMetros(suyas),
                        que + Cuantos(suyas.size(), "parcela", "parcelas") + cuyas};
    };
    std::vector<CPerdida> perdidas;
    perdidas.push_back(dibujo->perdidas.empty()
                           ? CPerdida{0, "perdidos en varios recintos"}
                           : perdida(dibujo->perdidas, "no cuentan, en ", " de varios recintos"));
    if (const CPerdidas deTabla = dibujo->DeTablaSinEscribir(); SumaMetros(deTabla) > 0)
        perdidas.push_back(perdida(deTabla, "no se escriben, de ", " de la tabla"));
    if (const CPerdidas delDibujo = dibujo->DelDibujoSolo(); SumaMetros(delDibujo) > 0)
        perdidas.push_back(perdida(delDibujo, "no se escriben, de ", " sin fila en la tabla"));
    return perdidas;
}

CCifras CContenido::Cifras() const
{
    const auto conLetra = [&](char letra) {
        return std::ranges::count_if(proceso.registro.avisos, [&](const CAviso& aviso) {
            return Codigo(aviso).front() == letra;
        });
    };
    CCifras cifras;
    cifras.alarma = proceso.Alarma();
    cifras.sinComprobar = proceso.SinComprobar();
    cifras.sinExplicar = SinExplicar();
    cifras.incompleto = Incompleto();
    cifras.hayPerdidas = HayPerdidas();
    if (proceso.ficheros.sentido == Sentido::Infograf) {
        cifras.sinPadre = static_cast<std::int64_t>(proceso.infograf.sinPadre.size());
        return cifras;
    }
    cifras.errores = proceso.registro.Errores();
    cifras.warnings = proceso.registro.Warnings();
    cifras.lineasE = conLetra('E');
    cifras.lineasW = conLetra('W');
    if (!dibujo || !dibujo->HayEscritas())
        return cifras;
    CPerdidas perdidas = dibujo->DeTablaSinEscribir();
    perdidas.merge(dibujo->DelDibujoSolo());
    for (const auto& [parcela, metros] : dibujo->perdidas)
        perdidas[parcela] += metros;
    cifras.perdida = SumaMetros(perdidas);
    cifras.parcelas =
        std::ranges::count_if(perdidas, [](const auto& una) { return una.second > 0; });
    return cifras;
}

std::string CContenido::Incompleto() const
{
    constexpr std::size_t kComoMucho = 3;
    std::vector<std::string> suyos;
    if (dibujo)
        for (const CPoligonoRoto& roto : dibujo->rotos)
            suyos.push_back(Texto(roto.entrada) + ", " + roto.que);
    for (const CEvidenciaInfograf::CFaltan& falta : proceso.infograf.faltan)
        if (!falta.entrada.IsEmpty()) // sheets are left out on purpose, too
            suyos.push_back(Texto(falta.entrada) + ", " + falta.que);
    std::string texto;
    for (const std::string& suyo : Primeros(suyos, kComoMucho))
        texto += (texto.empty() ? "Dibujos que no están enteros: " : "; ") + suyo;
    if (suyos.size() > kComoMucho)
        texto += "; y " + Miles(suyos.size() - kComoMucho) + " más";
    return texto + (texto.empty() ? "" : ".");
}

bool CContenido::HayPerdidas() const
{
    const std::vector<CPerdida> perdidas = Perdidas();
    const CBalance& balance = proceso.balance;
    const bool conReparo = std::ranges::any_of(
        balance.partidas, [](const CPartida& partida) { return !partida.reparo.empty(); });
    return !Incompleto().empty() || conReparo || balance.HayPerdidas() || SinExplicar() > 0 ||
           !proceso.Alarma().empty() || !proceso.SinComprobar().empty() ||
           !proceso.observado.empty() || !proceso.infograf.sinPadre.empty() ||
           std::ranges::any_of(perdidas,
                               [](const CPerdida& perdida) { return perdida.metros > 0; });
}

std::string Resumen(const CContenido& contenido, const CString& pagina)
{
    const CRegistroLeido& registro = contenido.proceso.registro;
    std::string texto = Texto(contenido.proceso.ficheros.registro) + ": " +
                        NombreCorto(contenido.proceso.ficheros.sentido) + EnBreve(contenido) +
                        Mensajes(contenido.proceso) + ", " +
                        Cuantos(contenido.asuntos.cuantos, "asunto", "asuntos") + ", " +
                        Miles(contenido.SinExplicar()) + " sin explicar" +
                        CuantasSinComprobar(contenido.proceso.balance) + "\n";
    for (const CMensaje& mensaje : Catalogo())
        if (const std::int64_t cuantos = registro.Cuenta(mensaje.numero); cuantos > 0)
            texto += Renglon(CodigoMensaje(mensaje), cuantos, Enunciado(mensaje));
    if (registro.Ajenas() > 0)
        texto += Renglon("-   ", registro.Ajenas(), "líneas que no son ningún mensaje");
    texto += LoPerdido(contenido.proceso.balance);
    for (const std::string& frase :
         {contenido.proceso.Alarma(), contenido.proceso.SinComprobar(), contenido.Incompleto()})
        if (!frase.empty())
            texto += "  " + frase + "\n";
    for (const std::string& frase : contenido.proceso.observado)
        texto += "  " + frase + "\n";
    if (contenido.contraste != nullptr)
        texto += "  Cambios contra " + Texto(contenido.contraste->antes.nombre) + ": " +
                 CambiosEnBreve(*contenido.contraste) + "\n";
    return texto + "  Informe en " + Texto(pagina) + "\n";
}

std::string Resumen(const CContraste& contraste, const CString& pagina)
{
    return Texto(contraste.ahora.nombre) + ": " + CambiosEnBreve(contraste) + ", contra " +
           Texto(contraste.antes.nombre) + "\n" +
           (pagina.IsEmpty() ? std::string() : "  Informe en " + Texto(pagina) + "\n");
}

} // namespace informe
