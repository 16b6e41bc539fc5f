#include "tools/cadastre_lines.h"

#include "cadastre/column_reader.h"
#include "cadastre/exchange_lines.h"
#include "platform/ansi.h"

namespace sintetico {
namespace {

/// A line that holds its head.
std::string NuevaLinea(const CMunicipioSintetico& municipio, std::string_view tipo)
{
    std::string linea(11, ' ');
    PonEnLinea(linea, kLeeTipo, tipo);
    PonEnLinea(linea, kLeeGer, municipio.Ger);
    PonEnLinea(linea, kLeeMun, municipio.Mun);
    return linea;
}

std::string LineaTitular(const CMunicipioSintetico& m, const CParticipe& participe, int numero)
{
    CTitular titular = m.personas[static_cast<std::size_t>(participe.persona)];
    titular.NumOrden = numero;
    std::string linea = NuevaLinea(m, "TL");
    titular.Compon(linea, kModoCatastro);
    PonEnLinea(linea, kLeePartici, participe.partici);
    return linea;
}

std::string LineaParcela(const CMunicipioSintetico& m, const CParcelaDibujada& parcela)
{
    std::string linea = NuevaLinea(m, "PR");
    parcela.datos.Compon(linea, kModoCatastro);
    PonEnLinea(linea, kLeeNumImputa, m.personas[static_cast<std::size_t>(parcela.numero)].NumOrden);
    PonEnLinea(linea, kLeeTit, parcela.Tit);
    PonEnLinea(linea, kLeeParaje, m.parajes[static_cast<std::size_t>(parcela.paraje)].NumOrden);
    return linea;
}

std::string LineaSubparcela(const CMunicipioSintetico& m, const CParcela& parcela,
                            const CSubparcelaDibujada& sub)
{
    std::string linea = NuevaLinea(m, sub.construccion ? "SC" : "SP");
    PonEnLinea(linea, kLeePolig, parcela.Polig);
    PonEnLinea(linea, kLeeParcela, parcela.Parcela);
    sub.datos.Compon(linea, kModoCatastro);
    return linea;
}

std::string Con(std::string linea, const CLectura& donde, std::string_view valor)
{
    PonEnLinea(linea, donde, valor);
    return linea;
}

// Columns whose fields the faults change: a holder's name and DNI, a surface's ares, a letter.
constexpr CLectura kNombre = {23, 60, 0};
constexpr CLectura kDNI = {84, 8, 0};
constexpr CLectura kNumOrden = {11, 7, 0};
constexpr CLectura kPolig = {13, 3, 0};
constexpr CLectura kParcela = {16, 5, 0};
constexpr CLectura kAreasPR = {26, 2, 0};
constexpr CLectura kLetra = {21, 4, 0};

void EstropeaTitulares(std::vector<std::string>& t)
{
    const std::string octavo = t.at(7);
    const std::string noveno = t.at(8);
    // Same name, other DNI; same DNI, other name; each with a number of its own.
    t.push_back(Con(Con(octavo, kDNI, "99999991"), kNumOrden, "0900001"));
    t.push_back(Con(Con(noveno, kDNI, "99999992"), kNumOrden, "0900002"));
    t.push_back(Con(Con(octavo, kNombre, "OTRA PERSONA CON EL DNI DE OTRO"), kNumOrden, "0900003"));
    t.push_back(Con(Con(noveno, kNombre, "IÑIGO DOBLE IDENTIDAD"_ansi), kNumOrden, "0900004"));
    // The number of another one: it gets a new number and the parcels of that one.
    t.push_back(Con(Con(octavo, kNombre, "VIUDA DE PEÑALVER"_ansi), kDNI, "99999993"));
    // A DNI behind an asterisk, a line that ends in the name, one that ends in the DNI.
    t.push_back(
        Con(Con(Con(noveno, kNombre, "SIN LETRA"), kDNI, "*9999994"), kNumOrden, "0900005"));
    t.push_back(Con(Con(octavo, kNombre, "CORTADA"), kNumOrden, "0900006").substr(0, 30));
    t.push_back(Con(Con(Con(octavo, kNombre, "MEDIO DNI"), kDNI, "9999"), kNumOrden, "0900007")
                    .substr(0, 88));
    // The same person twice under one number: linked once, told the second time.
    t.push_back(t.at(10));
}

void EstropeaParcelas(std::vector<std::string>& p)
{
    const std::string primera = p.at(0);
    p.at(3) = Con(p.at(3), kLeeParaje, "00000"); // no such place; its subparcels lose it too
    p.at(4) = Con(p.at(4), kLeeParaje, "99999");
    p.at(5) = Con(p.at(5), kLeeNumImputa, "0999999"); // no such holder
    p.at(6) = Con(p.at(6), kAreasPR, "99");           // not the sum of its subparcels
    p.at(7) = Con(p.at(7), kAreasPR, "00");
    p.push_back(primera); // repeated
    p.push_back(Con(p.at(1), kAreasPR, "11"));
    p.push_back(Con(primera, kPolig, "000")); // not valid
    p.push_back(Con(primera, kParcela, "00000"));
    p.push_back(Con(primera, kParcela, "90001")); // without subparcels
    p.push_back(Con(Con(primera, kParcela, "90002"), kLeeNumImputa, "0999999"));
    p.push_back(
        Con(primera, kParcela, "90003").substr(0, 60)); // too short to name holder and place
}

void EstropeaSubparcelas(std::vector<std::string>& s)
{
    const std::string primera = s.at(0);
    s.push_back(Con(primera, kParcela, "90004")); // of no parcel
    s.push_back(Con(primera, kPolig, "999"));
    s.push_back(primera.substr(0, 15));        // names no parcel
    s.push_back(primera);                      // repeated letter
    s.push_back(Con(primera, kLeeTipo, "SC")); // a building on land of the same letter
    s.push_back(Con(s.at(20), kLetra, "zz"));  // one more than the parcel's surface holds
}

} // namespace

std::vector<std::string> CLineasCatastro::Todas() const
{
    std::vector<std::string> todas;
    for (const auto* grupo : {&modulos, &titulares, &parcelas, &subparcelas, &parajes})
        todas.insert(todas.end(), grupo->begin(), grupo->end());
    return todas;
}

CLineasCatastro LineasCatastro(const CMunicipioSintetico& m)
{
    CLineasCatastro lineas;
    for (const CModulo& modulo : m.modulos)
        modulo.Compon(lineas.modulos.emplace_back(NuevaLinea(m, "MD")), kModoCatastro);
    for (const CParaje& paraje : m.parajes)
        paraje.Compon(lineas.parajes.emplace_back(NuevaLinea(m, "PJ")));
    for (std::size_t i = 0; i < m.numeros.size(); ++i)
        lineas.titulares.push_back(LineaTitular(m, m.numeros[i].front(), m.personas[i].NumOrden));
    for (std::size_t i = 0; i < m.numeros.size(); ++i)
        for (std::size_t k = 1; k < m.numeros[i].size(); ++k)
            lineas.titulares.push_back(LineaTitular(m, m.numeros[i][k], m.personas[i].NumOrden));
    for (const CParcelaDibujada& parcela : m.parcelas) {
        lineas.parcelas.push_back(LineaParcela(m, parcela));
        for (const CSubparcelaDibujada& sub : parcela.subparcelas)
            lineas.subparcelas.push_back(LineaSubparcela(m, parcela.datos, sub));
    }
    return lineas;
}

void EstropeaCatastro(CLineasCatastro& lineas)
{
    lineas.modulos.push_back(lineas.modulos.front()); // repeated
    lineas.modulos.push_back(lineas.modulos.at(4));
    EstropeaTitulares(lineas.titulares);
    EstropeaParcelas(lineas.parcelas);
    EstropeaSubparcelas(lineas.subparcelas);
    lineas.parajes.push_back(Con(lineas.parajes.front(), kNumOrden, "07777")); // its number is lost
    lineas.parajes.emplace_back("CT" + lineas.parajes.front().substr(2)); // no type of this file
}

std::vector<std::string> LineasLista(const CMunicipioSintetico& m)
{
    // By number the parcels that it holds; a holder's line, then all of them with its part.
    std::vector<std::vector<const CParcelaDibujada*>> porNumero(m.numeros.size());
    for (const CParcelaDibujada& parcela : m.parcelas)
        porNumero[static_cast<std::size_t>(parcela.numero)].push_back(&parcela);
    std::vector<std::string> lineas = {NuevaLinea(m, "30") +
                                       "RELACION DE SUBPARCELAS CON TITULARES"};
    for (std::size_t i = 0; i < m.numeros.size(); ++i) {
        const std::vector<CParticipe>& participes = m.numeros[i];
        for (std::size_t k = 0; k < participes.size(); ++k) {
            const auto persona = static_cast<std::size_t>(participes[k].persona);
            std::string& titular = lineas.emplace_back(NuevaLinea(m, "31"));
            m.personas[persona].Compon(titular, kModoLista);
            for (const CParcelaDibujada* parcela : porNumero[i]) {
                std::string cabecera = NuevaLinea(m, "32");
                parcela->datos.Compon(cabecera, kModoLista);
                PonEnLinea(cabecera, kLeeNombreParaje,
                           m.parajes[static_cast<std::size_t>(parcela->paraje)].Nombre);
                PonEnLinea(cabecera, kLeeTitLista, parcela->Tit);
                lineas.push_back(cabecera);
                for (std::size_t s = k; s < parcela->subparcelas.size(); s += participes.size())
                    if (!parcela->subparcelas[s].construccion)
                        parcela->subparcelas[s].datos.Compon(
                            lineas.emplace_back(NuevaLinea(m, "33")), kModoLista);
            }
            lineas.push_back(NuevaLinea(m, "34"));
        }
    }
    return lineas;
}

void EstropeaLista(std::vector<std::string>& lineas)
{
    constexpr CLectura kSuperficie = {77, 10, 0};
    constexpr CLectura kDNILista = {40, 8, 0};
    constexpr CLectura kNombreLista = {49, 62, 0};
    const std::string titular = lineas.at(1);
    const std::size_t total = lineas.size();
    for (std::size_t i = 0, hechas = 0; i < total && hechas < 2; ++i) {
        if (lineas[i].starts_with("33")) {
            lineas.push_back(lineas[i - 1].starts_with("32") ? lineas[i - 1] : lineas[i]);
            lineas.push_back(lineas[i]);                                 // repeated letter
            lineas.push_back(Con(lineas[i], kSuperficie, "0000000000")); // without a surface
            ++hechas;
        }
    }
    lineas.push_back(Con(titular, kDNILista, "99999991"));         // same name, other DNI
    lineas.push_back(Con(titular, kNombreLista, "OTRO NOMBRE"));   // same DNI, other name
    lineas.push_back("32" + lineas.at(2).substr(2, 22) + "00000"); // parcel number 0
    lineas.emplace_back("33 passed over");
}

bool GrabaLineas(const CString& nombre, const std::vector<std::string>& lineas)
{
    CStdioFile fichero;
    if (!fichero.Open(nombre, CFile::modeCreate | CFile::modeWrite | CFile::typeText))
        return false;
    for (const std::string& linea : lineas) {
        fichero.WriteString(linea);
        fichero.WriteString("\n");
    }
    fichero.Close();
    return true;
}

std::vector<std::string> LineasDeEntrada(const CMunicipioSintetico& municipio, bool lista,
                                         bool faltas)
{
    if (lista) {
        std::vector<std::string> lineas = LineasLista(municipio);
        if (faltas)
            EstropeaLista(lineas);
        return lineas;
    }
    CLineasCatastro lineas = LineasCatastro(municipio);
    if (faltas)
        EstropeaCatastro(lineas);
    return lineas.Todas();
}

} // namespace sintetico
