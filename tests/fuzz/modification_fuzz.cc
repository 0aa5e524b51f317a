// Any text as a request against a rich document: what is planned keeps what holds of every modification.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <variant>

#include "frontend/import/results_reader.h"
#include "frontend/import/statistic_words.h"
#include "frontend/modify/modification.h"
#include "frontend/requests/modify_request_reader.h"

using namespace vexa::frontend;

namespace {

class NoLooks : public LookSource {
  public:
    ReadLook find(std::string_view /*name*/) override { return {nullptr, "none"}; }
    bool hasStyleSheet(const std::string& /*name*/) const override { return false; }
};

/// Items of every type; tables with groups, several dimensions, layers, hidden categories, texts, empty
/// cells, and styles.
constexpr char kDocument[] = R"({"items": [
    {"type": "header", "label": "Means", "command": "Means", "items": [
        {"type": "table", "label": "Report", "subtype": "Report", "title": "Income", "caption": "c", "footnotes": ["f"],
         "rows": [{"label": "Region", "categories": [
             {"group": "Europe", "categories": [{"label": "North", "bold": true}, "South"]},
             {"group": "", "categories": ["Far"]}, {"label": "Gone", "hidden": true}, {"label": "Total", "role": "total"}]}],
         "columns": [{"label": "Year", "categories": ["2025", "2026"]},
                     {"label": "Statistics", "categories": [{"label": "Mean", "role": "mean", "format": "F8.2", "width": 40},
                                                            {"label": "N", "role": "count"}, "A;B"]}],
         "layers": [{"label": "Sex", "shown": 2, "categories": ["Female", "Male"]}],
         "cells": [1, 2, "x", 4, 5, null,  1, {"value": 2, "text": "two"}, 3, 4, 5, 6,
                   7, 7, 7, 7, 7, 7,  1, 1, 1, {"value": 1, "format": "F8.1"}, 1, 1,  9, 8, 7, 6, 5, 4,
                   0, -1, null, "y", {"value": "z", "footnotes": [1]}, 2.5,  1, 2, 3, 4, 5, 6,
                   7, 7, 7, 7, 7, 7,  1, 1, 1, 1, 1, 1,  9, 8, 7, 6, 5, 4]},
        {"type": "log", "command": "Host", "text": "l"}, {"type": "warning", "text": "w"},
        {"type": "notes", "lines": [{"label": "a", "value": "b"}]}]},
    {"type": "table", "rows": [{"label": "R", "categories": ["a", "b"]}], "cells": [1, 2]},
    {"type": "table", "cells": [5]}, {"type": "table", "columns": [{"categories": []}]},
    {"type": "model", "label": "Model", "shown": 2, "views": [{"type": "grid", "rows": [["a"]]},
        {"type": "chart", "svg": "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20'/>"}]},
    {"type": "tree", "width": 50, "svg": "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20'/>"},
    {"type": "header", "label": "Means", "command": "Means", "visible": false, "items": [{"type": "heading", "text": "h"}]},
    {"type": "text", "text": "t", "style": {"bold": true}}, {"type": "pageTitle", "text": "p"}, {"type": "hologram"}]})";

Outline makeOutline() {
    NoLooks looks;
    const StatisticWords words;
    Imported imported;
    ImportProblem problem;
    if (!readResults(kDocument, "document", {looks, words}, imported, problem)) std::abort();
    return imported.outline;
}

void expect(bool holds) {
    if (!holds) std::abort();
}

void checkAgainst(const Outline& outline, const PreparedRequest& prepared) {
    const Modification modification = prepared.plan(outline);
    expect(modification.modified <= modification.selected);
    expect(modification.deleted <= modification.selected);
    expect(modification.selected == modification.items.size());
    expect(modification.outline.size() <= outline.size());
    if (modification.deleted == 0) expect(modification.outline.size() == outline.size());
    const bool changes = std::any_of(modification.items.begin(), modification.items.end(),
                                     [](const PlannedItem& item) { return !item.plan.changes.empty(); });
    if (!changes) expect(modification.outline == outline);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Outline outline = makeOutline();
    const auto read = readModifyRequest({reinterpret_cast<const char*>(data), size});
    const auto* const request = std::get_if<ModifyRequest>(&read);
    if (request == nullptr) return 0;
    NoLooks looks;
    const PreparedRequest prepared(*request, looks);
    if (prepared.problem().empty()) checkAgainst(outline, prepared);
    return 0;
}
