// Tables in WordprocessingML.
#pragma once

#include <string>

#include "frontend/export/office/table_parts.h"
#include "frontend/export/word/text_styles.h"

namespace vexa::frontend {

/// Appends a part of a table; `styles` gets those of its texts.
void appendDocxTable(std::string& xml, const TablePart& part, TextStyles& styles);

}  // namespace vexa::frontend
