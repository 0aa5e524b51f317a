#include "frontend/export/workbook/day_numbers.h"

#include <algorithm>
#include <vector>

#include "backend/strings/dictionary.h"

namespace vexa::frontend {

bool showsDate(std::string_view code) {
    for (std::size_t i = 0; i < code.size(); ++i) {
        const char each = code[i];
        if (each == '"' || each == '[') {
            i = std::min(code.find(each == '"' ? '"' : ']', i + 1), code.size());
        } else if (each == '\\' || each == '_' || each == '*') {
            ++i;
        } else if (each == 'y' || each == 'd' || each == 'Y' || each == 'D') {
            return true;
        }
    }
    return false;
}

void countDaysFrom1904(SheetContent& content, ExportReport& report) {
    constexpr double daysTo1904 = 1462;
    std::vector<bool> isDate;
    isDate.reserve(content.styles.size());
    for (const SheetStyle& style : content.styles) isDate.push_back(showsDate(style.numberFormat));
    bool isEarlier = false;
    for (SheetCell& cell : content.cells) {
        if (cell.value != SheetValue::number || !isDate[cell.style]) continue;
        cell.number -= daysTo1904;
        isEarlier = isEarlier || cell.number < 0;
    }
    if (isEarlier) {
        report.note(translated(
            "The workbook counts days from 1904. Dates of the export before that may be shown as ####."_text
                .key()));
    }
}

}  // namespace vexa::frontend
