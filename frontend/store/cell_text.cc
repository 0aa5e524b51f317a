#include "frontend/store/cell_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>

namespace vexa::frontend {
namespace {

using tables::CellExtras;
using tables::CellKind;
using tables::DisplayFormat;
using tables::Place;
using tables::TableCell;

template <typename Number>
void appendNumber(std::string& text, Number number) {
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), result.ptr);
}

std::uint64_t memoryOfExtras(const CellExtras& extras) {
    return sizeof extras + extras.footnotes.size() * sizeof(tables::FootnoteId) +
           (extras.shown ? extras.shown->size() : 0);
}

class CellWriter {
  public:
    CellWriter(const tables::TableData& data, CellReferences& references, WritingContext& context)
        : data_(data), references_(references), context_(context) {}

    std::string write() {
        constexpr std::size_t bytesOfMany = 10;
        out_.reserve(data_.filledCount() * bytesOfMany);
        data_.forEachCell([this](Place place, const TableCell& cell) { writeCell(place, cell); });
        if (!out_.empty()) out_.pop_back();
        return std::move(out_);
    }

  private:
    void writeCell(Place place, const TableCell& cell) {
        if (place != next_) appendMarked('*', place - next_, ' ');
        next_ = place + 1;
        if (cell.kind == CellKind::text) {
            out_ += '#';
            appendNumber(out_, textNumber(cell));
        } else {
            // What is no number has no sign that would tell.
            appendNumber(out_, std::isnan(cell.number) ? std::abs(cell.number) : cell.number);
            const std::size_t format = formatNumber(cell.format);
            if (format != format_) appendMarked(':', format, '\0');
            format_ = format;
        }
        const CellExtras& extras = data_.extras(cell);
        if (!(extras == CellExtras())) {
            appendMarked('!', extrasNumber(extras), '\0');
            context_.memory += memoryOfExtras(extras);
        }
        out_ += ' ';
    }

    void appendMarked(char mark, std::uint64_t number, char behind) {
        out_ += mark;
        appendNumber(out_, number);
        if (behind != '\0') out_ += behind;
    }

    std::size_t textNumber(const TableCell& cell) {
        // One long text can be that of very many cells, and is looked for once.
        std::size_t& number = textNumbers_[cell.text];
        if (number != 0) return number;
        const std::string_view text = data_.text(cell);
        const auto [found, added] = texts_.try_emplace(text, references_.texts.size() + 1);
        if (added) references_.texts.emplace_back(text);
        return number = found->second;
    }

    // There are few of these in any table.
    std::size_t formatNumber(DisplayFormat format) {
        if (format.kind == tables::FormatKind::none) return 0;
        std::vector<DisplayFormat>& formats = references_.formats;
        const auto found = std::find(formats.begin(), formats.end(), format);
        const auto number = static_cast<std::size_t>(found - formats.begin()) + 1;
        if (found == formats.end()) formats.push_back(format);
        return number;
    }

    std::size_t extrasNumber(const CellExtras& extras) {
        const auto [found, added] =
            extras_.try_emplace({extras.shown, extras.footnotes}, references_.extras.size() + 1);
        if (added) references_.extras.push_back(extras);
        return found->second;
    }

    using ExtrasKey = std::pair<std::optional<std::string>, std::vector<tables::FootnoteId>>;

    const tables::TableData& data_;
    CellReferences& references_;
    WritingContext& context_;
    std::string out_;
    Place next_ = 0;
    std::size_t format_ = 0;                                      // of the number before
    std::unordered_map<std::uint32_t, std::size_t> textNumbers_;  // by the number in the table
    std::unordered_map<std::string_view, std::size_t> texts_;
    std::map<ExtrasKey, std::size_t> extras_;
};

/// Takes numbers and marks off the beginning of a text.
class TokenReader {
  public:
    explicit TokenReader(std::string_view tokens) : at_(tokens.data()), end_(tokens.data() + tokens.size()) {}

    [[nodiscard]] bool isAtEnd() const { return at_ == end_; }
    [[nodiscard]] bool take(char mark) {
        if (at_ == end_ || *at_ != mark) return false;
        ++at_;
        return true;
    }
    template <typename Number>
    [[nodiscard]] bool number(Number& number) {
        const auto result = std::from_chars(at_, end_, number);
        at_ = result.ptr;
        return result.ec == std::errc();
    }
    [[nodiscard]] bool number(double& number) {
        if (shortDecimal(number)) return true;
        const char* const from = at_;
        const auto result = std::from_chars(at_, end_, number);
        at_ = result.ptr;
        if (result.ec != std::errc()) return false;
        // What is no number has one spelling each.
        const std::string_view text(from, static_cast<std::size_t>(at_ - from));
        return std::isfinite(number) || text == "inf" || text == "-inf" || text == "nan";
    }
    /// A number from 1 to `most`, as an index from 0.
    [[nodiscard]] bool reference(std::size_t most, std::size_t& index) {
        if (!number(index) || index == 0 || index > most) return false;
        --index;
        return true;
    }
    /// The blank between two tokens, or the end.
    [[nodiscard]] bool between() { return at_ == end_ || (*at_ == ' ' && ++at_ != end_); }

