#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include "cadastre/co_holder_columns.h"
#include "cadastre/column_reader.h"
#include "cadastre/holder_columns.h"
#include "cadastre/module_place_columns.h"
#include "cadastre/parcel_columns.h"
#include "cadastre/subparcel_columns.h"
#include "cadastre/table_files.h"
#include "platform/plain_texts.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

// The reading of one municipality from the six tables. Places and holders must be there before the
// parcels that name them, and parcels before what hangs on them. A row that lacks what it needs is
// dropped without a message of its own; how many were is said when all are read.

namespace {

/// Counts in bytes, which a compiler does for many characters at a time, and so by pieces.
std::size_t Tabuladores(std::string_view fila)
{
    constexpr std::size_t kPieza = std::numeric_limits<unsigned char>::max();
    std::size_t suma = 0;
    for (; !fila.empty(); fila.remove_prefix(std::min(fila.size(), kPieza))) {
        unsigned char suyos = 0;
        for (const char c : fila.substr(0, kPieza))
            if (c == '\t')
                ++suyos;
        suma += suyos;
    }
    return suma;
}

/// Tells whether a field of the row stands in quotes, into which spreadsheets put all texts or
/// those with a comma or a quote.
bool TieneComillas(std::string_view fila)
{
    for (std::size_t i = fila.find('"'); i != std::string_view::npos; i = fila.find('"', i + 1))
        if (i == 0 || fila[i - 1] == '\t') {
            const std::string_view campo = fila.substr(i, fila.find('\t', i) - i);
            if (campo.size() > 1 && campo.ends_with('"'))
                return true;
        }
    return false;
}

/// Tells whether a DNI has lost the zeros in front, as it does in a spreadsheet, to which it is a
/// number.
bool EsDniSinCeros(std::string_view dni)
{
    constexpr std::size_t kCifras = 8;
    dni = SinBlancos(dni);
    return !dni.empty() && dni.size() < kCifras &&
           dni.find_first_not_of("0123456789") == std::string_view::npos;
}

/// What the rows of one municipality have in common.
class CFilasSuyas {
public:
    /// \param campos  of a row
    /// \param ger     the province that they should name
    CFilasSuyas(std::size_t campos, int ger) : m_campos(campos), m_ger(ger) {}

    void Toma(std::string_view fila)
    {
        ++m_todas;
        m_antes = std::exchange(m_tabuladores, Tabuladores(fila));
        m_masCorta = std::min(m_masCorta, std::exchange(m_largo, fila.size()));
        m_partidas += m_tabuladores < m_campos ? 0 : 1;
        m_conComillas += TieneComillas(fila) ? 1 : 0;
        m_deOtraGer += EsDeSuGer(fila) ? 0 : 1;
    }
    int Partidas() const { return m_partidas; }
    int DeOtraGer() const { return m_deOtraGer; }
    bool EstanPartidas() const { return m_todas > 0 && m_partidas == m_todas; }
    int ConComillas() const { return m_conComillas; }
    /// Tells whether the last row has fewer fields than the one in front of it, or is shorter than
    /// all.
    bool EsMenosLaUltima() const
    {
        return m_todas > 1 &&
               (m_tabuladores < m_antes || (m_tabuladores == m_antes && m_largo < m_masCorta));
    }

private:
    bool EsDeSuGer(std::string_view fila)
    {
        if (!m_gerLeida.empty() && fila.starts_with(m_gerLeida))
            return true; // as nearly all are, without reading the number again
        const bool esSuya = LeeEntero(fila) == m_ger;
        if (esSuya)
            m_gerLeida = fila.substr(0, fila.find('\t') + 1);
        return esSuya;
    }

    std::size_t m_campos;
    int m_ger;
    std::string m_gerLeida; // the first field, with its tab, of one that names it
    int m_todas = 0;
    int m_partidas = 0;
    int m_deOtraGer = 0;
    int m_conComillas = 0;
    std::size_t m_tabuladores = 0;                   // of the last one
    std::size_t m_antes = 0;                         // of the one before
    std::size_t m_largo = std::string_view::npos;    // of the last one
    std::size_t m_masCorta = std::string_view::npos; // of those before
};

/// Tells whether a text that was read to its end has its last line end. Raises CFileException.
bool AcabaEnLinea(CStdioFile& texto)
{
    if (texto.GetLength() == 0)
        return true; // a pipe, which can't be looked at again
    texto.Seek(texto.GetLength() - 1);
    CString cola;
    texto.ReadString(cola);
    return cola.IsEmpty();
}

} // namespace

void CVexaACampiva2Dlg::CTablaVista::CuentaFila(std::string_view fila, int suyo, int municipio,
                                                bool primera)
{
    ++todas;
    if (suyo != 0)
        ajenas += suyo != municipio ? 1 : 0;
    else if (!primera) // which may be somebody's header
        sinMunicipio += EsFilaEnBlanco(fila) ? 0 : 1;
}

