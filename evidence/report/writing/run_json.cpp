#include "evidence/report/writing/run_json.h"

#include <array>
#include <ctime>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/json_values.h"
#include "evidence/units.h"

namespace informe {
namespace {

// Of what is written: another one where a program that reads it may err.
constexpr int kFormaInforme = 3;

const char* NombreSentido(const CProceso& proceso)
{
    constexpr const char* kNombres[] = {"sin identificar", "ida", "vuelta", "infograf"};
    return kNombres[static_cast<std::size_t>(proceso.ficheros.sentido)];
}

CValor Fichero(const CFicheroVisto& visto)
{
    return {{"papel", visto.papel},
            {"nombre", Texto(visto.nombre)},
            {"escrito", visto.salida},
            {"hay", visto.hay},
            {"viejo", visto.viejo},
            {"bytes", visto.hay ? CValor(visto.largo) : CValor()},
            {"fecha", visto.fecha ? CValor(HoraUtc(*visto.fecha)) : CValor()},
            {"crc32", visto.hay ? CValor(Hexadecimal(visto.crc)) : CValor()}};
}

CValor Mensajes(const CRegistroLeido& registro)
{
    CValor porNumero = CValor::array();
    for (const CMensaje& mensaje : Catalogo())
        if (const std::int64_t cuantos = registro.Cuenta(mensaje.numero); cuantos > 0)
            porNumero.push_back({{"codigo", CodigoMensaje(mensaje)},
                                 {"clase", EsWarning(mensaje) ? "warning" : "error"},
                                 {"cuantos", cuantos},
                                 {"enunciado", Enunciado(mensaje)}});
    return {{"errores", registro.Errores()},
            {"warnings", registro.Warnings()},
            {"ajenas", registro.Ajenas()},
            {"porNumero", std::move(porNumero)}};
}

CValor Parte(const CPartida& partida)
{
    const auto renglon = [](const CPartida::CRenglon& uno) -> CValor {
        return {{"texto", uno.texto}, {"cuantos", uno.cuantos}, {"sinMensaje", uno.callado}};
    };
    return {{"que", partida.Titulo()},
            {"entra", Lista(partida.entra, renglon)},
            {"sale", Lista(partida.sale, renglon)},
            {"sinExplicar", partida.SinExplicar()},
            {"ejemplos", partida.ejemplos},
            {"reparo", SiHay(partida.reparo)},
            {"noSePuede", SiHay(partida.noSePuede)}};
}

/// Parcels with square metres, in their order.
CValor Metros(const auto& metros)
{
    return Lista(metros, [](const auto& una) -> CValor {
        return {{"poligono", una.first.first}, {"parcela", una.first.second}, {"m2", una.second}};
    });
}

/// The surfaces of a way back that can be compared.
CValor Superficies(const CContenido& contenido)
{
    if (!contenido.dibujo || !contenido.dibujo->HayEscritas())
        return {};
    const CBalanceDibujo& dibujo = *contenido.dibujo;
    const auto parcela = [](const CDesajuste& uno) -> CValor {
        return {{"poligono", uno.polig},      {"parcela", uno.parcela}, {"recintos", uno.recintos},
                {"dibujada", uno.dibujada},   {"escrita", uno.escrita}, {"perdida", uno.Perdida()},
                {"motivo", SiHay(uno.motivo)}};
    };
    return {{"unidad", "m2"},
            {"parcelas", dibujo.comparadas},
            {"dibujada", dibujo.dibujada},
            {"escrita", dibujo.escrita},
            {"perdida", dibujo.Perdida()},
            {"parcelasQuePierden", Metros(dibujo.perdidas)},
            {"difieren", Lista(dibujo.desajustes, parcela)},
            {"dibujadasSinEscribir", Metros(dibujo.sinEscribir)},
            {"deTablaSinEscribir", Metros(dibujo.DeTablaSinEscribir())}};
}

CValor Dibujos(const CContenido& contenido)
{
    if (!contenido.dibujo)
        return {};
    const CBalanceDibujo& dibujo = *contenido.dibujo;
    return {{"poligonos", dibujo.poligonos},
            {"recintosDeParcela", dibujo.recintosParcela},
            {"recintosDeSubparcela", dibujo.recintosSubparcela},
            {"incompletos", Lista(dibujo.rotos,
                                  [](const CPoligonoRoto& uno) -> CValor {
                                      return {{"entrada", Texto(uno.entrada)}, {"que", uno.que}};
                                  })},
            {"sinMensaje", Lista(dibujo.hallazgos, [](const CHallazgo& uno) -> CValor {
                 return {{"poligono", uno.polig},
                         {"donde", uno.donde},
                         {"que", uno.que},
                         {"x", EnMetros(uno.sitio.X)},
                         {"y", EnMetros(uno.sitio.Y)}};
             })}};
}

CValor Infograf(const CProceso& proceso)
{
    if (proceso.ficheros.sentido != Sentido::Infograf)
        return {};
    constexpr const char* kNombres[] = {"parcelas", "poligonos", "subparcelas"};
    CValor clases;
    for (std::size_t i = 0; i < proceso.infograf.clases.size(); ++i) {
        const CEvidenciaInfograf::CClase& clase = proceso.infograf.clases[i];
        clases[kNombres[i]] = {{"recintos", clase.recintos},
                               {"sinPadre", clase.huerfanos},
                               {"registros", clase.registros},
                               {"dibujada", EnMetrosCuadrados(clase.dibujada)},
                               {"escrita", EnMetrosCuadrados(clase.escrita)}};
    }
    const auto sinPadre = [](const CEvidenciaInfograf::CSinPadre& uno) -> CValor {
        return {{"entrada", Texto(uno.entrada)},
                {"que", uno.que},
                {"porque", uno.porque},
                {"x", EnMetros(uno.sitio.X)},
                {"y", EnMetros(uno.sitio.Y)}};
    };
    const auto falta = [](const CEvidenciaInfograf::CFaltan& uno) -> CValor {
        return {{"entrada", SiHay(Texto(uno.entrada))}, {"que", uno.que}};
    };
    return {{"clases", std::move(clases)},
            {"sinPadre", Lista(proceso.infograf.sinPadre, sinPadre)},
            {"faltan", Lista(proceso.infograf.faltan, falta)}};
}

CValor Asunto(const CAsunto& asunto)
{
    CValor codigos = CValor::object();
    for (const auto& [mensaje, cuantos] : asunto.cuentas)
        codigos[std::string(CodigoMensaje(*mensaje))] = cuantos;
    return {{"titulo", asunto.titulo},
            {"m2", asunto.coste.metros},
            {"registros", asunto.coste.registros},
            {"mensajes", asunto.mensajes},
            {"errores", asunto.errores},
            {"codigos", std::move(codigos)},
            {"poligono", SiHay(asunto.polig)},
            {"parcela", SiHay(asunto.parcela)},
            {"parcelas", Metros(asunto.parcelas)}};
}

} // namespace

const bool kHayJson = true;

CValor Programa(const CFirma& firma)
{
    return {{"nombre", "campiva-informe"}, {"version", firma.version}};
}

std::string EnTexto(const CValor& todo)
{
    constexpr int kSangria = 1;
    return todo.dump(kSangria, ' ', false, CValor::error_handler_t::replace) + "\n";
}

std::string HoraUtc(std::time_t hora)
{
    std::array<char, 32> bufer{};
    const std::tm* const partes = std::gmtime(&hora);
    if (partes != nullptr)
        std::strftime(bufer.data(), bufer.size(), "%Y-%m-%dT%H:%M:%SZ", partes);
    return bufer.data();
}

std::string ProcesoEnJson(const CContenido& contenido)
{
    const CProceso& proceso = contenido.proceso;
    std::vector<std::string> notas = proceso.observado;
    notas.insert(notas.end(), proceso.balance.notas.begin(), proceso.balance.notas.end());
    const CValor todo = {{"forma", kFormaInforme},
                         {"programa", Programa(contenido.firma)},
                         {"hecho", HoraUtc(contenido.firma.hecho)},
                         {"proceso",
                          {{"nombre", Texto(proceso.ficheros.base)},
                           {"sentido", NombreSentido(proceso)},
                           {"alarma", SiHay(proceso.Alarma())},
                           {"notas", notas}}},
                         {"ficheros", Lista(proceso.vistos, Fichero)},
                         {"mensajes", Mensajes(proceso.registro)},
                         {"balance", Lista(proceso.balance.partidas, Parte)},
                         {"superficies", Superficies(contenido)},
                         {"dibujos", Dibujos(contenido)},
                         {"infograf", Infograf(proceso)},
                         {"asuntos",
                          {{"cuantos", contenido.asuntos.cuantos},
                           {"mayores", Lista(contenido.asuntos.mayores, Asunto)}}},
                         {"sinExplicar", contenido.SinExplicar()},
                         {"cambios", contenido.contraste == nullptr
                                         ? CValor()
                                         : CambiosEnValor(*contenido.contraste)}};
    return EnTexto(todo);
}

std::string CambiosEnJson(const CContenidoCambios& contenido)
{
    CValor todo = {{"forma", kFormaInforme},
                   {"programa", Programa(contenido.firma)},
                   {"hecho", HoraUtc(contenido.firma.hecho)}};
    for (const char* deProceso : {"proceso", "ficheros", "mensajes", "balance", "superficies",
                                  "dibujos", "infograf", "asuntos", "sinExplicar"})
        todo[deProceso] = nullptr;
    todo["cambios"] = CambiosEnValor(contenido.contraste);
    return EnTexto(todo);
}

} // namespace informe
