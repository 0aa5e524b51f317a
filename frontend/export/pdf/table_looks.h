// The looks of the texts around a table, as paragraphs.
#pragma once

#include "backend/tables/layout/table_grid.h"
#include "frontend/export/pdf/page_flow.h"

namespace vexa::frontend::pdf {

[[nodiscard]] inline ParagraphLook paragraphLook(const tables::AreaLook& look) {
    ParagraphLook paragraph;
    paragraph.style = {look.font, look.size, look.bold, look.italic};
    paragraph.color = look.color;
    paragraph.underline = look.underline;
    paragraph.background = look.background;
    paragraph.align = look.horizontal;
    return paragraph;
}

}  // namespace vexa::frontend::pdf
