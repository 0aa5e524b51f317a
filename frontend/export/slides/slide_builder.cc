#include "frontend/export/slides/slide_builder.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "backend/strings/dictionary.h"
#include "frontend/export/font_widths.h"
#include "frontend/export/office/office_values.h"
#include "frontend/export/office/table_parts.h"
#include "frontend/export/picture_files.h"
#include "frontend/export/slides/slide_enlarging.h"
#include "frontend/export/slides/slide_xml.h"

namespace vexa::frontend {

namespace {

using tables::CellStyle;
using tables::GridFootnote;
using tables::GridText;
using tables::layOut;
using tables::LayoutOptions;
using tables::Place;
using tables::Table;
using tables::TableGrid;
using tables::TableLayout;

/// No program opens a presentation with so many slides.
constexpr std::size_t mostSlides = 100'000;
/// A presentation's tables may have more columns than anybody would read.
constexpr std::uint32_t mostColumns = 1'000;

void writeFill(XmlWriter& xml, const std::optional<tables::Color>& color) {
    if (!color) return;
    xml.begin("a:solidFill").begin("a:srgbClr").attribute("val", officeColor(*color)).end();
    xml.end();
}

/// The texts around a grid: over it on every slide, under its last rows, and those of single footnotes.
class GridFrame {
  public:
    GridFrame(const TableGrid& grid, bool showsTitle, double width) : grid_(grid), width_(width) {
        if (showsTitle) above_.push_back(&grid.title);
        above_.push_back(&grid.layer);
        for (const GridText* const each : above_) {
            aboveHeight_ += textHeight(each->text, grid.styles[each->style], width);
        }
        if (aboveHeight_ > 0) aboveHeight_ += slideGap;
        tail_ = textHeight(grid.caption.text, grid.styles[grid.caption.style], width);
        for (const GridFootnote& each : grid.footnotes) {
            if (each.mark.empty()) tail_ += noteHeight(each);
        }
    }

    [[nodiscard]] double aboveHeight() const { return aboveHeight_; }
    [[nodiscard]] double tail() const { return tail_; }
    /// Of everything, with all footnotes.
    [[nodiscard]] double height() const {
        double below = tail_;
        for (const GridFootnote& each : grid_.footnotes) {
            if (!each.mark.empty()) below += noteHeight(each);
        }
        return aboveHeight_ + below + (below > 0 ? slideGap : 0);
    }

    void writeAbove(XmlWriter& xml, const SlideText& text, const SlideBox& room, int id) const {
        if (aboveHeight_ == 0) return;
        beginTextBox(xml, {id, "Above " + std::to_string(id - 1)},
                     {room.left, room.top, room.width, aboveHeight_ - slideGap});
        beginParagraphs(xml, {{}, true});
        for (const GridText* const each : above_) writeLine(xml, text, each->text, each->style);
        endParagraphs(xml);
    }

    /// False when nothing stands below.
    bool writeBelow(XmlWriter& xml, const SlideText& text, const SlideRows& rows, bool last, SlideBox room,
                    int id) const {
        const bool hasTail = last && tail_ > 0;
        if (rows.footnotes.empty() && !hasTail) return false;
        const double top = std::min(room.top + rows.height + slideGap, room.top + room.height);
        room.height = hasTail ? tail_ : 0;
        room.top = top;
        for (const std::size_t each : rows.footnotes) room.height += noteHeight(grid_.footnotes[each]);
        beginTextBox(xml, {id, "Below " + std::to_string(id - 1)}, room);
        beginParagraphs(xml, {{}, true});
        if (hasTail) writeLine(xml, text, grid_.caption.text, grid_.caption.style);
        for (const std::size_t each : rows.footnotes) writeNote(xml, text, grid_.footnotes[each]);
        for (const GridFootnote& each : grid_.footnotes) {
            if (hasTail && each.mark.empty()) writeNote(xml, text, each);
        }
        endParagraphs(xml);
        return true;
    }

  private:
    [[nodiscard]] double noteHeight(const GridFootnote& note) const {
        return textHeight(footnoteText(note), grid_.styles[grid_.footnoteStyle], width_);
    }

    void writeLine(XmlWriter& xml, const SlideText& text, std::string_view line,
                   tables::ShownStyleId style) const {
        if (line.empty()) return;
        const tables::AreaLook& look = grid_.styles[style].look;
        text.paragraph(xml, {{{line, runStyleOf(look)}}, look.horizontal, 0, false});
    }

