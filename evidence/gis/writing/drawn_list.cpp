#include "evidence/gis/writing/drawn_list.h"

#include <algorithm>
#include <map>
#include <set>

#include "cadastre/polygon_list.h"
#include "evidence/gis/complaints.h"
#include "evidence/gis/names.h"
#include "evidence/gis/writing/source_fields.h"
#include "evidence/municipality_files.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "platform/files/cfile.h"
#include "platform/plain_texts.h"
#include "vexa_libs/ccadena.h"

namespace {

constexpr char kFinAntiguo = 0x1A;

/// The municipality that the options name by its numbers; empty where they don't, none, which was
/// told, where they can't be.
std::optional<CString> CabeceraPorNumeros(const CPLStringList& opciones)
{
    constexpr int kMayorCodigo = 999;
    const char* ger = opciones.FetchNameValue(opcion::kGer);
    const char* mun = opciones.FetchNameValue(opcion::kMun);
    if (ger == nullptr && mun == nullptr)
        return CString();
    if (ger == nullptr || mun == nullptr) {
        Falla("Las opciones GER y MUN van juntas");
        return std::nullopt;
    }
    const auto gerencia = NumeroDe<int>(ger);
    const auto municipio = NumeroDe<int>(mun);
    for (const auto& numero : {gerencia, municipio})
        if (!numero || *numero < 0 || *numero > kMayorCodigo) {
            Falla("GER y MUN van de 0 a 999");
            return std::nullopt;
        }
    return Formatea("LISTA%03d%03d", *gerencia, *municipio);
}

/// Tells whether a list's first line names a municipality, as the drawings' list has it.
bool NombraMunicipio(const CString& cabecera)
{
    constexpr int kCifras = 6;
    const CString suyo = LeeCabeceraLista(cabecera).nombreSalida;
    return suyo.GetLength() == kCifras &&
           std::string_view(suyo).find_first_not_of("0123456789 ") == std::string_view::npos;
}

/// Names of polygons' files by the polygons' numbers.
using CPorNumero = std::map<int, std::set<CString>>;

/// Settles the name for one of the source. False, which was told, where it can't.
bool Situa(const CModoDibujo& modo, const CPorNumero& porNumero, const CString& nombre,
           CDePoligono& de)
{
    if (!de.poligono || (de.nombrada && LeeEntero(de.entrada) == *de.poligono))
        return true;
    if (de.nombrada) {
        modo.AvisaContradiccion(
            "elementos de dos polígonos a la vez"_ansi,
            Formatea("%s: su campo poligono dice %d y su campo entrada dice %s"_ansi, nombre,
                     *de.poligono, de.entrada),
            "poligono", "entrada");
        if (modo.ganan != Ganan::Numeros)
            return modo.ganan == Ganan::Rotulos;
    }
    const auto suyas = porNumero.find(*de.poligono);
    if (suyas != porNumero.end() && suyas->second.size() > 1) {
        modo.noticias->Falla("elementos de un polígono con varios dibujos"_ansi,
                             nombre + ": hay varios dibujos de su polígono, y falta el campo "
                                      "entrada"_ansi);
        return false;
    }
    de.entrada = suyas == porNumero.end() ? EntradaUsual(*de.poligono) : *suyas->second.begin();
    return true;
}

/// A name without what a table of numbers takes away from it.
std::string_view LoQueDistingue(const CString& entrada)
{
    const std::string_view texto = SinBlancos(entrada);
    return texto.substr(std::min(texto.find_first_not_of('0'), texto.size()));
}

} // namespace

CListaDibujada::CListaDibujada(const CString& nombre, bool sustituye) : m_nombre(nombre)
{
    CFile fichero;
    if (sustituye || !AbreSiHay(fichero, nombre) || fichero.GetLength() == 0)
        return;
    m_bytes = std::string(fichero.Tramo(static_cast<std::size_t>(fichero.GetLength())));
    fichero.Close();
    if (const std::optional<CListaPoligonos> lista = LeeLista(nombre)) {
        m_estaba = true;
        m_cabecera = lista->primera;
        m_entradas.insert(lista->entradas.begin(), lista->entradas.end());
        for (const CString& entrada : m_entradas)
            m_porVista.try_emplace(ansi::AUtf8(entrada), entrada);
    }
}

const CString* CListaDibujada::PorVista(const char* entrada) const
{
    const auto suya = m_porVista.find(entrada);
    return suya == m_porVista.end() ? nullptr : &suya->second;
}

