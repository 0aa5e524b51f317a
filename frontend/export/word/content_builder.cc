#include "frontend/export/word/content_builder.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "frontend/drawing/picture_drawing.h"
#include "frontend/export/picture_files.h"

namespace vexa::frontend {

namespace {

using tables::Area;
using tables::AreaLook;
using tables::CellStyle;
using tables::GridFootnote;
using tables::HorizontalAlign;
using tables::layOut;
using tables::LayoutOptions;
using tables::Place;
using tables::plainLook;
using tables::ShownStyleId;
using tables::Table;
using tables::TableGrid;
using tables::TableLayout;

constexpr std::size_t deepestNote = 4;
/// Of the page's text; what is beside a picture on its line needs some room, too.
constexpr double highestPicture = 0.97;

std::size_t levelOf(const ExportedItem& item) { return std::min(item.depth + 1, deepestHeading); }

/// What an item has as a heading; nothing for one that is none.
std::string_view headingOf(const ExportedItem& item) {
    if (item.item().type() == ItemType::header) return item.label;
    const auto* const heading = std::get_if<HeadingContent>(&item.item().content);
    return heading == nullptr ? std::string_view() : std::string_view(heading->text);
}

std::string inOneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char each) { return each == '\n' || each == '\r' || each == '\t'; },
        ' ');
    return line;
}

/// A line without the line end behind it, which is taken off `text`.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    if (!text.empty()) text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
    return line;
}

/// A text beside a table: what of its style is not as its area usually looks.
WordParagraph areaParagraph(WordRole role, Area area, const TableGrid& grid, ShownStyleId style) {
    const AreaLook& look = grid.styles[style].look;
    const AreaLook& usual = plainLook()->area(area);
    WordParagraph paragraph;
    paragraph.role = role;
    if (look.font != usual.font) paragraph.own.font = look.font;
    if (look.size != usual.size) paragraph.own.size = look.size;
    if (look.bold != usual.bold) paragraph.own.bold = look.bold;
    if (look.italic != usual.italic) paragraph.own.italic = look.italic;
    if (look.underline != usual.underline) paragraph.own.underline = look.underline;
    if (look.color != usual.color) paragraph.own.color = look.color;
    paragraph.own.background = look.background;
    if (look.horizontal != usual.horizontal) paragraph.align = look.horizontal;
    if (paragraph.align == HorizontalAlign::mixed && look.horizontal != usual.horizontal)
        paragraph.align = HorizontalAlign::left;
    return paragraph;
}

}  // namespace

ContentBuilder::ContentBuilder(const ExportTask& task, const WordPage& page, WordWriter& writer)
    : task_(task),
      request_(*task.request.doc),
      page_(page),
      writer_(writer),
      pictures_(task.plan, task.surroundings.styleFolders, task.report,
                [this](const ExportedItem& item) { return pictureScale(item); }) {}

bool ContentBuilder::build() {
    std::size_t done = 0;
    for (const ExportedItem& item : task_.plan.items) {
        addItem(item);
        if (!task_.goesOn(++done)) return false;
    }
    if (!hasBegun_ || !titles_.empty()) startSection();
    if (isPageNew_) putGap();
    return true;
}

void ContentBuilder::addItem(const ExportedItem& item) {
    breaksPage_ = breaksPage_ || (item.item().pageBreakBefore && request_.pageBreaks);
    const ItemContent& content = item.item().content;
    if (const auto* const title = std::get_if<PageTitleContent>(&content)) {
        titles_.push_back(title);
        return;
    }
    const ItemType type = item.item().type();
    if (type == ItemType::model) return;
    if (!hasBegun_ || !titles_.empty()) startSection();
    if (type == ItemType::header) {
        addHeading(item, item.label, {});
    } else if (const auto* const heading = std::get_if<HeadingContent>(&content)) {
        addHeading(item, heading->text, heading->style);
    } else if (const auto* const text = std::get_if<TextContent>(&content)) {
        addText(WordRole::text, text->text, text->style);
    } else if (const auto* const log = std::get_if<LogContent>(&content)) {
        addLog(log->text);
    } else if (const auto* const warning = std::get_if<WarningContent>(&content)) {
        addText(WordRole::warning, warning->text);
    } else if (const auto* const notes = std::get_if<NotesContent>(&content)) {
        addNotes(*notes);
    } else if (const auto* const table = std::get_if<TableContent>(&content)) {
        addTable(item, table->table);
    } else if (const auto* const grid = std::get_if<GridContent>(&content)) {
        LayoutOptions options;
        options.notesAndCaptions = request_.notesAndCaptions;
        addGrid(item, layOut(*grid->grid, options));
    } else if (pictureOf(item) != nullptr) {
        addPicture(item);
    } else if (type == ItemType::unknown) {
        task_.report.lose(Feature::unknownItems, item);
        addText(WordRole::unknown, item.label);
    }
}

void ContentBuilder::startSection() {
    std::vector<WordParagraph> head;
    for (const PageTitleContent* const title : titles_) {
        WordParagraph& line = head.emplace_back();
        line.role = WordRole::pageTitle;
        line.runs.push_back({title->text});
        line.own = title->style;
    }
    titles_.clear();
    if (hasBegun_) {
        writer_.beginSection(head);
        isPageNew_ = true;
        return;
    }
    hasBegun_ = true;
    writer_.begin(head);
    addContents();
}

void ContentBuilder::addContents() {
    std::vector<WordEntry> entries;
    for (const ExportedItem& item : task_.plan.items) {
        const std::string_view heading = headingOf(item);
        if (heading.empty() || levelOf(item) > deepestEntry) continue;
        entries.push_back({levelOf(item), inOneLine(heading), bookmarkOf(item)});
    }
    if (entries.empty()) return;
    writer_.contents(entries);
    isPageNew_ = false;
}

