#include "cadastre/exchange_format.h"
#include "vexa_libs/ccadena.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

// The reading of one municipality from the six tables. Places and holders must be there before the
// parcels that name them, and parcels before what hangs on them. A row that lacks what it needs is
// dropped without a message.

namespace {

constexpr std::size_t kMun = 1; // the field that all tables have

// Fields that the readers look at beside the records' own, by table.
constexpr std::size_t kPolig = 3;
constexpr std::size_t kParcela = 4;
constexpr std::size_t kLetra = 5;

constexpr std::size_t kParajeNumOrden = 3;
constexpr std::size_t kParajeNombre = 4;

constexpr std::size_t kNumImputa = 8;
constexpr std::size_t kTit = 9;
constexpr std::size_t kPartici = 10;
constexpr std::size_t kParaje = 14;

constexpr std::size_t kCotitularNumOrden = 5;
constexpr std::size_t kCotitularTit = 6;
constexpr std::size_t kCotitularPartici = 7;

} // namespace

bool CVexaACampiva2Dlg::LeeTabla(UINT estado, const CString& archivo, std::size_t n,
                                 const CMunicipio& municipio, const CTomaFila& toma)
{
    Fase(estado);
    CStdioFile tabla;
    if (!AbreEntrada(tabla, archivo))
        return false;
    std::vector<std::string_view> campos(n);
    CString fila;
    bool primera = true;
    while (tabla.ReadString(fila)) {
        if (!Avanza(tabla.GetPosition(), tabla.GetLength()))
            return false;
        const std::string_view texto = fila;
        // The second word of a header line reads as 0, which is no other municipality's code.
        const bool cabecera = primera && municipio.Mun == 0 && texto.starts_with("Ger");
        primera = false;
        Leetira(texto, campos);
        if (!cabecera && LeeEntero(campos[kMun]) == municipio.Mun)
            toma(texto, campos);
    }
    return true;
}

bool CVexaACampiva2Dlg::LeeParajes(CStdioFile* /*log*/, int* /*numErrores*/, int* /*numWarnings*/,
                                   CMunicipio* municipio)
{
    constexpr std::size_t kCampos = 5;
    return LeeTabla(IDS_LEYENDO_PARAJES, ArchivoParajes, kCampos, *municipio,
                    [&](std::string_view /*fila*/, CCampos campos) {
                        if (campos[kParajeNumOrden].empty() || campos[kParajeNombre].empty())
                            return;
                        CParaje paraje(campos[kParajeNombre]);
                        paraje.NumOrden = static_cast<short>(LeeEntero(campos[kParajeNumOrden]));
                        municipio->InsertaParaje(paraje);
                    });
}

bool CVexaACampiva2Dlg::LeeModulos(CStdioFile* /*log*/, int* /*numErrores*/, int* /*numWarnings*/,
                                   CMunicipio* municipio)
{
    constexpr std::size_t kCampos = 2;
    return LeeTabla(IDS_LEYENDO_MODULOS, ArchivoModulos, kCampos, *municipio,
                    [&](std::string_view fila, CCampos /*campos*/) {
                        CModulo modulo;
                        if (modulo.Lee(fila, kModoTabla))
                            municipio->InsertaModulo(modulo);
                    });
}

bool CVexaACampiva2Dlg::LeeTitulares(CStdioFile* log, int* numErrores, int* numWarnings,
                                     CMunicipio* municipio)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    constexpr std::size_t kCampos = 2;
    return LeeTabla(IDS_LEYENDO_TITULARES, ArchivoTitulares, kCampos, *municipio,
                    [&](std::string_view fila, CCampos /*campos*/) {
                        CTitular titular;
                        if (titular.Lee(fila, kModoTabla))
                            RegistraTitular(avisos, *municipio, std::move(titular));
                    });
}

bool CVexaACampiva2Dlg::LeeParcelas(CStdioFile* log, int* numErrores, int* numWarnings,
                                    CMunicipio* municipio)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    constexpr std::size_t kCampos = 15;
    return LeeTabla(IDS_LEYENDO_PARCELAS, ArchivoParcelas, kCampos, *municipio,
                    [&](std::string_view fila, CCampos campos) {
                        if (!campos[kNumImputa].empty() && !campos[kTit].empty() &&
                            !campos[kPartici].empty())
                            TomaParcela(fila, campos, avisos, *municipio);
                    });
}