CString CListaDibujada::CasiComo(const CString& entrada) const
{
    if (Tiene(entrada))
        return {};
    const auto casi = std::ranges::find(m_entradas, LoQueDistingue(entrada), LoQueDistingue);
    return casi == m_entradas.end() ? CString() : *casi;
}

bool CListaDibujada::FijaMunicipio(const CPLStringList& opciones, const char* delOrigen)
{
    std::optional<CString> cabecera = CabeceraPorNumeros(opciones);
    if (!cabecera)
        return false;
    const char* puesta = opciones.FetchNameValueDef(opcion::kCabecera, delOrigen);
    if (cabecera->IsEmpty() && puesta != nullptr)
        cabecera = AnsiParaDecir(puesta);
    if (!m_estaba) {
        m_cabecera = *cabecera;
        if (m_cabecera.IsEmpty())
            Falla("Falta el municipio: opciones GER y MUN"_ansi);
        else if (!NombraMunicipio(m_cabecera) || TieneControles(m_cabecera))
            FallaCon("CABECERA no es la primera línea de una lista: %s"_ansi, m_cabecera);
        else
            return true;
        return false;
    }
    const CString suyo = LeeCabeceraLista(m_cabecera).nombreSalida;
    if (!NombraMunicipio(m_cabecera))
        FallaCon(
            "%s no es una lista de polígonos. Con la opción SUSTITUYE=SI se hace una nueva"_ansi,
            m_nombre);
    else if (!cabecera->IsEmpty() && LeeCabeceraLista(*cabecera).nombreSalida != suyo)
        FallaCon("La lista %s es del municipio %s y lo que se escribe es de %s. Con la opción "
                 "SUSTITUYE=SI se hace una nueva"_ansi,
                 m_nombre, suyo, LeeCabeceraLista(*cabecera).nombreSalida);
    else
        return true;
    return false;
}

bool CListaDibujada::SituaEntradas(const CModoDibujo& modo, std::vector<CRecintoEntrante>& recintos,
                                   std::vector<CEntidadEntrante>& entidades,
                                   std::map<CString, CCapasTraidas>& dejadas) const
{
    CPorNumero porNumero;
    for (const CString& entrada : m_entradas)
        if (!entrada.IsEmpty())
            porNumero[LeeEntero(entrada)].insert(entrada);
    const auto apunta = [&](CDePoligono& de) {
        // A name that only looks like one of the list gets that one's bytes.
        if (de.nombrada && !Tiene(de.entrada))
            if (const CString* suya = PorVista(ansi::AUtf8(de.entrada).c_str()))
                de.entrada = *suya;
        const bool deFiar = de.nombrada && (!de.poligono || *de.poligono == LeeEntero(de.entrada));
        if (deFiar && !porNumero.contains(LeeEntero(de.entrada)))
            porNumero[LeeEntero(de.entrada)].insert(de.entrada);
    };
    std::ranges::for_each(recintos, apunta, &CRecintoEntrante::de);
    std::ranges::for_each(entidades, apunta, &CEntidadEntrante::de);
    bool bien = true;
    const auto situa = [&](auto& suyo) {
        const CString era = suyo.de.entrada;
        bien = Situa(modo, porNumero, suyo.nombre, suyo.de) && bien;
        if (suyo.de.nombrada && suyo.de.entrada != era)
            dejadas[era].Pon(suyo);
    };
    std::ranges::for_each(recintos, situa);
    std::ranges::for_each(entidades, situa);
    return bien;
}

void CListaDibujada::Graba(const std::vector<CString>& entradas, CConjuntoSalidas& salidas) const
{
    std::string nuevas;
    for (const CString& entrada : entradas)
        if (!Tiene(entrada))
            nuevas += "P" + std::string(std::string_view(entrada)) + "\r\n";
    if (m_estaba && nuevas.empty())
        return;
    std::string bytes = m_bytes;
    std::string fin;
    if (!m_estaba) {
        bytes = std::string(std::string_view(m_cabecera)) + "\r\n";
    } else if (bytes.back() == kFinAntiguo) {
        bytes.pop_back();
        fin.push_back(kFinAntiguo);
    }
    if (!bytes.empty() && bytes.back() != '\n')
        bytes += "\r\n";
    bytes += nuevas + fin;
    CFile lista;
    CreaSalida(lista, m_nombre, salidas);
    lista.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    lista.Close();
}