  private:
    /// Most numbers have few digits and no exponent. They are a whole number over a power of ten, each a
    /// double without rounding, so that one division rounds as it must be. False, and nothing taken, for any
    /// other.
    [[nodiscard]] bool shortDecimal(double& number) {
        const bool negative = at_ != end_ && *at_ == '-';
        const char* const whole = at_ + (negative ? 1 : 0);
        std::uint64_t digits = 0;
        const char* at = takeDigits(whole, digits);
        std::ptrdiff_t count = at - whole;
        std::ptrdiff_t decimals = 0;
        if (count > 0 && at != end_ && *at == '.') {
            const char* const behind = at + 1;
            at = takeDigits(behind, digits);
            decimals = at - behind;
            if (decimals == 0) return false;
            count += decimals;
        }
        if (count == 0 || count > mostExactDigits || (at != end_ && (*at == 'e' || *at == 'E'))) return false;
        const double value = static_cast<double>(digits) / powersOfTen[static_cast<std::size_t>(decimals)];
        number = negative ? -value : value;
        at_ = at;
        return true;
    }

    /// Reads on in `number`, which may overflow.
    const char* takeDigits(const char* at, std::uint64_t& number) const {
        for (; at != end_ && *at >= '0' && *at <= '9'; ++at) {
            number = number * 10 + static_cast<std::uint64_t>(*at - '0');
        }
        return at;
    }

    static constexpr std::ptrdiff_t mostExactDigits = 15;
    static constexpr std::array<double, 16> powersOfTen{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

    const char* at_;
    const char* end_;
};

class CellReader {
  public:
    CellReader(std::string_view tokens, const CellReferences& references, tables::TableDataBuilder& builder,
               ReadingContext& context)
        : tokens_(tokens),
          references_(references),
          builder_(builder),
          context_(context),
          texts_(references.texts.size(), unused) {}

    bool read() {
        while (!tokens_.isAtEnd()) {
            if (!(tokens_.take('*') ? readGap() : readCell()) || !tokens_.between()) return false;
        }
        return true;
    }

  private:
    bool readGap() {
        Place count = 0;
        if (!tokens_.number(count) || count > builder_.placeCount() - place_) return false;
        place_ += count;
        return count > 0 && !tokens_.isAtEnd();
    }

    bool readCell() {
        if (place_ >= builder_.placeCount()) return false;
        if (!(tokens_.take('#') ? readText() : readNumber())) return false;
        if (tokens_.take('!') && !readExtras()) return false;
        ++place_;
        return true;
    }

    bool readText() {
        std::size_t index = 0;
        if (!tokens_.reference(references_.texts.size(), index)) return false;
        // One long text can be that of very many cells, and is looked for once.
        if (texts_[index] == unused) texts_[index] = builder_.intern(references_.texts[index]);
        builder_.setInterned(place_, texts_[index]);
        return true;
    }

    bool readNumber() {
        double number = 0;
        if (!tokens_.number(number)) return false;
        if (tokens_.take(':') && !readFormat()) return false;
        builder_.setNumber(place_, number, format_);
        return true;
    }

    bool readFormat() {
        std::size_t number = 0;
        if (!tokens_.number(number) || number > references_.formats.size()) return false;
        format_ = number == 0 ? DisplayFormat() : references_.formats[number - 1];
        return true;
    }

    bool readExtras() {
        std::size_t index = 0;
        if (!tokens_.reference(references_.extras.size(), index)) return false;
        const CellExtras& extras = references_.extras[index];
        // One text of a small file can be that of very many cells.
        if (!context_.keep(memoryOfExtras(extras))) return false;
        if (extras.shown) builder_.setShown(place_, extras.shown);
        if (!extras.footnotes.empty()) builder_.setFootnotes(place_, extras.footnotes);
        return true;
    }

    TokenReader tokens_;
    const CellReferences& references_;
    tables::TableDataBuilder& builder_;
    ReadingContext& context_;
    static constexpr std::uint32_t unused = UINT32_MAX;
    std::vector<std::uint32_t> texts_;  // their numbers in the table, as far as they have been used
    Place place_ = 0;
    DisplayFormat format_;
};

}  // namespace

std::string writeCells(const tables::TableData& data, CellReferences& references, WritingContext& context) {
    return CellWriter(data, references, context).write();
}

std::uint64_t countCells(std::string_view tokens) {
    if (tokens.empty()) return 0;
    const std::uint64_t all = countByte(tokens, ' ') + 1;
    return all - std::min(all, countByte(tokens, '*'));
}

bool readCells(std::string_view tokens, const CellReferences& references, tables::TableDataBuilder& builder,
               ReadingContext& context) {
    return CellReader(tokens, references, builder, context).read();
}

std::string writePlaceRuns(std::vector<PlaceRun> values) {
    std::sort(values.begin(), values.end(),
              [](const PlaceRun& left, const PlaceRun& right) { return left.place < right.place; });
    std::string out;
    for (std::size_t i = 0; i < values.size();) {
        std::size_t behind = i + 1;
        while (behind < values.size() && values[behind].value == values[i].value &&
               values[behind].place == values[i].place + (behind - i)) {
            ++behind;
        }
        if (!out.empty()) out += ' ';
        appendNumber(out, values[i].place);
        if (behind - i > 1) {
            out += '+';
            appendNumber(out, behind - i);
        }
        out += ':';
        appendNumber(out, values[i].value);
        i = behind;
    }
    return out;
}

bool readPlaceRuns(std::string_view tokens, Place placeCount, std::uint32_t most,
                   std::vector<PlaceRun>& runs) {
    TokenReader reader(tokens);
    Place free = 0;
    while (!reader.isAtEnd()) {
        PlaceRun run{0, 1, 0};
        const bool read = reader.number(run.place) && (!reader.take('+') || reader.number(run.count)) &&
                          reader.take(':') && reader.number(run.value) && reader.between();
        if (!read || run.place < free || run.count == 0 || run.place >= placeCount ||
            run.count > placeCount - run.place || run.value == 0 || run.value > most) {
            return false;
        }
        free = run.place + run.count;
        runs.push_back(run);
    }
    return true;
}

}  // namespace vexa::frontend
