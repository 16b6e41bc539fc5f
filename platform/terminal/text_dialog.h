#pragma once

#include <string>
#include <string_view>

#include "platform/dialog.h"

// A dialog as text, and the commands that stand for what a user does to it.

/// The title, then a line for each control: its id, its caption and its value. UTF-8.
std::string PintaDialogo(const CDialog& dialogo);

/// What a command left to be told.
struct CRespuesta {
    std::string texto;  ///< UTF-8, whole lines
    bool queja = false; ///< the command wasn't understood and changed nothing
    UINT ayuda = 0;     ///< control whose help is asked for
};
/// Carries out one command: `ID` presses a control, `ID=text` fills an edit, picks in a list or
/// sets a check box, `?` paints the dialog, `? ID` asks for the help of a control.
CRespuesta EjecutaMandato(CDialog& dialogo, std::string_view mandato);
