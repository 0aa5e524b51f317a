#include "frontend/export/workbook/day_numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "backend/strings/dictionary.h"
#include "backend/tables/formats/number_text.h"
#include "frontend/export/workbook/number_code.h"

namespace vexa::frontend {

using tables::DisplayFormat;
using tables::FormatKind;
using tables::numberText;

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

namespace {

constexpr double daysTo1904 = 1462;
/// Days up to the beginning of 1970, from which formats count.
constexpr double daysTo1970 = 25'569;

/// The day as its number's code shows it, and how many bytes behind it are the marks of footnotes.
struct DayText {
    std::string text;
    std::size_t marks = 0;
};

DayText dayText(double days, std::string_view code) {
    constexpr std::array<FormatKind, 5> kinds{FormatKind::dateTime, FormatKind::date,
                                              FormatKind::americanDate, FormatKind::europeanDate,
                                              FormatKind::sortableDate};
    for (const FormatKind kind : kinds) {
        const DisplayFormat format{kind, 0, 0};
        const std::string plain = formatCode(format);
        if (!code.starts_with(plain)) continue;
        std::string_view marks = code.substr(plain.size());
        if (marks.size() >= 2) marks = marks.substr(1, marks.size() - 2);  // its quotation marks
        DayText shown{numberText(std::round((days - daysTo1970) * secondsOfDay), format), marks.size()};
        shown.text += marks;
        return shown;
    }
    return {};
}

/// The style of a text that takes the place of a number.
SheetStyleId textStyleOf(SheetContent& content, SheetStyleId id) {
    SheetStyle style = content.styles[id];
    style.numberFormat.clear();
    if (style.horizontal == tables::HorizontalAlign::mixed) style.horizontal = tables::HorizontalAlign::right;
    const auto found = std::find(content.styles.begin(), content.styles.end(), style);
    if (found == content.styles.end()) {
        content.styles.push_back(std::move(style));
        return static_cast<SheetStyleId>(content.styles.size() - 1);
    }
    return static_cast<SheetStyleId>(found - content.styles.begin());
}

void makeText(SheetContent& content, SheetCell& cell) {
    const DayText shown = dayText(cell.number, content.styles[cell.style].numberFormat);
    cell.value = SheetValue::text;
    cell.number = 0;
    cell.textBegin = static_cast<std::uint32_t>(content.texts.size());
    cell.textLength = static_cast<std::uint32_t>(shown.text.size());
    // A blank before the marks is not raised.
    const bool hasBlank = shown.marks > 0 && shown.text[shown.text.size() - shown.marks] == ' ';
    cell.raised = static_cast<std::uint32_t>(shown.marks - (hasBlank ? 1 : 0));
    cell.style = textStyleOf(content, cell.style);
    content.texts += shown.text;
}

}  // namespace

void countDaysFrom1904(SheetContent& content, ExportReport& report) {
    std::vector<bool> isDate;
    isDate.reserve(content.styles.size());
    for (const SheetStyle& style : content.styles) isDate.push_back(showsDate(style.numberFormat));
    bool isEarlier = false;
    for (SheetCell& cell : content.cells) {
        if (cell.value != SheetValue::number || !isDate[cell.style]) continue;
        if (cell.number >= daysTo1904) {
            cell.number -= daysTo1904;
        } else {
            isEarlier = true;
            makeText(content, cell);
        }
    }
    if (isEarlier) {
        report.note(translated(
            "The workbook counts days from 1904. Dates of the export before that are texts, because the workbook has no such numbers."_text
                .key()));
    }
}

}  // namespace vexa::frontend
