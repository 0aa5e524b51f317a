// Days as the numbers of a workbook. Content counts them from the end of 1899; some workbooks count from
// 1904.
#pragma once

#include <string_view>

#include "frontend/export/export_report.h"
#include "frontend/export/workbook/sheet_content.h"

namespace vexa::frontend {

/// Whether a format code shows days, months or years.
[[nodiscard]] bool showsDate(std::string_view code);

/// Makes the dates of `content` those of a workbook that counts days from 1904; times stay as they are. Dates
/// before that become texts, as those before 1900 are, and the report notes it.
void countDaysFrom1904(SheetContent& content, ExportReport& report);

}  // namespace vexa::frontend