bool CVexaACampiva2Dlg::LeeTabla(UINT estado, const CString& archivo, std::size_t campos,
                                 const CMunicipio& municipio, CTablaVista& vista,
                                 const CTomaFila& toma)
{
    vista.archivo = archivo;
    Fase(estado);
    CStdioFile tabla;
    if (!AbreEntrada(tabla, archivo))
        return false;
    CString fila;
    bool primera = true;
    bool esSuya = false;
    CFilasSuyas suyas(campos, m_vistas.cabecera.Ger);
    while (tabla.ReadString(fila)) {
        if (!Avanza(tabla.GetPosition(), tabla.GetLength()))
            return false;
        vista.pagina.Toma(fila);
        const bool cabecera = primera && EsCabecera(fila);
        if (primera)
            vista.soloRetornos = SonVariasLineas(fila);
        const int suyo = MunicipioDeFila(fila);
        if (cabecera)
            vista.cabecera = fila;
        else if (!fila.IsEmpty())
            vista.CuentaFila(fila, suyo, municipio.Mun, primera);
        primera = false;
        // A header line reads as municipality 0, which is no other municipality's code.
        esSuya = suyo == municipio.Mun && (!cabecera || municipio.Mun != 0);
        if (!esSuya)
            continue;
        suyas.Toma(fila);
        toma(fila);
    }
    vista.conColumnasPropias = suyas.EstanPartidas();
    vista.partidas = vista.conColumnasPropias ? 0 : suyas.Partidas();
    vista.deOtraGer = suyas.DeOtraGer();
    vista.conComillas = suyas.ConComillas();
    vista.cortada = esSuya && suyas.EsMenosLaUltima() && !AcabaEnLinea(tabla);
    return true;
}

bool CVexaACampiva2Dlg::LeeParajes(CStdioFile* /*log*/, int* /*numErrores*/, int* /*numWarnings*/,
                                   CMunicipio* municipio)
{
    CTablaVista& vista = m_vistas.parajes;
    return LeeTabla(IDS_LEYENDO_PARAJES, ArchivoParajes, CamposDeFila(kColumnasParaje), *municipio,
                    vista, [&](std::string_view fila) {
                        CParaje paraje;
                        CDatosLinea datos;
                        const bool leido = paraje.Lee(fila, kModoTabla, datos);
                        vista.Cuenta(leido, datos);
                        if (!leido)
                            return;
                        const int conSuNumero = municipio->BuscaParaje(paraje.NumOrden);
                        municipio->InsertaParaje(paraje);
                        vista.repetidas += conSuNumero >= 0 ? 1 : 0;
                    });
}

bool CVexaACampiva2Dlg::LeeModulos(CStdioFile* /*log*/, int* /*numErrores*/, int* /*numWarnings*/,
                                   CMunicipio* municipio)
{
    CTablaVista& vista = m_vistas.modulos;
    return LeeTabla(IDS_LEYENDO_MODULOS, ArchivoModulos, CamposDeFila(kColumnasModulo), *municipio,
                    vista, [&](std::string_view fila) {
                        CModulo modulo;
                        CDatosLinea datos;
                        const bool leido = modulo.Lee(fila, kModoTabla, datos);
                        vista.Cuenta(leido, datos);
                        if (!leido)
                            return;
                        const std::size_t antes = municipio->Modulos().size();
                        municipio->InsertaModulo(modulo);
                        vista.repetidas += municipio->Modulos().size() == antes ? 1 : 0;
                    });
}

bool CVexaACampiva2Dlg::LeeTitulares(CStdioFile* log, int* numErrores, int* numWarnings,
                                     CMunicipio* municipio)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    CTablaVista& vista = m_vistas.titulares;
    return LeeTabla(IDS_LEYENDO_TITULARES, ArchivoTitulares, CamposDeFila(kColumnasTitular),
                    *municipio, vista, [&](std::string_view fila) {
                        CTitular titular;
                        CDatosLinea datos;
                        const bool leido = titular.Lee(fila, kModoTabla, datos);
                        vista.Cuenta(leido, datos);
                        if (!leido)
                            return;
                        m_vistas.dniSinCeros += EsDniSinCeros(titular.DNI) ? 1 : 0;
                        const int numero = titular.NumOrden;
                        const int conSuNumero = municipio->BuscaTitularNumOrden(numero);
                        const int i = RegistraTitular(avisos, *municipio, std::move(titular));
                        if (numero == kSinNumero || conSuNumero < 0)
                            return;
                        ++(conSuNumero == i ? vista.repetidas : m_vistas.titularesSinNumero);
                    });
}

bool CVexaACampiva2Dlg::LeeParcelas(CStdioFile* log, int* numErrores, int* numWarnings,
                                    CMunicipio* municipio)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    return LeeTabla(IDS_LEYENDO_PARCELAS, ArchivoParcelas, CamposDeFila(kColumnasParcela),
                    *municipio, m_vistas.parcelas,
                    [&](std::string_view fila) { TomaParcela(fila, avisos, *municipio); });
}

