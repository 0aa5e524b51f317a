#include "frontend/export/html/page_body.h"

#include <algorithm>
#include <string_view>
#include <variant>

#include "frontend/export/html/html_text.h"
#include "frontend/export/html/table_html.h"

namespace vexa::frontend {

namespace {

using tables::CategoryId;
using tables::DimensionId;
using tables::LayerChoice;
using tables::layersOf;
using tables::layOut;
using tables::LayoutOptions;
using tables::Place;
using tables::shownCategories;
using tables::Table;
using tables::TableDimension;
using tables::TableGrid;
using tables::TableLayout;

constexpr std::size_t deepestHeading = 6;

std::string idOf(const ExportedItem& item) { return "i" + std::to_string(item.number); }

}  // namespace

PageBody::PageBody(const ExportTask& task, const PageBodyOptions& options, PicturePlacer& pictures)
    : task_(task), options_(options), pictures_(pictures), classes_(options.restyle) {}

bool PageBody::append(PackedText& page) {
    take_ = [&page](std::string& html) { page.take(html); };
    std::string html;
    std::size_t done = 0;
    for (const ExportedItem& item : task_.plan.items) {
        appendItem(html, item);
        page.take(html);
        if (!task_.goesOn(++done)) return false;
    }
    page.takeAll(html);
    return true;
}

std::string PageBody::classAttribute(std::string_view kind) const {
    return options_.styling ? " class=\"" + std::string(kind) + "\"" : std::string();
}

void PageBody::appendItem(std::string& html, const ExportedItem& item) {
    const bool breaks = item.item().pageBreakBefore && options_.styling;
    if (breaks) html += "<div class=\"break\">\n";
    const ItemContent& content = item.item().content;
    if (std::holds_alternative<HeaderContent>(content)) {
        appendHeading(html, item, item.label, {});
    } else if (const auto* heading = std::get_if<HeadingContent>(&content)) {
        appendHeading(html, item, heading->text, styleDeclarations(heading->style, options_.restyle));
    } else if (const auto* text = std::get_if<TextContent>(&content)) {
        appendStyled(html, "p", "text", *text);
    } else if (const auto* title = std::get_if<PageTitleContent>(&content)) {
        appendStyled(html, "p", "pagetitle", *title);
    } else if (const auto* log = std::get_if<LogContent>(&content)) {
        html += "<pre" + classAttribute("log") + ">";
        if (log->text.starts_with('\n') || log->text.starts_with('\r')) html += '\n';  // the first is dropped
        appendHtml(html, log->text);
        html += "</pre>\n";
    } else if (const auto* warning = std::get_if<WarningContent>(&content)) {
        html += "<p" + classAttribute("warning") + ">";
        appendHtmlLines(html, warning->text);
        html += "</p>\n";
    } else if (const auto* notes = std::get_if<NotesContent>(&content)) {
        appendNotes(html, *notes);
    } else if (item.item().type() == ItemType::table || item.item().type() == ItemType::grid) {
        appendTableItem(html, item);
    } else if (item.item().type() == ItemType::chart || item.item().type() == ItemType::tree) {
        appendPicture(html, item);
    } else if (item.item().type() == ItemType::unknown) {
        task_.report.lose(Feature::unknownItems, item);
        html += "<p" + classAttribute("unknown") + ">";
        appendHtml(html, item.label);
        html += "</p>\n";
    }
    if (breaks) html += "</div>\n";
}

void PageBody::appendHeading(std::string& html, const ExportedItem& item, const std::string& text,
                             std::string_view style) {
    const std::string level = std::to_string(std::min(item.depth + options_.firstHeading, deepestHeading));
    headings_.push_back({idOf(item), item.depth, text});
    html += "<h" + level + " id=\"" + idOf(item) + "\"";
    if (options_.styling && !style.empty()) {
        html += " style=\"";
        appendHtml(html, style);
        html += "\"";
    }
    html += ">";
    appendHtmlLines(html, text);
    html += "</h" + level + ">\n";
}

void PageBody::appendStyled(std::string& html, std::string_view element, std::string_view kind,
                            const StyledText& text) {
    html.append("<").append(element).append(classAttribute(kind));
    const std::string style =
        options_.styling ? styleDeclarations(text.style, options_.restyle) : std::string();
    if (!style.empty()) {
        html += " style=\"";
        appendHtml(html, style);
        html += "\"";
    }
    html += ">";
    appendHtmlLines(html, text.text);
    html.append("</").append(element).append(">\n");
}

void PageBody::appendTableItem(std::string& html, const ExportedItem& item) {
    html += "<div" + classAttribute("table") + " id=\"" + idOf(item) + "\">\n";
    LayoutOptions options;
    options.notesAndCaptions = options_.notesAndCaptions;
    if (const auto* content = std::get_if<TableContent>(&item.item().content)) {
        headings_.push_back({idOf(item), item.depth, item.label});
        appendLayers(html, item, content->table);
    } else {
        headings_.push_back({idOf(item), item.depth, item.label});
        appendGrid(html, layOut(*std::get<GridContent>(item.item().content).grid, options), idOf(item));
    }
    html += "</div>\n";
}

void PageBody::appendLayers(std::string& html, const ExportedItem& item, const Table& table) {
    const bool interactive = options_.interactiveLayers && !table.view->layers.empty();
    const std::vector<Place> layers = interactive ? layersOf(table, LayerChoice::all) : item.layers;
    LayoutOptions options;
    options.notesAndCaptions = options_.notesAndCaptions;
    TableLayout layout(table, options);
    if (interactive) {
        hasLayerLists_ = true;
        html += "<div class=\"pivot\">\n";
        appendLayerLists(html, table);
    }
    std::vector<CategoryId> ids;
    for (std::size_t i = 0; i < layers.size(); ++i) {
        if (interactive) {
            table.data->coordinates(layers[i], ids);
            html += "<div class=\"layer\" data-layer=\"";
            for (std::size_t d = 0; d < table.view->layers.size(); ++d) {
                html += (d == 0 ? "" : " ") + std::to_string(ids[table.view->layers[d]]);
            }
            html += "\">\n";
        }
        appendGrid(html, layout.grid(layers[i]),
                   idOf(item) + (layers.size() > 1 ? "l" + std::to_string(i + 1) : ""));
        if (interactive) html += "</div>\n";
    }
    if (interactive) html += "</div>\n";
}

void PageBody::appendLayerLists(std::string& html, const Table& table) {
    html += "<p class=\"choose\" hidden>";
    for (const DimensionId id : table.view->layers) {
        const TableDimension& dimension = table.data->dimensions()[id];
        html += "<label>";
        appendHtml(html, dimension.label);
        html += " <select>";
        const std::vector<CategoryId> shown = shownCategories(dimension, table.view->dimensions[id]);
        for (const CategoryId category : shown) {
            html += "<option value=\"" + std::to_string(category) + "\"";
            if (category == table.view->dimensions[id].shown) html += " selected";
            html += ">";
            appendHtml(html, dimension.categories[category].label);
            html += "</option>";
        }
        html += "</select></label> ";
    }
    html += "</p>\n";
}

void PageBody::appendGrid(std::string& html, const TableGrid& grid, const std::string& id) {
    appendTable(html, grid, id, options_.styling ? &classes_ : nullptr, take_);
}

void PageBody::appendNotes(std::string& html, const NotesContent& notes) {
    html += "<dl" + classAttribute("notes") + ">\n";
    for (const NoteLine& line : notes.lines) {
        html += "<dt>";
        appendHtml(html, line.label);
        html += "</dt><dd>";
        appendHtmlLines(html, line.value);
        html += "</dd>\n";
        take_(html);
    }
    html += "</dl>\n";
}

void PageBody::appendPicture(std::string& html, const ExportedItem& item) {
    headings_.push_back({idOf(item), item.depth, item.label});
    html += "<figure id=\"" + idOf(item) + "\">";
    pictures_.append(html, item, idOf(item));
    html += "</figure>\n";
}

}  // namespace vexa::frontend
