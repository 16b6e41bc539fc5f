#pragma once

#include <span>

#include "platform/cfile.h"
#include "platform/cstring.h"

/// Numbers of the messages in the string table. They never change: a technician's notes and the
/// help name them.
enum Mensaje : UINT {
    kResumenCatastro = 155,
    kTitularNoEncontrado = 156,     // E101
    kParajeNoEncontrado = 157,      // E102
    kSubparcelaSinParcela = 158,    // E103
    kCotitularSinParcela = 159,     // E104
    kCotitularSinTitular = 160,     // E105
    kParcelaNoEnBase = 161,         // E106
    kParFueraDeFecha = 162,         // E107
    kSubFueraDeFecha = 163,         // E108
    kSubparcelaFuera = 164,         // E109
    kSubparcelaNoEnBase = 165,      // E110
    kParcelaNoEnGrafico = 166,      // E111
    kSubparcelaNoEnGrafico = 167,   // E113
    kSuperficieDifiere = 168,       // E112
    kSinSubparcelas = 169,          // E201
    kSinPropietarios = 170,         // E202
    kSubparcelaDuplicada = 171,     // W301
    kModuloRepetido = 172,          // E203
    kMismoNombre = 173,             // E204
    kMismoDNI = 174,                // E205
    kSinTitular = 175,              // W302
    kParcelaRepetida = 176,         // E206
    kParcelaNoValida = 177,         // E207
    kSubparcelaRepetida = 178,      // E208
    kSubparcelaSinSuperficie = 179, // E209
    kMismoIndice = 180,             // E210
    kYaCotitular = 181,             // E211
    kYaTitular = 182,               // E212
    kParcelaNoInsertada = 183,      // E213
    kSinNumImputa = 184,            // E214
    kResumenVexa = 186,
    kAbstractaDifiere = 187,    // W303
    kSuperficieCorregida = 188, // W304
};

enum class Contador { Ninguno, Errores, Warnings };

/// One message: its number, the counter that it raises, and its text with printf forms.
struct CMensaje {
    Mensaje numero;
    Contador contador;
    const char* texto; ///< code page 1252
};

/// All messages, by number.
std::span<const CMensaje> Catalogo();
const CMensaje& DameMensaje(Mensaje numero);

/// Where a run's messages go: its log and its two counters.
struct CAvisos {
    CStdioFile& log;
    int& numErrores;
    int& numWarnings;
};

/// Writes a message to the log and raises no counter.
/// \param argumentos  int, double, char or text, in the order of the message's forms
template <class... T>
void EscribeMensaje(CStdioFile& log, Mensaje numero, const T&... argumentos)
{
    std::string& linea = log.Borrador();
    AnexaFormato(linea, DameMensaje(numero).texto, {CArgumento(argumentos)...});
    log.WriteString(linea);
}

void Cuenta(const CAvisos& avisos, Contador contador);

/// Raises a message: writes it to the log, then adds one to its counter. The log passes over a
/// write that fails; the counter is raised all the same.
template <class... T>
void Avisa(const CAvisos& avisos, Mensaje numero, const T&... argumentos)
{
    EscribeMensaje(avisos.log, numero, argumentos...);
    Cuenta(avisos, DameMensaje(numero).contador);
}
