#include "tests/evidence/report/report_fixture.h"

#include <set>
#include <vector>

#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

namespace {

/// Goes through the elements of a page.
class CRevision {
public:
    std::string Revisa(std::string_view pagina)
    {
        for (std::size_t i = pagina.find('<'); i < pagina.size(); i = pagina.find('<', i)) {
            const std::size_t fin = pagina.find('>', i);
            Toma(pagina.substr(i + 1, fin - i - 1));
            i = fin;
            if (!m_abiertos.empty() &&
                (m_abiertos.back() == "style" || m_abiertos.back() == "script"))
                i = pagina.find("</", i); // what they hold isn't markup
        }
        for (const std::string& abierto : m_abiertos)
            m_reparos += "open: " + abierto + "\n";
        for (const std::string& enlace : m_enlaces)
            if (!m_nombres.contains(enlace))
                m_reparos += "leads nowhere: " + enlace + "\n";
        return m_reparos;
    }

private:
    void Toma(std::string_view marca)
    {
        static const std::set<std::string> kSueltos = {"!DOCTYPE", "meta", "br", "input"};
        const std::string nombre(marca.substr(0, marca.find_first_of(" /", 1)));
        if (marca.starts_with('/')) {
            if (m_abiertos.empty() || "/" + m_abiertos.back() != nombre)
                m_reparos += "ends unopened: " + nombre + "\n";
            else
                m_abiertos.pop_back();
            return;
        }
        if (const std::string id = Valor(marca, " id=\"");
            !id.empty() && !m_nombres.insert(id).second)
            m_reparos += "twice: " + id + "\n";
        if (const std::string href = Valor(marca, " href=\"#"); !href.empty())
            m_enlaces.insert(href);
        if (!marca.ends_with('/') && !kSueltos.contains(nombre))
            m_abiertos.push_back(nombre);
    }
    static std::string Valor(std::string_view marca, std::string_view desde)
    {
        const std::size_t i = marca.find(desde);
        if (i == std::string_view::npos)
            return {};
        marca.remove_prefix(i + desde.size());
        return std::string(marca.substr(0, marca.find('"')));
    }

    std::vector<std::string> m_abiertos;
    std::set<std::string> m_nombres;
    std::set<std::string> m_enlaces;
    std::string m_reparos;
};

} // namespace

void QuitaFila(const CCarpetaPrueba& carpeta, const std::string& tabla)
{
    std::string texto = carpeta.Lee(tabla);
    texto.resize(texto.rfind('\n', texto.size() - 2) + 1);
    carpeta.Pon(tabla, texto);
}

void EjecutaAInfograf(const CCarpetaPrueba& carpeta, const std::string& lugar)
{
    CVexaAInfografDlg dialogo;
    dialogo.Create(IDD_VEXA_A_INFOGRAF, nullptr);
    dialogo.GetDlgItem(IDC_TREN)->SetWindowText(carpeta.En(lugar + "poligonos.txt"));
    dialogo.GetDlgItem(IDC_ORTOS)->SetWindowText(carpeta.En(lugar + "ortos.TOP"));
    dialogo.SendMessage(WM_COMMAND, IDOK, 0);
}

void CopiaTablas(const CCarpetaPrueba& carpeta, const char* donde)
{
    std::filesystem::create_directory(carpeta.Ruta() / donde);
    for (const char* tabla : {"Modulos.txt", "Titulares.txt", "Parcelas.txt", "Subparcelas.txt",
                              "Parajes.txt", "Cotitulares.txt"})
        std::filesystem::copy_file(carpeta.Ruta() / tabla, carpeta.Ruta() / donde / tabla);
}

std::string ReparosDePagina(std::string_view pagina)
{
    return pagina == "(no file)" ? std::string() : CRevision().Revisa(pagina);
}
