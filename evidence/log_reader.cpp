#include "evidence/log_reader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "evidence/units.h"
#include "platform/format.h"
#include "vexa_libs/ccadena.h"

namespace {

/// What an argument of a message says: whole numbers first, then coordinates.
enum class Papel { Polig, Parcela, Numero, Superficie, Suma, X, Y, Letra, Texto };

using enum Papel;

/// What the arguments of a message say, in order. The catalogue knows the kinds of its arguments
/// and not what they stand for: who raises a message has them by name, and only who reads a log
/// back asks for more.
struct CPapeles {
    Mensaje mensaje;
    std::array<Papel, 4> papeles;
    std::size_t cuantos;
};

// clang-format off
constexpr CPapeles kPapeles[] = {
    {kTitularNoEncontrado,    {Numero, Polig, Parcela}, 3},
    {kParajeNoEncontrado,     {Numero, Polig, Parcela}, 3},
    {kSubparcelaSinParcela,   {Polig, Parcela, Letra}, 3},
    {kCotitularSinParcela,    {Polig, Parcela}, 2},
    {kCotitularSinTitular,    {Numero}, 1},
    {kParcelaNoEnBase,        {Polig, Parcela}, 2},
    {kSubparcelaFuera,        {Letra, X, Y}, 3},
    {kSubparcelaNoEnBase,     {Polig, Parcela, Letra}, 3},
    {kParcelaNoEnGrafico,     {Polig, Parcela}, 2},
    {kSubparcelaNoEnGrafico,  {Polig, Parcela, Letra}, 3},
    {kSuperficieDifiere,      {Polig, Parcela, Superficie, Suma}, 4},
    {kSinSubparcelas,         {Polig, Parcela}, 2},
    {kSinPropietarios,        {Polig, Parcela}, 2},
    {kSubparcelaDuplicada,    {Polig, Parcela, Letra}, 3},
    {kModuloRepetido,         {Texto, Texto, Numero}, 3},
    {kMismoNombre,            {Texto}, 1},
    {kMismoDNI,               {Texto}, 1},
    {kSinTitular,             {Polig, Parcela}, 2},
    {kParcelaRepetida,        {Polig, Parcela}, 2},
    {kParcelaNoValida,        {Polig, Parcela}, 2},
    {kSubparcelaRepetida,     {Polig, Parcela, Letra}, 3},
    {kSubparcelaSinSuperficie, {Polig, Parcela, Letra}, 3},
    {kMismoIndice,            {Polig, Parcela, Texto}, 3},
    {kYaCotitular,            {Polig, Parcela, Texto}, 3},
    {kYaTitular,              {Texto, Polig, Parcela}, 3},
    {kParcelaNoInsertada,     {Polig, Parcela}, 2},
    {kSinNumImputa,           {Texto, Numero}, 2},
    {kAbstractaDifiere,       {Polig, Parcela, Letra, Superficie}, 4},
    {kSuperficieCorregida,    {Polig, Parcela, Superficie, Suma}, 4},
};
// clang-format on

constexpr std::size_t kLargoCodigo = 4;

/// Tells whether the roles are those of the message's forms, one for each and of its kind.
constexpr bool Encajan(const CPapeles& suyos)
{
    std::string_view texto = DameMensaje(suyos.mensaje).texto;
    std::size_t k = 0;
    while (!texto.empty()) {
        if (texto.front() != '%') {
            texto.remove_prefix(1);
            continue;
        }
        const char tipo = AnalizaForma(texto).tipo;
        if (k == suyos.cuantos)
            return false;
        const Papel papel = suyos.papeles[k++];
        const bool deTexto = papel == Letra || papel == Texto;
        const bool real = papel == X || papel == Y;
        if (tipo != (deTexto ? 's' : real ? 'f' : 'd'))
            return false;
    }
    return k == suyos.cuantos;
}
static_assert(std::ranges::all_of(kPapeles, Encajan));

std::span<const Papel> PapelesDe(const CMensaje& mensaje)
{
    for (const CPapeles& suyos : kPapeles)
        if (suyos.mensaje == mensaje.numero)
            return std::span(suyos.papeles).first(suyos.cuantos);
    return {};
}

/// Metres as hundredths; nothing where no drawing reaches.
int EnCentesimas(double metros)
{
    constexpr double kMayor = 21e6; // 32 bits of hundredths
    return std::abs(metros) < kMayor ? static_cast<int>(std::lround(metros * kUnidadesPorMetro))
                                     : CAviso::kNada;
}

/// Notes what an argument says. Of two texts the first one names what the message is about.
void Anota(CAviso& aviso, Papel papel, std::string_view argumento)
{
    int* const numeros[] = {&aviso.polig, &aviso.parcela, &aviso.numero, &aviso.superficie,
                            &aviso.suma,  &aviso.x,       &aviso.y};
    if (papel <= Suma)
        *numeros[static_cast<std::size_t>(papel)] = LeeEntero(argumento);
    else if (papel <= Y)
        *numeros[static_cast<std::size_t>(papel)] = EnCentesimas(LeeReal(argumento));
    else if (papel == Letra)
        aviso.letra = argumento;
    else if (aviso.texto.IsEmpty())
        aviso.texto = argumento;
}

/// Takes an argument from the front of what is left of a line: a number as far as it goes, a text
/// as far as the last place where what follows it in the form stands.
std::string_view Argumento(std::string_view& resto, char conversion, std::string_view sigue)
{
    const char* const suyos = conversion == 'd' ? "+-0123456789" : "+-.0123456789";
    std::size_t hasta = resto.size();
    if (conversion != 's')
        hasta = std::min(resto.find_first_not_of(suyos, resto.find_first_not_of(' ')), hasta);
    else if (!sigue.empty())
        hasta = resto.rfind(sigue);
    if (hasta == std::string_view::npos)
        return {};
    const std::string_view argumento = resto.substr(0, hasta);
    resto.remove_prefix(hasta);
    return argumento;
}

/// A text that was padded to four columns, as a letter is, loses the blanks in front of it.
std::string_view SinRelleno(std::string_view argumento)
{
    constexpr std::size_t kAncho = 4;
    if (argumento.size() == kAncho)
        argumento.remove_prefix(std::min(argumento.find_first_not_of(' '), kAncho));
    return argumento;
}

/// Reads the arguments of a form out of a line that was made by it. False where it wasn't.
bool LeePorForma(std::string_view forma, std::string_view linea, std::span<const Papel> papeles,
                 CAviso& aviso)
{
    if (forma.ends_with('\n'))
        forma.remove_suffix(1);
    std::size_t k = 0;
    while (!forma.empty()) {
        const std::string_view fijo = forma.substr(0, forma.find('%'));
        if (!linea.starts_with(fijo))
            return false;
        linea.remove_prefix(fijo.size());
        forma.remove_prefix(fijo.size());
        if (forma.empty())
            break;
        const CForma suya = AnalizaForma(forma);
        const bool relleno = suya.tipo == 's' && suya.ancho > 0;
        const std::string_view argumento =
            Argumento(linea, suya.tipo, forma.substr(0, forma.find('%')));
        if (argumento.data() == nullptr || k == papeles.size())
            return false;
        Anota(aviso, papeles[k++], relleno ? SinRelleno(argumento) : argumento);
    }
    return linea.empty() && k == papeles.size();
}

} // namespace

std::string_view CodigoMensaje(const CMensaje& mensaje)
{
    const std::string_view texto = mensaje.texto;
    return texto.size() > kLargoCodigo && texto[kLargoCodigo] == ':' ? texto.substr(0, kLargoCodigo)
                                                                     : std::string_view();
}

CAviso LeeMensaje(std::string_view linea)
{
    const std::string_view codigo = linea.substr(0, kLargoCodigo);
    const auto mensaje = std::ranges::find_if(Catalogo(), [&](const CMensaje& uno) {
        return !codigo.empty() && CodigoMensaje(uno) == codigo;
    });
    CAviso aviso;
    if (mensaje == Catalogo().end() ||
        !LeePorForma(mensaje->texto, linea, PapelesDe(*mensaje), aviso))
        return {};
    aviso.mensaje = &*mensaje;
    return aviso;
}
