#pragma once

#include <chrono>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/front_end.h"
#include "platform/terminal/text_dialog.h"

/// Front end for a terminal, for a person or a script: boxes and dialogs as text and, where a
/// person watches, one progress line. Where a person reads what it prints and can answer, a box
/// waits for him, the manual is paged, and a run names what it wrote.
///
/// The help stands beside the help file: the manual as text, in a file of its name with the
/// extension txt, and the file with the texts of the controls.
class CFrontalTerminal : public CFrontal {
public:
    CFrontalTerminal();
    CFrontalTerminal(const CFrontalTerminal&) = delete;
    CFrontalTerminal& operator=(const CFrontalTerminal&) = delete;
    ~CFrontalTerminal() override;

    void MuestraModal(CDialog& dialogo) override;
    void AtiendeUno(CDialog& dialogo) override;
    int Caja(const CString& texto, const CString& titulo, UINT flags) override;
    bool AlguienContesta() const override { return m_conversa; }
    bool EligeFichero(CFileDialog& dialogo) override;
    void Refleja(const CDialog& dialogo, const CControl& control) override;
    void FinDeProceso(const CDialog& dialogo, const CEscritos& escritos) override;
    CGuionMandatos Guion() const override { return m_guion; }
    void Cierra(const CDialog& /*dialogo*/) override { AcabaProceso(); }
    bool MuestraAyuda(const CString& ficheroAyuda) override;
    bool MuestraAyudaControl(const CString& temas, const HH_POPUP& popup) override;

private:
    using Reloj = std::chrono::steady_clock;

    bool PuedePintar(Reloj::time_point ahora);
    void PintaAvance(Reloj::time_point ahora);
    void BorraAvance();
    std::string LineaAvance(Reloj::time_point ahora) const;
    bool PreguntaSiNo() const;
    /// A Ctrl-C or Ctrl-D at a question was meant for it and means nothing behind it.
    static void OlvidaTeclas();
    void Responde(CDialog& dialogo, const CRespuesta& respuesta);
    /// Carries out the next command. False at the end of the input.
    bool AtiendeMandato(CDialog& dialogo);
    /// Tells that what a command asked for couldn't be done.
    template <class... T>
    void Falla(const char* forma, const T&... argumentos);
    void AcabaProceso();
    /// The whole file, from the help's folder. Nothing, which is told, where it can't be read.
    std::optional<std::string> LeeDeLaAyuda(const std::filesystem::path& fichero);
    /// Reads a line of the standard input without its end; what passes the length of any path is
    /// dropped. False at the end of the input.
    static bool LeeLinea(std::string& linea);
    /// The same at the terminal, in the middle of a run: the end of the process is an end, too.
    static bool EsperaLinea(std::string& linea);

    bool m_entradaPersona; ///< somebody types at the standard input
    bool m_conversa;       ///< and sees what the standard output says
    bool m_avanceVisible;  ///< somebody watches the standard error
    CGuionMandatos m_guion;
    std::string m_fase;       ///< UTF-8
    bool m_faseNueva = false; ///< not drawn yet
    int m_porcentaje = 0;
    Reloj::time_point m_inicio;
    bool m_enProceso = false;
    std::deque<Reloj::time_point> m_pintadas; ///< moments of the last drawings
    std::size_t m_anchoPintado = 0;           ///< columns that the line on the screen takes
};
