#include "frontend/export/xls/formula_values.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frontend/export/xls/book_text.h"

namespace vexa::frontend::biff {

namespace {

/// Of a formula's record: its value, and what says that it is no number.
constexpr std::size_t formatAt = headerBytes + 4;
constexpr std::size_t valueAt = headerBytes + 6;
constexpr std::size_t kindAt = headerBytes + 12;
constexpr std::uint16_t noNumber = 0xFFFF;
enum ValueKind : std::uint32_t { textValue, truthValue, errorValue };

/// The text behind the formula, which goes on in CONTINUE records where it is long.
std::optional<std::string> textBehind(std::string_view raw) {
    constexpr std::size_t widthAt = 2;
    std::string content;
    while (raw.size() >= headerBytes) {
        const std::uint16_t number = twoAt(raw, 0);
        const std::string_view part = raw.substr(headerBytes, twoAt(raw, 2));
        if (number == id::formulaString) {
            content = part;
        } else if (number == id::continued && !content.empty()) {
            if (part.empty() || (numberAt(part, 0, 1) & 1U) != (numberAt(content, widthAt, 1) & 1U)) break;
            content += part.substr(1);
        } else if (!content.empty()) {
            break;
        }
        raw.remove_prefix(std::min(raw.size(), headerBytes + part.size()));
    }
    return textAt(content, 0, 2);
}

}  // namespace

void appendValueOf(Records& records, const CellView& formula, BookStrings& strings) {
    const std::uint32_t format = twoAt(formula.raw, formatAt);
    if (twoAt(formula.raw, kindAt) != noNumber) {
        const std::string_view value = formula.raw.substr(valueAt, sizeof(double));
        records.begin(id::number).two(formula.row).two(formula.first).two(format).bytes(value).end();
        return;
    }
    const std::uint32_t kind = numberAt(formula.raw, valueAt, 1);
    if (kind == truthValue || kind == errorValue) {
        records.begin(id::boolErr).two(formula.row).two(formula.first).two(format);
        records.one(numberAt(formula.raw, valueAt + 2, 1)).one(kind == errorValue ? 1 : 0).end();
        return;
    }
    const std::optional<std::string> text = kind == textValue ? textBehind(formula.raw) : std::nullopt;
    if (text && !text->empty()) {
        appendText(records, formula.row, formula.first, static_cast<std::uint16_t>(format),
                   strings.add(*text, 0, 0));
    } else {
        appendBlanks(records, formula.row, formula.first, formula.first, static_cast<std::uint16_t>(format));
    }
}

}  // namespace vexa::frontend::biff
