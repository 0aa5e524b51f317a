#include "frontend/export/xlsx/sheet_extensions.h"

#include <algorithm>
#include <array>
#include <optional>
#include <pugixml.hpp>
#include <string_view>
#include <utility>
#include <vector>

#include "frontend/export/xlsx/formula_shift.h"
#include "frontend/export/xlsx/package_xml.h"

namespace vexa::frontend {
namespace {

struct Gathered : pugi::xml_writer {
    std::string text;
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }
};

class Extensions {
  public:
    explicit Extensions(const SheetFootprint& footprint) : footprint_(footprint) {}

    /// Whether anything has changed.
    bool leaveOut(const pugi::xml_node& list) {
        visit(list);
        return hasChanged_;
    }

  private:
    void visit(pugi::xml_node parent) {
        for (pugi::xml_node node = parent.first_child(); node;) {
            const pugi::xml_node next = node.next_sibling();
            const std::string_view name = localName(node);
            if (name == "sparkline" || name == "conditionalFormatting" || name == "dataValidation") {
                onPlaces(node, name == "sparkline");
            } else {
                visit(node);
                dropEmpty(node, name);
            }
            node = next;
        }
    }

    /// Lists that have nothing left go, where they had something.
    void dropEmpty(pugi::xml_node node, std::string_view name) {
        constexpr std::array<std::pair<std::string_view, std::string_view>, 6> lists{
            {{"sparklines", "sparkline"},
             {"sparklineGroup", "sparklines"},
             {"sparklineGroups", "sparklineGroup"},
             {"conditionalFormattings", "conditionalFormatting"},
             {"dataValidations", "dataValidation"},
             {"ext", ""}}};
        if (!hasLost_) {
            return;
        }
        for (const auto& [list, child] : lists) {
            if (name != list) {
                continue;
            }
            const auto children = node.children();
            const auto isChild = [child = child](const pugi::xml_node& each) {
                return each.type() == pugi::node_element && (child.empty() || localName(each) == child);
            };
            const auto count = std::count_if(children.begin(), children.end(), isChild);
            if (count == 0) {
                node.parent().remove_child(node);
            } else if (node.attribute("count")) {
                setAttribute(node, "count", std::to_string(count));
            }
        }
    }

    void onPlaces(pugi::xml_node node, bool goesAsAWhole) {
        const pugi::xml_node places = childOf(node, "sqref");
        const auto ranges = readRanges(places.child_value());
        if (!ranges || std::none_of(ranges->begin(), ranges->end(),
                                    [this](const SheetRange& range) { return footprint_.touches(range); })) {
            return;
        }
        hasChanged_ = true;
        std::vector<SheetRange> left;
        for (const SheetRange& range : *ranges) {
            const std::vector<SheetRange> part = footprint_.without(range);
            left.insert(left.end(), part.begin(), part.end());
        }
        if (goesAsAWhole || left.empty()) {
            hasLost_ = true;
            node.parent().remove_child(node);
            return;
        }
        const SheetSpot from = upperLeft(*ranges);
        const SheetSpot to = upperLeft(left);
        places.text().set(rangesText(left).c_str());
        moveFormulas(node, std::int64_t{to.row} - from.row, std::int64_t{to.column} - from.column);
    }

    /// Formulas are seen from the upper left place, and move with it.
    static void moveFormulas(const pugi::xml_node& parent, std::int64_t rows, std::int64_t columns) {
        for (const pugi::xml_node node : parent.children()) {
            if (localName(node) == "f" && (rows != 0 || columns != 0)) {
                node.text().set(shiftFormula(node.child_value(), rows, columns).c_str());
            }
            moveFormulas(node, rows, columns);
        }
    }

    const SheetFootprint& footprint_;
    bool hasChanged_ = false;
    bool hasLost_ = false;
};

}  // namespace

std::string withoutTakenPlaces(std::string extensions, const SheetFootprint& footprint) {
    pugi::xml_document document;
    constexpr unsigned all = pugi::parse_full | pugi::parse_ws_pcdata;
    if (extensions.size() > mostOfATree ||
        !document.load_buffer(extensions.data(), extensions.size(), all & ~pugi::parse_doctype,
                              pugi::encoding_utf8) ||
        !Extensions(footprint).leaveOut(document.document_element())) {
        return extensions;
    }
    if (!childOf(document.document_element(), "ext")) {
        return {};
    }
    Gathered out;
    document.save(out, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return std::move(out.text);
}

}  // namespace vexa::frontend
