#include "frontend/export/xlsx/formula_shift.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "backend/text/ascii.h"
#include "frontend/export/workbook/cell_reference.h"

namespace vexa::frontend {
namespace {

constexpr std::string_view lostReference = "#REF!";

bool isWord(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    const bool letter = (value | 0x20U) >= 'a' && (value | 0x20U) <= 'z';
    return letter || isAsciiDigit(byte) || value >= 0x80U || byte == '_' || byte == '.' || byte == '$' ||
           byte == '\\' || byte == '?';
}

/// One half of a reference: `$B`, `7`, `B$7`.
struct Half {
    std::optional<std::uint32_t> row;
    std::optional<std::uint32_t> column;
    bool rowStays = false;
    bool columnStays = false;
};

/// Takes a dollar sign off, and says whether there was one.
bool takeDollar(std::string_view& text) {
    const bool found = text.starts_with('$');
    text.remove_prefix(found ? 1 : 0);
    return found;
}

/// What `word` refers to; nothing where it is no reference.
std::optional<Half> readHalf(std::string_view word) {
    Half half;
    const bool firstStays = takeDollar(word);
    std::size_t letters = 0;
    while (letters < word.size() && word[letters] != '$' && !isAsciiDigit(word[letters])) {
        ++letters;
    }
    bool rowStays = firstStays;
    if (letters > 0) {
        half.column = readColumn(word.substr(0, letters));
        half.columnStays = firstStays;
        word.remove_prefix(letters);
        rowStays = takeDollar(word);
        if (!half.column || (word.empty() && rowStays)) {
            return std::nullopt;
        }
    }
    if (!word.empty()) {
        std::uint32_t number = 0;
        const char* const end = word.data() + word.size();
        const auto read = std::from_chars(word.data(), end, number);
        if (read.ec != std::errc() || read.ptr != end || number == 0 || number > officeSheetLimits.rows) {
            return std::nullopt;
        }
        half.row = number - 1;
        half.rowStays = rowStays;
    }
    return half.row || half.column ? std::optional(half) : std::nullopt;
}

/// Moves one number; nothing where it leaves the sheet.
std::optional<std::uint32_t> moved(std::uint32_t number, bool stays, std::int64_t by, std::uint32_t limit) {
    const std::int64_t place = std::int64_t{number} + (stays ? 0 : by);
    return place >= 0 && place < limit ? std::optional(static_cast<std::uint32_t>(place)) : std::nullopt;
}

class Shift {
  public:
    Shift(std::string_view formula, std::int64_t rows, std::int64_t columns)
        : rest_(formula), rows_(rows), columns_(columns) {}

    std::string carryOut() {
        while (!rest_.empty()) {
            const char byte = rest_.front();
            if (byte == '"' || byte == '\'') {
                copyQuoted(byte);
            } else if (byte == '[') {
                copyBrackets();
            } else if (byte == '#') {
                copyError();
            } else if (isWord(byte)) {
                word();
            } else {
                copy(1);
            }
        }
        return std::move(out_);
    }

  private:
    void copy(std::size_t count) {
        count = std::min(count, rest_.size());
        out_ += rest_.substr(0, count);
        rest_.remove_prefix(count);
    }

    void copyQuoted(char quote) {
        const std::size_t end = rest_.find(quote, 1);
        copy(end == std::string_view::npos ? rest_.size() : end + 1);
    }

    void copyBrackets() {
        int open = 0;
        std::size_t end = 0;
        do {
            open += rest_[end] == '[' ? 1 : rest_[end] == ']' ? -1 : 0;
            ++end;
        } while (open > 0 && end < rest_.size());
        copy(end);
    }

    void copyError() {
        std::size_t end = 1;
        while (end < rest_.size() && (isWord(rest_[end]) || rest_[end] == '/' || rest_[end] == '!')) {
            ++end;
        }
        copy(end);
    }

    static std::string_view leadingWord(std::string_view text) {
        const auto end = std::find_if_not(text.begin(), text.end(), isWord);
        return text.substr(0, static_cast<std::size_t>(end - text.begin()));
    }

    void word() {
        const std::string_view first = leadingWord(rest_);
        const std::string_view behind = rest_.substr(first.size());
        const std::optional<Half> half =
            behind.starts_with('(') || behind.starts_with('!') || behind.starts_with('[') ? std::nullopt
                                                                                          : readHalf(first);
        if (!half) {
            copyNumberOrWord(first);
            return;
        }
        if (half->row && half->column) {
            append(*half);
            rest_.remove_prefix(first.size());
            return;
        }
        // Whole rows or columns come in twos.
        const std::string_view second = behind.starts_with(':') ? leadingWord(behind.substr(1)) : "";
        const std::optional<Half> other = readHalf(second);
        if (!other || other->row.has_value() != half->row.has_value() ||
            other->column.has_value() != half->column.has_value()) {
            copyNumberOrWord(first);
            return;
        }
        append(*half);
        out_ += ':';
        append(*other);
        rest_.remove_prefix(first.size() + 1 + second.size());
    }

    /// A sign may stand inside of a number: 1E+5.
    void copyNumberOrWord(std::string_view text) {
        const bool isNumber = isAsciiDigit(text.front()) || text.front() == '.';
        const bool hasExponent = isNumber && (text.back() == 'E' || text.back() == 'e');
        copy(text.size());
        if (hasExponent && (rest_.starts_with('+') || rest_.starts_with('-'))) {
            copy(1);
            copy(leadingWord(rest_).size());
        }
    }

    void append(const Half& half) {
        std::string text;
        if (half.column) {
            const auto column = moved(*half.column, half.columnStays, columns_, officeSheetLimits.columns);
            if (!column) {
                out_ += lostReference;
                return;
            }
            text += half.columnStays ? "$" : "";
            appendColumn(text, *column);
        }
        if (half.row) {
            const auto row = moved(*half.row, half.rowStays, rows_, officeSheetLimits.rows);
            if (!row) {
                out_ += lostReference;
                return;
            }
            text += half.rowStays ? "$" : "";
            text += std::to_string(*row + 1);
        }
        out_ += text;
    }

    std::string_view rest_;
    std::int64_t rows_;
    std::int64_t columns_;
    std::string out_;
};

}  // namespace

std::string shiftFormula(std::string_view formula, std::int64_t rows, std::int64_t columns) {
    return Shift(formula, rows, columns).carryOut();
}

}  // namespace vexa::frontend
