#include "frontend/export/pdf/table_notes.h"

#include <algorithm>

#include "frontend/export/pdf/table_looks.h"

namespace vexa::frontend::pdf {

namespace {

using tables::GridCell;
using tables::GridFootnote;
using tables::TableGrid;

constexpr double gapBehindMark = 3;

}  // namespace

TableNotes::TableNotes(const TableGrid& grid, TextShaper& shaper, StructureTree& structure, PageFlow& flow)
    : grid_(grid), shaper_(shaper), structure_(structure), flow_(flow) {
    if (grid_.footnotes.empty()) return;
    look_ = paragraphLook(grid_.styles[grid_.footnoteStyle].look);
    TextStyle marks = look_.style;
    marks.size *= markScale;
    for (const GridFootnote& each : grid_.footnotes) {
        const double width = shaper_.lines(shaper_.styleOf(marks), each.mark).width;
        if (!each.mark.empty()) indent_ = std::max(indent_, width + gapBehindMark);
    }
    look_.indent += indent_;
    for (const GridFootnote& each : grid_.footnotes) {
        numbers_.emplace(each.mark, heights_.size());
        heights_.push_back(flow_.heightOf(look_, each.text));
    }
}

void TableNotes::begin() { part_.clear(); }

double TableNotes::add(const GridCell& cell) {
    if (cell.marks == 0) return 0;
    double height = 0;
    for (const std::string& mark : grid_.marks[cell.marks - 1]) {
        const auto [begin, end] = numbers_.equal_range(mark);
        for (auto each = begin; each != end; ++each) {
            if (part_.insert(each->second).second) height += heights_[each->second];
        }
    }
    return height;
}

double TableNotes::unlistedHeight() const {
    double height = 0;
    for (std::size_t i = 0; i < heights_.size(); ++i) {
        const bool isThere = part_.find(i) != part_.end() || listed_.find(i) != listed_.end();
        if (!isThere) height += heights_[i];
    }
    return height;
}

double TableNotes::wholeHeight() const {
    double height = 0;
    for (const double each : heights_) height += each;
    return height;
}

void TableNotes::write(const std::vector<MarkPlace>& marks, bool isLast) {
    for (std::size_t i = 0; isLast && i < grid_.footnotes.size(); ++i) {
        if (listed_.find(i) == listed_.end()) part_.insert(i);
    }
    References references;
    for (const MarkPlace& each : marks) references[each.mark].push_back(&each);
    for (const std::size_t each : part_) writeNote(each, references);
    // A mark without its footnote leads to itself.
    for (const MarkPlace& each : marks) flow_.setLinkTarget(each.link, each.place, each.mark);
    part_.clear();
}

void TableNotes::writeNote(std::size_t number, const References& references) {
    const GridFootnote& footnote = grid_.footnotes[number];
    const bool isNew = listed_.insert(number).second;
    StructureElement note;
    if (isNew) {
        note = structure_.open("Note", structure_.document());
        static_cast<void>(structure_.nameElement(note));
    }
    flow_.reserve(std::min(heights_[number], flow_.bodyHeight()));
    const PagePlace place = flow_.place();
    const auto found = references.find(footnote.mark);
    const MarkPlace* const first = found == references.end() ? nullptr : found->second.front();
    if (!footnote.mark.empty()) writeMark(number, first, isNew ? &note : nullptr);
    flow_.write(look_, footnote.text, isNew ? &note : nullptr);
    if (isNew) structure_.close(note);
    if (first == nullptr) return;
    for (const MarkPlace* const each : found->second) flow_.setLinkTarget(each->link, place, footnote.text);
}

/// The mark before the footnote, which leads back to the first reference.
void TableNotes::writeMark(std::size_t number, const MarkPlace* reference, StructureElement* note) {
    const std::string& mark = grid_.footnotes[number].mark;
    TextStyle style = look_.style;
    const double size = style.size;
    style.size *= markScale;
    const ShapedText& text = shaper_.lines(shaper_.styleOf(style), mark);
    const ShapedLine& line = text.lines[0];
    const double x = flow_.left() + look_.indent - indent_;
    const double baseline = flow_.y() + size * 0.6;
    const auto draw = [&] {
        flow_.canvas().text(line, style.size, look_.color, x, baseline);
        flow_.canvas().end();
    };
    if (note == nullptr) {
        flow_.canvas().beginArtifact("Pagination");
        draw();
        return;
    }
    StructureElement label = structure_.open("Lbl", *note);
    if (reference == nullptr) {
        flow_.beginContent(label);
        draw();
    } else {
        StructureElement link = structure_.open("Link", label);
        flow_.beginContent(link);
        const Box box{x, baseline - line.ascent, line.width, line.height()};
        draw();
        flow_.setLinkTarget(flow_.addLink(box, link), reference->place, mark);
        structure_.close(link);
    }
    structure_.close(label);
}

}  // namespace vexa::frontend::pdf
