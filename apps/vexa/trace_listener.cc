#include "apps/vexa/trace_listener.h"

#include <optional>
#include <string_view>
#include <variant>

#include "backend/session/outcome_counter.h"

namespace vexa::program {

namespace {

using Json = nlohmann::ordered_json;

Json event(std::string_view name) { return Json{{"event", name}}; }

Json widthOf(const std::optional<int>& width) { return width ? Json(*width) : Json(nullptr); }

Json categoriesOf(const PivotDimension& dimension) {
    Json categories = Json::array();
    for (const PivotCategory& category : dimension.categories) {
        Json entry{{"label", category.label}};
        if (category.group >= 0) {
            entry["group"] = dimension.groups[static_cast<std::size_t>(category.group)].label;
        }
        categories.push_back(std::move(entry));
    }
    return categories;
}

Json dimensionsOf(const PivotTable& table) {
    Json dimensions = Json::array();
    for (const PivotDimension& dimension : table.dimensions) {
        dimensions.push_back({{"label", dimension.label},
                              {"kind", dimension.kind},
                              {"position", dimension.position},
                              {"categories", categoriesOf(dimension)}});
    }
    return dimensions;
}

Json cellOf(const PivotTable& table, const PivotCell& cell) {
    Json labels = Json::array();
    const std::vector<std::size_t> indexes = table.coordinates(cell.place);
    for (std::size_t i = 0; i < indexes.size(); ++i) {
        labels.push_back(table.dimensions[i].categories[indexes[i]].label);
    }
    Json entry{{"category", std::move(labels)}, {"value", cell.text}};
    const PivotCellExtras& extras = table.extrasOf(cell);
    if (!extras.notes.empty()) {
        entry["notes"] = extras.notes;
    }
    if (extras.bold) {
        entry["bold"] = true;
    }
    if (!extras.color.empty()) {
        entry["color"] = extras.color;
    }
    if (!extras.background.empty()) {
        entry["background"] = extras.background;
    }
    return entry;
}

/// Turns each kind of event into its line; nothing for what the trace does not tell.
struct Writer {
    std::optional<Json> operator()(const CommandStarted& started) const {
        Json line = event("command");
        line["name"] = started.name;
        line["entry"] = started.entry;
        line["line"] = started.place.line;
        return line;
    }

    std::optional<Json> operator()(const ProcedureBegan& began) const {
        Json line = event("procedure");
        line["title"] = began.title;
        line["value"] = began.value;
        return line;
    }

    std::optional<Json> operator()(const ProcedureEnded& ended) const {
        Json line = event("procedureEnd");
        line["title"] = ended.title;
        return line;
    }

    std::optional<Json> operator()(const LogFlushed& /*flushed*/) const { return event("flush"); }

    std::optional<Json> operator()(const SyntaxErrorReported& error) const {
        Json line = event("syntaxError");
        line["message"] = error.message;
        line["line"] = error.place.line;
        line["column"] = error.place.column;
        return line;
    }

    std::optional<Json> operator()(const SyntaxWarned& /*warned*/) const { return std::nullopt; }

    std::optional<Json> operator()(const ParserMessageReported& report) const {
        Json line = event("parserMessage");
        line["method"] = report.method;
        Json arguments = Json::array();
        for (const ParserMessageReported::Argument& argument : report.arguments) {
            std::visit([&arguments](const auto& value) { arguments.push_back(numberOrText(value)); },
                       argument);
        }
        line["arguments"] = std::move(arguments);
        line["message"] = report.message;
        return line;
    }

    std::optional<Json> operator()(const ErrorReported& error) const {
        Json line = event("error");
        line["show"] = error.show;
        line["level"] = error.level;
        line["text"] = error.text;
        line["arguments"] = error.arguments;
        line["message"] = error.message;
        return line;
    }

    std::optional<Json> operator()(const NotesAdded& notes) const {
        Json line = event("notes");
        line["level"] = notes.level;
        line["label"] = notes.label;
        line["value"] = notes.value;
        return line;
    }

    std::optional<Json> operator()(const TableFinished& finished) const {
        const PivotTable& table = *finished.table;
        Json line = event("table");
        line["title"] = table.title;
        line["caption"] = table.caption;
        line["subtype"] = table.subtype;
        line["flag"] = table.flag;
        line["titleHidden"] = table.titleHidden;
        line["minDataColumnWidth"] = widthOf(table.minDataColumnWidth);
        line["maxDataColumnWidth"] = widthOf(table.maxDataColumnWidth);
        line["dimensions"] = dimensionsOf(table);
        Json cells = Json::array();
        for (const PivotCell& cell : table.cells) {
            cells.push_back(cellOf(table, cell));
        }
        line["cells"] = std::move(cells);
        return line;
    }

    std::optional<Json> operator()(const CommandFinished& /*finished*/) const { return std::nullopt; }
    std::optional<Json> operator()(const TextPrinted& /*printed*/) const { return std::nullopt; }

  private:
    static Json numberOrText(const std::string& text) { return text; }
    /// A number without a fraction is written without a point.
    static Json numberOrText(double number) {
        constexpr double kLargestExact = 9007199254740992.0;
        const bool whole = number >= -kLargestExact && number <= kLargestExact &&
                           static_cast<double>(static_cast<std::int64_t>(number)) == number;
        return whole ? Json(static_cast<std::int64_t>(number)) : Json(number);
    }
};

}  // namespace

void TraceListener::receive(const LogEvent& logEvent) {
    if (const std::optional<Json> line = std::visit(Writer(), logEvent)) {
        lines_.write(*line);
    }
    if (isErrorEvent(logEvent)) {
        lines_.flush();
    }
}

}  // namespace vexa::program