/// Whether what comes next begins a page. The first of a page needs not to.
bool ContentBuilder::takeBreak() {
    const bool breaks = breaksPage_ && !isPageNew_;
    breaksPage_ = isPageNew_ = false;
    return breaks;
}

void ContentBuilder::put(WordParagraph paragraph) {
    paragraph.breaksPage = takeBreak();
    writer_.paragraph(paragraph);
}

void ContentBuilder::putGap() {
    WordParagraph gap;
    gap.role = WordRole::gap;
    put(std::move(gap));
}

void ContentBuilder::addHeading(const ExportedItem& item, std::string_view text, const CellStyle& own) {
    WordParagraph heading;
    heading.role = WordRole::heading;
    heading.level = levelOf(item);
    heading.runs.push_back({text});
    heading.own = own;
    heading.bookmark = bookmarkOf(item);
    put(std::move(heading));
}

void ContentBuilder::addText(WordRole role, std::string_view text, const CellStyle& own) {
    WordParagraph paragraph;
    paragraph.role = role;
    paragraph.runs.push_back({text});
    paragraph.own = own;
    put(std::move(paragraph));
}

void ContentBuilder::addLog(std::string_view text) {
    do addText(WordRole::log, takeLine(text));
    while (!text.empty());
}

void ContentBuilder::addNotes(const NotesContent& notes) {
    for (const NoteLine& line : notes.lines) {
        const std::string label = labelBeforeValue(line);
        WordParagraph paragraph;
        paragraph.role = WordRole::notes;
        paragraph.level =
            static_cast<std::size_t>(std::clamp(line.level - 1, 0, static_cast<int>(deepestNote)));
        paragraph.runs.push_back({label, false, true});
        paragraph.runs.push_back({line.value});
        put(std::move(paragraph));
    }
}

void ContentBuilder::addTable(const ExportedItem& item, const Table& table) {
    LayoutOptions options;
    options.notesAndCaptions = request_.notesAndCaptions;
    TableLayout layout(table, options);
    for (const Place layer : item.layers) addGrid(item, layout.grid(layer));
}

void ContentBuilder::addGrid(const ExportedItem& item, const TableGrid& grid) {
    addOver(grid);
    addParts(item, grid);
    addUnder(grid);
}

void ContentBuilder::addOver(const TableGrid& grid) {
    const auto add = [this, &grid](WordRole role, Area area, const tables::GridText& text) {
        if (text.text.empty()) return;
        WordParagraph paragraph = areaParagraph(role, area, grid, text.style);
        paragraph.runs.push_back({text.text});
        paragraph.keepsWithNext = true;
        put(std::move(paragraph));
    };
    add(WordRole::tableTitle, Area::title, grid.title);
    add(WordRole::tableLayer, Area::layers, grid.layer);
    if (breaksPage_ && !isPageNew_) putGap();
    isPageNew_ = false;
}

void ContentBuilder::addParts(const ExportedItem& item, const TableGrid& grid) {
    TableRoom room;
    room.width = page_.textWidth();
    room.height = page_.textHeight();
    room.edge = page_.paper.width - page_.margins.left;
    TableFit fit = fitTable(grid, room, request_.wideTables);
    if (fit.longLabels) task_.report.warn(ExportWarning::longRowLabel, item);
    if (fit.columnsCut) task_.report.warn(ExportWarning::columnsCut, item);
    if (fit.textsCut) task_.report.warn(ExportWarning::textsCut, item);
    bool isFirst = true;
    for (TablePart& part : fit.parts) {
        if (!std::exchange(isFirst, false)) putGap();
        part.name = inOneLine(item.label);
        part.goesOnBelow =
            &part == &fit.parts.back() && (!grid.caption.text.empty() || !grid.footnotes.empty());
        writer_.table(part);
    }
}

void ContentBuilder::addUnder(const TableGrid& grid) {
    if (!grid.caption.text.empty()) {
        WordParagraph caption = areaParagraph(WordRole::caption, Area::caption, grid, grid.caption.style);
        caption.runs.push_back({grid.caption.text});
        caption.keepsWithNext = !grid.footnotes.empty();
        put(std::move(caption));
    }
    for (const GridFootnote& note : grid.footnotes) {
        WordParagraph paragraph =
            areaParagraph(WordRole::footnote, Area::footnotes, grid, grid.footnoteStyle);
        if (!note.mark.empty()) {
            paragraph.runs.push_back({note.mark, true});
            paragraph.runs.push_back({" "});
        }
        paragraph.runs.push_back({note.text});
        put(std::move(paragraph));
    }
    putGap();
}

double ContentBuilder::pictureScale(const ExportedItem& item) const {
    const ItemSize size = shownSize(item.item()).value_or(ItemSize{});
    return std::min({1.0, page_.textWidth() / std::max(size.width, 1.0),
                     page_.textHeight() * highestPicture / std::max(size.height, 1.0)});
}

void ContentBuilder::addPicture(const ExportedItem& item) {
    const bool isDrawing = pictureOf(item)->picture->form == PictureForm::svg;
    if (isDrawing && !canDraw() && !writer_.holdsDrawings()) {
        task_.report.countPicture();
        task_.report.lose(Feature::pictures, item);
        addText(WordRole::unknown, "[" + alternativeOf(item) + "]");
        return;
    }
    WordPicture picture;
    picture.name = inOneLine(item.label);
    picture.picture = pictures_.make(item);
    const double scale = pictureScale(item);
    picture.size = {picture.picture.size.width * scale, picture.picture.size.height * scale};
    WordParagraph place;
    place.role = WordRole::picture;
    place.breaksPage = takeBreak();
    writer_.picture(place, picture);
}

}  // namespace vexa::frontend
