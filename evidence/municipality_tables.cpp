#include "evidence/municipality_tables.h"

#include <set>
#include <utility>

#include "cadastre/holder_columns.h"
#include "evidence/paths.h"
#include "evidence/written_columns.h"
#include "platform/files/cstdio_file.h"

namespace {

// What the written layout keeps of a holder: records are told apart by no more.
constexpr int kNombreEscrito = LecturaDe(kColumnasTitular, &CTitular::Nombre).ancho;
constexpr int kDniEscrito = LecturaDe(kColumnasTitular, &CTitular::DNI).ancho;

class CLectorTablas {
public:
    CLectorTablas(const CNombresTablas& tablas, short mun, const CQueSeLee& que)
        : m_tablas(tablas), m_que(que), m_leidas(mun)
    {
    }

    /// Places and holders before the parcels that name them, parcels before what hangs on them.
    CTablasLeidas Lee()
    {
        Recorre(kParajes, m_leidas.parajes, &CLectorTablas::TomaParaje);
        Recorre(kModulos, m_leidas.modulos, &CLectorTablas::TomaModulo);
        Recorre(kTitulares, m_leidas.titulares, &CLectorTablas::TomaTitular);
        Recorre(kParcelas, m_leidas.parcelas, &CLectorTablas::TomaParcela);
        Recorre(kSubparcelas, m_leidas.subparcelas, &CLectorTablas::TomaSubparcela);
        Recorre(kCotitulares, m_leidas.cotitulares, &CLectorTablas::TomaCotitular);
        return std::move(m_leidas);
    }

private:
    /// \param toma  takes a row of the municipality; false for one that lacks what it needs
    void Recorre(Tabla tabla, CFilasLeidas& clase, bool (CLectorTablas::*toma)(std::string_view))
    {
        const auto cuenta = [&](std::string_view fila, bool primera) {
            ++clase.filas;
            const int suyo = MunicipioDeFila(fila);
            if (suyo == m_municipio.Mun)
                clase.incompletas += (this->*toma)(fila) ? 0 : 1;
            else if (suyo == 0 && !primera) // which may be somebody's header
                ++clase.sinMunicipio;
            else
                ++clase.deOtro;
        };
        clase.hay = RecorreTabla(m_tablas[tabla], cuenta, m_que.modo);
    }

    /// Counts a row that was inserted: it stays, or it joined one that was there.
    void Queda(CFilasLeidas& clase, bool nueva, const CClaveRegistro& clave) const
    {
        if (!nueva)
            ++clase.unidas;
        else if (m_que.claves)
            clase.quedan.push_back(clave);
    }

    bool TomaTitular(std::string_view fila)
    {
        CTitular titular;
        if (!titular.Lee(fila, kModoTabla))
            return false;
        if (m_que.mira)
            m_que.mira(titular);
        const CClaveRegistro clave = CClaveRegistro::DeTitular(titular.Nombre.Left(kNombreEscrito),
                                                               titular.DNI.Left(kDniEscrito));
        const std::size_t antes = m_municipio.Titulares().size();
        m_municipio.InsertaTitular(std::move(titular));
        Queda(m_leidas.titulares, m_municipio.Titulares().size() > antes, clave);
        return true;
    }

    bool TomaParcela(std::string_view fila)
    {
        CFilasLeidas& clase = m_leidas.parcelas;
        CParcela parcela(0, 0, 0, {});
        CDatosLinea datos;
        if (!parcela.Lee(fila, kModoTabla, datos) || datos.faltan)
            return false;
        const auto clave = CClaveRegistro::DeParcela(parcela.Polig, parcela.Parcela);
        const int titular = m_municipio.BuscaTitularNumOrden(datos.numImputa);
        if (m_que.detalle) {
            parcela.paraje = m_municipio.BuscaParaje(datos.numParaje);
            parcela.InsertaCotitular(titular, kOrdenPrincipal, datos.partici, datos.Tit);
        }
        const std::size_t antes = m_municipio.NumParcelas();
        const int i = m_municipio.InsertaParcela(std::move(parcela));
        const bool nueva = m_municipio.NumParcelas() > antes;
        if (i < 0)
            ++clase.conMensaje;
        else
            Queda(clase, nueva, clave);
        if (nueva)
            m_vinculos.emplace(i, titular);
        return true;
    }

