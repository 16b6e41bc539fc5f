#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "platform/front_end.h"

class CVentanaComun;

/// A front end in windows, as far as it is the same on every desktop: which window shows which
/// dialog, and where the box for choosing a file begins.
class CFrontalVentanas : public CFrontal {
public:
    void AtiendeUno(CDialog& dialogo) override;
    void Refleja(const CDialog& dialogo, const CControl& control) override;
    void InicioDeProceso(const CDialog& dialogo) override;
    void FinDeProceso(const CDialog& dialogo, const CEscritos& escritos) override;

protected:
    /// Shows a window in front of all others until its dialog is closed. What
    /// `CVentanaComun::Muestra` throws passes through.
    void Muestra(CVentanaComun& ventana);
    /// The window on top, also one that a run goes on behind; null for none.
    CVentanaComun* Ultima() const { return m_ventanas.empty() ? nullptr : m_ventanas.back(); }
    /// The same where it is seen: what a box stands in front of.
    CVentanaComun* Delante() const;
    /// Has the user answer a box, which a run at work waits for.
    int Espera(const std::function<int()>& caja) const;
    void DiQueNoSeVeLaAyuda(const CString& fichero);
    /// The folder that the box for choosing a file opens: that of the dialog's path, which is a
    /// whole one, else that of the file that was chosen last.
    std::filesystem::path CarpetaInicial(const CFileDialog& dialogo) const;
    /// The user has chosen a file.
    void Elige(CFileDialog& dialogo, const CString& ruta);

private:
    /// Null for a dialog that isn't shown.
    CVentanaComun* VentanaDe(const CDialog& dialogo) const;

    std::vector<CVentanaComun*> m_ventanas; // those shown, the last one on top
    std::filesystem::path m_carpeta;        // of the file that was chosen last
};
