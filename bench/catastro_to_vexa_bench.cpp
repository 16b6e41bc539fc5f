#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/silent_front_end.h"
#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "generator/cadastre_lines.h"

// The whole run of the first translation on municipalities of about 10,000, 100,000 and 1,000,000
// lines, all records in one municipality. It decides whether the look-ups of the database stay as
// they are: the time of a line may rise by 30 % from the smallest to the largest, the largest may
// take 5 s. The memory is measured from outside, by scripts/bench.

namespace fs = std::filesystem;

namespace {

void Lee(benchmark::State& estado)
{
    const CAplicacionSilenciosa aplicacion;
    const fs::path carpeta =
        fs::temp_directory_path() / ("campiva_bench_" + std::to_string(estado.range(0)));
    fs::create_directories(carpeta);
    const auto en = [&](const char* nombre) { return CString((carpeta / nombre).string()); };
    std::size_t lineas = 0;
    {
        const auto municipio =
            sintetico::Genera({.parcelas = static_cast<int>(estado.range(0))}, 1);
        const auto todas = sintetico::LineasCatastro(municipio).Todas();
        lineas = todas.size();
        sintetico::GrabaLineas(en("entrada.txt"), todas);
    }
    for (auto _ : estado) {
        CCampivaAVexaDlg dialogo;
        dialogo.EjecutaLote(en("entrada.txt"), en("m"), en("t"), en("p"), en("s"), en("j"), en("c"),
                            nullptr);
    }
    const auto entrada = static_cast<double>(fs::file_size(carpeta / "entrada.txt"));
    estado.counters["lines"] = static_cast<double>(lineas);
    estado.counters["input_MB"] = entrada / 1e6;
    estado.counters["per_line"] = benchmark::Counter(static_cast<double>(lineas),
                                                     benchmark::Counter::kIsIterationInvariantRate |
                                                         benchmark::Counter::kInvert);
    fs::remove_all(carpeta);
}

} // namespace

BENCHMARK(Lee)->Arg(2500)->Arg(25000)->Arg(250000)->Unit(benchmark::kMillisecond)->UseRealTime();
