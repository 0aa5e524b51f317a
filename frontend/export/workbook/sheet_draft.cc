#include "frontend/export/workbook/sheet_draft.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "backend/strings/dictionary.h"
#include "backend/text/utf8.h"

namespace vexa::frontend {

namespace {

class Hash {
  public:
    template <typename T>
    void add(const T& value) {
        state_ ^= std::hash<T>()(value) + 0x9E3779B97F4A7C15U + (state_ << 6) + (state_ >> 2);
    }
    [[nodiscard]] std::size_t value() const { return state_; }

  private:
    std::size_t state_ = 0;
};

std::size_t hashOf(const SheetStyle& style) {
    Hash hash;
    hash.add(style.font);
    hash.add(style.size);
    hash.add((style.bold ? 1 : 0) | (style.italic ? 2 : 0) | (style.underline ? 4 : 0) |
             (style.wraps ? 8 : 0) | static_cast<int>(style.horizontal) << 4 |
             static_cast<int>(style.vertical) << 8);
    hash.add(style.color.rgb);
    hash.add(style.background ? style.background->rgb : UINT32_MAX);
    for (const tables::BorderLine& line : style.borders) {
        hash.add(line.color.rgb << 3 | static_cast<std::uint32_t>(line.style));
    }
    hash.add(style.numberFormat);
    return hash.value();
}

/// Bytes at the beginning that cells hold as they are, whatever stands behind them.
std::size_t plainPrefix(std::string_view text) {
    const auto* const end = std::find_if(text.begin(), text.end(), [](char each) {
        const auto byte = static_cast<unsigned char>(each);
        return byte >= 0x7F || (byte < ' ' && each != '\n' && each != '\t');
    });
    return static_cast<std::size_t>(end - text.begin());
}

bool isHeldByCells(const Utf8Character& character) {
    const char32_t code = character.code;
    const bool isControl = code < ' ' || (code >= 0x7F && code < 0xA0);
    return character.valid && !isControl && code != 0xFFFE && code != 0xFFFF;
}

/// Units of a text as a cell holds it, where a line ends in one character.
std::size_t unitsInCell(std::string_view text) {
    std::size_t pairs = 0;
    for (std::size_t i = text.find("\r\n"); i != std::string_view::npos; i = text.find("\r\n", i + 2))
        ++pairs;
    return textUnits(text) - pairs;
}

std::string numberOf(const ExportedItem& item) { return std::to_string(item.number); }

}  // namespace

std::size_t textUnits(std::string_view text) {
    std::size_t units = 0;
    for (const char each : text) {
        const auto byte = static_cast<unsigned char>(each);
        if ((byte & 0xC0U) != 0x80) ++units;
        if (byte >= 0xF0) ++units;
    }
    return units;
}

void appendCellText(std::string& out, std::string_view text) {
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t plain = plainPrefix(text.substr(i));
        out.append(text.substr(i, plain));
        i += plain;
        if (i == text.size()) break;
        const Utf8Character character = decodeUtf8(text.substr(i));
        if (character.code == '\r') {
            out += '\n';
            if (text.substr(i + 1).starts_with('\n')) ++i;
        } else {
            appendUtf8(out, isHeldByCells(character) ? character.code : kReplacementCharacter);
        }
        i += character.length;
    }
}

SheetStyleId SheetDraft::intern(const SheetStyle& style) {
    const std::size_t hash = hashOf(style);
    const auto [begin, end] = byHash_.equal_range(hash);
    for (auto found = begin; found != end; ++found) {
        if (content_.styles[found->second] == style) return found->second;
    }
    const auto id = static_cast<SheetStyleId>(content_.styles.size());
    content_.styles.push_back(style);
    byHash_.emplace(hash, id);
    return id;
}

bool SheetDraft::hasRoom(const ExportedItem& item, std::uint64_t row, std::uint64_t rows,
                         std::uint64_t columns) {
    if (columns > limits_.columns) {
        report_.fail(ExportError::tooManyColumns,
                     composed("Item ^1 (^2) has ^3 columns, and a sheet of this format has ^4."_text,
                              {numberOf(item), item.shortLabel(), std::to_string(columns),
                               std::to_string(limits_.columns)}));
    } else if (row + rows > limits_.rows) {
        report_.fail(
            ExportError::other,
            composed("Item ^1 (^2) does not fit the sheet any more: sheets of this format have ^3 rows."_text,
                     {numberOf(item), item.shortLabel(), std::to_string(limits_.rows)}));
    }
    return !failed();
}

