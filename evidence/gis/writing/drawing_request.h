#pragma once

#include <set>
#include <span>
#include <vector>

#include "evidence/gis/tidings.h"
#include "evidence/gis/writing/entity_input.h"
#include "evidence/gis/writing/outline_input.h"
#include "platform/ansi.h"

/// How drawings are made where there is a choice.
struct CModoDibujo {
    bool admitePiezas = false;   ///< parcels and letters in several outlines are written
    bool saltaInvalidos = false; ///< outlines that can't be drawn are left out
    Ganan ganan = Ganan::Nadie;
    CNoticias* noticias = nullptr;

    /// Tells that fields say different things, as a failure where neither is to win.
    /// \param clase    what those of its kind are, in the plural
    /// \param frase    what each of them says
    /// \param numeros  what counts where the numbers win
    /// \param rotulos  what counts where the labels win
    void AvisaContradiccion(const char* clase, const CString& frase, const char* numeros,
                            const char* rotulos) const
    {
        if (ganan == Ganan::Nadie)
            noticias->Falla(clase, frase + ". Vale uno de los dos con la opción GANAN=NUMEROS o "
                                           "GANAN=ROTULOS"_ansi);
        else
            noticias->Advierte(clase,
                               frase + ": vale " + (ganan == Ganan::Numeros ? numeros : rotulos));
    }
};

/// Layers that come. Of those that don't a drawing keeps what it has.
struct CCapasTraidas {
    bool Hay(ClaseTopologia clase) const { return recintos.contains(clase); }
    bool Hay(ClaseEntidad clase) const { return entidades.contains(clase); }
    void Pon(const CRecintoEntrante& recinto) { recintos.insert(recinto.clase); }
    void Pon(const CEntidadEntrante& entidad) { entidades.insert(entidad.Clase()); }

    std::set<ClaseTopologia> recintos;
    std::set<ClaseEntidad> entidades;
};

/// What a source brings for one drawing.
struct CPedidoDibujo {
    CString nombre;                         ///< of the drawing, for messages
    std::span<const ClaseTopologia> clases; ///< its topologies
    CCapasTraidas delOrigen;                ///< the layers that the source has
    CCapasTraidas traidas;                  ///< those that this drawing gets anew
    std::vector<CRecintoEntrante> recintos;
    std::vector<CEntidadEntrante> entidades;
};
