#include "frontend/import/json_item.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "frontend/import/import_problem.h"
#include "frontend/import/json_pictures.h"
#include "frontend/import/json_table.h"
#include "frontend/import/json_values.h"

namespace vexa::frontend {

namespace {

// Levels go back and forth as documents have them: modules report what they like.
constexpr WholeNumbers kWarningLevels{2, std::numeric_limits<int>::max()};
constexpr WholeNumbers kNoteLevels{std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};

void readCommon(JsonObject& object, Item& item) {
    static_cast<void>(object.find("type"));
    object.read("label", item.label);
    object.read("command", item.command);
    object.read("subtype", item.subtype);
    object.read("visible", item.visible);
    object.readPositive("width", item.width);
    object.readPositive("height", item.height);
    object.read("pageBreakBefore", item.pageBreakBefore);
}

template <typename Content>
ItemContent readStyledText(JsonObject& object) {
    Content content;
    object.read("text", content.text);
    readStyleAt(object, "style", content.style);
    return content;
}

ItemContent readLog(JsonObject& object) {
    LogContent content;
    object.read("text", content.text);
    return content;
}

ItemContent readWarning(JsonObject& object) {
    WarningContent content;
    std::int64_t level = content.level;
    object.readWhole("level", kWarningLevels, level);
    content.level = static_cast<int>(level);
    object.read("text", content.text);
    return content;
}

ItemContent readNotes(JsonObject& object) {
    NotesContent content;
    object.forEach("lines", [&](Json& value, const JsonPlace& place) {
        JsonObject line(value, place, object.refusal());
        NoteLine& read = content.lines.emplace_back();
        std::int64_t level = 0;
        line.readWhole("level", kNoteLevels, level);
        read.level = static_cast<int>(level);
        line.read("label", read.label);
        line.read("value", read.value);
        return line.finish();
    });
    return content;
}

/// Reads the rows of a grid: lists of texts, or of objects with a text and style keys.
class GridReader {
  public:
    explicit GridReader(JsonObject& object) : object_(object) {}

    ItemContent read() {
        object_.read("title", grid_.title);
        object_.read("caption", grid_.caption);
        object_.forEach("rows", [this](Json& row, const JsonPlace& place) { return readRow(row, place); });
        readCount("headerRows", grid_.rows(), grid_.headerRows);
        readCount("headerColumns", grid_.columns, grid_.headerColumns);
        return GridContent{std::make_shared<const tables::FlatTable>(std::move(grid_))};
    }

  private:
    void readCount(std::string_view key, std::size_t most, std::size_t& count) {
        std::int64_t read = 0;
        object_.readWhole(key, {0, static_cast<std::int64_t>(most)}, read);
        count = static_cast<std::size_t>(read);
    }

    bool readRow(Json& row, const JsonPlace& place) {
        if (!row.is_array()) return refuse(place, mismatch(foundText(row), "a list"_text));
        if (row.empty()) return refuse(place, mismatch("[]", "at least one text"_text));
        if (grid_.columns == 0) grid_.columns = row.size();
        if (row.size() != grid_.columns) {
            return refuse(place, composed("Texts in this row: ^1. Texts in the first row: ^2."_text,
                                          {std::to_string(row.size()), std::to_string(grid_.columns)}));
        }
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (!readCell(row[i], JsonPlace(place, i))) return false;
        }
        return grid_.cells.size() <= tables::maximalFlatCells ||
               refuse(place, composed("A grid holds at most ^1 cells."_text,
                                      {std::to_string(tables::maximalFlatCells)}));
    }

    bool readCell(Json& value, const JsonPlace& place) {
        tables::FlatCell& cell = grid_.cells.emplace_back();
        if (value.is_string()) {
            cell.text = std::move(value.get_ref<std::string&>());
            return true;
        }
        if (!value.is_object()) return refuse(place, mismatch(foundText(value), "a text or an object"_text));
        JsonObject object(value, place, object_.refusal());
        tables::CellStyle style;
        object.read("text", cell.text);
        readStyle(object, style);
        cell.style = styles_.intern(style);
        if (cell.style == grid_.styles.size()) grid_.styles.push_back(style);
        return object.finish();
    }

