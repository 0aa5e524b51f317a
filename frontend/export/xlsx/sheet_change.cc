#include "frontend/export/xlsx/sheet_change.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frontend/export/xlsx/formula_shift.h"
#include "frontend/export/xlsx/package_xml.h"
#include "frontend/export/xlsx/row_change.h"
#include "frontend/export/xlsx/sheet_columns.h"
#include "frontend/export/xlsx/sheet_extensions.h"
#include "frontend/export/xlsx/xml_stream.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {
namespace {

// What programs take.
constexpr std::size_t mostPageBreaks = 1'000;

// The elements of a worksheet in the order that they must have.
constexpr std::array<std::string_view, 39> elementOrder{"sheetPr",
                                                        "dimension",
                                                        "sheetViews",
                                                        "sheetFormatPr",
                                                        "cols",
                                                        "sheetData",
                                                        "sheetCalcPr",
                                                        "sheetProtection",
                                                        "protectedRanges",
                                                        "scenarios",
                                                        "autoFilter",
                                                        "sortState",
                                                        "dataConsolidate",
                                                        "customSheetViews",
                                                        "mergeCells",
                                                        "phoneticPr",
                                                        "conditionalFormatting",
                                                        "dataValidations",
                                                        "hyperlinks",
                                                        "printOptions",
                                                        "pageMargins",
                                                        "pageSetup",
                                                        "headerFooter",
                                                        "rowBreaks",
                                                        "colBreaks",
                                                        "customProperties",
                                                        "cellWatches",
                                                        "ignoredErrors",
                                                        "smartTags",
                                                        "drawing",
                                                        "legacyDrawing",
                                                        "legacyDrawingHF",
                                                        "drawingHF",
                                                        "picture",
                                                        "oleObjects",
                                                        "controls",
                                                        "webPublishItems",
                                                        "tableParts",
                                                        "extLst"};

std::size_t rankOf(std::string_view name) {
    const auto found = std::find(elementOrder.begin(), elementOrder.end(), name);
    return static_cast<std::size_t>(found - elementOrder.begin());
}

SheetRange unionOf(const SheetRange& left, const SheetRange& right) {
    const std::uint32_t row = std::min(left.row, right.row);
    const std::uint32_t column = std::min(left.column, right.column);
    return {row, column, std::max(left.row + left.rows, right.row + right.rows) - row,
            std::max(left.column + left.columns, right.column + right.columns) - column};
}

class Change : public RowChange {
  public:
    Change(const ByteSource& source, const SheetChange& change, DeflateStream& out, SheetChanged& changed)
        : RowChange(source, change, out, changed), drawing_(change.drawing) {
        for (const auto& [column, points] : footprint_.content().widths) {
            columns_.want(footprint_.at().column + column, points);
        }
    }

    PackageResult carryOut() {
        while (result_ && xml_.next()) {
            if (xml_.depth() == 0 && xml_.isEnd()) {
                insertBefore(elementOrder.size());
                copy();
            } else if (xml_.depth() == 1 && xml_.isStart() && isOwn()) {
                topElement();
            } else {
                if (xml_.depth() == 1 && xml_.isStart() && xml_.localName() == "AlternateContent" &&
                    hadRows_) {
                    insertBefore(rankOf("oleObjects"));  // what it mostly stands for
                }
                copy();
            }
        }
        return finish();
    }

  private:
    /// Puts in what the sheet has no element for yet and what belongs before elements of this rank.
    void insertBefore(std::size_t rank) {
        const auto isDue = [&](std::string_view name) {
            return rank > rankOf(name) && !survey_.elements.contains(name) && inserted_.insert(name).second;
        };
        if (isDue("cols")) {
            const std::string columns = columns_.text(prefix_, survey_);
            if (!columns.empty()) {
                open("cols");
                emit(columns);
                close("cols");
            }
        }
        if (isDue("mergeCells") && !footprint_.content().merged.empty()) {
            open("mergeCells");
            ownMerged();
            close("mergeCells");
        }
        if (isDue("rowBreaks")) {
            writePageBreaks();
        }
        if (isDue("ignoredErrors") && hasTexts()) {
            open("ignoredErrors");
            ownIgnoredErrors();
            close("ignoredErrors");
        }
        if (!drawing_.empty() && isDue("drawing")) {
            emit("<" + prefix_ + "drawing" + " xmlns:r=\"" +
                 "http://schemas.openxmlformats.org/officeDocument/2006/relationships\" r:id=\"" + drawing_ +
                 "\"/>");
        }
    }

