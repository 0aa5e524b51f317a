#include "apps/vexa/outline_text.h"

#include <algorithm>
#include <vector>

#include "apps/rendering/table_rendering.h"
#include "backend/strings/dictionary.h"
#include "backend/tables/formats/number_text.h"
#include "backend/tables/layout/axis_lines.h"
#include "backend/text/text_width.h"
#include "frontend/document/walk.h"

namespace vexa::program {

namespace {

using frontend::Item;
using frontend::ItemId;
using frontend::OutlineNode;
using frontend::WalkPlace;

/// Points as users see them: two decimals at most.
std::string points(double value) {
    std::string text = tables::numberText(value, {tables::FormatKind::plain, 8, 2});
    while (text.find('.') != std::string::npos && (text.back() == '0' || text.back() == '.')) {
        const bool isPoint = text.back() == '.';
        text.pop_back();
        if (isPoint) {
            break;
        }
    }
    return text;
}

std::string gridSize(std::size_t rows, std::size_t columns, std::size_t layers) {
    std::string text = std::to_string(rows) + " \xC3\x97 " + std::to_string(columns);
    return layers > 1 ? text + " \xC3\x97 " + std::to_string(layers) : text;
}

/// "3 × 2" for a table of three rows and two columns, "30 × 15 pt" for what has a size; empty for others.
std::string sizeText(const Item& item) {
    if (const auto* const content = std::get_if<frontend::TableContent>(&item.content)) {
        const tables::Table& table = content->table;
        return gridSize(axisLines(table, tables::Axis::row).size(),
                        axisLines(table, tables::Axis::column).size(),
                        axisLines(table, tables::Axis::layer).size());
    }
    if (const auto* const content = std::get_if<frontend::GridContent>(&item.content)) {
        return gridSize(content->grid->rows(), content->grid->columns, 1);
    }
    if (const auto size = frontend::shownSize(item)) {
        return points(size->width) + " \xC3\x97 " + points(size->height) + " pt";
    }
    return {};
}

std::string bracketed(const std::string& text) { return text.empty() ? text : "  (" + text + ")"; }

/// Writes the lines of the outline.
class OutlinePrinter : public frontend::OutlineVisitor {
  public:
    OutlinePrinter(const frontend::Outline& outline, ItemId under)
        : outline_(outline), under_(under), width_(std::to_string(outline.size()).size()) {}

    bool enter(const WalkPlace& place) override {
        if (place.node.id == under_) {
            base_ = place.depth;
            isInside_ = true;
        }
        if (isInside_ || under_ == 0) {
            addLine(place);
        }
        return true;
    }

    void leave(const WalkPlace& place) override {
        if (place.node.id == under_) {
            isInside_ = false;
        }
    }

    [[nodiscard]] std::string take() { return std::move(text_); }

  private:
    void addLine(const WalkPlace& place) {
        const std::string number = std::to_string(place.number);
        text_.append(width_ - number.size(), ' ');
        text_ += number + "  ";
        addBranches(place);
        const std::string label = frontend::shownLabel(place.item());
        const std::string type(frontend::typeWord(place.item()));
        text_ += printableText(type);
        if (label != type) {
            text_ += "  " + printableText(label);
        }
        text_ += bracketed(sizeText(place.item()));
        if (place.hidden) {
            text_ += bracketed(translated("hidden"_text));
        } else if (place.isOtherView()) {
            text_ += bracketed(translated("not shown"_text));
        }
        text_ += '\n';
    }

    /// The lines of the tree that lead to an item.
    void addBranches(const WalkPlace& place) {
        const std::size_t depth = place.depth - base_;
        isLast_.resize(depth + 1);
        isLast_[depth] = isLastChild(place.node);
        for (std::size_t level = 1; level < depth; ++level) {
            text_ += isLast_[level] ? "   " : "\xE2\x94\x82  ";
        }
        if (depth > 0) {
            text_ += isLast_[depth] ? "\xE2\x94\x94\xE2\x94\x80 " : "\xE2\x94\x9C\xE2\x94\x80 ";
        }
    }

    [[nodiscard]] bool isLastChild(const OutlineNode& node) const {
        const OutlineNode* const parent = outline_.find(node.parent);
        return parent != nullptr && parent->children.back() == node.id;
    }

