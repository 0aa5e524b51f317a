#include "frontend/export/word/content_builder.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "frontend/export/picture_files.h"

namespace vexa::frontend {

namespace {

using tables::CellStyle;
using tables::GridFootnote;
using tables::LayoutOptions;
using tables::layOut;
using tables::Place;
using tables::ShownStyleId;
using tables::Table;
using tables::TableGrid;
using tables::TableLayout;

constexpr std::size_t deepestHeading = 9;
/// Headings of these levels stand in the table of contents.
constexpr std::size_t deepestEntry = 3;
constexpr std::size_t deepestNote = 4;

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
        line.begin(), line.end(), [](char each) { return each == '\n' || each == '\r' || each == '\t'; }, ' ');
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

}  // namespace

ContentBuilder::ContentBuilder(const ExportTask& task, const WordPage& page, WordWriter& writer)
    : task_(task), request_(*task.request.doc), page_(page), writer_(writer), pictures_(task, page) {}

bool ContentBuilder::build() {
    std::size_t done = 0;
    for (const ExportedItem& item : task_.plan.items) {
        addItem(item);
        if (!task_.goesOn(++done)) return false;
    }
    if (!hasBegun_ || !titles_.empty()) startSection();
    if (isPageNew_) put({WordRole::gap});
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

void ContentBuilder::put(WordParagraph paragraph) {
    paragraph.breaksPage = std::exchange(breaksPage_, false) && !isPageNew_;
    isPageNew_ = false;
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
        WordParagraph paragraph;
        paragraph.role = WordRole::notes;
        paragraph.level = static_cast<std::size_t>(std::clamp(line.level, 0, static_cast<int>(deepestNote)));
        const bool hasBoth = !line.label.empty() && !line.value.empty();
        const std::string label = hasBoth ? line.label + ": " : line.label;
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

WordParagraph ContentBuilder::areaParagraph(WordRole role, const TableGrid& grid, ShownStyleId style) const {
    WordParagraph paragraph;
    paragraph.role = role;
    paragraph.look = &grid.styles[style].look;
    return paragraph;
}

void ContentBuilder::addOver(const TableGrid& grid) {
    const auto add = [this, &grid](WordRole role, const tables::GridText& text) {
        if (text.text.empty()) return;
        WordParagraph paragraph = areaParagraph(role, grid, text.style);
        paragraph.runs.push_back({text.text});
        paragraph.keepsWithNext = true;
        put(std::move(paragraph));
    };
    add(WordRole::tableTitle, grid.title);
    add(WordRole::tableLayer, grid.layer);
    // Without a paragraph between, tables would become one.
    if (grid.title.text.empty() && grid.layer.text.empty()) putGap();
}

void ContentBuilder::addParts(const ExportedItem& item, const TableGrid& grid) {
    TableFit fit = fitTable(grid, page_, request_.wideTables);
    if (fit.longLabels) task_.report.warn(ExportWarning::longRowLabel, item);
    if (fit.columnsCut) task_.report.warn(ExportWarning::columnsCut, item);
    if (fit.textsCut) task_.report.warn(ExportWarning::textsCut, item);
    bool isFirst = true;
    for (TablePart& part : fit.parts) {
        if (!std::exchange(isFirst, false)) putGap();
        part.name = inOneLine(item.label);
        writer_.table(part);
    }
}

void ContentBuilder::addUnder(const TableGrid& grid) {
    if (!grid.caption.text.empty()) {
        WordParagraph caption = areaParagraph(WordRole::caption, grid, grid.caption.style);
        caption.runs.push_back({grid.caption.text});
        put(std::move(caption));
    }
    for (const GridFootnote& note : grid.footnotes) {
        WordParagraph paragraph = areaParagraph(WordRole::footnote, grid, grid.footnoteStyle);
        if (!note.mark.empty()) {
            paragraph.runs.push_back({note.mark, true});
            paragraph.runs.push_back({" "});
        }
        paragraph.runs.push_back({note.text});
        put(std::move(paragraph));
    }
    putGap();
}

void ContentBuilder::addPicture(const ExportedItem& item) {
    task_.report.countPicture();
    const WordPicture picture = pictures_.make(item);
    if (picture.png.empty()) {
        addText(WordRole::text, "[" + picture.alternative + "]");
        return;
    }
    WordParagraph place;
    place.role = WordRole::picture;
    place.breaksPage = std::exchange(breaksPage_, false) && !isPageNew_;
    isPageNew_ = false;
    writer_.picture(place, picture);
}

}  // namespace vexa::frontend
