#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cadastre/exchange_format.h"
#include "evidence/record_key.h"
#include "evidence/report/reading/log_messages.h"
#include "platform/files/cstdio_file.h"

// What the lines of an input come to by the rules of the way out: which are kept, which join one
// that is there, which are dropped.

namespace informe {

/// In place of a type, which has two characters: the header of a list.
inline constexpr const char* kTipoCabecera = "cabecera";

/// Records that the tables should hold, and lines that left none.
struct CEntradaLeida {
    /// What the lines of a kind come to.
    struct CLineas {
        std::int64_t lineas = 0;
        std::int64_t unidas = 0;    ///< joined one that was there, without a message
        std::int64_t sinEfecto = 0; ///< left nothing, without a message
        std::vector<CClaveRegistro> quedan;

        /// Counts one that was inserted: it stays, or it joined one that was there.
        void Inserta(bool nueva, const CClaveRegistro& clave)
        {
            if (nueva)
                quedan.push_back(clave);
            else
                ++unidas;
        }
    };

    bool hay = false;     ///< it is there
    bool esLista = false; ///< a list of subparcels, no exchange file
    std::int64_t lineas = 0;
    std::int64_t vacias = 0;
    std::int64_t trozos = 0;                    ///< ends of lines longer than the reader takes
    std::map<std::string, std::int64_t> ajenas; ///< of types that the reader passes over
    CLineas modulos;
    CLineas titulares;
    CLineas parcelas;
    CLineas subparcelas;
    CLineas parajes;
    CLineas vinculos;
    std::int64_t sinVinculo = 0; ///< parcel lines too short to name a holder
    std::int64_t municipios = 0;
    std::shared_ptr<const void> base; ///< the records that were made on the way (see CBalance)
};

/// Reads the input of a way out, an exchange file or a list, whichever its first lines look like.
/// One that isn't there leaves `hay` false; one that can't be read raises CFileException.
CEntradaLeida LeeEntrada(const CString& nombre, CPersonas& personas);

// The two kinds. `personas` is told all holders.
void LeeCatastro(CStdioFile& entrada, CEntradaLeida& leida, CPersonas& personas);
void LeeRelacion(CStdioFile& entrada, CEntradaLeida& leida, CPersonas& personas);

/// Hands a reader each line of an input that holds anything, with its line end, in pieces where it
/// is longer than `Largo` characters, and counts them all. `Lector::Toma` is told whether what it
/// gets is a further piece of a line.
template <unsigned Largo, class Lector>
void RecorreLineas(CStdioFile& entrada, Lector& lector, CEntradaLeida& leida)
{
    std::array<char, Largo + 1> bufer{};
    bool entera = true; // the line before came to its end
    while (entrada.ReadString(bufer.data(), static_cast<UINT>(bufer.size())) != nullptr) {
        const std::string_view linea = bufer.data();
        ++leida.lineas;
        if (CLineaFija(linea).Vacia())
            ++leida.vacias;
        else
            lector.Toma(linea, !entera);
        entera = linea.ends_with('\n');
    }
}

} // namespace informe
