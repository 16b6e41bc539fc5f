#pragma once

#include <string>
#include <string_view>

/// What the manual says of a message, as plain text in UTF-8.
struct CConsejo {
    std::string causa;
    std::string remedio;
};

/// What the manual's page of messages says of the message with a code, "E112"; empty texts for a
/// code that the page doesn't have. Goes through the page each time.
CConsejo DameConsejo(std::string_view codigo);