    void topElement() {
        const std::string name(xml_.localName());
        const std::size_t rank = rankOf(name);
        if (rank < elementOrder.size()) {
            insertBefore(rank);
        }
        if (name == "dimension") {
            const auto range = readRange(xml_.attribute("ref").value_or(""));
            emit(withAttribute(xml_.raw(), "ref",
                               rangeText(range ? unionOf(*range, footprint_.box()) : footprint_.box())));
        } else if (name == "cols") {
            columns();
        } else if (name == "sheetData") {
            hadRows_ = true;
            sheetData();
        } else if (name == "conditionalFormatting") {
            withoutTaken("sqref", "");
        } else if (name == "rowBreaks") {
            pageBreaks();
        } else if (name == "extLst") {
            emit(withoutTakenPlaces(takeElement(), footprint_));
        } else if (!writtenAsContainer(name)) {
            copyElement();
        }
    }

    /// Writes an element that only holds others, each for places of the sheet; false when it is none of
    /// these.
    bool writtenAsContainer(std::string_view name) {
        if (name == "mergeCells") {
            container(
                "mergeCell", "ref", [this] { mergedRange(); }, [this] { ownMerged(); });
        } else if (name == "dataValidations") {
            container(
                "dataValidation", "sqref", [this] { withoutTaken("sqref", container_); }, [] {});
        } else if (name == "ignoredErrors") {
            container(
                "ignoredError", "sqref", [this] { openContainer(), copyElement(); },
                [this] {
                    if (hasTexts()) {
                        openContainer();
                        ownIgnoredErrors();
                    }
                });
        } else if (name == "hyperlinks") {
            container(
                "hyperlink", "ref", [this] { withoutTaken("ref", container_); }, [] {});
        } else {
            return false;
        }
        return true;
    }

    void columns() {
        const std::string name(xml_.localName());
        if (!xml_.isWhole()) {
            while (next() && !isEndAt(1)) {
                if (xml_.isStart() && xml_.localName() == "col") {
                    columns_.add(xml_.raw());
                }
            }
        }
        if (const std::string text = columns_.text(prefix_, survey_); !text.empty()) {
            open(name);
            emit(text);
            close(name);
        }
    }

    /// An element that counts others: its tags are written only where it has any.
    template <typename Child, typename AtEnd>
    void container(std::string_view child, std::string_view attribute, Child onChild, AtEnd atEnd) {
        const std::string name(xml_.localName());
        const bool isWhole = xml_.isWhole();
        container_ = withAttribute(xml_.raw(), "count", "");
        if (isWhole) {
            container_.replace(container_.size() - 2, 2, ">");
        }
        isOpen_ = false;
        while (!isWhole && next() && !isEndAt(1)) {
            const bool isChild = xml_.isStart() && xml_.depth() == 2 && xml_.localName() == child;
            if (isChild && xml_.attribute(attribute)) {
                onChild();
            } else if (isOpen_) {
                copy();
            }
        }
        atEnd();
        if (isOpen_) {
            close(name);
        }
    }

    [[nodiscard]] bool hasTexts() const { return !footprint_.content().texts.empty(); }

    /// A label such as "2024" is a text, and meant to be one.
    void ownIgnoredErrors() {
        emit(withAttribute("<" + prefix_ + "ignoredError numberStoredAsText=\"1\"/>", "sqref",
                           rangeText(footprint_.box())));
    }

    /// Rows that a page begins with: those that are there, and those of the export.
    void pageBreaks() {
        const bool isWhole = xml_.isWhole();
        while (!isWhole && next() && !isEndAt(1)) {
            if (xml_.isStart() && xml_.localName() == "brk") {
                breaks_.emplace(numberOr(xml_.attribute("id").value_or(""), 0), xml_.raw());
                skipElement();
            }
        }
        writePageBreaks();
    }