void CVexaACampiva2Dlg::TomaParcela(std::string_view fila, CCampos campos, const CAvisos& avisos,
                                    CMunicipio& municipio)
{
    const int polig = LeeEntero(campos[kPolig]);
    const int numero = LeeEntero(campos[kParcela]);
    const int numImputa = LeeEntero(campos[kNumImputa]);
    const int numParaje = LeeEntero(campos[kParaje]);
    const int partici = LeeEntero(campos[kPartici]);
    const int titular = municipio.BuscaTitularNumOrden(numImputa);
    if (titular < 0)
        Avisa(avisos, kTitularNoEncontrado, numImputa, polig, numero);
    const int paraje = municipio.BuscaParaje(numParaje);
    if (paraje < 0)
        Avisa(avisos, kParajeNoEncontrado, numParaje, polig, numero);
    CParcela parcela(0, 0, 0, {});
    if (!parcela.Lee(fila, kModoTabla))
        return;
    parcela.paraje = paraje;
    const int suPolig = parcela.Polig;
    const int suNumero = parcela.Parcela;
    const int i = municipio.InsertaParcela(std::move(parcela));
    if (i < 0) {
        Avisa(avisos, kParcelaNoInsertada, suPolig, suNumero);
        ParcelasNoSalvadas = true;
        return;
    }
    // A holder that wasn't found is linked as such, so that the parcel has its main link.
    municipio.DameParcela(i).InsertaCotitular(titular, kOrdenPrincipal, partici, campos[kTit]);
    if (titular >= 0)
        municipio.InsertaPropiedad(titular, i, partici, campos[kTit]);
}

bool CVexaACampiva2Dlg::LeeSubparcelas(CStdioFile* log, int* numErrores, int* numWarnings,
                                       CMunicipio* municipio)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    constexpr std::size_t kCampos = 6;
    return LeeTabla(IDS_LEYENDO_SUBPARCELAS, ArchivoSubparcelas, kCampos, *municipio,
                    [&](std::string_view fila, CCampos campos) {
                        const int polig = LeeEntero(campos[kPolig]);
                        const int numero = LeeEntero(campos[kParcela]);
                        int i = kNoEncontrado;
                        if (!municipio->BuscaParcela(polig, numero, i)) {
                            Avisa(avisos, kSubparcelaSinParcela, polig, numero, campos[kLetra]);
                            return;
                        }
                        CSubparcela subparcela;
                        if (!subparcela.Lee(fila, kModoTabla))
                            return;
                        const CString letra = subparcela.letra;
                        CParcela& parcela = municipio->DameParcela(i);
                        bool repetida = false;
                        parcela.InsertaSubparcela(std::move(subparcela), repetida);
                        if (repetida)
                            Avisa(avisos, kSubparcelaDuplicada, parcela.Polig, parcela.Parcela,
                                  letra);
                    });
}

bool CVexaACampiva2Dlg::LeeCotitulares(CStdioFile* log, int* numErrores, int* numWarnings,
                                       CMunicipio* municipio)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    constexpr std::size_t kCampos = 8;
    return LeeTabla(IDS_LEYENDO_COTITULARES, ArchivoCotitulares, kCampos, *municipio,
                    [&](std::string_view /*fila*/, CCampos campos) {
                        const int polig = LeeEntero(campos[kPolig]);
                        const int numero = LeeEntero(campos[kParcela]);
                        int i = kNoEncontrado;
                        if (!municipio->BuscaParcela(polig, numero, i)) {
                            Avisa(avisos, kCotitularSinParcela, polig, numero);
                            return;
                        }
                        const int numOrden = LeeEntero(campos[kCotitularNumOrden]);
                        const int titular = municipio->BuscaTitularNumOrden(numOrden);
                        if (titular < 0) {
                            Avisa(avisos, kCotitularSinTitular, numOrden);
                            return;
                        }
                        if (campos[kCotitularTit].empty() || campos[kCotitularPartici].empty())
                            return;
                        const int partici = LeeEntero(campos[kCotitularPartici]);
                        municipio->DameParcela(i).InsertaCotitular(titular, kSinOrden, partici,
                                                                   campos[kCotitularTit]);
                        municipio->InsertaPropiedad(titular, i, partici, campos[kCotitularTit]);
                    });
}