    bool TomaSubparcela(std::string_view fila)
    {
        CFilasLeidas& clase = m_leidas.subparcelas;
        CSubparcela subparcela;
        CDatosLinea datos;
        const bool leida = subparcela.Lee(fila, kModoTabla, datos);
        int i = kNoEncontrado;
        if (!m_municipio.BuscaParcela(datos.Polig, datos.Parcela, i)) {
            ++clase.conMensaje; // that there is no such parcel is told before anything else
            return true;
        }
        if (!leida)
            return false;
        Queda(clase, true,
              CClaveRegistro::DeSubparcela(datos.Polig, datos.Parcela, subparcela.letra));
        bool repetida =
            false; // a letter that is there is told by a message, and stays all the same
        if (m_que.detalle)
            m_municipio.DameParcela(i).InsertaSubparcela(std::move(subparcela), repetida);
        return true;
    }

    bool TomaCotitular(std::string_view fila)
    {
        CCotitular vinculo;
        CDatosLinea datos;
        const bool leido = vinculo.Lee(fila, datos);
        int i = kNoEncontrado;
        if (!m_municipio.BuscaParcela(datos.Polig, datos.Parcela, i)) {
            ++m_leidas.cotitularesSinParcela;
            return true;
        }
        const int titular = m_municipio.BuscaTitularNumOrden(datos.numImputa);
        if (titular < 0)
            ++m_leidas.cotitularesSinTitular;
        else if (leido) // a second link to the same holder adds to the first one's share
            Queda(m_leidas.cotitulares, m_vinculos.emplace(i, titular).second,
                  CClaveRegistro::DeParcela(datos.Polig, datos.Parcela));
        return titular < 0 || leido;
    }

    bool TomaParaje(std::string_view fila)
    {
        CParaje paraje;
        if (!paraje.Lee(fila, kModoTabla))
            return false;
        const std::size_t antes = m_municipio.Parajes().size();
        m_municipio.InsertaParaje(paraje);
        Queda(m_leidas.parajes, m_municipio.Parajes().size() > antes, CClaveRegistro::De(paraje));
        return true;
    }

    bool TomaModulo(std::string_view fila)
    {
        CModulo modulo;
        if (!modulo.Lee(fila, kModoTabla))
            return false;
        const std::size_t antes = m_municipio.Modulos().size();
        m_municipio.InsertaModulo(modulo);
        // The MD record has no room for the name.
        Queda(m_leidas.modulos, m_municipio.Modulos().size() > antes,
              CClaveRegistro::DeModulo({}, modulo.Cal, modulo.Inten));
        return true;
    }

    const CNombresTablas& m_tablas;
    const CQueSeLee& m_que;
    CTablasLeidas m_leidas;
    CMunicipio& m_municipio = m_leidas.municipio;
    std::set<std::pair<int, int>> m_vinculos; // parcel and holder, by their places
};

} // namespace

bool RecorreTabla(const CString& nombre, const CTomaFilaDeTabla& toma, UINT modo)
{
    CStdioFile tabla;
    if (!AbreSiHay(tabla, nombre, modo))
        return false;
    bool primera = true;
    for (CString fila; tabla.ReadString(fila); primera = false)
        if (!EsFilaEnBlanco(fila) && !(primera && EsCabecera(fila)))
            toma(fila, primera);
    return true;
}

CTablasLeidas LeeTablas(const CNombresTablas& tablas, short mun, const CQueSeLee& que)
{
    return CLectorTablas(tablas, mun, que).Lee();
}
