#include "frontend/export/xls/book_styles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

#include "backend/strings/dictionary.h"
#include "frontend/export/office/office_values.h"
#include "frontend/export/xls/book_text.h"

namespace vexa::frontend::biff {

namespace {

using tables::BorderLine;
using tables::HorizontalAlign;
using tables::LineStyle;

/// Numbers of codes that need no record.
constexpr std::array<std::pair<std::string_view, std::uint16_t>, 10> fixedCodes{{{"", 0},
                                                                                 {"General", 0},
                                                                                 {"0", 1},
                                                                                 {"0.00", 2},
                                                                                 {"#,##0", 3},
                                                                                 {"#,##0.00", 4},
                                                                                 {"0%", 9},
                                                                                 {"0.00%", 10},
                                                                                 {"0.00E+00", 11},
                                                                                 {"@", 49}}};
/// Numbers of fonts leave this one out.
constexpr std::size_t missingFont = 4;
/// Of the format of a cell.
constexpr std::uint32_t isLocked = 1;

std::uint16_t fontNumber(std::size_t place) {
    return static_cast<std::uint16_t>(place < missingFont ? place : place + 1);
}

std::uint32_t lineNumber(const BorderLine& line) {
    switch (line.style) {
        case LineStyle::none:
            break;
        case LineStyle::thin:
            return 1;
        case LineStyle::medium:
            return 2;
        case LineStyle::dashed:
            return 3;
        case LineStyle::dotted:
            return 4;
        case LineStyle::thick:
            return 5;
        case LineStyle::twofold:
            return 6;
    }
    return 0;
}

std::uint32_t alignmentOf(const SheetStyle& style) {
    constexpr std::uint32_t wraps = 8;
    std::uint32_t across = 0;
    if (style.horizontal == HorizontalAlign::left) across = 1;
    if (style.horizontal == HorizontalAlign::center) across = 2;
    if (style.horizontal == HorizontalAlign::right) across = 3;
    const auto down = static_cast<std::uint32_t>(style.vertical);  // top, center, bottom
    return across | (style.wraps ? wraps : 0) | down << 4U;
}

/// Dots of 1/96 inch that a digit takes in a font of that size, as spreadsheets round them.
double digitWidthOf(std::string_view name, double points) {
    const double ems = name == "Calibri" ? 0.507 : 0.556;
    return std::max(1.0, std::round(points / 72 * 96 * ems));
}

/// How much of a style would be lost in the place of another.
int loss(const SheetStyle& style, const SheetStyle& other) {
    int lost = 0;
    if (style.numberFormat != other.numberFormat) lost += 100;
    if (style.wraps != other.wraps) lost += 6;
    if (style.background != other.background) lost += 6;
    if (style.color != other.color) lost += 5;
    if (style.bold != other.bold) lost += 5;
    if (style.horizontal != other.horizontal) lost += 4;
    if (style.italic != other.italic) lost += 3;
    if (style.underline != other.underline) lost += 3;
    if (style.font != other.font) lost += 2;
    if (style.size != other.size) lost += 2;
    if (style.vertical != other.vertical) lost += 1;
    for (std::size_t i = 0; i < style.borders.size(); ++i) lost += style.borders[i] != other.borders[i];
    return lost;
}

void countColors(const SheetStyle& style, std::size_t cells, std::map<std::uint32_t, std::size_t>& uses) {
    uses[style.color.rgb] += cells;
    if (style.background) uses[style.background->rgb] += cells;
    for (const BorderLine& line : style.borders) {
        if (line.style != LineStyle::none) uses[line.color.rgb] += cells;
    }
}

}  // namespace

BookStyles::BookStyles(const std::vector<RecordView>& globals, bool isNew) : isNew_(isNew) {
    for (const auto& [code, number] : fixedCodes) numberFormatNumbers_.emplace(code, number);
    for (const RecordView& record : globals) {
        if (record.id == id::font) {
            readFont(record.content());
        } else if (record.id == id::format) {
            readNumberFormat(record.content());
        } else if (record.id == id::palette) {
            palette_.read(record.content());
        } else if (record.id == id::xf) {
            formatNumbers_.emplace(record.content(), static_cast<std::uint16_t>(formatCount_++));
        }
    }
}

void BookStyles::readFont(std::string_view content) {
    fontNumbers_.emplace(content, fontNumber(fontCount_));
    if (fontCount_++ == 0) {
        constexpr double twips = 20;
        digitWidth_ = digitWidthOf(textAt(content, 14, 1).value_or(std::string()), twoAt(content, 0) / twips);
    }
}

void BookStyles::readNumberFormat(std::string_view content) {
    const std::uint16_t number = twoAt(content, 0);
    const auto code = textAt(content, 2, 2);
    if (!code) return;
    // A workbook may say anew what a fixed number shows.
    std::erase_if(numberFormatNumbers_,
                  [number](const auto& known) { return known.second == number && number != 0; });
    numberFormatNumbers_.emplace(*code, number);
    nextNumberFormat_ = std::max(nextNumberFormat_, static_cast<std::uint16_t>(number + 1));
    ++numberFormatCount_;
}

std::vector<CellFormat> BookStyles::add(const SheetContent& content, ExportReport& report) {
    takeColors(content, report);
    std::vector<bool> raised(content.styles.size(), false);
    for (const SheetCell& cell : content.cells) {
        if (cell.raised > 0) raised[cell.style] = true;
    }
    // First one style of every number format: values are worth more than their dress.
    std::vector<SheetStyleId> order;
    std::unordered_map<std::string_view, SheetStyleId> codes;
    for (SheetStyleId id = 0; id < content.styles.size(); ++id) {
        if (codes.emplace(content.styles[id].numberFormat, id).second) order.push_back(id);
    }
    for (SheetStyleId id = 0; id < content.styles.size(); ++id) {
        if (codes[content.styles[id].numberFormat] != id) order.push_back(id);
    }
    added_.assign(content.styles.size(), {});
    for (const SheetStyleId id : order) {
        added_[id].format = formatOf(content, id);
        if (raised[id]) added_[id].raisedFont = fontOf(content.styles[id], true);
    }
    if (isFull_) {
        report.note(composed(
            "A workbook of the format XLS has at most ^1 styles and ^2 fonts. Some cells have a style that is only like their own."_text,
            {std::to_string(mostFormats), std::to_string(mostFonts)}));
    }
    return added_;
}

void BookStyles::takeColors(const SheetContent& content, ExportReport& report) {
    std::vector<std::size_t> cells(content.styles.size(), 0);
    for (const SheetCell& cell : content.cells) ++cells[cell.style];
    std::map<std::uint32_t, std::size_t> uses;
    for (std::size_t id = 0; id < cells.size(); ++id) {
        if (cells[id] > 0) countColors(content.styles[id], cells[id], uses);
    }
    if (isNew_) palette_.take(uses);
    const auto lost = std::count_if(uses.begin(), uses.end(),
                                    [this](const auto& use) { return !palette_.holds({use.first}); });
    if (lost > 0) {
        report.note(composed(
            "The palette of the workbook has no room for ^1 of the colors of the export. Others that are most like them take their places."_text,
            {std::to_string(lost)}));
    }
}

std::uint16_t BookStyles::fontOf(const SheetStyle& style, bool raised) {
    // Two of the flags say once more what fields behind them do; some readers look there.
    constexpr std::uint32_t bold = 1;
    constexpr std::uint32_t slanted = 2;
    constexpr std::uint32_t underlined = 4;
    constexpr std::uint32_t usualWeight = 400;
    constexpr std::uint32_t boldWeight = 700;
    const double points = std::clamp(style.size, 1.0, 409.0);
    std::string record;
    Records records(record);
    records.begin(id::font).two(static_cast<std::uint32_t>(std::lround(points * 20)));
    records.two((style.bold ? bold : 0) | (style.italic ? slanted : 0) | (style.underline ? underlined : 0));
    records.two(palette_.nearest(style.color));
    records.two(style.bold ? boldWeight : usualWeight).two(raised ? 1 : 0).one(style.underline ? 1 : 0);
    records.one(0).one(0).one(0);  // family, character set, reserved
    appendText(records, officeFont(style.font), 1);
    records.end();
    const std::string content = record.substr(headerBytes);
    const auto known = fontNumbers_.find(content);
    if (known != fontNumbers_.end()) return known->second;
    if (fontCount_ >= mostFonts) {
        isFull_ = true;
        return 0;
    }
    newFonts_ += record;
    return fontNumbers_.emplace(content, fontNumber(fontCount_++)).first->second;
}

std::uint16_t BookStyles::numberFormatOf(const std::string& code) {
    const auto known = numberFormatNumbers_.find(code);
    if (known != numberFormatNumbers_.end()) return known->second;
    if (numberFormatCount_ >= 2 * mostNumberFormats) {
        isFull_ = true;
        return 0;
    }
    ++numberFormatCount_;
    Records records(newNumberFormats_);
    records.begin(id::format).two(nextNumberFormat_);
    appendText(records, code, 2);
    records.end();
    return numberFormatNumbers_.emplace(code, nextNumberFormat_++).first->second;
}

std::string BookStyles::formatContent(const SheetStyle& style) {
    constexpr std::uint32_t everythingOwn = 0xFC;
    constexpr std::uint32_t solid = 1;
    constexpr std::uint32_t automaticGround = 0x41;
    constexpr std::uint32_t automaticPattern = 0x40;
    const auto& [top, right, bottom, left] = style.borders;
    const auto color = [this](const BorderLine& line) -> std::uint32_t {
        return line.style == LineStyle::none ? 0 : palette_.nearest(line.color);
    };
    std::string content;
    Records records(content);
    records.two(fontOf(style, false)).two(numberFormatOf(style.numberFormat)).two(isLocked);
    records.one(alignmentOf(style)).one(0).one(0).one(everythingOwn);
    records.four(lineNumber(left) | lineNumber(right) << 4U | lineNumber(top) << 8U |
                 lineNumber(bottom) << 12U | color(left) << 16U | color(right) << 23U);
    records.four(color(top) | color(bottom) << 7U | (style.background ? solid << 26U : 0));
    records.two(style.background ? palette_.nearest(*style.background) | automaticGround << 7U
                                 : automaticPattern | automaticGround << 7U);
    return content;
}

std::uint16_t BookStyles::formatOf(const SheetContent& content, SheetStyleId id) {
    if (formatCount_ >= mostFormats && !known_.empty()) {
        isFull_ = true;
        return likest(content, id);
    }
    const std::string wanted = formatContent(content.styles[id]);
    const auto known = formatNumbers_.find(wanted);
    if (known != formatNumbers_.end()) {
        known_.push_back(id);
        return known->second;
    }
    if (formatCount_ >= mostFormats) {
        isFull_ = true;
        return plainFormat;
    }
    known_.push_back(id);
    Records(newFormats_).begin(id::xf).bytes(wanted).end();
    return formatNumbers_.emplace(wanted, static_cast<std::uint16_t>(formatCount_++)).first->second;
}

std::uint16_t BookStyles::likest(const SheetContent& content, SheetStyleId id) const {
    const auto less = [&](SheetStyleId a, SheetStyleId b) {
        return loss(content.styles[id], content.styles[a]) < loss(content.styles[id], content.styles[b]);
    };
    return added_[*std::min_element(known_.begin(), known_.end(), less)].format;
}

}  // namespace vexa::frontend::biff
