#include "frontend/import/json_dimensions.h"

#include <utility>

#include "frontend/import/import_problem.h"
#include "frontend/import/json_cells.h"
#include "frontend/import/json_values.h"
#include "frontend/import/statistic_words.h"

namespace vexa::frontend {

namespace {

using tables::CategoryId;
using tables::GroupId;
using tables::TableCategory;

const std::vector<std::string_view> kRoleWords{"mean",        "count",  "percent", "significance", "residual",
                                               "correlation", "median", "total",   "none"};

/// Reads the categories of one dimension, group by group.
class CategoryReader {
  public:
    CategoryReader(JsonRefusal& refusal, std::size_t footnoteCount, const ImportContext& context,
                   JsonDimension& made)
        : refusal_(refusal), footnoteCount_(footnoteCount), context_(context), made_(made) {}

    bool read(JsonObject& object, GroupId group, std::size_t depth) {
        object.require("categories", "a list"_text);
        object.forEach("categories", [&](Json& value, const JsonPlace& place) {
            return readOne(value, place, group, depth);
        });
        return object.isFine();
    }

  private:
    bool readOne(Json& value, const JsonPlace& place, GroupId group, std::size_t depth) {
        if (value.is_string()) {
            addCategory(group).label = std::move(value.get_ref<std::string&>());
            inferRole();
            return true;
        }
        if (!value.is_object())
            return refusal_.refuse(place, mismatch(foundText(value), "a text or an object"_text));
        JsonObject object(value, place, refusal_);
        return object.has("group") ? readGroup(object, group, depth) : readCategory(object, group);
    }

    bool readGroup(JsonObject& object, GroupId parent, std::size_t depth) {
        if (depth >= maximalImportDepth) {
            return refusal_.refuse(object.place(), composed("Groups nest more than ^1 deep here."_text,
                                                            {std::to_string(maximalImportDepth)}));
        }
        const std::size_t before = made_.dimension.categories.size();
        const auto id = static_cast<GroupId>(made_.dimension.groups.size());
        tables::TableGroup& group = made_.dimension.groups.emplace_back();
        group.parent = parent;
        object.read("group", group.label);
        JsonDimension::Label label;
        label.id = id;
        readStyle(object, label.style);
        if (!read(object, id, depth + 1) || !object.finish()) return false;
        if (made_.dimension.categories.size() == before) {
            made_.dimension.groups.resize(id);  // a group of nothing shows nothing
        } else if (!label.style.isEmpty()) {
            made_.groups.push_back(std::move(label));
        }
        return true;
    }

    bool readCategory(JsonObject& object, GroupId group) {
        const auto id = static_cast<CategoryId>(made_.dimension.categories.size());
        TableCategory& category = addCategory(group);
        object.read("label", category.label);
        readFormat(object, "format", category.format);
        readFootnoteNumbers(object, category.footnotes);
        std::optional<std::size_t> role;
        readWord(object, "role", kRoleWords, role);
        bool hidden = false;
        object.read("hidden", hidden);
        JsonDimension::Label label;
        label.id = id;
        object.readPositive("width", label.width);
        readStyle(object, label.style);
        if (!object.finish() || !checkFootnotes(object, category)) return false;
        if (role) {
            static_cast<void>(readRole(kRoleWords[*role], category.role));
        } else {
            inferRole();
        }
        if (hidden) {
            made_.view.hidden.resize(id);
            made_.view.hidden.push_back(true);
        }
        if (label.width || !label.style.isEmpty()) made_.categories.push_back(std::move(label));
        return true;
    }

    TableCategory& addCategory(GroupId group) {
        TableCategory& category = made_.dimension.categories.emplace_back();
        category.group = group;
        return category;
    }

    void inferRole() {
        TableCategory& category = made_.dimension.categories.back();
        category.role = context_.words.roleOf(category.label);
    }

    bool checkFootnotes(JsonObject& object, const TableCategory& category) {
        for (const tables::FootnoteId footnote : category.footnotes) {
            if (footnote >= footnoteCount_) {
                return refusal_.refuse(
                    object.place("footnotes"),
                    composed("There is no footnote ^1; the table has ^2."_text,
                             {std::to_string(footnote + 1), std::to_string(footnoteCount_)}));
            }
        }
        return true;
    }

    JsonRefusal& refusal_;
    std::size_t footnoteCount_;
    const ImportContext& context_;
    JsonDimension& made_;
};

bool readDimension(JsonObject& object, bool isLayer, std::size_t footnoteCount, const ImportContext& context,
                   JsonDimension& made) {
    object.read("label", made.dimension.label);
    object.read("labelHidden", made.view.labelHidden);
    CategoryReader categories(object.refusal(), footnoteCount, context, made);
    if (!categories.read(object, tables::noGroup, 0)) return false;
    if (!made.view.hidden.empty()) made.view.hidden.resize(made.dimension.categories.size());
    if (isLayer) {
        std::int64_t shown = 1;
        const auto count = static_cast<std::int64_t>(made.dimension.categories.size());
        object.readWhole("shown", {1, count}, shown);
        made.view.shown = static_cast<CategoryId>(shown - 1);
    }
    return object.finish();
}

}  // namespace

bool readDimensions(JsonObject& object, std::string_view key, bool areLayers, std::size_t footnoteCount,
                    const ImportContext& context, std::vector<JsonDimension>& dimensions) {
    object.forEach(key, [&](Json& value, const JsonPlace& place) {
        JsonObject dimension(value, place, object.refusal());
        JsonDimension made;
        if (!dimension.isFine() || !readDimension(dimension, areLayers, footnoteCount, context, made))
            return false;
        dimensions.push_back(std::move(made));
        return true;
    });
    return object.isFine();
}

}  // namespace vexa::frontend
