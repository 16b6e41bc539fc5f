#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include "platform/cstring.h"
#include "platform/help_info.h"
#include "platform/types.h"

class CWnd;

// The program's door to the help viewer.

inline constexpr UINT HH_DISPLAY_TOPIC = 0;       ///< the help file on its default topic
inline constexpr UINT HH_DISPLAY_TEXT_POPUP = 14; ///< the help of one control in a small popup

/// What the viewer is told of a popup. Its font, margins and text colour are the viewer's own.
struct HH_POPUP {
    UINT idString = 0;           ///< key of the text: the id of the control asked about
    POINT pt;                    ///< where the popup is to stand
    std::uint32_t clrBackground; ///< 0x00BBGGRR
};

/// Has the front end show help.
/// \param fichero  the help file; for a popup followed by "::" and the file inside it that holds
///                 the texts of the controls
/// \param popup    for a popup only
/// \return 1, or 0 where the viewer could show nothing, as without a help file
BOOL HtmlHelp(const CWnd* ventana, const CString& fichero, UINT mandato, const HH_POPUP* popup);

/// A help file and a file inside it as one name, such as "help.chm::texts.txt".
CString UneTemas(const CString& ayuda, const CString& interior);
/// The two parts of such a name. The second one is empty where there is no "::".
std::pair<CString, CString> ParteTemas(const CString& temas);

/// Text of a topic in a file of popup texts: the lines between ".topic ID" and the next such line,
/// joined to paragraphs as they stand, without empty lines at either end. Empty where there is no
/// such topic.
std::string_view TextoDeTema(std::string_view textos, UINT id);
