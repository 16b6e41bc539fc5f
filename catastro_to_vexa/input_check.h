#pragma once

class CStdioFile;

/// What speaks against an input being of the form that it was read as.
enum class SospechaEntrada {
    Ninguna,
    Vacia,
    OtraForma,    ///< none of its first lines is a record of the form
    SoloRetornos, ///< no line feed ends its lines, which are read as one
    ConMarca,     ///< begins with a mark of UTF-8, and its first line is read wrong
    EsUtf16,
    LineasLargas, ///< every line is longer than any of the form
    LineasCortas  ///< every line ends before the last column of the form's shortest record
};

/// Looks once more at the first lines of an input, 64 KB at most. Of a pipe, which can't be read
/// again, it only tells whether anything came. Raises CFileException where a read fails.
/// \param entrada      open, and read to where the run came
/// \param tipoEntrada  0 an exchange file, any other a list of subparcels with holders
SospechaEntrada MiraEntrada(CStdioFile& entrada, int tipoEntrada);