    void writeNote(XmlWriter& xml, const SlideText& text, const GridFootnote& note) const {
        const tables::AreaLook& look = grid_.styles[grid_.footnoteStyle].look;
        SlideRunStyle mark = runStyleOf(look);
        mark.raised = true;
        const std::string behind = note.mark.empty() ? note.text : " " + note.text;
        text.paragraph(xml, {{{note.mark, mark}, {behind, runStyleOf(look)}}, look.horizontal, 0, false});
    }

    const TableGrid& grid_;
    double width_;
    std::vector<const GridText*> above_;
    double aboveHeight_ = 0;
    double tail_ = 0;
};

}  // namespace

SlideBuilder::SlideBuilder(const ExportTask& task, const SlideDesign& design, SlideDeck& deck)
    : task_(task),
      design_(design),
      deck_(deck),
      pictures_(task.plan, task.surroundings.styleFolders, task.report,
                [this](const ExportedItem& item) { return pictureScale(item); }) {}

ItemSlides SlideBuilder::build(const ExportedItem& item) {
    ItemSlides made;
    const ItemContent& content = item.item().content;
    if (const auto* const heading = std::get_if<HeadingContent>(&content)) {
        made.add(section(*heading), {});
    } else if (const auto* const styled = std::get_if<TextContent>(&content)) {
        addText(made, item, styled->text, styled->style);
    } else if (const auto* const log = std::get_if<LogContent>(&content)) {
        CellStyle style;
        style.font = "monospace";
        style.size = slideLogSize;
        addText(made, item, log->text, style);
    } else if (const auto* const warning = std::get_if<WarningContent>(&content)) {
        addText(made, item, warning->text, {});
    } else if (const auto* const lines = std::get_if<NotesContent>(&content)) {
        addNotes(made, item, *lines);
    } else if (pictureOf(item) != nullptr) {
        addPicture(made, item);
    } else if (const auto* const table = std::get_if<TableContent>(&content)) {
        addTable(made, item, table->table);
    } else if (const auto* const grid = std::get_if<GridContent>(&content)) {
        LayoutOptions options;
        options.notesAndCaptions = task_.request.ppt->notesAndCaptions;
        addGrid(made, item, layOut(*grid->grid, options));
    } else if (std::holds_alternative<UnknownContent>(content)) {
        task_.report.lose(Feature::unknownItems, item);
        addText(made, item, design_.titles ? std::string_view() : std::string_view(item.label), {});
    }
    return made;
}

SlideDraft SlideBuilder::draft(const ExportedItem& item, bool text) const {
    SlideDraft draft;
    draft.layout = design_.titles ? (text ? SlideLayout::text : SlideLayout::titled)
                                  : (text ? SlideLayout::plainText : SlideLayout::blank);
    draft.title = item.label;
    return draft;
}

SlideDraft SlideBuilder::section(const StyledText& heading) {
    SlideDraft draft;
    draft.layout = SlideLayout::section;
    draft.title = heading.text;
    draft.titleStyle = heading.style;
    return draft;
}

bool SlideBuilder::hasRoom(const ItemSlides& made, const ExportedItem& item) const {
    if (deck_.slides() + made.slides.size() < mostSlides) return true;
    task_.report.fail(
        ExportError::other,
        composed(
            "Item ^1 (^2) goes beyond the ^3 slides that a presentation can have. Export less at a time, or in another format."_text,
            {std::to_string(item.number), item.shortLabel(), std::to_string(mostSlides)}));
    return false;
}

void SlideBuilder::failForMuchText(const ExportedItem& item) const {
    task_.report.fail(
        ExportError::other,
        composed("Item ^1 (^2) has too much text for one slide. Export it in another format."_text,
                 {std::to_string(item.number), item.shortLabel()}));
}

SlideBox SlideBuilder::room() const {
    SlideBox room = design_.content;
    return room;
}

double SlideBuilder::textSize(const CellStyle& style) const { return style.size.value_or(slideTextSize); }

void SlideBuilder::addText(ItemSlides& made, const ExportedItem& item, std::string_view text,
                           const CellStyle& style) const {
    const double size = textSize(style);
    TextRoom fit;
    fit.width = room().width;
    fit.lines = fit.first =
        std::max<std::size_t>(1, static_cast<std::size_t>(room().height / (size * heightOfLine)));
    const FontWidths font(style.font, size, style.bold.value_or(false));
    for (const std::string_view piece : cutText(text, style.font, size, style.bold.value_or(false), fit)) {
        if (!hasRoom(made, item)) return;
        XmlWriter xml(pieceXml);
        beginPlaceholder(xml, {firstShape, "Text 4"}, {{}, textPlaceholder});
        if (style.background) {
            // The colour is behind the text, not behind all of its place.
            const auto lines = static_cast<double>(font.linesIn(piece, fit.width));
            writePlace(xml, {room().left, room().top, fit.width, lines * size * heightOfLine});
            writeFill(xml, style.background);
        }
        beginParagraphs(xml);
        for (std::size_t begin = 0; begin <= piece.size();) {
            const std::size_t end = std::min(piece.find('\n', begin), piece.size());
            const SlideRun run{piece.substr(begin, end - begin), {style, false}};
            deck_.text().paragraph(xml, {{run}, tables::HorizontalAlign::mixed, 0, false});
            begin = end + 1;
        }
        endParagraphs(xml);
        made.add(draft(item, true), xml.take());
    }
}

void SlideBuilder::addNotes(ItemSlides& made, const ExportedItem& item, const NotesContent& notes) const {
    const auto most =
        std::max<std::size_t>(1, static_cast<std::size_t>(room().height / (slideTextSize * heightOfLine)));
    CellStyle bold;
    bold.bold = true;
    std::size_t lines = most;
    XmlWriter xml(pieceXml);
    const FontWidths font("Arial", slideTextSize, false);
    const auto close = [&] {
        if (xml.depth() == 0) return;
        endParagraphs(xml);
        made.add(draft(item, true), xml.take());
    };
    for (const NoteLine& line : notes.lines) {
        const std::string label = labelBeforeValue(line);
        const std::size_t needed = font.linesIn(label + line.value, room().width);
        if (xml.depth() == 0 || lines + needed > most) {
            close();
            if (!hasRoom(made, item)) return;
            beginPlaceholder(xml, {firstShape, "Text 4"}, {{}, textPlaceholder});
            beginParagraphs(xml);
            lines = 0;
        }
        lines += needed;
        deck_.text().paragraph(
            xml,
            {{{label, {bold, false}}, {line.value, {}}}, tables::HorizontalAlign::mixed, line.level, false});
    }
    close();
    if (made.slides.empty()) addText(made, item, {}, {});
}

/// Pictures are as large as they fit; not quite as many dots as elsewhere do for that.
double SlideBuilder::pictureScale(const ExportedItem& item) const {
    const SlideBox place = room();
    const ItemSize shown = shownSize(item.item()).value_or(ItemSize{1, 1});
    const double known = std::max(std::max(shown.width, shown.height), 1e-6);
    return std::max(place.width, place.height) / known / 1.5;
}

void SlideBuilder::addPicture(ItemSlides& made, const ExportedItem& item) {
    SlideDraft slide = draft(item, false);
    const SlideBox place = room();
    const OfficePicture picture = pictures_.make(item);
    const double scale = std::min(place.width / picture.size.width, place.height / picture.size.height);
    const double width = picture.size.width * scale;
    const double height = picture.size.height * scale;
    slide.pictures.push_back(deck_.addPicture(picture.png, "png"));
    if (!picture.svg.empty()) slide.pictures.push_back(deck_.addPicture(picture.svg, "svg"));
    XmlWriter xml(pieceXml);
    xml.begin("p:pic").begin("p:nvPicPr");
    writeShapeName(xml, {firstShape, "Picture 4", picture.alternative});
    xml.begin("p:cNvPicPr").begin("a:picLocks").attribute("noChangeAspect", "1").end();
    xml.end();
    xml.begin("p:nvPr").end();
    xml.end();
    xml.begin("p:blipFill").begin("a:blip");
    xml.attribute("r:embed", "rId" + std::to_string(firstPictureRelation));
    if (slide.pictures.size() > 1) {
        xml.begin("a:extLst").begin("a:ext").attribute("uri", officeSvgExtension);
        xml.begin("asvg:svgBlip").attribute("xmlns:asvg", officeSvgSpace);
        xml.attribute("r:embed", "rId" + std::to_string(firstPictureRelation + 1)).end();
        xml.end();
        xml.end();
    }
    xml.end();
    xml.begin("a:stretch").begin("a:fillRect").end();
    xml.end();
    xml.end();
    xml.begin("p:spPr");
    writePlace(xml, {place.left + (place.width - width) / 2, place.top + (place.height - height) / 2, width,
                     height});
    xml.begin("a:prstGeom").attribute("prst", "rect").begin("a:avLst").end();
    xml.end();
    xml.end();
    xml.end();
    made.add(std::move(slide), xml.take());
}

void SlideBuilder::addTable(ItemSlides& made, const ExportedItem& item, const Table& table) const {
    LayoutOptions options;
    options.notesAndCaptions = task_.request.ppt->notesAndCaptions;
    TableLayout layout(table, options);
    for (const Place layer : item.layers) {
        addGrid(made, item, layout.grid(layer));
        if (task_.report.failed()) return;
    }
}

TableFit SlideBuilder::fitOf(const TableGrid& grid) const {
    TableRoom tableRoom;
    tableRoom.width = room().width;
    tableRoom.height = room().height;
    tableRoom.edge = design_.slide.width - room().left;
    tableRoom.mostColumns = mostColumns;
    return fitTable(grid, tableRoom, task_.request.ppt->wideTables);
}

std::optional<TableGrid> SlideBuilder::largerGrid(const TableGrid& grid, const TableFit& fit,
                                                  std::string_view label) const {
    const bool showsTitle = !design_.titles || grid.title.text != label;
    const double around = GridFrame(grid, showsTitle, room().width).height();
    std::optional<double> factor = enlargementOf(grid, fit, room(), around);
    for (; factor; factor = nextEnlargement(*factor)) {
        TableGrid larger = enlarged(grid, *factor);
        const TableFit again = fitOf(larger);
        if (again.parts.size() != 1 || again.parts.front().scale != 1) continue;
        const double needed =
            again.parts.front().height + GridFrame(larger, showsTitle, room().width).height();
        if (needed <= room().height && !again.columnsCut && !again.textsCut) return larger;
    }
    return std::nullopt;
}

void SlideBuilder::addGrid(ItemSlides& made, const ExportedItem& item, const TableGrid& grid) const {
    const std::size_t before = made.slides.size();
    TableFit fit = fitOf(grid);
    if (fit.longLabels) task_.report.warn(ExportWarning::longRowLabel, item);
    if (fit.columnsCut) task_.report.warn(ExportWarning::columnsCut, item);
    if (fit.textsCut) task_.report.warn(ExportWarning::textsCut, item);
    const std::optional<TableGrid> larger = largerGrid(grid, fit, item.label);
    if (larger) fit = fitOf(*larger);
    for (TablePart& part : fit.parts) {
        part.name = grid.title.text.empty() ? item.label : grid.title.text;
        addPart(made, item, part);
        if (task_.report.failed()) return;
    }
    if (made.slides.size() == before) addRowless(made, item, grid);
    made.slides[before].notes = grid.caption.text;
}

/// Of a table whose rows or columns are all hidden there is still what stands over and under it.
void SlideBuilder::addRowless(ItemSlides& made, const ExportedItem& item, const TableGrid& grid) const {
    const GridFrame frame(grid, !design_.titles || grid.title.text != item.label, room().width);
    XmlWriter xml(pieceXml);
    SlideBox below = room();
    below.top += frame.aboveHeight();
    below.height -= frame.aboveHeight();
    frame.writeAbove(xml, deck_.text(), room(), firstShape);
    frame.writeBelow(xml, deck_.text(), {}, true, below, firstShape + 1);
    made.add(draft(item, false), xml.take());
}

void SlideBuilder::addPart(ItemSlides& made, const ExportedItem& item, const TablePart& part) const {
    const TableGrid& grid = *part.grid;
    const bool isFirst = made.slides.empty() || part.dataBegin == grid.labelColumns;
    const bool repeats = design_.titles && (grid.title.text == item.label || !isFirst);
    const GridFrame frame(grid, !repeats, room().width);
    SlideBox below = room();
    below.top += frame.aboveHeight();
    below.height -= frame.aboveHeight();
    SlideTableWriter writer(part, deck_.text());
    const std::vector<SlideRows> slides = spreadRows(part, below, frame.tail());
    for (const SlideRows& rows : slides) {
        XmlWriter xml(pieceXml);
        int id = firstShape;
        frame.writeAbove(xml, deck_.text(), room(), id++);
        writer.write(xml, rows, below, id++);
        frame.writeBelow(xml, deck_.text(), rows, &rows == &slides.back(), below, id);
        if (rows.cut) task_.report.warn(ExportWarning::textsCut, item);
        if (!hasRoom(made, item)) return;
        if (xml.bytes() > mostSlideBytes) return failForMuchText(item);
        made.add(draft(item, false), xml.take());
    }
}

}  // namespace vexa::frontend