    void writePageBreaks() {
        for (const std::uint32_t row : footprint_.content().pageBreaks) {
            const std::size_t above = std::size_t{footprint_.at().row} + row;
            if (above > 0 && breaks_.size() < mostPageBreaks) {
                breaks_.try_emplace(above, "<" + prefix_ + "brk" + " id=\"" + std::to_string(above) +
                                               "\" max=\"16383\" man=\"1\"/>");
            }
        }
        if (breaks_.empty()) {
            return;
        }
        std::string text = "<" + prefix_ + "rowBreaks" + " count=\"" + std::to_string(breaks_.size());
        text += "\" manualBreakCount=\"" + std::to_string(breaks_.size()) + "\">";
        for (const auto& [row, element] : breaks_) {
            text += element.ends_with("/>") ? element : element.substr(0, element.size() - 1) + "/>";
        }
        emit(text);
        close("rowBreaks");
    }

    void openContainer() {
        if (!std::exchange(isOpen_, true)) {
            emit(container_);
        }
    }

    void mergedRange() {
        const auto range = readRange(*xml_.attribute("ref"));
        if (range && footprint_.touches(*range)) {
            skipElement();
        } else {
            openContainer();
            copyElement();
        }
    }

    void ownMerged() {
        const SheetSpot at = footprint_.at();
        for (const SheetRange& own : footprint_.content().merged) {
            if (survey_.elements.contains("mergeCells")) {
                openContainer();
            }
            emit("<" + prefix_ + "mergeCell" + " ref=\"" +
                 rangeText({own.row + at.row, own.column + at.column, own.rows, own.columns}) + "\"/>");
        }
    }

    /// An element about places, without those that are taken. Its formulas are seen from its upper left place
    /// and move with it.
    void withoutTaken(std::string_view attribute, std::string_view around) {
        const auto ranges = readRanges(xml_.attribute(attribute).value_or(""));
        const bool isTouched =
            ranges && std::any_of(ranges->begin(), ranges->end(),
                                  [this](const SheetRange& range) { return footprint_.touches(range); });
        std::vector<SheetRange> left;
        for (std::size_t i = 0; isTouched && i < ranges->size(); ++i) {
            const std::vector<SheetRange> part = footprint_.without((*ranges)[i]);
            left.insert(left.end(), part.begin(), part.end());
        }
        if (isTouched && left.empty()) {
            skipElement();
            return;
        }
        if (!around.empty()) {
            openContainer();
        }
        if (!isTouched) {
            copyElement();
        } else if (attribute == "sqref") {
            const SheetSpot from = upperLeft(*ranges);
            const SheetSpot to = upperLeft(left);
            emit(withAttribute(xml_.raw(), attribute, rangesText(left)));
            copyWithFormulas(std::int64_t{to.row} - from.row, std::int64_t{to.column} - from.column);
        } else {
            oneForEach(left, attribute);
        }
    }

    /// The element without its content, for each range.
    void oneForEach(const std::vector<SheetRange>& ranges, std::string_view attribute) {
        for (const SheetRange& range : ranges) {
            std::string tag = withAttribute(xml_.raw(), attribute, rangeText(range));
            if (!xml_.isWhole()) {
                tag.replace(tag.size() - 1, 1, "/>");
            }
            emit(tag);
        }
        skipElement();
    }

    /// The rest of the element whose start tag is written already, its formulas moved.
    void copyWithFormulas(std::int64_t rows, std::int64_t columns) {
        const std::size_t depth = xml_.depth();
        const bool isWhole = xml_.isWhole();
        bool isFormula = false;
        while (!isWhole && next()) {
            if (xml_.kind() == XmlPiece::text && isFormula && (rows != 0 || columns != 0)) {
                std::string text;
                appendXmlText(text, shiftFormula(plainText(xml_.raw()), rows, columns),
                              XmlEscapes::replacing);
                emit(text);
            } else {
                copy();
            }
            isFormula = xml_.isStart() && !xml_.isWhole() && xml_.localName().starts_with("formula");
            if (isEndAt(depth)) {
                return;
            }
        }
    }

    std::string drawing_;
    SheetColumns columns_;
    std::set<std::string_view> inserted_;
    std::map<std::size_t, std::string> breaks_;  // by the row above
    std::string container_;
    bool isOpen_ = false;
    bool hadRows_ = false;
};

}  // namespace

PackageResult changeSheet(const ByteSource& source, const SheetChange& change, DeflateStream& out,
                          SheetChanged& changed) {
    return Change(source, change, out, changed).carryOut();
}

}  // namespace vexa::frontend
