#pragma once

#include "evidence/gis/writing/old_drawing.h"
#include "evidence/gis/writing/outline_input.h"
#include "vexa_libs/entity.h"

/// The label of an outline that has one, at a place; of an outline that was there it is its old
/// label, as far as the source doesn't say otherwise.
/// \param viejo  its old label; null for none
/// \param punto  with its height
vexageo::CTexto<int> RotuloDe(const CRecintoEntrante& recinto, const vexageo::CTexto<int>* viejo,
                              const vexageo::CPunto<int>& punto);

/// Tells whether two labels are one, but for heights and further points.
bool EsElMismo(const vexageo::CTexto<int>& a, const vexageo::CTexto<int>& b);
