#pragma once

#include <string>
#include <string_view>

#include "platform/dialog.h"

/// A dialog as text, and the commands that stand for what a user does to it.
class CDialogoTexto {
public:
    explicit CDialogoTexto(CDialog& dialogo) : m_dialogo(dialogo) {}

    /// The title, then a line for each control: its id, its caption and its value. UTF-8.
    std::string Pinta() const;

    /// What a command left to be told.
    struct CRespuesta {
        std::string texto;  ///< UTF-8, whole lines
        bool queja = false; ///< the command wasn't understood and changed nothing
        UINT ayuda = 0;     ///< control whose help is asked for
    };
    /// Carries out one command: `ID` presses a control, `ID=text` fills an edit, picks in a list or
    /// sets a check box, `?` paints the dialog, `? ID` asks for the help of a control.
    CRespuesta Ejecuta(std::string_view mandato);

private:
    std::string Linea(const CControl& control) const;
    CRespuesta Pon(CControl& control, std::string_view valor);

    CDialog& m_dialogo;
};
