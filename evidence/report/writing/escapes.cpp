#include "evidence/report/writing/escapes.h"

#include <array>
#include <cstdio>

namespace informe {

std::string Html(std::string_view utf8)
{
    std::string html;
    html.reserve(utf8.size());
    for (const char c : utf8) {
        switch (c) {
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '&':
            html += "&amp;";
            break;
        case '"':
            html += "&quot;";
            break;
        case '\'':
            html += "&#39;";
            break;
        default:
            html += c;
        }
    }
    return html;
}

std::string Json(std::string_view utf8)
{
    std::string json = "\"";
    for (const char c : utf8) {
        if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::array<char, 8> bufer{};
            std::snprintf(bufer.data(), bufer.size(), "\\u%04X", static_cast<unsigned>(c));
            json += bufer.data();
        } else {
            json += c;
        }
    }
    return json + "\"";
}

std::string CampoCsv(std::string_view utf8)
{
    std::string campo;
    if (!utf8.empty() && std::string_view("=+-@").find(utf8.front()) != std::string_view::npos)
        campo = "'";
    campo += utf8;
    if (campo.find_first_of(";\"\r\n") == std::string::npos)
        return campo;
    std::string entreComillas = "\"";
    for (const char c : campo) {
        if (c == '"')
            entreComillas += '"';
        entreComillas += c;
    }
    return entreComillas + "\"";
}

} // namespace informe
