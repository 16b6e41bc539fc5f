#include "evidence/report/findings/shown_lines.h"

#include <map>

#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/text.h"
#include "platform/files/cfile_exception.h"
#include "platform/files/system_files.h"

namespace informe {

CLineasMostradas::CLineasMostradas(const CRegistroLeido& registro)
{
    const bool todas = registro.avisos.size() <= topes::kLineas;
    std::map<const CMensaje*, int> dichos;
    for (std::uint32_t i = 0; i < registro.avisos.size(); ++i)
        if (todas || dichos[registro.avisos[i].mensaje]++ < topes::kLineasDeCadaNumero)
            m_posiciones.insert(i);
    auto elegida = m_posiciones.begin();
    registro.RecorreConAvisos([&](const CAviso& aviso, const CString& texto) {
        if (elegida == m_posiciones.end() || *elegida + 1 != aviso.linea)
            return;
        m_lineas.push_back({*elegida, Texto(texto)});
        ++elegida;
    });
    if (elegida != m_posiciones.end()) // its run, or another one, wrote it anew meanwhile
        throw CFileException(registro.Nombre(), sistema::kDeOtro, true);
}

} // namespace informe
