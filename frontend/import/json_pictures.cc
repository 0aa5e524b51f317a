#include "frontend/import/json_pictures.h"

#include <utility>

#include "backend/platform/file_system.h"
#include "frontend/import/import_context.h"
#include "frontend/import/import_problem.h"
#include "frontend/import/pictures.h"
#include "frontend/package/base64.h"

namespace vexa::frontend {

namespace {

bool isWhole(const std::string& path) {
    return path.starts_with('/') || path.starts_with('\\') || (path.size() > 1 && path[1] == ':');
}

/// The picture's bytes, of whichever key has them; `key` gets its name.
bool readBytes(JsonObject& object, const std::string& folder, std::string& bytes, std::string_view& key) {
    std::string text;
    std::size_t given = 0;
    for (const std::string_view each :
         {std::string_view("file"), std::string_view("svg"), std::string_view("png")}) {
        if (!object.has(each)) continue;
        ++given;
        key = each;
        object.read(each, text);
    }
    if (!object.isFine()) return false;
    if (given != 1) {
        return object.refusal().refuse(
            object.place(), composed("Found: ^1 of the keys file, svg and png. Expected: one of them."_text,
                                     {std::to_string(given)}));
    }
    if (key == "svg") {
        bytes = std::move(text);
    } else if (key == "png") {
        if (!decodeBase64(text, bytes))
            return object.refusal().refuse(object.place(key), translated("This is not base64 text."_text));
    } else {
        const std::string path = isWhole(text) ? text : folder + text;
        const FileResult result = FileSystem::current().read(path, bytes, maximalPictureBytes);
        if (!result) {
            return object.refusal().refuse(object.place(key), composed("The file ^1 cannot be read: ^2."_text,
                                                                       {path, shownReason(result)}));
        }
    }
    return true;
}

bool readShownPicture(JsonObject& object, const std::string& folder, ShownPicture& shown) {
    object.read("alternativeText", shown.alternativeText);
    object.read("styleSheet", shown.styleSheet);
    object.forEach("templates", [&](Json& text, const JsonPlace& place) {
        if (!text.is_string())
            return object.refusal().refuse(place, mismatch(foundText(text), "a text"_text));
        shown.templates.push_back(std::move(text.get_ref<std::string&>()));
        return true;
    });
    std::string bytes;
    std::string_view key;
    if (!readBytes(object, folder, bytes, key)) return false;
    std::string reason;
    shown.picture = key == "svg"   ? readSvg(std::move(bytes), reason)
                    : key == "png" ? readPng(std::move(bytes), reason)
                                   : readPicture(std::move(bytes), reason);
    return shown.picture != nullptr ? object.finish() : object.refusal().refuse(object.place(key), reason);
}

template <typename Content>
bool readShown(JsonObject& object, const std::string& folder, ItemContent& content) {
    Content shown;
    if (!readShownPicture(object, folder, shown)) return false;
    content = std::move(shown);
    return true;
}

}  // namespace

bool readChart(JsonObject& object, const std::string& folder, ItemContent& content) {
    return readShown<ChartContent>(object, folder, content);
}

bool readTree(JsonObject& object, const std::string& folder, ItemContent& content) {
    return readShown<TreeContent>(object, folder, content);
}

}  // namespace vexa::frontend
