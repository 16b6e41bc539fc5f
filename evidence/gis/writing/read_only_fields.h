#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include <ogr_feature.h>

#include "platform/cstring.h"

class GDALDataset;

/// Fields of outlines that come out of their drawing or of the tables, so that nothing is made of
/// them. Whoever changes one is told that it has no effect.
class CSoloLeidos {
public:
    /// Keeps what a feature has in such fields.
    void Apunta(const char* capa, const OGRFeature& elemento);
    /// Tells once which of them differ from what the municipality that is there shows.
    void Avisa(const CString& lista) const;

private:
    using CClave = std::vector<std::string>; // layer, files of the polygon, number of the record
    using CValores = std::map<std::string, std::string>;

    static std::set<std::string> Distintos(const OGRFeature& antes, const CValores& valores);
    std::map<std::string, int> Cambiados(GDALDataset& datos) const;

    std::map<CClave, std::vector<CValores>> m_elementos;
};
