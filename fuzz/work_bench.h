#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/input.h"
#include "platform/cwinapp.h"
#include "tests/support/files.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_libs/cversion_app.h"

/// Ends the process, which is what a fuzzer takes for a find, where something doesn't hold.
void Exige(bool vale, std::string_view que, std::string_view donde = {});

/// What a target's outputs hold before a run, and never behind one.
inline constexpr std::string_view kAntes = "antes";

/// A script for a user of many runs.
class CGuionDeBanco : public CGuion {
public:
    void Olvida();           ///< what it saw of the last run
    bool HuboCierre() const; ///< the closing box was shown
};

/// The folder in which a target makes its runs, one after another, and what must hold behind each.
class CBanco {
public:
    CBanco();

    CString En(std::string_view nombre) const { return m_carpeta.En(nombre); }
    const std::filesystem::path& Ruta() const { return m_carpeta.Ruta(); }
    CGuionDeBanco& Guion() { return m_guion; }

    /// A file as it is to stand there before a run. One that is there with these bytes is left.
    void Pon(std::string_view nombre, std::string_view bytes);
    /// Makes files by a program of ours, and keeps them as if they had been put there.
    void Hace(const std::function<void()>& obra);

    /// Takes a file away, whatever it is, and forgets that it was put there.
    void Quita(std::string_view nombre);

    /// The same with all files.
    void Vacia();

    /// Makes a run with the fault and the stop that the input asks for, then looks at what it left:
    /// its outputs all replaced or all as they were, every other file untouched, and nothing else
    /// that the next run wouldn't clear away.
    /// \param conCierre  the run tells its end by a box, if and only if it has written its outputs
    void Ejecuta(const CEntrada& entrada, bool conCierre, const std::function<void()>& proceso);

    /// The log of the last run.
    const std::string& Registro() const { return m_registro; }

protected:
    CVersionApp& Aplicacion() { return m_aplicacion; }
    /// Gives a file its bytes back, or takes away one that wasn't put there.
    void Repon(const std::string& nombre);

private:
    void Comprueba(bool conCierre);
    void CompruebaFichero(const std::string& nombre, std::vector<std::string>& escritos);

    CCarpetaPrueba m_carpeta;
    CGuionDeBanco m_guion;
    CVersionApp m_aplicacion;
    std::string m_registro;
    std::map<std::string, std::string> m_puestos; ///< files by name, and their bytes
};

/// Lets the call to the system fail that an input names, as long as it lives.
class CTropiezo {
public:
    explicit CTropiezo(const CEntrada& entrada);
    CTropiezo(const CTropiezo&) = delete;
    CTropiezo& operator=(const CTropiezo&) = delete;
    ~CTropiezo();
};
