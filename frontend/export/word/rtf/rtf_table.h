// Tables in the Rich Text Format.
#pragma once

#include <string>

#include "frontend/export/office/table_parts.h"
#include "frontend/export/word/rtf/rtf_styles.h"
#include "frontend/export/word/rtf/rtf_text.h"
#include "frontend/package/packed_text.h"

namespace vexa::frontend {

/// Appends the rows of a part of a table. `take` is called between them.
void appendRtfTable(std::string& rtf, const TablePart& part, RtfTables& tables, RtfStyles& styles,
                    const TextTaker& take);

}  // namespace vexa::frontend
