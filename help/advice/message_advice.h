#pragma once

#include <string>
#include <string_view>

/// What the manual says of a message, as plain text in UTF-8.
struct CConsejo {
    std::string causa;
    std::string remedio;
    std::string ejemplo; ///< empty where it gives none
};

/// What the manual's page of messages says of the one with the code, "E112"; empty texts for a code
/// that it doesn't have.
CConsejo DameConsejo(std::string_view codigo);
