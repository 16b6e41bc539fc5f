#include "cadastre/exchange_format.h"
#include "cadastre/table_rows.h"
#include "vexa_libs/ccadena.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

// The reading of one municipality from the six tables. Places and holders must be there before the
// parcels that name them, and parcels before what hangs on them. A row that lacks what it needs is
// dropped without a message.

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
        if (!cabecera && LeeEntero(campos[tabla::kMun]) == municipio.Mun)
            toma(texto, campos);
    }
    return true;
}

bool CVexaACampiva2Dlg::LeeParajes(CStdioFile* /*log*/, int* /*numErrores*/, int* /*numWarnings*/,
                                   CMunicipio* municipio)
{
    return LeeTabla(
        IDS_LEYENDO_PARAJES, ArchivoParajes, tabla::kCamposParaje, *municipio,
        [&](std::string_view /*fila*/, CCampos campos) {
            if (campos[tabla::kParajeNumOrden].empty() || campos[tabla::kParajeNombre].empty())
                return;
            CParaje paraje(campos[tabla::kParajeNombre]);
            paraje.NumOrden = static_cast<short>(LeeEntero(campos[tabla::kParajeNumOrden]));
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
    return LeeTabla(IDS_LEYENDO_PARCELAS, ArchivoParcelas, tabla::kCamposParcela, *municipio,
                    [&](std::string_view fila, CCampos campos) {
                        if (!campos[tabla::kNumImputa].empty() && !campos[tabla::kTit].empty() &&
                            !campos[tabla::kPartici].empty())
                            TomaParcela(fila, campos, avisos, *municipio);
                    });
}

void CVexaACampiva2Dlg::TomaParcela(std::string_view fila, CCampos campos, const CAvisos& avisos,
                                    CMunicipio& municipio)
{
    const int polig = LeeEntero(campos[tabla::kPolig]);
    const int numero = LeeEntero(campos[tabla::kParcela]);
    const int numImputa = LeeEntero(campos[tabla::kNumImputa]);
    const int numParaje = LeeEntero(campos[tabla::kParaje]);
    const int partici = LeeEntero(campos[tabla::kPartici]);
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
    municipio.DameParcela(i).InsertaCotitular(titular, kOrdenPrincipal, partici,
                                              campos[tabla::kTit]);
    if (titular >= 0)
        municipio.InsertaPropiedad(titular, i, partici, campos[tabla::kTit]);
}

bool CVexaACampiva2Dlg::LeeSubparcelas(CStdioFile* log, int* numErrores, int* numWarnings,
                                       CMunicipio* municipio)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    constexpr std::size_t kCampos = 6;
    return LeeTabla(
        IDS_LEYENDO_SUBPARCELAS, ArchivoSubparcelas, kCampos, *municipio,
        [&](std::string_view fila, CCampos campos) {
            const int polig = LeeEntero(campos[tabla::kPolig]);
            const int numero = LeeEntero(campos[tabla::kParcela]);
            int i = kNoEncontrado;
            if (!municipio->BuscaParcela(polig, numero, i)) {
                Avisa(avisos, kSubparcelaSinParcela, polig, numero, campos[tabla::kLetra]);
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
                Avisa(avisos, kSubparcelaDuplicada, parcela.Polig, parcela.Parcela, letra);
        });
}

bool CVexaACampiva2Dlg::LeeCotitulares(CStdioFile* log, int* numErrores, int* numWarnings,
                                       CMunicipio* municipio)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    constexpr std::size_t kCampos = 8;
    return LeeTabla(
        IDS_LEYENDO_COTITULARES, ArchivoCotitulares, kCampos, *municipio,
        [&](std::string_view /*fila*/, CCampos campos) {
            const int polig = LeeEntero(campos[tabla::kPolig]);
            const int numero = LeeEntero(campos[tabla::kParcela]);
            int i = kNoEncontrado;
            if (!municipio->BuscaParcela(polig, numero, i)) {
                Avisa(avisos, kCotitularSinParcela, polig, numero);
                return;
            }
            const int numOrden = LeeEntero(campos[tabla::kCotitularNumOrden]);
            const int titular = municipio->BuscaTitularNumOrden(numOrden);
            if (titular < 0) {
                Avisa(avisos, kCotitularSinTitular, numOrden);
                return;
            }
            if (campos[tabla::kCotitularTit].empty() || campos[tabla::kCotitularPartici].empty())
                return;
            const int partici = LeeEntero(campos[tabla::kCotitularPartici]);
            municipio->DameParcela(i).InsertaCotitular(titular, kSinOrden, partici,
                                                       campos[tabla::kCotitularTit]);
            municipio->InsertaPropiedad(titular, i, partici, campos[tabla::kCotitularTit]);
        });
}
