#include "frontend/export/xlsx/row_change.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "frontend/export/xlsx/formula_shift.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {
namespace {

constexpr std::uint32_t behindAllRows = std::numeric_limits<std::uint32_t>::max();

}  // namespace

RowChange::RowChange(const ByteSource& source, const SheetChange& change, DeflateStream& out,
                     SheetChanged& changed)
    : SheetCopy(source, change.survey.prefix, out),
      footprint_(change.footprint),
      survey_(change.survey),
      rows_(change.footprint, change.numbers, change.survey.rowHeight, change.survey.prefix),
      changed_(changed),
      kept_(change.kept) {
    for (const auto& [index, formula] : survey_.shared) {
        if (footprint_.hasCell(formula.at)) {
            lostShared_.emplace(index, &formula);
        }
    }
    for (const ArrayFormula& formula : survey_.arrays) {
        if (footprint_.touches(formula.range)) {
            cutArrays_.insert(formula.at);
        }
    }
}

void RowChange::sheetData() {
    if (xml_.isWhole()) {
        const std::string_view raw = xml_.raw();
        emit(raw.substr(0, raw.size() - 2));
        emit(">");
        ownRowsBefore(behindAllRows);
        close("sheetData");
        return;
    }
    copy();
    for (keptRowsHere(); next() && !isEndAt(1); keptRowsHere()) {
        if (xml_.isStart() && xml_.localName() == "row" && isOwn()) {
            row();
        } else {
            copy();
        }
    }
    ownRowsBefore(behindAllRows);
    copy();
}

void RowChange::ownRowsBefore(std::uint32_t row) {
    while (rows_.next() && *rows_.next() < row) {
        rows_.appendRow(out_);
        passOn();
    }
}

/// Where the next piece is a row with which rows begin that are copied as they are packed: copies these.
void RowChange::keptRowsHere() {
    if (nextKept_ == kept_.size() || xml_.position() + leftOut_ != kept_[nextKept_].begin->at) {
        return;
    }
    const KeptRows& kept = kept_[nextKept_++];
    ownRowsBefore(kept.begin->row);
    copyBytes(kept.blocks.from->bytes - kept.begin->at);
    copyBlocks(kept.blocks);
    copyBytes(kept.end->at - kept.blocks.to->bytes);
    leftOut_ += kept.blocks.bytes();
    lastRow_ = std::int64_t{kept.end->row} - 1;
}

void RowChange::row() {
    const auto number = nextRow(xml_.attribute("r"), lastRow_);
    if (!number) {
        result_ = {PackageProblem::damaged, "it has rows or cells that do not follow each other"_text};
        return;
    }
    lastRow_ = *number;
    lastColumn_ = -1;
    ownRowsBefore(*number);
    if (rows_.next() == *number) {
        changedRow();
        return;
    }
    emit(xml_.attribute("r") ? std::string(xml_.raw())
                             : withAttribute(xml_.raw(), "r", std::to_string(*number + 1)));
    // Most rows are copied without a look at their cells.
    if (!mayChangeFormulas()) {
        if (const std::string_view inside = xml_.takeInside(); !inside.empty()) {
            emit(inside);
            return;
        }
    }
    const bool isWhole = xml_.isWhole();
    while (!isWhole && next()) {
        if (xml_.isStart() && xml_.localName() == "c" && xml_.depth() == 3 && mayChangeFormulas()) {
            if (followCell()) {
                keptCell();
            }
            continue;
        }
        copy();
        if (isEndAt(2)) {
            return;
        }
    }
}

bool changesFormulas(const SheetFootprint& footprint, const SheetSurvey& survey) {
    return std::any_of(survey.shared.begin(), survey.shared.end(),
                       [&](const auto& each) { return footprint.hasCell(each.second.at); }) ||
           std::any_of(survey.arrays.begin(), survey.arrays.end(),
                       [&](const ArrayFormula& formula) { return footprint.touches(formula.range); });
}

bool RowChange::mayChangeFormulas() const { return !lostShared_.empty() || !cutArrays_.empty(); }

