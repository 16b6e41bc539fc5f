#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/cwinapp.h"
#include "platform/dialog.h"
#include "platform/front_end.h"
#include "tests/support/files.h"
#include "vexa_libs/cversion_app.h"

/// A box that the program showed, as one line for a test to compare: "[caption] flags: text".
struct CCajaVista {
    std::string titulo;
    std::string texto; ///< UTF-8
    UINT flags;
};

/// Front end that plays a user by a script and notes what it is shown.
class CGuion : public CFrontal {
public:
    void MuestraModal(CDialog& dialogo) override;
    void AtiendeUno(CDialog& dialogo) override;
    int Caja(const CString& texto, const CString& titulo, UINT flags) override;
    bool EligeFichero(CFileDialog& dialogo) override;
    void Refleja(const CDialog& dialogo, const CControl& control) override;
    void InicioDeProceso(const CDialog& dialogo) override;
    void FinDeProceso(const CDialog& dialogo, const CEscritos& suyos) override;
    CGuionMandatos Guion() const override { return mandatos; }
    bool MuestraAyuda(const CString& ficheroAyuda) override;
    bool MuestraAyudaControl(const CString& temas, const HH_POPUP& popup) override;

    // The script. What isn't set does nothing.
    std::function<void(CDialog&)> alMostrar;          ///< plays a whole modal dialog
    std::function<void(CDialog&, int vez)> alAtender; ///< at the n-th pump, counted from 1
    std::function<void(const CDialog&, const CControl&)> alReflejar;
    std::vector<int> respuestas; ///< of the boxes with buttons Yes and No, in order; then Yes
    CGuionMandatos mandatos;     ///< what it says of those it stands for
    CString fichero;             ///< that the user picks; empty: he gives up

    // What was seen.
    std::vector<CCajaVista> cajas;
    std::vector<std::string> ayudas;
    CEscritos escritos;               ///< by the last run, until another is asked for
    std::vector<std::string> estados; ///< what the status line said, one after another
    std::string filtros;              ///< of the last file box
    UINT flagsFichero = 0;
    int atendidos = 0;
};

/// An application with the program's resources, started with a scripted front end.
class CAplicacionPrueba : public CVersionApp {
public:
    CAplicacionPrueba();

    CGuion guion;
};

/// A test of an application in a folder of its own.
class ConAplicacion : public testing::Test {
protected:
    CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
};
