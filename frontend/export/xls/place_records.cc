#include "frontend/export/xls/place_records.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string_view>

namespace vexa::frontend::biff {

namespace {

/// Of the later kinds of records, which have what the earlier ones have behind a header of their own.
constexpr std::size_t laterHeaderBytes = 12;
constexpr std::size_t ruleNumberAt = 2;
constexpr std::size_t boundsAt = 4;
constexpr std::size_t rangesAt = 12;
constexpr std::size_t validationCountAt = 14;

SheetRange rangeAt(std::string_view content, std::size_t at) {
    const std::uint32_t row = twoAt(content, at);
    const std::uint32_t column = twoAt(content, at + 4);
    return {row, column, twoAt(content, at + 2) + 1 - std::min<std::uint32_t>(row, twoAt(content, at + 2)),
            twoAt(content, at + 6) + 1 - std::min<std::uint32_t>(column, twoAt(content, at + 6))};
}

void putRange(std::string& bytes, std::size_t at, const SheetRange& range) {
    setNumber(bytes, at, range.row, 2);
    setNumber(bytes, at + 2, range.row + range.rows - 1, 2);
    setNumber(bytes, at + 4, range.column, 2);
    setNumber(bytes, at + 6, range.column + range.columns - 1, 2);
}

/// Where the places of a validation are counted: behind four texts and two formulas. Nothing where it is cut
/// off.
std::optional<std::size_t> placesOfValidation(std::string_view content) {
    constexpr std::uint32_t isWide = 1;
    std::size_t at = 4;
    for (int text = 0; text < 4; ++text) {
        const std::size_t width = (numberAt(content, at + 2, 1) & isWide) != 0 ? 2U : 1U;
        at += 3 + twoAt(content, at) * width;
    }
    for (int formula = 0; formula < 2; ++formula) at += std::size_t{4} + twoAt(content, at);
    return at + 2 <= content.size() ? std::optional(at) : std::nullopt;
}

class PlaceRecords {
  public:
    PlaceRecords(const SheetFootprint& footprint, std::deque<std::string>& pieces)
        : footprint_(footprint), pieces_(pieces) {}

    void add(const RecordView& record) {
        // What goes on in further records is longer than programs make it.
        const bool isWhole = record.raw.size() == headerBytes + record.content().size();
        if (isDropping_ && isRule(record.id)) return;
        isDropping_ = false;
        if (!isWhole) {
            kept_.push_back(record);
            return;
        }
        switch (record.id) {
            case id::hyperlink:
                addForEach(record, 0);
                break;
            case id::linkTip:
                addForEach(record, 2);
                break;
            case id::conditions:
                addConditions(record, 0);
                break;
            case id::laterConditions:
                addConditions(record, laterHeaderBytes);
                break;
            case id::laterRule:
                if (!isOfDropped(record)) kept_.push_back(record);
                break;
            case id::validation:
                addValidation(record);
                break;
            default:
                kept_.push_back(record);
        }
    }

    std::vector<RecordView> finish() {
        if (lostValidations_ > 0) countValidations();
        return std::move(kept_);
    }

  private:
    static bool isRule(std::uint16_t id) { return id == id::conditionRule || id == id::laterConditionRule; }

    /// What is left of ranges. Nothing where none of them was touched.
    [[nodiscard]] std::optional<std::vector<SheetRange>> leftOf(std::string_view content, std::size_t at,
                                                                std::size_t count) const {
        std::vector<SheetRange> left;
        bool isTouched = false;
        for (std::size_t i = 0; i < count && at + rangeBytes <= content.size(); ++i, at += rangeBytes) {
            const SheetRange range = rangeAt(content, at);
            isTouched = isTouched || footprint_.touches(range);
            const std::vector<SheetRange> parts = footprint_.without(range);
            left.insert(left.end(), parts.begin(), parts.end());
        }
        return isTouched ? std::optional(std::move(left)) : std::nullopt;
    }

