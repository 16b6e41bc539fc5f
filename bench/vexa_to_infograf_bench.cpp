#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/silent_front_end.h"
#include "generator/drawing_files.h"
#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

// The whole run of the third translation: on municipalities of 10,000 and 100,000 parcels, and on
// one polygon of 20,000 parcels with 60,000 subparcels. It decides whether the topologies' look-up
// stays as it is: the time of a record may not rise with their number, in one polygon neither.

namespace fs = std::filesystem;

namespace {

void GrabaInfograf(benchmark::State& estado)
{
    const CAplicacionSilenciosa aplicacion;
    const fs::path carpeta =
        fs::temp_directory_path() / ("campiva_bench_infograf_" + std::to_string(estado.range(0)));
    fs::create_directories(carpeta);
    const auto en = [&](const char* nombre) { return CString((carpeta / nombre).string()); };
    sintetico::GrabaDibujos(carpeta.string(),
                            sintetico::Genera({.parcelas = static_cast<int>(estado.range(0)),
                                               .poligonos = static_cast<int>(estado.range(1)),
                                               .subparcelas = static_cast<int>(estado.range(2))},
                                              1));
    for (auto _ : estado) {
        CVexaAInfografDlg dialogo;
        dialogo.Create(IDD_VEXA_A_INFOGRAF, nullptr);
        dialogo.GetDlgItem(IDC_TREN)->SetWindowText(en("poligonos.txt"));
        dialogo.GetDlgItem(IDC_ORTOS)->SetWindowText(en("ortos.TOP"));
        dialogo.Pulsa(*dialogo.GetDlgItem(IDOK));
    }
    constexpr double kAnchoRegistro = 128; // with its line end; the blocks' names hardly count
    const double registros =
        static_cast<double>(fs::file_size(carpeta / "045127.CSP")) / kAnchoRegistro;
    estado.counters["records"] = registros;
    estado.counters["per_record"] = benchmark::Counter(
        registros, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    fs::remove_all(carpeta);
}

} // namespace

BENCHMARK(GrabaInfograf)
    ->ArgNames({"parcels", "polygons", "subparcels"})
    ->Args({10000, 0, 0})
    ->Args({100000, 0, 0})
    ->Args({2000, 1, 3})
    ->Args({20000, 1, 3})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
