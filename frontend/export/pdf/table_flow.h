// Tables over pages: which rows and columns stand on which page, with header, title, caption and footnotes.
#pragma once

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/pdf/page_flow.h"

namespace vexa::frontend::pdf {

struct TablePages {
    PagePlace begin;             ///< where the first thing of it stands
    bool hasLongLabels = false;  ///< row labels want more than half of the page's width
};

/// Writes one grid at the place of the flow.
TablePages writeTable(const tables::TableGrid& grid, TextShaper& shaper, StructureTree& structure,
                      PageFlow& flow);

}  // namespace vexa::frontend::pdf