/// A row that both have.
void RowChange::changedRow() {
    const bool isWhole = xml_.isWhole();
    std::string tag = withAttribute(xml_.raw(), "spans", "");
    tag = withAttribute(tag, "r", std::to_string(lastRow_ + 1));
    if (const auto height = rows_.height()) {
        const auto known = survey_.heights.find(static_cast<std::uint32_t>(lastRow_));
        if (known == survey_.heights.end() || (known->second > 0 && known->second < *height)) {
            std::string number;
            appendCellNumber(number, *height);
            tag = withAttribute(withAttribute(tag, "ht", number), "customHeight", "1");
        }
    }
    if (isWhole) {
        tag.replace(tag.size() - 2, 2, ">");
    }
    emit(tag);
    bool isInside = !isWhole;
    while (isInside && next()) {
        isInside = !isEndAt(2);
        if (xml_.isStart() && xml_.depth() == 3 && xml_.localName() == "c") {
            cell();
        } else if (isInside) {
            if (xml_.isStart() && xml_.depth() == 3) {
                restOfRow();
            }
            copy();
        }
    }
    restOfRow();
    isRowDone_ = false;
    close("row");
}

void RowChange::restOfRow() {
    if (!std::exchange(isRowDone_, true)) {
        rows_.finishRow(out_);
    }
}

bool RowChange::followCell() {
    const auto column = nextColumn(xml_.attribute("r"), lastColumn_);
    if (!column) {
        result_ = {PackageProblem::damaged, "it has rows or cells that do not follow each other"_text};
        return false;
    }
    lastColumn_ = *column;
    return true;
}

SheetSpot RowChange::spot() const {
    return {static_cast<std::uint32_t>(lastRow_), static_cast<std::uint32_t>(lastColumn_)};
}

void RowChange::cell() {
    if (!followCell()) {
        return;
    }
    const auto here = static_cast<std::uint32_t>(lastColumn_);
    while (!isRowDone_ && rows_.nextColumn() && *rows_.nextColumn() < here) {
        rows_.appendCell(out_);
    }
    if (!isRowDone_ && rows_.nextColumn() == here) {
        replacedCell();
        rows_.appendCell(out_);
    } else {
        keptCell();
    }
    passOn();
}

void RowChange::replacedCell() {
    const bool isWhole = xml_.isWhole();
    while (!isWhole && next() && !isEndAt(3)) {
        changed_.overwrites |= xml_.hasCharacters();
        changed_.dropsFormulas |= xml_.isStart() && xml_.depth() == 4 && xml_.localName() == "f";
    }
}

/// A cell that stays; its formula may be one that was shared with a cell that goes, or one of several
/// cells.
void RowChange::keptCell() {
    const bool isWhole = xml_.isWhole();
    const bool isCut = cutArrays_.contains(spot());
    std::string tag(xml_.raw());
    if (!xml_.attribute("r")) {
        std::string here;
        appendSpot(here, spot());
        tag = withAttribute(tag, "r", here);
    }
    // What marks a cell whose formula has several values.
    emit(isCut ? withAttribute(tag, "cm", "") : tag);
    while (!isWhole && next()) {
        if (xml_.isStart() && xml_.depth() == 4 && xml_.localName() == "f") {
            formula(isCut);
            continue;
        }
        copy();
        if (isEndAt(3)) {
            return;
        }
    }
}

void RowChange::formula(bool isCut) {
    if (isCut) {
        changed_.cutsArrays = true;
        changed_.dropsFormulas = true;
        skipElement();
        return;
    }
    const auto found = xml_.attribute("t") == "shared" ? lostShared_.find(xml_.attribute("si").value_or(""))
                                                       : lostShared_.end();
    if (found == lostShared_.end()) {
        copyElement();
        return;
    }
    const SheetSpot here = spot();
    const SheetSpot from = found->second->at;
    const std::string own = shiftFormula(found->second->text, std::int64_t{here.row} - from.row,
                                         std::int64_t{here.column} - from.column);
    skipElement();
    std::string text = "<" + prefix_ + "f>";
    appendXmlText(text, own, XmlEscapes::replacing);
    emit(text + "</" + prefix_ + "f>");
}

}  // namespace vexa::frontend
