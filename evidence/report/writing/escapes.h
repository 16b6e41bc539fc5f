#pragma once

#include <string>
#include <string_view>

// What a text must look like to stand in a page, in JSON or in a sheet. All of it is UTF-8.

namespace informe {

/// The text as HTML shows it, also inside an attribute between double quotes.
std::string Html(std::string_view utf8);
/// The text as JSON writes it, between its quotes.
std::string Json(std::string_view utf8);
/// A field of a CSV row, in quotes where it needs them. A text that a spreadsheet would take for a
/// formula gets an apostrophe.
std::string CampoCsv(std::string_view utf8);

} // namespace informe