void CVexaACampiva2Dlg::TomaParcela(std::string_view fila, const CAvisos& avisos,
                                    CMunicipio& municipio)
{
    if (LeeEntero(fila) == m_vistas.cabecera.Ger)
        ++m_vistas.parcelasDelMunicipio;
    CParcela parcela(0, 0, 0, {});
    CDatosLinea datos;
    const bool leida = parcela.Lee(fila, kModoTabla, datos);
    m_vistas.parcelas.incompletas += leida && !datos.faltan ? 0 : 1;
    m_vistas.parcelas.campos.Toma(datos);
    if (datos.faltan)
        return;
    const int titular = municipio.BuscaTitularNumOrden(datos.numImputa);
    if (titular < 0)
        Avisa(avisos, kTitularNoEncontrado, datos.numImputa, datos.Polig, datos.Parcela);
    parcela.paraje = municipio.BuscaParaje(datos.numParaje);
    if (parcela.paraje < 0)
        Avisa(avisos, kParajeNoEncontrado, datos.numParaje, datos.Polig, datos.Parcela);
    const bool sinSuParaje = parcela.paraje < 0 && datos.numParaje > 0;
    if (!leida)
        return; // holder and place are told all the same
    const int polig = parcela.Polig;
    const int numero = parcela.Parcela;
    const std::size_t antes = municipio.NumParcelas();
    const int i = municipio.InsertaParcela(std::move(parcela));
    if (i < 0) {
        Avisa(avisos, kParcelaNoInsertada, polig, numero);
        ParcelasNoSalvadas = true;
        ++m_vistas.parcelas.dejadas;
        return;
    }
    ++m_vistas.parcelas.tomadas;
    m_vistas.parcelas.sueltas += (titular < 0 && datos.numImputa > 0) || sinSuParaje ? 1 : 0;
    m_vistas.parcelas.repetidas += municipio.NumParcelas() == antes ? 1 : 0;
    // A holder that wasn't found is linked as such, so that the parcel has its main link.
    municipio.DameParcela(i).InsertaCotitular(titular, kOrdenPrincipal, datos.partici, datos.Tit);
    if (titular >= 0)
        municipio.InsertaPropiedad(titular, i, datos.partici, datos.Tit);
}

bool CVexaACampiva2Dlg::LeeSubparcelas(CStdioFile* log, int* numErrores, int* numWarnings,
                                       CMunicipio* municipio)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    CTablaVista& vista = m_vistas.subparcelas;
    return LeeTabla(
        IDS_LEYENDO_SUBPARCELAS, ArchivoSubparcelas, CamposDeFila(kColumnasSubparcela), *municipio,
        vista, [&](std::string_view fila) {
            CSubparcela subparcela;
            CDatosLinea datos;
            const bool leida = subparcela.Lee(fila, kModoTabla, datos);
            vista.incompletas += leida ? 0 : 1;
            vista.campos.Toma(datos);
            int i = kNoEncontrado;
            if (!municipio->BuscaParcela(datos.Polig, datos.Parcela, i)) {
                Avisa(avisos, kSubparcelaSinParcela, datos.Polig, datos.Parcela, datos.letra);
                ++vista.dejadas;
                return;
            }
            if (!leida)
                return;
            const CString letra = subparcela.letra;
            CParcela& parcela = municipio->DameParcela(i);
            bool repetida = false;
            parcela.InsertaSubparcela(std::move(subparcela), repetida);
            ++vista.tomadas;
            if (repetida)
                Avisa(avisos, kSubparcelaDuplicada, parcela.Polig, parcela.Parcela, letra);
        });
}

bool CVexaACampiva2Dlg::LeeCotitulares(CStdioFile* log, int* numErrores, int* numWarnings,
                                       CMunicipio* municipio)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    CTablaVista& vista = m_vistas.cotitulares;
    return LeeTabla(IDS_LEYENDO_COTITULARES, ArchivoCotitulares, CamposDeFila(kColumnasCotitular),
                    *municipio, vista, [&](std::string_view fila) {
                        CCotitular vinculo;
                        CDatosLinea datos;
                        const bool leido = vinculo.Lee(fila, datos);
                        vista.Cuenta(leido, datos);
                        int i = kNoEncontrado;
                        if (!municipio->BuscaParcela(datos.Polig, datos.Parcela, i)) {
                            Avisa(avisos, kCotitularSinParcela, datos.Polig, datos.Parcela);
                            return;
                        }
                        const int titular = municipio->BuscaTitularNumOrden(datos.numImputa);
                        if (titular < 0) {
                            Avisa(avisos, kCotitularSinTitular, datos.numImputa);
                            return;
                        }
                        if (!leido)
                            return;
                        CParcela& parcela = municipio->DameParcela(i);
                        const std::size_t antes = parcela.Cotitulares().size();
                        parcela.InsertaCotitular(titular, kSinOrden, vinculo.partici, vinculo.Tit);
                        m_vistas.sumados += parcela.Cotitulares().size() == antes ? 1 : 0;
                        municipio->InsertaPropiedad(titular, i, vinculo.partici, vinculo.Tit);
                    });
}
