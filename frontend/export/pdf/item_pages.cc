#include "frontend/export/pdf/item_pages.h"

#include <algorithm>
#include <array>
#include <variant>

#include "backend/strings/dictionary.h"
#include "frontend/drawing/picture_style.h"
#include "frontend/export/pdf/picture_forms.h"
#include "frontend/export/pdf/table_flow.h"
#include "frontend/export/picture_files.h"

namespace vexa::frontend::pdf {

namespace {

using tables::CellStyle;
using tables::Color;
using tables::layOut;
using tables::Place;
using tables::TableGrid;
using tables::TableLayout;

constexpr double itemGap = 12;
constexpr double headingGap = 16;
constexpr double belowHeading = 6;
/// What stands below a heading on its page, at least.
constexpr double withHeading = 30;
constexpr std::array<std::string_view, 6> headingTypes{"H1", "H2", "H3", "H4", "H5", "H6"};
constexpr std::array<double, 6> headingSizes{17, 14, 12, 11, 10, 10};

/// Characters that a cell of a table may have: hundreds of pages, which are laid out at one time.
constexpr std::size_t longestCell = 1'000'000;

/// Every page has its titles, which must be there as a whole.
constexpr std::size_t longestPageTitle = 100'000;

std::size_t charactersIn(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    }));
}

/// Of the longest text in a cell of a table, those beyond the limit only.
std::size_t tooManyCharacters(const TableGrid& grid) {
    std::size_t most = 0;
    for (const tables::GridCell& cell : grid.cells) {
        if (cell.textLength <= longestCell) continue;
        most = std::max(most, charactersIn(grid.text(cell)));
    }
    return most > longestCell ? most : 0;
}

ParagraphLook textLook() {
    ParagraphLook look;
    look.style.size = 10;
    return look;
}

ParagraphLook overlaid(ParagraphLook look, const CellStyle& style) {
    look.style.bold = style.bold.value_or(look.style.bold);
    look.style.italic = style.italic.value_or(look.style.italic);
    look.style.size = style.size.value_or(look.style.size);
    look.color = style.color.value_or(look.color);
    if (!style.font.empty()) look.style.font = style.font;
    look.underline = style.underline.value_or(look.underline);
    if (style.background) look.background = style.background;
    return look;
}

ParagraphLook headingLook(std::size_t level) {
    ParagraphLook look;
    look.style.size = headingSizes[level];
    look.style.bold = true;
    return look;
}

/// Points.
ItemSize pictureSize(const ExportedItem& item) {
    constexpr ItemSize usual{225, 112.5};
    const ItemSize size = shownSize(item.item()).value_or(usual);
    return size.width > 0 && size.height > 0 ? size : usual;
}

}  // namespace

ItemPages::ItemPages(const ExportTask& task, PdfFile& file, TextShaper& shaper, StructureTree& structure,
                     PageFlow& flow)
    : task_(task),
      file_(file),
      shaper_(shaper),
      structure_(structure),
      flow_(flow),
      styles_(task.surroundings.styleFolders, task.report),
      drawings_(task.plan, [this](const ExportedItem& item) { return beginDrawing(item); }) {}

bool ItemPages::write() {
    std::size_t done = 0;
    for (const ExportedItem& item : task_.plan.items) {
        if (item.item().pageBreakBefore) flow_.breakPage();
        writeItem(item);
        followsTitle_ = item.item().type() == ItemType::pageTitle;
        if (!task_.goesOn(++done)) return false;
    }
    flow_.writeWaiting();
    noteUnseenTitles();
    return true;
}

void ItemPages::writeItem(const ExportedItem& item) {
    const ItemContent& content = item.item().content;
    if (std::holds_alternative<HeaderContent>(content)) {
        writeHeading(item, {item.label, {}});
    } else if (const auto* heading = std::get_if<HeadingContent>(&content)) {
        writeHeading(item, *heading);
    } else if (const auto* text = std::get_if<TextContent>(&content)) {
        writeParagraph(overlaid(textLook(), text->style), text->text);
    } else if (const auto* title = std::get_if<PageTitleContent>(&content)) {
        writePageTitle(item, *title);
    } else if (const auto* log = std::get_if<LogContent>(&content)) {
        ParagraphLook look;
        look.style = {"monospace", 8.5, false, false};
        look.background = Color{0xF5F5F5};
        writeParagraph(look, log->text);
    } else if (const auto* warning = std::get_if<WarningContent>(&content)) {
        writeWarning(warning->text);
    } else if (const auto* notes = std::get_if<NotesContent>(&content)) {
        writeNotes(*notes);
    } else if (item.item().type() == ItemType::table || item.item().type() == ItemType::grid) {
        writeTableItem(item);
    } else if (pictureOf(item) != nullptr) {
        writePicture(item);
    } else if (item.item().type() == ItemType::unknown) {
        task_.report.lose(Feature::unknownItems, item);
        ParagraphLook look = textLook();
        look.style.italic = true;
        writeParagraph(look, item.label);
    }
}

