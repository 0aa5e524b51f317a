#include "frontend/export/xlsx/sheet_survey.h"

#include <algorithm>
#include <charconv>
#include <deque>
#include <iterator>
#include <utility>

#include "frontend/export/xlsx/package_xml.h"

namespace vexa::frontend {
namespace {

double realOr(std::optional<std::string_view> text, double fallback) {
    double number = 0;
    if (!text) {
        return fallback;
    }
    const char* const end = text->data() + text->size();
    const auto read = std::from_chars(text->data(), end, number);
    return read.ec == std::errc() && read.ptr == end && number >= 0 && number < 1e6 ? number : fallback;
}

bool isTrue(std::optional<std::string_view> text) { return text && (*text == "1" || *text == "true"); }

class Survey {
  public:
    Survey(const ByteSource& source, SheetSurvey& survey, PackedMarks* marks = nullptr,
           std::uint32_t upTo = 0)
        : xml_(source), survey_(survey), marks_(marks), markedUpTo_(upTo) {}

    PackageResult carryOut() {
        while (result_ && xml_.next()) {
            if (xml_.isStart()) {
                startTag();
            } else if (xml_.isEnd()) {
                endTag();
            } else if (xml_.hasCharacters()) {
                characters();
            }
        }
        if (result_ && xml_.result() && !survey_.elements.contains("sheetData")) {
            return {PackageProblem::damaged, "the sheet is none of rows and columns"_text};
        }
        return xml_.result() ? result_ : xml_.result();
    }

  private:
    enum Depth : std::size_t { root, top, row, cell, value };

    bool isOwn() const {
        return xml_.name().size() == survey_.prefix.size() + xml_.localName().size() &&
               xml_.name().starts_with(survey_.prefix);
    }

    void fail(SystemText text) { result_ = {PackageProblem::damaged, text}; }

    void startTag() {
        if (xml_.depth() == root) {
            readRoot();
        } else if (!isOwn()) {
            return;
        } else if (xml_.depth() == top) {
            topName_ = xml_.localName();
            survey_.elements.insert(topName_);
            readTop();
        } else if (topName_ == "sheetData") {
            inRows();
        } else if (xml_.depth() == row) {
            inTop();
        }
    }

    void readRoot() {
        const std::string_view name = xml_.name();
        survey_.prefix = name.substr(0, name.size() - xml_.localName().size());
        const std::string space =
            survey_.prefix.empty() ? "xmlns" : "xmlns:" + survey_.prefix.substr(0, survey_.prefix.size() - 1);
        const std::string_view found = xml_.attribute(space).value_or("");
        if (found == strictSpreadsheetSpace) {
            fail("it is of the strict kind; save it as an ordinary workbook"_text);
        } else if (xml_.localName() != "worksheet" || found != spreadsheetSpace) {
            fail("a different root element than expected"_text);
        }
    }

    void readTop() {
        if (topName_ == "sheetFormatPr") {
            survey_.rowHeight = realOr(xml_.attribute("defaultRowHeight"), usualRowHeight);
            survey_.columnWidth =
                realOr(xml_.attribute("defaultColWidth"), 64 / pixelsOfWidth) * pixelsOfWidth;
        } else if (topName_ == "sheetPr") {
            survey_.codeName = plainText(xml_.attribute("codeName").value_or(""));
        } else if (topName_ == "drawing") {
            survey_.drawing = relationId();
        }
    }

    std::string relationId() const {
        for (const RawAttribute& attribute : attributesOf(xml_.raw())) {
            if (attribute.name.ends_with(":id")) {
                return plainText(attribute.value);
            }
        }
        return {};
    }

    void inTop() {
        const std::string_view name = xml_.localName();
        if (topName_ == "cols" && name == "col") {
            readColumns();
        } else if (topName_ == "mergeCells" && name == "mergeCell") {
            if (const auto range = readRange(xml_.attribute("ref").value_or(""))) {
                reach(range->row + range->rows, range->column + range->columns);
            }
        } else if (topName_ == "tableParts" && name == "tablePart") {
            survey_.tables.push_back(relationId());
        }
    }

    void readColumns() {
        const std::size_t first = numberOr(xml_.attribute("min").value_or(""), 0);
        const std::size_t last = numberOr(xml_.attribute("max").value_or(""), 0);
        if (first == 0 || last < first || last > officeSheetLimits.columns) {
            return;
        }
        const bool hidden = isTrue(xml_.attribute("hidden"));
        const double width = realOr(xml_.attribute("width"), survey_.columnWidth / pixelsOfWidth);
        survey_.widths[static_cast<std::uint32_t>(first - 1)] = hidden ? 0 : width * pixelsOfWidth;
        survey_.widths.try_emplace(static_cast<std::uint32_t>(last), survey_.columnWidth);
    }

    void inRows() {
        const std::string_view name = xml_.localName();
        if (xml_.depth() == row && name == "row") {
            readRow();
        } else if (xml_.depth() == cell && name == "c") {
            const auto column = nextColumn(xml_.attribute("r"), column_);
            if (!column) {
                fail("it has rows or cells that do not follow each other"_text);
                return;
            }
            column_ = *column;
        } else if (xml_.depth() == value) {
            inValue_ = name == "v" && !xml_.isWhole();
            inFormula_ = name == "f" && !xml_.isWhole();
            if (name == "is" || name == "f") {
                reachCell();
            }
            if (name == "f") {
                readFormula();
            }
        }
    }

