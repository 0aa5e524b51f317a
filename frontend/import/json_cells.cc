#include "frontend/import/json_cells.h"

#include <utility>

#include "frontend/import/import_problem.h"
#include "frontend/import/json_values.h"

namespace vexa::frontend {

namespace {

using tables::CellKind;

/// The value of a cell's object; a cell that has none is empty.
void readValue(JsonObject& object, JsonCells& cells) {
    Json* const value = object.find("value");
    if (value == nullptr || value->is_null()) {
        cells.addEmpty();
    } else if (value->is_number()) {
        cells.addNumber(value->get<double>());
    } else if (value->is_string()) {
        cells.addText(std::move(value->get_ref<std::string&>()));
    } else {
        object.refuse("value", "a number, a text or null"_text);
    }
}

void readAt(JsonObject& object, JsonCells& cells) {
    std::size_t length = 0;
    object.require("at", "a list"_text);
    object.forEach("at", [&](const Json& number, const JsonPlace& place) {
        ++length;
        const bool fits = number.is_number_unsigned() && number.get<std::uint64_t>() < UINT32_MAX;
        if (!fits)
            return object.refusal().refuse(
                place, mismatch(foundText(number), "the number of a category, from 0"_text));
        cells.at.push_back(number.get<std::uint32_t>());
        return true;
    });
    const bool isFirst = cells.cells.size() == 1;
    if (isFirst) cells.atLength = length;
    if (object.isFine() && length != cells.atLength) {
        object.refuse("at", "as many numbers as there are dimensions"_text);
    }
}

/// A text or a footnote needs a cell that holds something: an empty text, where there is no value.
void fillEmpty(JsonCells& cells, JsonCellDetails& details) {
    JsonCell& cell = cells.cells.back();
    if (cell.kind != CellKind::empty || (!details.shown && details.footnotes.empty())) return;
    cells.texts.push_back(details.shown.value_or(std::string()));
    details.shown.reset();
    cell.kind = CellKind::text;
    cell.text = static_cast<std::uint32_t>(cells.texts.size() - 1);
}

}  // namespace

void JsonCells::addText(std::string text) {
    JsonCell& cell = cells.emplace_back();
    cell.kind = CellKind::text;
    cell.text = static_cast<std::uint32_t>(texts.size());
    texts.push_back(std::move(text));
}

void readFootnoteNumbers(JsonObject& object, std::vector<tables::FootnoteId>& footnotes) {
    object.forEach("footnotes", [&](const Json& number, const JsonPlace& place) {
        const bool fits = number.is_number_unsigned() && number.get<std::uint64_t>() - 1 < UINT32_MAX;
        if (!fits) {
            return object.refusal().refuse(
                place, mismatch(foundText(number), "the number of a footnote, from 1"_text));
        }
        footnotes.push_back(static_cast<tables::FootnoteId>(number.get<std::uint64_t>() - 1));
        return true;
    });
}

bool readCellObject(Json& value, const JsonPlace& place, JsonRefusal& refusal, JsonCells& cells) {
    JsonObject object(value, place, refusal);
    if (!object.isFine()) return false;
    readValue(object, cells);
    if (!object.isFine()) return false;
    if (cells.isSparse) readAt(object, cells);
    JsonCellDetails details;
    readFormat(object, "format", details.format);
    readFootnoteNumbers(object, details.footnotes);
    readStyle(object, details.style);
    std::string shown;
    object.read("text", shown);
    if (object.has("text")) details.shown = std::move(shown);
    if (!object.finish()) return false;
    fillEmpty(cells, details);
    const bool isPlain = details.format == tables::DisplayFormat() && details.style.isEmpty() &&
                         details.footnotes.empty() && !details.shown;
    if (!isPlain) {
        cells.details.push_back(std::move(details));
        cells.cells.back().details = static_cast<std::uint32_t>(cells.details.size());
    }
    return true;
}

}  // namespace vexa::frontend
