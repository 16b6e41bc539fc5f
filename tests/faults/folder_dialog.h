#pragma once

#include "generator/synthetic_municipality.h"
#include "shell/frame/translation_dialog.h"
#include "tests/support/files.h"

// What the runs of these tests begin with.

inline constexpr const char* kTablas[] = {"Titulares.txt",   "Parcelas.txt", "Modulos.txt",
                                          "Subparcelas.txt", "Parajes.txt",  "Cotitulares.txt"};

inline void PonTablasDeAntes(const CCarpetaPrueba& c)
{
    for (const char* tabla : kTablas)
        c.Pon(tabla, "antes\r\n");
}

inline sintetico::CMunicipioSintetico Municipio(unsigned semilla = 7)
{
    return sintetico::Genera({.parcelas = 4, .poligonos = 1, .subparcelas = 1}, semilla);
}

/// A dialog whose run can be asked for with the names in a folder.
class CDialogoDeCarpeta {
public:
    virtual ~CDialogoDeCarpeta() = default;
    /// Presses a button; without another one that which begins the run.
    virtual void Corre(UINT mandato) = 0;
    void Corre() { Corre(IDOK); }
    virtual CTraduccionDlg& Dialogo() = 0;
};

template <class D>
class CDialogoDe : public CDialogoDeCarpeta, private D {
public:
    CDialogoDe(const CCarpetaPrueba& c, UINT plantilla)
    {
        D::Create(plantilla, nullptr);
        if constexpr (requires { D::ArchivoEntrada; })
            D::ArchivoEntrada = c.En("entrada.txt");
        if constexpr (requires { D::ArchivoTren; }) {
            D::ArchivoTren = c.En("poligonos.txt");
            D::ArchivoOrtos = c.En("ortos.TOP");
        }
        if constexpr (requires { D::ArchivoModulos; }) {
            D::ArchivoModulos = c.En("Modulos.txt");
            D::ArchivoTitulares = c.En("Titulares.txt");
            D::ArchivoParcelas = c.En("Parcelas.txt");
            D::ArchivoSubparcelas = c.En("Subparcelas.txt");
            D::ArchivoParajes = c.En("Parajes.txt");
            D::ArchivoCotitulares = c.En("Cotitulares.txt");
        }
        D::UpdateData(false);
    }
    using CDialogoDeCarpeta::Corre;
    void Corre(UINT mandato) override { D::SendMessage(WM_COMMAND, mandato, 0); }
    CTraduccionDlg& Dialogo() override { return *this; }
};
