#include "generator/cadastre_lines.h"

#include "cadastre/holder_columns.h"
#include "cadastre/module_place_columns.h"
#include "cadastre/parcel_columns.h"
#include "cadastre/record_types.h"
#include "cadastre/subparcel_columns.h"
#include "generator/compose_line.h"
#include "platform/ansi.h"
#include "platform/files/cstdio_file.h"

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
    CDatosLinea datos;
    datos.partici = participe.partici;
    std::string linea = NuevaLinea(m, kTipoTitular);
    Compon<kColumnasTitular, &CColumna<CTitular>::catastro>(linea, titular, datos);
    return linea;
}

std::string LineaParcela(const CMunicipioSintetico& m, const CParcelaDibujada& parcela)
{
    CDatosLinea datos;
    datos.PonSuperficie(parcela.datos.Superficie);
    datos.numImputa = m.personas[static_cast<std::size_t>(parcela.numero)].NumOrden;
    datos.Tit = parcela.Tit;
    datos.numParaje = m.parajes[static_cast<std::size_t>(parcela.paraje)].NumOrden;
    std::string linea = NuevaLinea(m, kTipoParcela);
    Compon<kColumnasParcela, &CColumna<CParcela>::catastro>(linea, parcela.datos, datos);
    return linea;
}

std::string LineaSubparcela(const CMunicipioSintetico& m, const CParcela& parcela,
                            const CSubparcelaDibujada& sub)
{
    constexpr auto kCual = &CColumna<CSubparcela>::catastro;
    CDatosLinea datos;
    datos.Polig = parcela.Polig;
    datos.Parcela = parcela.Parcela;
    datos.PonSuperficie(sub.datos.superfic);
    datos.cSing = static_cast<unsigned char>(sub.datos.cSing);
    std::string linea = NuevaLinea(m, sub.construccion ? kTipoConstruccion : kTipoSuelo);
    Compon<kColumnasComunes, kCual>(linea, sub.datos, datos);
    if (sub.construccion)
        Compon<kColumnasConstruccion, kCual>(linea, sub.datos, datos);
    else
        Compon<kColumnasSuelo, kCual>(linea, sub.datos, datos);
    return linea;
}

std::string LineaParcelaLista(const CMunicipioSintetico& m, const CParcelaDibujada& parcela)
{
    CDatosLinea datos;
    datos.nombreParaje = m.parajes[static_cast<std::size_t>(parcela.paraje)].Nombre;
    datos.Tit = parcela.Tit;
    std::string linea = NuevaLinea(m, "32");
    Compon<kColumnasParcela, &CColumna<CParcela>::lista>(linea, parcela.datos, datos);
    return linea;
}

std::string Con(std::string linea, const CLectura& donde, std::string_view valor)
{
    PonEnLinea(linea, donde, valor);
    return linea;
}

// Where the fields stand that the faults change.
constexpr CLectura kNombre = ColumnaDe(kColumnasTitular, &CTitular::Nombre).catastro;
constexpr CLectura kDNI = ColumnaDe(kColumnasTitular, &CTitular::DNI).catastro;
constexpr CLectura kNumOrden = ColumnaDe(kColumnasTitular, &CTitular::NumOrden).catastro;
constexpr CLectura kPolig = ColumnaDe(kColumnasParcela, &CParcela::Polig).catastro;
constexpr CLectura kParcela = ColumnaDe(kColumnasParcela, &CParcela::Parcela).catastro;
constexpr CLectura kAreasPR = ColumnaDe(kColumnasParcela, &CDatosLinea::areas).catastro;
constexpr CLectura kNumImputa = ColumnaDe(kColumnasParcela, &CDatosLinea::numImputa).catastro;
constexpr CLectura kNumParaje = ColumnaDe(kColumnasParcela, &CDatosLinea::numParaje).catastro;
constexpr CLectura kLetra = ColumnaDe(kColumnasComunes, &CSubparcela::letra).catastro;
constexpr CLectura kOrdenParaje = ColumnaDe(kColumnasParaje, &CParaje::NumOrden).catastro;
constexpr CLectura kNombreParaje = ColumnaDe(kColumnasParaje, &CParaje::Nombre).catastro;

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
    p.at(3) = Con(p.at(3), kNumParaje, "00000"); // no such place; its subparcels lose it too
    p.at(4) = Con(p.at(4), kNumParaje, "99999");
    p.at(5) = Con(p.at(5), kNumImputa, "0999999"); // no such holder
    p.at(6) = Con(p.at(6), kAreasPR, "99");        // not the sum of its subparcels
    p.at(7) = Con(p.at(7), kAreasPR, "00");
    p.push_back(primera); // repeated
    p.push_back(Con(p.at(1), kAreasPR, "11"));
    p.push_back(Con(primera, kPolig, "000")); // not valid
    p.push_back(Con(primera, kParcela, "00000"));
    p.push_back(Con(primera, kParcela, "90001")); // without subparcels
    p.push_back(Con(Con(primera, kParcela, "90002"), kNumImputa, "0999999"));
    p.push_back(
        Con(primera, kParcela, "90003").substr(0, 60)); // too short to name holder and place
}

void EstropeaSubparcelas(std::vector<std::string>& s)
{
    const std::string primera = s.at(0);
    s.push_back(Con(primera, kParcela, "90004")); // of no parcel
    s.push_back(Con(primera, kPolig, "999"));
    s.push_back(primera.substr(0, 15));                     // names no parcel
    s.push_back(primera);                                   // repeated letter
    s.push_back(Con(primera, kLeeTipo, kTipoConstruccion)); // a building on land of the same letter
    s.push_back(Con(s.at(20), kLetra, "zz")); // one more than the parcel's surface holds
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
        Compon<kColumnasModulo, &CColumna<CModulo>::catastro>(
            lineas.modulos.emplace_back(NuevaLinea(m, kTipoModulo)), modulo, {});
    for (const CParaje& paraje : m.parajes)
        Compon<kColumnasParaje, &CColumna<CParaje>::catastro>(
            lineas.parajes.emplace_back(NuevaLinea(m, kTipoParaje)), paraje, {});
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
    // Blanks in front make another name of it.
    lineas.parajes.push_back(
        Con(Con(lineas.parajes.front(), kOrdenParaje, "07777"), kNombreParaje, "   CAÑADA"_ansi));
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
            Compon<kColumnasTitular, &CColumna<CTitular>::lista>(
                lineas.emplace_back(NuevaLinea(m, "31")), m.personas[persona], {});
            for (const CParcelaDibujada* parcela : porNumero[i]) {
                lineas.push_back(LineaParcelaLista(m, *parcela));
                for (std::size_t s = k; s < parcela->subparcelas.size(); s += participes.size())
                    if (!parcela->subparcelas[s].construccion)
                        Compon<kColumnasSubparcela, &CColumna<CSubparcela>::lista>(
                            lineas.emplace_back(NuevaLinea(m, "33")), parcela->subparcelas[s].datos,
                            {});
            }
            lineas.push_back(NuevaLinea(m, "34"));
        }
    }
    return lineas;
}

void EstropeaLista(std::vector<std::string>& lineas)
{
    constexpr CLectura kSuperficie = ColumnaDe(kColumnasSubparcela, &CSubparcela::superfic).lista;
    constexpr CLectura kDNILista = ColumnaDe(kColumnasTitular, &CTitular::DNI).lista;
    constexpr CLectura kNombreLista = ColumnaDe(kColumnasTitular, &CTitular::Nombre).lista;
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
    if (!fichero.Open(nombre, CFile::modeCreate | CFile::modeWrite))
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
