#include "evidence/report/writing/markup.h"

namespace informe {
namespace {

constexpr std::size_t kPedazo = std::size_t{1} << 16U;

// Characters that mean something in markup, and what stands for each.
constexpr std::string_view kSignos = "<>&\"'";
constexpr std::string_view kEscritos[] = {"&lt;", "&gt;", "&amp;", "&quot;", "&#39;"};

} // namespace

/// Appends a text, nearly all of whose characters stand for themselves, in as few pieces as there
/// are others.
CMarcas& CMarcas::Texto(std::string_view utf8)
{
    for (std::size_t i = utf8.find_first_of(kSignos); i != std::string_view::npos;
         i = utf8.find_first_of(kSignos)) {
        m_texto.append(utf8.substr(0, i)).append(kEscritos[kSignos.find(utf8[i])]);
        utf8.remove_prefix(i + 1);
    }
    m_texto += utf8;
    return *this;
}

CMarcas& CMarcas::PonMarca(const char* elemento, CAtributos atributos, const char* fin)
{
    m_texto.append("<").append(elemento);
    for (const CAtributo& atributo : atributos) {
        if (atributo.nombre == nullptr)
            continue;
        m_texto.append(" ").append(atributo.nombre).append("=\"");
        Texto(atributo.valor);
        m_texto += '"';
    }
    return Hecho(fin);
}

CMarcas& CMarcas::Linea()
{
    m_texto += '\n';
    if (m_escribe && m_texto.size() > kPedazo)
        Vuelca();
    return *this;
}

} // namespace informe