SheetCell& SheetDraft::add(std::uint32_t row, std::uint32_t column, SheetValue value, SheetStyleId style) {
    SheetCell& cell = content_.cells.emplace_back();
    cell.row = row;
    cell.column = static_cast<std::uint16_t>(column);
    cell.value = value;
    cell.style = style;
    content_.rows = std::max(content_.rows, row + 1);
    content_.columns = std::max(content_.columns, column + 1);
    return cell;
}

void SheetDraft::expect(std::size_t cells) {
    constexpr std::size_t many = 100'000;
    if (cells > many) content_.cells.reserve(content_.cells.size() + cells);
}

void SheetDraft::addBlank(std::uint32_t row, std::uint32_t column, SheetStyleId style) {
    if (!failed()) add(row, column, SheetValue::blank, style);
}

std::uint32_t SheetDraft::addNumber(std::uint32_t row, std::uint32_t column, double number,
                                    SheetStyleId style) {
    if (failed()) return 0;
    add(row, column, SheetValue::number, style).number = number;
    return static_cast<std::uint32_t>(content_.cells.size() - 1);
}

/// Where the text that was appended from `begin` on stands for the first time, if that is known: many cells
/// may have the same long one.
std::size_t SheetDraft::placeOfText(std::size_t begin) {
    constexpr std::size_t longText = 64;
    const std::string_view added = std::string_view(content_.texts).substr(begin);
    if (added.size() <= longText) return begin;
    const auto [found, isNew] =
        longTexts_.try_emplace(std::hash<std::string_view>()(added), begin, added.size());
    if (isNew) return begin;
    const auto [place, length] = found->second;
    return std::string_view(content_.texts).substr(place, length) == added ? place : begin;
}

void SheetDraft::failForLongText(const ExportedItem& item, std::size_t units) {
    report_.fail(ExportError::textTooLong,
                 composed("Item ^1 (^2) has a text of ^3 characters, and a cell takes ^4."_text,
                          {numberOf(item), item.shortLabel(), std::to_string(units),
                           std::to_string(limits_.textUnits)}));
}

std::uint32_t SheetDraft::addText(const ExportedItem& item, std::uint32_t row, std::uint32_t column,
                                  std::string_view text, std::string_view raised, SheetStyleId style) {
    if (failed()) return 0;
    // A character has at most three bytes a unit, so that one addition keeps within 32 bits.
    if (text.size() + raised.size() > UINT32_MAX / 4 || content_.texts.size() > UINT32_MAX / 4) {
        report_.fail(ExportError::other, translated("The texts are too much for one sheet."_text.key()));
        return 0;
    }
    // No unit has more bytes, so that a very long text is refused before it is copied.
    constexpr std::size_t mostBytesOfAUnit = 3;
    if (text.size() / mostBytesOfAUnit > limits_.textUnits) {
        failForLongText(item, unitsInCell(text) + textUnits(raised));
        return 0;
    }
    const std::size_t before = content_.texts.size();
    appendCellText(content_.texts, text);
    content_.texts.append(raised);
    const std::size_t begin = placeOfText(before);
    const std::size_t length = content_.texts.size() - before;
    if (begin != before) content_.texts.resize(before);
    const std::string_view held = std::string_view(content_.texts).substr(begin, length);
    if (held.size() > limits_.textUnits && textUnits(held) > limits_.textUnits) {
        failForLongText(item, textUnits(held));
        return 0;
    }
    SheetCell& cell = add(row, column, held.empty() ? SheetValue::blank : SheetValue::text, style);
    cell.textBegin = static_cast<std::uint32_t>(begin);
    cell.textLength = static_cast<std::uint32_t>(held.size());
    cell.raised = static_cast<std::uint32_t>(raised.size() - (raised.starts_with(' ') ? 1 : 0));
    return static_cast<std::uint32_t>(content_.cells.size() - 1);
}

void SheetDraft::merge(const SheetRange& range) {
    if (!failed() && (range.rows > 1 || range.columns > 1)) content_.merged.push_back(range);
}

void SheetDraft::breakPage(std::uint32_t row) {
    if (!failed() && row > 0) content_.pageBreaks.push_back(row);
}

void SheetDraft::add(SheetPicture picture) {
    if (failed()) return;
    content_.rows = std::max(content_.rows, picture.row + picture.rows);
    content_.columns = std::max(content_.columns, picture.column + 1);
    content_.pictures.push_back(std::move(picture));
}

}  // namespace vexa::frontend
