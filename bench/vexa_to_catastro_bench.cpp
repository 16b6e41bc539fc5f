#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/silent_front_end.h"
#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "generator/cadastre_lines.h"
#include "generator/drawing_files.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

// The whole run of the second translation: on municipalities of 10,000 and 100,000 parcels, and on
// one polygon of 20,000 parcels with 60,000 subparcels. It decides whether the matching by geometry
// stays as it is: the time of a parcel may not rise with their number, in one polygon neither.

namespace fs = std::filesystem;

namespace {

void Cruza(benchmark::State& estado)
{
    const CAplicacionSilenciosa aplicacion;
    const fs::path carpeta =
        fs::temp_directory_path() / ("campiva_bench_cruce_" + std::to_string(estado.range(0)));
    fs::create_directories(carpeta);
    const auto en = [&](const char* nombre) { return CString((carpeta / nombre).string()); };
    std::size_t parcelas = 0;
    {
        const auto municipio = sintetico::Genera({.parcelas = static_cast<int>(estado.range(0)),
                                                  .poligonos = static_cast<int>(estado.range(1)),
                                                  .subparcelas = static_cast<int>(estado.range(2))},
                                                 1);
        parcelas = municipio.parcelas.size();
        sintetico::GrabaLineas(en("entrada.txt"), sintetico::LineasCatastro(municipio).Todas());
        sintetico::GrabaDibujos(carpeta.string(), municipio);
    }
    CCampivaAVexaDlg().EjecutaLote(en("entrada.txt"), en("m"), en("t"), en("p"), en("s"), en("j"),
                                   en("c"), nullptr);
    for (auto _ : estado) {
        CVexaACampiva2Dlg dialogo;
        dialogo.EjecutaLote(en("m"), en("t"), en("p"), en("s"), en("j"), en("c"),
                            en("poligonos.txt"), en("ortos.TOP"), 1, 0, 0, nullptr);
    }
    estado.counters["parcels"] = static_cast<double>(parcelas);
    estado.counters["per_parcel"] = benchmark::Counter(
        static_cast<double>(parcelas),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    fs::remove_all(carpeta);
}

} // namespace

BENCHMARK(Cruza)
    ->ArgNames({"parcels", "polygons", "subparcels"})
    ->Args({10000, 0, 0})
    ->Args({100000, 0, 0})
    ->Args({2000, 1, 3})
    ->Args({20000, 1, 3})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