    void readRow() {
        const auto number = nextRow(xml_.attribute("r"), row_);
        if (!number) {
            fail("it has rows or cells that do not follow each other"_text);
            return;
        }
        row_ = *number;
        column_ = -1;
        if (marks_ != nullptr) {
            noteMark(*number);
        }
        if (isTrue(xml_.attribute("hidden"))) {
            survey_.heights[*number] = 0;
        } else if (const auto height = xml_.attribute("ht")) {
            survey_.heights[*number] = realOr(height, survey_.rowHeight);
        }
    }

    /// The last mark before the row that begins here.
    void noteMark(std::uint32_t number) {
        std::vector<PackedMark> fresh = marks_->take();
        std::move(fresh.begin(), fresh.end(), std::back_inserter(waitingMarks_));
        const std::uint64_t at = xml_.position() - xml_.raw().size();
        const auto behind = std::find_if(waitingMarks_.begin(), waitingMarks_.end(),
                                         [at](const PackedMark& mark) { return mark.bytes > at; });
        if (behind == waitingMarks_.begin()) {
            return;
        }
        if (!survey_.marks.empty()) {
            RowMark& last = survey_.marks.back();
            const bool isLastBefore = last.row <= markedUpTo_ && number > markedUpTo_;
            last.packed.window = isLastBefore ? std::move(last.packed.window) : std::string();
        }
        survey_.marks.push_back({std::move(*(behind - 1)), at, number});
        waitingMarks_.erase(waitingMarks_.begin(), behind);
    }

    void readFormula() {
        survey_.hasFormulas = true;
        const SheetSpot here = spot();
        const std::string_view kind = xml_.attribute("t").value_or("");
        shared_ = nullptr;
        if (kind == "shared" && !xml_.isWhole()) {
            const auto [found, isNew] =
                survey_.shared.try_emplace(std::string(xml_.attribute("si").value_or("")));
            if (isNew) {
                found->second.at = here;
                shared_ = &found->second;
            }
        } else if (kind == "array" || kind == "dataTable") {
            if (const auto range = readRange(xml_.attribute("ref").value_or(""))) {
                survey_.arrays.push_back({here, *range});
            }
        }
    }

    void endTag() {
        if (xml_.depth() == value) {
            inValue_ = false;
            inFormula_ = false;
            shared_ = nullptr;
        }
    }

    void characters() {
        if (inValue_) {
            reachCell();
        } else if (inFormula_ && shared_ != nullptr) {
            shared_->text += xml_.kind() == XmlPiece::text
                                 ? plainText(xml_.raw())
                                 : std::string(xml_.raw().substr(9, xml_.raw().size() - 12));
        }
    }

    SheetSpot spot() const {
        return {static_cast<std::uint32_t>(std::max<std::int64_t>(row_, 0)),
                static_cast<std::uint32_t>(std::max<std::int64_t>(column_, 0))};
    }

    void reachCell() { reach(spot().row + 1, spot().column + 1); }

    void reach(std::uint32_t rows, std::uint32_t columns) {
        survey_.rows = std::max(survey_.rows, rows);
        survey_.columns = std::max(survey_.columns, columns);
    }

    XmlStream xml_;
    SheetSurvey& survey_;
    PackedMarks* marks_;
    std::uint32_t markedUpTo_;
    std::deque<PackedMark> waitingMarks_;
    PackageResult result_;
    std::string topName_;
    std::int64_t row_ = -1;
    std::int64_t column_ = -1;
    bool inValue_ = false;
    bool inFormula_ = false;
    SharedFormula* shared_ = nullptr;
};

}  // namespace

std::optional<std::uint32_t> nextRow(std::optional<std::string_view> value, std::int64_t last) {
    constexpr auto none = static_cast<std::size_t>(-1);
    const std::size_t number = value ? numberOr(*value, none) : static_cast<std::size_t>(last + 2);
    return number <= officeSheetLimits.rows && number > 0 && static_cast<std::int64_t>(number) - 1 > last
               ? std::optional(static_cast<std::uint32_t>(number - 1))
               : std::nullopt;
}

std::optional<std::uint32_t> nextColumn(std::optional<std::string_view> value, std::int64_t last) {
    auto column = static_cast<std::uint32_t>(last + 1);
    if (value) {
        const std::optional<SheetSpot> spot = readSpot(*value);
        if (!spot) {
            return std::nullopt;
        }
        column = spot->column;
    }
    return column < officeSheetLimits.columns && std::int64_t{column} > last ? std::optional(column)
                                                                             : std::nullopt;
}

PackageResult surveySheet(const ByteSource& source, SheetSurvey& survey) {
    return Survey(source, survey).carryOut();
}

PackageResult surveySheet(const ByteSource& source, SheetSurvey& survey, PackedMarks& marks,
                          std::uint32_t row) {
    return Survey(source, survey, &marks, row).carryOut();
}

}  // namespace vexa::frontend
