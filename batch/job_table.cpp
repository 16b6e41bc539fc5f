#include "batch/job_table.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <utility>

#include "batch/batch_texts.h"
#include "platform/ansi.h"
#include "platform/files/cstdio_file.h"

namespace lote {
namespace {

using Valores = std::array<std::string_view, 2>;

constexpr Valores kUnFichero = {}; // any name
constexpr Valores kSiNo = {"0", "1"};

// The translations that a field steers. In a job of another it would change nothing, so who wrote
// it there meant something else.
constexpr Traduccion kSoloIda[] = {Traduccion::Ida};
constexpr Traduccion kSoloVuelta[] = {Traduccion::Vuelta};
constexpr Traduccion kIdaYVuelta[] = {Traduccion::Ida, Traduccion::Vuelta};
constexpr Traduccion kConDibujos[] = {Traduccion::Vuelta, Traduccion::Infograf};

struct CCampo {
    std::string_view nombre;
    std::string_view usual;
    std::span<const Traduccion> suyas; ///< the translations that it steers
    Valores valores = kUnFichero;      ///< that it may have
};

// clang-format off
constexpr CCampo kCampos[] = {
    {"entrada", "entrada.txt", kSoloIda},
    {"tipo", "catastro", kSoloIda, {"catastro", "lista"}},
    {"lista", "poligonos.txt", kConDibujos},
    {"ortos", "ortos.TOP", kConDibujos},
    {"modificar", "0", kSoloVuelta, kSiNo},
    {"no_en_grafico", "0", kSoloVuelta, kSiNo},
    {"no_en_bd", "0", kSoloVuelta, kSiNo},
    {"concentradas", "0", kSoloVuelta, kSiNo},
    {"modulos", "Modulos.txt", kIdaYVuelta},
    {"titulares", "Titulares.txt", kIdaYVuelta},
    {"parcelas", "Parcelas.txt", kIdaYVuelta},
    {"subparcelas", "Subparcelas.txt", kIdaYVuelta},
    {"parajes", "Parajes.txt", kIdaYVuelta},
    {"cotitulares", "Cotitulares.txt", kIdaYVuelta},
};
// clang-format on

constexpr std::string_view kTraducciones[] = {"ida", "vuelta", "infograf"};

std::vector<std::string> Partes(std::string_view linea)
{
    std::vector<std::string> partes;
    while (!linea.empty()) {
        const std::string_view parte = linea.substr(0, linea.find('\t'));
        linea.remove_prefix(std::min(parte.size() + 1, linea.size()));
        if (!parte.empty())
            partes.emplace_back(parte);
    }
    return partes;
}

void PonCampo(CTrabajo& trabajo, const std::string& parte)
{
    const std::size_t igual = parte.find('=');
    const std::string nombre = parte.substr(0, igual);
    const auto* const campo =
        std::ranges::find(kCampos, nombre, [](const auto& c) { return c.nombre; });
    if (igual == std::string::npos || campo == std::end(kCampos))
        throw CLineaMala(Formatea(textos::kNoHayCampo, nombre));
    if (std::ranges::find(campo->suyas, trabajo.traduccion) == campo->suyas.end())
        throw CLineaMala(Formatea(textos::kNoEsSuyo, nombre, NombreDe(trabajo.traduccion)));
    std::string valor = parte.substr(igual + 1);
    const Valores& valores = campo->valores;
    if (valores != kUnFichero && std::ranges::find(valores, valor) == valores.end())
        throw CLineaMala(Formatea(textos::kNoHayValor, nombre, valores[0], valores[1], valor));
    if (valor.empty())
        throw CLineaMala(Formatea(textos::kFaltaValor, nombre));
    if (!trabajo.campos.emplace(nombre, std::move(valor)).second)
        throw CLineaMala(Formatea(textos::kDosVeces, nombre));
}

CTrabajo LeeTrabajo(const std::string& linea)
{
    CTrabajo trabajo;
    trabajo.linea = linea;
    const std::vector<std::string> partes = Partes(linea);
    const std::string_view traduccion = partes.empty() ? std::string_view() : partes.front();
    const auto* const cual = std::ranges::find(kTraducciones, traduccion);
    if (cual == std::end(kTraducciones))
        throw CLineaMala(Formatea(textos::kNoHayTraduccion, traduccion));
    trabajo.traduccion = static_cast<Traduccion>(cual - std::begin(kTraducciones));
    if (partes.size() < 2)
        throw CLineaMala(textos::kFaltaCarpeta);
    trabajo.carpeta = partes[1];
    for (std::size_t i = 2; i < partes.size(); ++i)
        PonCampo(trabajo, partes[i]);
    for (const auto& campo : kCampos)
        trabajo.campos.emplace(campo.nombre, campo.usual); // where the line names none
    return trabajo;
}

bool EsTrabajo(std::string_view linea)
{
    return linea.find_first_not_of(" \t\v\f") != std::string_view::npos && linea.front() != '#';
}

} // namespace

std::string_view NombreDe(Traduccion traduccion)
{
    return kTraducciones[static_cast<std::size_t>(traduccion)];
}

bool TieneNumero(const std::filesystem::path& nombre, std::string_view extension)
{
    const std::string base = sistema::Nombre(nombre.stem());
    return sistema::Nombre(nombre.extension()) == extension && !base.empty() &&
           base.front() != '0' && base.find_first_not_of("0123456789") == std::string::npos;
}

std::vector<CTrabajo> LeeTabla(const std::string& nombre)
{
    CStdioFile fichero;
    CFileException fallo;
    if (!fichero.Open(nombre, CFile::modeRead, &fallo))
        throw CLineaMala(Formatea(textos::kNoSeLee, nombre + std::string(fallo.Detalle())));
    std::vector<CTrabajo> trabajos;
    std::map<std::string, int, std::less<>> vistas; // the number of each job's line
    CString leida;
    for (int numero = 1; fichero.ReadString(leida); ++numero) {
        std::string_view linea = leida;
        if (numero == 1 && linea.starts_with(ansi::kMarcaUtf8))
            linea.remove_prefix(ansi::kMarcaUtf8.size());
        if (!EsTrabajo(linea))
            continue;
        try {
            trabajos.push_back(LeeTrabajo(std::string(linea)));
            const auto [otra, nueva] = vistas.emplace(linea, numero);
            if (!nueva) // two at a time on the same files
                throw CLineaMala(Formatea(textos::kRepite, otra->second));
        } catch (const CLineaMala& mala) {
            throw CLineaMala(Formatea(textos::kEnLinea, nombre, numero, mala.what()));
        }
        trabajos.back().numero = static_cast<int>(trabajos.size());
        trabajos.back().fila = numero;
    }
    if (trabajos.empty())
        throw CLineaMala(Formatea(textos::kSinTrabajos, nombre));
    return trabajos;
}

} // namespace lote
