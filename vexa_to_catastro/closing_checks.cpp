#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

// The last look at the municipality, when all polygons are walked.

void CVexaACampiva2Dlg::CompruebaGrafico(
    CStdioFile* log, int* numErrores, CMunicipio* municipio, std::vector<int>& parcelasVistas,
    const std::vector<CSubparcelaVista>& subparcelasVistas) const
{
    int sinWarnings = 0; // all that is told here is an error
    const CAvisos avisos{*log, *numErrores, sinWarnings};
    std::ranges::sort(parcelasVistas);
    std::vector<CSubparcelaVista> vistas = subparcelasVistas;
    std::ranges::sort(vistas);
    const bool salva = ParcelasNoEnGrafico != 0;
    for (int i = 0; i < static_cast<int>(municipio->Parcelas().size()); ++i) {
        CParcela& parcela = municipio->DameParcela(i);
        if (!std::ranges::binary_search(parcelasVistas, i)) {
            Avisa(avisos, kParcelaNoEnGrafico, parcela.Polig, parcela.Parcela);
            parcela.salvar = parcela.salvar && salva;
            continue; // its subparcels keep their marks
        }
        for (int k = 0; k < static_cast<int>(parcela.Subparcelas().size()); ++k) {
            if (std::ranges::binary_search(vistas, CSubparcelaVista{i, k}))
                continue;
            CSubparcela& subparcela = parcela.DameSubparcela(k);
            Avisa(avisos, kSubparcelaNoEnGrafico, parcela.Polig, parcela.Parcela, subparcela.letra);
            subparcela.salvar = subparcela.salvar && salva;
        }
    }
}

void CompruebaSuperficies(CStdioFile* log, int* numErrores, int* numWarnings, CMunicipio* municipio)
{
    // Square metres by which whole metres and rounded drawings part without a fault of anybody.
    constexpr std::int64_t kDiferenciaQueSeCorrige = 5;
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    for (CParcela& parcela : municipio->Parcelas()) {
        int superficie = 0;
        int suma = 0;
        parcela.SumaSuperficies(superficie, suma);
        const std::int64_t diferencia = std::abs(std::int64_t{superficie} - suma);
        if (diferencia > kDiferenciaQueSeCorrige) {
            Avisa(avisos, kSuperficieDifiere, parcela.Polig, parcela.Parcela, superficie, suma);
        } else if (diferencia > 0) {
            Avisa(avisos, kSuperficieCorregida, parcela.Polig, parcela.Parcela, superficie, suma);
            parcela.Superficie = suma;
        }
        if (parcela.IndicePrincipal() == kNoEncontrado)
            Avisa(avisos, kSinTitular, parcela.Polig, parcela.Parcela);
    }
}