    const frontend::Outline& outline_;
    const ItemId under_;
    const std::size_t width_;
    std::size_t base_ = 0;
    bool isInside_ = false;
    std::vector<bool> isLast_;  // by depth: whether nothing follows on that level
    std::string text_;
};

/// Calls `action` for each line of a text, made safe.
template <typename Action>
void forEachSafeLine(std::string_view text, const Action& action) {
    while (true) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        action(printableText(text.substr(0, end)));
        if (end == text.size()) {
            return;
        }
        text.remove_prefix(end + 1);
    }
}

class ItemPrinter {
  public:
    ItemPrinter(const frontend::Outline& outline, const OutlineNode& node,
                const rendering::RenderOptions& options, const rendering::TextSink& sink)
        : outline_(outline), node_(node), options_(options), sink_(sink) {}

    void operator()(const frontend::HeaderContent& /*content*/) const {
        sink_(outlineText(outline_, node_.id));
    }
    void operator()(const frontend::StyledText& content) const {
        const rendering::TextStyle style = rendering::textStyle(content.style, false);
        forEachSafeLine(content.text, [&](const std::string& line) {
            sink_(rendering::styled(line, style, options_));
            sink_("\n");
        });
    }
    void operator()(const frontend::TableContent& content) const {
        rendering::renderTable(content.table, options_, sink_);
    }
    void operator()(const frontend::GridContent& content) const {
        rendering::renderTable(tables::layOut(*content.grid), options_, sink_);
    }
    void operator()(const frontend::LogContent& content) const { writeLines(content.text); }
    void operator()(const frontend::WarningContent& content) const { writeLines(content.text); }
    void operator()(const frontend::NotesContent& content) const {
        for (const frontend::NoteLine& line : content.lines) {
            writeLines(frontend::labelBeforeValue(line) + line.value);
        }
    }
    void operator()(const frontend::ShownPicture& content) const {
        const bool isSvg = content.picture->form == frontend::PictureForm::svg;
        sink_(std::string(isSvg ? "SVG" : "PNG") + bracketed(sizeText(node_.item)) + '\n');
        if (!content.alternativeText.empty()) {
            writeLines(content.alternativeText);
        }
    }
    void operator()(const frontend::ModelContent& content) const {
        sink_(outlineText(outline_, node_.id));
        if (content.shown >= node_.children.size()) {
            return;
        }
        sink_("\n");
        writeItem(outline_, *outline_.find(node_.children[content.shown]), options_, sink_);
    }
    /// What a later version put into it cannot be shown: its label stands for it.
    void operator()(const frontend::UnknownContent& /*content*/) const {
        writeLines(frontend::shownLabel(node_.item));
    }

  private:
    void writeLines(std::string_view text) const {
        forEachSafeLine(text, [this](const std::string& line) {
            sink_(line);
            sink_("\n");
        });
    }

    const frontend::Outline& outline_;
    const OutlineNode& node_;
    const rendering::RenderOptions& options_;
    const rendering::TextSink& sink_;
};

class NumberFinder : public frontend::OutlineVisitor {
  public:
    explicit NumberFinder(std::size_t number) : number_(number) {}
    bool enter(const WalkPlace& place) override {
        if (place.number == number_) {
            found_ = &place.node;
        }
        return found_ == nullptr;
    }
    [[nodiscard]] const OutlineNode* found() const { return found_; }

  private:
    std::size_t number_;
    const OutlineNode* found_ = nullptr;
};

}  // namespace

std::string outlineText(const frontend::Outline& outline, ItemId under) {
    OutlinePrinter printer(outline, under);
    walk(outline, printer);
    return printer.take();
}

const OutlineNode* findNumber(const frontend::Outline& outline, std::size_t number) {
    NumberFinder finder(number);
    walk(outline, finder);
    return finder.found();
}

void writeItem(const frontend::Outline& outline, const OutlineNode& node,
               const rendering::RenderOptions& options, const rendering::TextSink& sink) {
    std::visit(ItemPrinter(outline, node, options, sink), node.item.content);
}

}  // namespace vexa::program