void ItemPages::writeParagraph(const ParagraphLook& look, std::string_view text) {
    flow_.leaveSpace(itemGap);
    StructureElement element;
    // Opened where it is written, behind the headings that wait.
    flow_.reserve(std::min(flow_.heightOf(look, text), 2.4 * look.style.size));
    element = structure_.open("P", structure_.document());
    flow_.write(look, text, &element);
    structure_.close(element);
    flow_.leaveSpace(itemGap);
}

/// A heading waits until it is known what stands below it.
void ItemPages::writeHeading(const ExportedItem& item, const StyledText& text) {
    const std::size_t level = std::min(item.depth, headingTypes.size() - 1);
    const ParagraphLook look = overlaid(headingLook(level), text.style);
    const double height = flow_.heightOf(look, text.text) + headingGap + belowHeading;
    const std::string title = item.label;
    const std::size_t depth = item.depth;
    flow_.keepWithNext(height, [this, look, level, title, depth, shown = text.text] {
        flow_.leaveSpace(headingGap);
        flow_.reserve(std::min(flow_.heightOf(look, shown), flow_.bodyHeight()));
        bookmarks_.add(title, depth, flow_.destination(flow_.place()));
        StructureElement element = structure_.open(headingTypes[level], structure_.document());
        flow_.write(look, shown, &element);
        structure_.close(element);
        flow_.leaveSpace(belowHeading);
    });
}

void ItemPages::writePageTitle(const ExportedItem& item, const StyledText& title) {
    if (!followsTitle_) {
        noteUnseenTitles();
        titles_.clear();
    }
    titles_.push_back(&item);
    if (const std::size_t characters = charactersIn(title.text); characters > longestPageTitle) {
        task_.report.fail(ExportError::other,
                          composed("Item ^1 (^2) is a page title of ^3 characters, and a page takes ^4."_text,
                                   {std::to_string(item.number), item.shortLabel(),
                                    std::to_string(characters), std::to_string(longestPageTitle)}));
        return;
    }
    ParagraphLook look;
    look.color = Color{0x555555};
    flow_.addPageTitle(overlaid(look, title.style), title.text, followsTitle_);
}

void ItemPages::noteUnseenTitles() {
    if (!flow_.hasUnseenTitle()) return;
    for (const ExportedItem* const each : titles_) task_.report.lose(Feature::pageTitles, *each);
}

void ItemPages::writeWarning(const std::string& text) {
    ParagraphLook look = textLook();
    look.indent = 9;
    flow_.leaveSpace(itemGap);
    flow_.reserve(std::min(flow_.heightOf(look, text), flow_.freshRest()));
    const PagePlace begin = flow_.place();
    StructureElement element = structure_.open("P", structure_.document());
    flow_.write(look, text, &element);
    structure_.close(element);
    if (flow_.place().page == begin.page) {
        flow_.canvas().beginArtifact("Layout");
        flow_.canvas().fill({flow_.left(), begin.y, 3, flow_.y() - begin.y}, Color{0xB45309});
        flow_.canvas().end();
    }
    flow_.leaveSpace(itemGap);
}

void ItemPages::writeNotes(const NotesContent& notes) {
    ParagraphLook label = textLook();
    label.style.size = 9;
    label.style.bold = true;
    ParagraphLook value = label;
    value.style.bold = false;
    value.indent = 16;
    flow_.leaveSpace(itemGap);
    flow_.reserve(withHeading);
    StructureElement list = structure_.open("L", structure_.document());
    for (const NoteLine& line : notes.lines) {
        StructureElement entry = structure_.open("LI", list);
        StructureElement name = structure_.open("Lbl", entry);
        flow_.reserve(
            std::min(flow_.heightOf(label, line.label) + flow_.heightOf(value, line.value), withHeading));
        flow_.write(label, line.label, &name);
        structure_.close(name);
        if (!line.value.empty()) {
            StructureElement body = structure_.open("LBody", entry);
            flow_.write(value, line.value, &body);
            structure_.close(body);
        }
        structure_.close(entry);
    }
    structure_.close(list);
    flow_.leaveSpace(itemGap);
}

