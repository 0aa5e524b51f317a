#include "frontend/export/xlsx/sheet_columns.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "frontend/export/xlsx/package_xml.h"

namespace vexa::frontend {
namespace {

constexpr double mostWidth = 255;

/// The width of a column as the XML has it: parts of a digit's width, in whole pixels.
double widthOf(double points) {
    const double pixels = std::round(points * 96 / 72);
    return std::min(pixels / pixelsOfWidth, mostWidth);
}

std::string widthText(double width) {
    std::array<char, 32> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), std::round(width * 10'000) / 10'000).ptr;
    return " width=\"" + std::string(digits.data(), end) + "\" customWidth=\"1\"";
}

}  // namespace

void SheetColumns::add(std::string_view raw) {
    Column column;
    for (const RawAttribute& attribute : attributesOf(raw)) {
        if (attribute.name == "min") {
            column.first =
                static_cast<std::uint32_t>(std::min<std::size_t>(numberOr(attribute.value, 0), 1U << 20U));
        } else if (attribute.name == "max") {
            column.last =
                static_cast<std::uint32_t>(std::min<std::size_t>(numberOr(attribute.value, 0), 1U << 20U));
        } else if (attribute.name == "width" || attribute.name == "customWidth") {
            if (attribute.name == "width") {
                std::from_chars(attribute.value.data(), attribute.value.data() + attribute.value.size(),
                                column.width);
            }
            column.widthAttributes += attribute.whole;
        } else {
            column.isHidden |=
                attribute.name == "hidden" && (attribute.value == "1" || attribute.value == "true");
            column.attributes += attribute.whole;
        }
    }
    const bool follows = columns_.empty() || columns_.back().last < column.first;
    if (column.first > 0 && column.last >= column.first && column.last <= officeSheetLimits.columns) {
        --column.first;
        --column.last;
        if (follows) {
            columns_.push_back(std::move(column));
        }
    }
}

void SheetColumns::append(std::string& out, std::string_view prefix, const Column& column,
                          std::uint32_t first, std::uint32_t last) {
    out += '<';
    out += prefix;
    out += "col";
    out += " min=\"" + std::to_string(first + 1) + "\" max=\"" + std::to_string(last + 1) + "\"";
    out += column.widthAttributes + column.attributes + "/>";
}

std::string SheetColumns::text(std::string_view prefix, const SheetSurvey& survey) const {
    std::string out;
    auto next = columns_.begin();
    std::uint32_t done = 0;  // columns of the next element that are written
    const auto passTo = [&](std::uint32_t column) {
        while (next != columns_.end() && next->first < column) {
            const std::uint32_t first = std::max(next->first, done);
            const std::uint32_t last = std::min(next->last, column - 1);
            if (first <= last) {
                append(out, prefix, *next, first, last);
            }
            if (next->last >= column) {
                return;
            }
            ++next;
        }
    };
    for (const auto& [column, points] : wanted_) {
        passTo(column);
        const bool isThere = next != columns_.end() && next->first <= column && column <= next->last;
        Column own = isThere ? *next : Column();
        const double known = own.width >= 0 ? own.width : survey.columnWidth / pixelsOfWidth;
        const double wanted = widthOf(points);
        const bool isUsed = column < survey.columns || own.width >= 0;
        if (!own.isHidden && (!isUsed || wanted > known)) {
            own.widthAttributes = widthText(wanted);
        } else if (!isThere) {
            continue;
        }
        append(out, prefix, own, column, column);
        done = column + 1;
    }
    passTo(officeSheetLimits.columns);
    return out;
}

}  // namespace vexa::frontend
