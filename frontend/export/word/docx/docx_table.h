// Tables in WordprocessingML.
#pragma once

#include <string>

#include "frontend/export/office/table_parts.h"
#include "frontend/export/word/text_styles.h"
#include "frontend/package/packed_text.h"

namespace vexa::frontend {

/// Appends a part of a table; `styles` gets those of its texts. `take` is called between rows.
void appendDocxTable(std::string& xml, const TablePart& part, TextStyles& styles, const TextTaker& take);

}  // namespace vexa::frontend
