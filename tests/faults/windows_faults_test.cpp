#include <string>

#include <gtest/gtest.h>

#include "platform/files/set_healing.h"
#include "platform/files/windows_handles.h"
#include "tests/faults/fault_plan.h"
#include "tests/support/files.h"

// A set of outputs is killed before each call while another program has one of its targets open.

namespace fs = std::filesystem;

namespace {

constexpr const char* kNombres[] = {"a.txt", "b.txt", "c.txt"};
constexpr std::string_view kAntes = "antes";
constexpr std::string_view kAhora = "ahora, y más largo";

/// The status of the program that writes the set, killed before its n-th call.
DWORD Escribe(const fs::path& carpeta, long vez)
{
    const std::string vezEnTexto = std::to_string(vez);
    std::wstring linea = L"\"" + fs::path(WRITER).native() + L"\" \"" + carpeta.native() + L"\" " +
                         std::wstring(vezEnTexto.begin(), vezEnTexto.end());
    STARTUPINFOW inicio = {};
    inicio.cb = sizeof inicio;
    PROCESS_INFORMATION proceso = {};
    // A busy system has at times no room for one more process.
    constexpr int kIntentos = 20;
    BOOL empezado = FALSE;
    for (int i = 0; i < kIntentos && empezado == FALSE; ++i) {
        empezado = CreateProcessW(nullptr, linea.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                  nullptr, &inicio, &proceso);
        if (empezado == FALSE)
            Sleep(250);
    }
    EXPECT_NE(empezado, FALSE) << "error " << GetLastError();
    if (empezado == FALSE)
        return ~DWORD{0};
    const sistema::Manija hilo(proceso.hThread);
    const sistema::Manija suyo(proceso.hProcess);
    DWORD estado = 0;
    WaitForSingleObject(suyo.get(), INFINITE);
    GetExitCodeProcess(suyo.get(), &estado);
    return estado;
}

/// All targets are as they were, or all are new.
void EsTodoONada(const CCarpetaPrueba& carpeta)
{
    const std::string primera = carpeta.Lee("a.txt");
    EXPECT_TRUE(primera == kAntes || primera == kAhora) << primera;
    EXPECT_EQ(carpeta.Lee("b.txt"), primera);
    EXPECT_EQ(carpeta.Lee("c.txt"), primera);
}

} // namespace

TEST(SalidasWindows, KilledWhileATargetIsOpenElsewhereAreHealed)
{
    const struct {
        const char* motivo;
        DWORD comparte;
    } casos[] = {
        {"who lets it be written", FILE_SHARE_READ | FILE_SHARE_WRITE},
        {"who lets it be renamed, too", FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE},
    };
    for (const auto& caso : casos) {
        const CCarpetaPrueba carpeta;
        std::vector<CString> nombres;
        for (const char* nombre : kNombres)
            nombres.push_back(carpeta.En(nombre));
        DWORD estado = CPlanDeFallos::kMuerto;
        long vez = 0;
        while (estado == CPlanDeFallos::kMuerto && !testing::Test::HasFailure()) {
            SCOPED_TRACE(testing::Message() << caso.motivo << ", before call " << ++vez);
            for (const char* nombre : kNombres)
                carpeta.Pon(nombre, kAntes);
            {
                const sistema::Manija abierta = sistema::AbreManija(
                    carpeta.Ruta() / "b.txt", {.acceso = GENERIC_READ, .comparte = caso.comparte});
                estado = Escribe(carpeta.Ruta(), vez);
                SanaConjuntos(nombres);
                EsTodoONada(carpeta);
            }
            SanaConjuntos(nombres);
            EsTodoONada(carpeta);
            EXPECT_EQ(carpeta.Cuantos(), 3) << "something is left beside them";
        }
        EXPECT_EQ(estado, 0U) << caso.motivo;
        EXPECT_EQ(carpeta.Lee("a.txt"), kAhora) << caso.motivo;
        EXPECT_GT(vez, 40) << caso.motivo;
    }
}