    void addForEach(const RecordView& record, std::size_t at) {
        const auto left = leftOf(record.content(), at, 1);
        if (!left) {
            kept_.push_back(record);
            return;
        }
        for (const SheetRange& range : *left) {
            std::string& piece = pieces_.emplace_back(record.raw);
            putRange(piece, headerBytes + at, range);
            kept_.push_back({record.id, piece});
        }
    }

    /// The record with other ranges behind their number at `at`.
    std::string& withRanges(const RecordView& record, std::size_t at, const std::vector<SheetRange>& ranges) {
        std::string& piece = pieces_.emplace_back(record.raw.substr(0, headerBytes + at));
        Records(piece).two(static_cast<std::uint32_t>(ranges.size()));
        for (const SheetRange& range : ranges) {
            piece.append(rangeBytes, '\0');
            putRange(piece, piece.size() - rangeBytes, range);
        }
        setNumber(piece, 2, static_cast<std::uint32_t>(piece.size() - headerBytes), 2);
        kept_.push_back({record.id, piece});
        return piece;
    }

    void addConditions(const RecordView& record, std::size_t header) {
        const std::string_view content = record.content();
        const std::size_t at = header + rangesAt;
        const auto left = leftOf(content, at + 2, twoAt(content, at));
        if (!left || at + 2 + left->size() * rangeBytes > mostBytes) {
            kept_.push_back(record);
        } else if (left->empty()) {
            isDropping_ = true;
            droppedRules_.insert(ruleNumber(content, header));
        } else {
            std::string& piece = withRanges(record, at, *left);
            const SheetRange bounds = boundsOf(*left);
            putRange(piece, headerBytes + header + boundsAt, bounds);
            if (header > 0) putRange(piece, headerBytes + 4, bounds);
        }
    }

    static std::uint32_t ruleNumber(std::string_view content, std::size_t header) {
        return twoAt(content, header + ruleNumberAt) >> 1U;
    }

    /// An extension of a rule names it by the number of its conditions.
    [[nodiscard]] bool isOfDropped(const RecordView& record) const {
        return droppedRules_.contains(twoAt(record.content(), laterHeaderBytes + 4));
    }

    static SheetRange boundsOf(const std::vector<SheetRange>& ranges) {
        SheetRange bounds = ranges.front();
        for (const SheetRange& range : ranges) {
            const std::uint32_t row = std::min(bounds.row, range.row);
            const std::uint32_t column = std::min(bounds.column, range.column);
            bounds = {row, column, std::max(bounds.row + bounds.rows, range.row + range.rows) - row,
                      std::max(bounds.column + bounds.columns, range.column + range.columns) - column};
        }
        return bounds;
    }

    void addValidation(const RecordView& record) {
        const auto at = placesOfValidation(record.content());
        const auto left = at ? leftOf(record.content(), *at + 2, twoAt(record.content(), *at)) : std::nullopt;
        if (!left || *at + 2 + left->size() * rangeBytes > mostBytes) {
            kept_.push_back(record);
        } else if (left->empty()) {
            ++lostValidations_;
        } else {
            withRanges(record, *at, *left);
        }
    }

    void countValidations() {
        for (RecordView& record : kept_) {
            const std::string_view content = record.content();
            if (record.id != id::validations || content.size() < validationCountAt + 4) continue;
            std::string& piece = pieces_.emplace_back(record.raw);
            const std::uint32_t count = fourAt(content, validationCountAt);
            setNumber(piece, headerBytes + validationCountAt, count - std::min(count, lostValidations_), 4);
            record.raw = piece;
        }
    }

    const SheetFootprint& footprint_;
    std::deque<std::string>& pieces_;
    std::vector<RecordView> kept_;
    std::set<std::uint32_t> droppedRules_;
    std::uint32_t lostValidations_ = 0;
    bool isDropping_ = false;  ///< the rules of conditions that have no place left
};

}  // namespace

void leaveOutPlaces(std::vector<RecordView>& records, const SheetFootprint& footprint,
                    std::deque<std::string>& pieces) {
    PlaceRecords places(footprint, pieces);
    for (const RecordView& record : records) places.add(record);
    records = places.finish();
}

}  // namespace vexa::frontend::biff