    bool refuse(const JsonPlace& place, std::string message) {
        return object_.refusal().refuse(place, std::move(message));
    }

    JsonObject& object_;
    tables::FlatTable grid_;
    tables::TableStyle styles_;  // gives equal styles one number
};

ItemContent readModel(JsonObject& object, std::size_t views) {
    ModelContent content;
    static_cast<void>(object.find("views"));
    std::int64_t shown = 1;
    object.readWhole("shown", {1, static_cast<std::int64_t>(std::max<std::size_t>(views, 1))}, shown);
    content.shown = static_cast<std::size_t>(shown - 1);
    std::optional<std::size_t> printing;
    readWord(object, "printViews", {"visible", "all"}, printing);
    if (printing) content.viewPrinting = static_cast<tables::LayerPrinting>(*printing);
    return content;
}

/// What came from a document file is no JSON: it is printed as a text, and so are the word of its type and
/// the version of the format that it needs, where the word is one that is known here.
bool isFromFile(const Json& raw) { return raw.contains("raw") && raw["raw"].is_string(); }

ItemContent readUnknown(const Json& keys) {
    UnknownContent content;
    content.type = keys.at("type").get<std::string>();
    Json raw = keys;
    for (const std::string_view key : kItemKeys) raw.erase(std::string(key));
    const auto kind = raw.find("kind");
    const auto version = raw.find("neededVersion");
    const bool hasVersion = raw.size() == 3 && isFromFile(raw) && kind != raw.end() && kind->is_string() &&
                            version != raw.end() && version->is_number_integer();
    if (hasVersion) {
        content.type = kind->get<std::string>();
        content.neededVersion = version->get<int>();
    }
    const bool isText = hasVersion || (raw.size() == 1 && isFromFile(raw));
    content.raw = std::make_shared<const std::string>(isText ? raw["raw"].get<std::string>() : raw.dump());
    return content;
}

/// Of the types whose content is read without a refusal of its own: `finish` tells what was wrong.
ItemContent readPlainContent(ItemType type, JsonObject& object, JsonItemSource& source) {
    switch (type) {
        case ItemType::heading:
            return readStyledText<HeadingContent>(object);
        case ItemType::text:
            return readStyledText<TextContent>(object);
        case ItemType::pageTitle:
            return readStyledText<PageTitleContent>(object);
        case ItemType::log:
            return readLog(object);
        case ItemType::warning:
            return readWarning(object);
        case ItemType::notes:
            return readNotes(object);
        case ItemType::model:
            return readModel(object, source.views);
        case ItemType::grid:
            return GridReader(object).read();
        default:
            static_cast<void>(object.find("items"));
            return HeaderContent();
    }
}

bool readContent(ItemType type, JsonObject& object, JsonItemSource& source, const ImportContext& context,
                 ItemContent& content) {
    switch (type) {
        case ItemType::table:
            return readTable(object, source.cells, context, content);
        case ItemType::chart:
            return readChart(object, source.folder, content);
        case ItemType::tree:
            return readTree(object, source.folder, content);
        case ItemType::unknown:
            content = readUnknown(source.keys);
            return object.isFine();
        default:
            content = readPlainContent(type, object, source);
            return object.finish();
    }
}

}  // namespace

std::string_view nearestTypeWord(std::string_view word) {
    return nearestWord(word, std::vector<std::string_view>(itemTypeWords.begin(), itemTypeWords.end() - 1));
}

bool readItem(JsonItemSource& source, const ImportContext& context, JsonRefusal& refusal, Item& item) {
    const JsonPlace place(source.path);
    JsonObject object(source.keys, place, refusal);
    readCommon(object, item);
    const ItemType type = itemTypeOf(source.keys["type"].get_ref<const std::string&>());
    return readContent(type, object, source, context, item.content);
}

}  // namespace vexa::frontend
