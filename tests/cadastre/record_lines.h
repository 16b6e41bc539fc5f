#pragma once

#include <string>

#include "platform/ansi.h"

// A line of each layout and each kind, and rows to hold them against.

// Columns that aren't read hold an x. What is longer than the fields is for the last one's guard.
inline const std::string kLineaPR =
    "PR028079   123456789012345678998765       19940007654PR0559-12-SU10714500042C ";
inline const std::string kListaPR =
    "28079xxxxxxxxxxxxxx1234567890AB  LR12xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx1234567890";
inline const std::string kLineaSP =
    "SP028079   1234567890 AB ASX1994123456789E137LR12REFER-1REFER-2";
inline const std::string kLineaSC =
    "SC028079   1234567890AB  123NAVE CON PATIO123456346000001950aXXXXX1987b9c755";
inline const std::string kListaSP = "28079xxxxxxxxxxxxxx1234567890AB  LR12"
                                    "VIÑA DE SECANO                          1234567890A"_ansi;
inline const std::string kLineaTL = "TL028079xxx7001234xxxxx"
                                    "PEÑA RUIZ, JOSÉ                                             "
                                    "F01234567LE34179CALLEAVENIDA DEL GENERAL MOSCA9012xxxxxxxxxxx"
                                    "B1X xxxxxxxxxxxxxxxxxxxxxxxxx2 BAJDCH45001"_ansi;
inline const std::string kListaTL = "280790007001234xxxxxxxxxxxxxxxxxxxxxxxxx01234567L"
                                    "PEÑA RUIZ, JOSÉ                                               "
                                    "F34xxxxxxxxxxxxxxx179xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"
                                    "CALLEAVENIDA DEL GENERAL MOSCA9012x2 BAJDCH45001"_ansi;
inline const std::string kLineaMD = "MD028079xxxLR37xLabradío regadío                        "
                                    "12000012500000110021000031004100005100610000xyz."_ansi;

// Rows whose values all differ from the lines' above.
inline constexpr const char* kAntesPR = "||5|6|7|8|9|10||||ANTES|11|12||k";
inline constexpr const char* kAntesSP =
    "|||||ZZ|t|FI|77|EE|71|72|AA|73|REF1|REF2|81|ANTES|82|83|84|85|5|"
    "1|2|3|86|s|87|88|i|j|k|l|89";
inline constexpr const char* kAntesTL = "||55|ANTES|a|DNIANTES|b|c|11|22|SG|VIA|33|BL|ES|PL|PU|44";
inline constexpr const char* kAntesMD = "||PD|9|Prado|8|0.75|91|92|93|94|95|96|a|b|c";
