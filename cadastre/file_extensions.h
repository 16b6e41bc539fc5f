#pragma once

// A municipality's files go by one name and differ in their extensions alone.

inline constexpr const char* kExtensionDibujo = "BIN";

// The topologies beside a drawing: of a polygon's three, and of a drawing of sheets.
inline constexpr const char* kExtensionParcelas = "PAR";
inline constexpr const char* kExtensionSubparcelas = "SUB";
inline constexpr const char* kExtensionPoligonos = "POL";
inline constexpr const char* kExtensionHojas = "TOP";

// What a run leaves: its log, the way back's records, and what goes to the graphics system.
inline constexpr const char* kExtensionRegistro = "ERR";
inline constexpr const char* kExtensionR = "R";
inline constexpr const char* kExtensionM = "M";
inline constexpr const char* kExtensionInfograf = "CSP";