void ItemPages::writeTableItem(const ExportedItem& item) {
    const auto* const content = std::get_if<TableContent>(&item.item().content);
    if (content == nullptr) {
        writeGrid(item, layOut(*std::get<GridContent>(item.item().content).grid), true);
        return;
    }
    TableLayout layout(content->table);
    bool isFirst = true;
    for (const Place layer : item.layers) {
        writeGrid(item, layout.grid(layer), isFirst);
        isFirst = false;
    }
}

void ItemPages::writeGrid(const ExportedItem& item, const TableGrid& grid, bool isFirst) {
    if (const std::size_t characters = tooManyCharacters(grid); characters > 0) {
        task_.report.fail(ExportError::other,
                          composed("Item ^1 (^2) has a text of ^3 characters, and a cell takes ^4."_text,
                                   {std::to_string(item.number), item.shortLabel(),
                                    std::to_string(characters), std::to_string(longestCell)}));
        return;
    }
    flow_.leaveSpace(itemGap);
    const TablePages pages = writeTable(grid, shaper_, structure_, flow_);
    if (isFirst) bookmarks_.add(item.label, item.depth, flow_.destination(pages.begin));
    if (pages.hasLongLabels) task_.report.warn(ExportWarning::longRowLabel, item);
    flow_.leaveSpace(itemGap);
}

std::unique_ptr<PageDrawing> ItemPages::beginDrawing(const ExportedItem& item) {
    const ShownPicture& picture = *pictureOf(item);
    return std::make_unique<PageDrawing>(*picture.picture,
                                         appliedRules(picture, styles_.find(picture.styleSheet)),
                                         pictureSize(item), drawings_.shareLittle());
}

void ItemPages::writePicture(const ExportedItem& item) {
    const ShownPicture& picture = *pictureOf(item);
    task_.report.countPicture();
    static_cast<void>(task_.pictures.add(item));
    const ItemSize size = pictureSize(item);
    const double scale = std::min({1.0, flow_.width() / size.width, (flow_.bodyHeight() - 60) / size.height});
    const std::unique_ptr<PageDrawing> drawing = drawings_.take(item);
    static_cast<void>(styles_.find(picture.styleSheet, item));
    const PictureObject form = addPictureForm(file_, *drawing, !task_.request.pdf->embedFonts);
    picturesHoldFonts_ = picturesHoldFonts_ || form.holdsFonts;
    flow_.leaveSpace(itemGap);
    flow_.reserve(std::min(size.height * scale, flow_.freshRest()));
    bookmarks_.add(item.label, item.depth, flow_.destination(flow_.place()));
    const Box box{flow_.left(), flow_.y(), size.width * scale, size.height * scale};
    StructureElement figure = structure_.open("Figure", structure_.document());
    figure.attributes = "/Alt";
    appendTextString(figure.attributes, alternativeOf(item));
    figure.attributes += "/A<</O/Layout/Placement/Block/BBox" + flow_.rectangle(box) + ">>";
    flow_.beginContent(figure);
    if (form.object != 0) {
        const std::string name = "P" + std::to_string(++pictures_);
        flow_.usePicture(name, form.object);
        flow_.canvas().picture(name, size.width, size.height, box);
    } else {
        task_.report.note(composed(
            "Item ^1 (^2): the picture cannot be drawn, and its alternative text takes its place. ^3"_text,
            {std::to_string(item.number), item.shortLabel(), form.reason}));
        writePlaceholder(item, box);
    }
    flow_.canvas().end();
    structure_.close(figure);
    flow_.advance(box.height);
    flow_.leaveSpace(itemGap);
}

void ItemPages::writePlaceholder(const ExportedItem& item, const Box& box) {
    constexpr double inset = 6;
    flow_.canvas().fill(box, Color{0xF4F4F4});
    const ParagraphLook look = textLook();
    const ShapedText& text =
        shaper_.wrapped(shaper_.styleOf(look.style), alternativeOf(item), box.width - 2 * inset);
    double y = box.top + inset;
    for (const ShapedLine& line : text.lines) {
        if (y + line.height() > box.bottom()) break;
        flow_.canvas().text(line, look.style.size, Color{0x404040}, box.left + inset, y + line.ascent);
        y += line.height();
    }
}

}  // namespace vexa::frontend::pdf
