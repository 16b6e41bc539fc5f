#pragma once

#include <map>
#include <string>

#include "platform/cstring.h"

/// What is told of many things alike. GDAL's tools fall silent after a thousand complaints, so the
/// first of each kind are told one by one, and of the rest how many there are and what they come
/// to.
class CNoticias {
public:
    CNoticias() = default;
    CNoticias(const CNoticias&) = delete;
    CNoticias& operator=(const CNoticias&) = delete;
    ~CNoticias() = default;

    // Texts come in code page 1252.

    /// Tells one, as a warning or as a failure.
    /// \param clase   what those of its kind are, in the plural
    /// \param metros  square metres that are summed up
    void Advierte(const char* clase, const CString& texto, double metros = 0);
    void Falla(const char* clase, const CString& texto);
    /// Counts an outline, which is told at the end by its name.
    /// \param noticia  what is told of it, behind a number
    void Apunta(const char* noticia, const CString& nombre);
    /// Tells what is still to be told, and forgets all.
    void Dice();

private:
    struct CCuenta {
        int veces = 0;
        double metros = 0;
    };
    struct CNombrados {
        int veces = 0;
        CString nombres;
    };
    /// Counts one, and tells whether it is one of the first.
    bool EsDeLasPrimeras(const char* clase, double metros);

    std::map<std::string, CCuenta> m_cuentas;
    std::map<std::string, CNombrados> m_nombrados;
};
