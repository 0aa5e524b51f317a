#include "frontend/import/results_events.h"

#include <array>
#include <utility>

#include "frontend/import/json_item.h"

namespace vexa::frontend {

namespace {

constexpr std::size_t kDeepest = 8 * maximalImportDepth;  // of anything in the text
constexpr std::string_view kIgnoredKey = "x-";
constexpr std::string_view kExpectedCell = "a number, a text, null or an object"_text;

std::string folderOf(const std::string& file) {
    const std::size_t end = file.find_last_of("/\\");
    return end == std::string::npos ? std::string() : file.substr(0, end + 1);
}

}  // namespace

ResultsEvents::ResultsEvents(const JsonReader& text, std::string file, const ImportContext& context,
                             Imported& imported)
    : text_(text),
      file_(std::move(file)),
      folder_(folderOf(file_)),
      context_(context),
      imported_(imported),
      refusedAt_(text.text().size() + 1) {}

bool ResultsEvents::null() {
    if (mode_ == Mode::cells && !frame().cells.isSparse) {
        tracker_.value();
        frame().cells.addEmpty();
        return true;
    }
    return scalar(nullptr);
}

bool ResultsEvents::boolean(bool value) { return scalar(value); }

bool ResultsEvents::number(double value, Json whole) {
    if (mode_ == Mode::cells && !frame().cells.isSparse) {
        tracker_.value();
        frame().cells.addNumber(value);
        return true;
    }
    return scalar(std::move(whole));
}

bool ResultsEvents::number_integer(number_integer_t value) {
    return number(static_cast<double>(value), value);
}
bool ResultsEvents::number_unsigned(number_unsigned_t value) {
    return number(static_cast<double>(value), value);
}
bool ResultsEvents::number_float(number_float_t value, const string_t& /*text*/) {
    return number(value, value);
}

bool ResultsEvents::string(string_t& value) {
    if (mode_ == Mode::cells && !frame().cells.isSparse) {
        tracker_.value();
        frame().cells.addText(std::move(value));
        return true;
    }
    return scalar(std::move(value));
}

bool ResultsEvents::binary(binary_t& /*value*/) { return false; }  // JSON has none

bool ResultsEvents::scalar(Json value) {
    tracker_.value();
    switch (mode_) {
        case Mode::value:
        case Mode::cell:
            builder_.add(std::move(value));
            if (!builder_.isOpen()) endValue();
            return true;
        case Mode::skipped:
            if (skippedDepth_ == 0) mode_ = Mode::object;
            return true;
        case Mode::cells:
        case Mode::children:
        case Mode::object:
            break;
    }
    return refuseValue(foundText(value));
}

bool ResultsEvents::refuseHere(std::string message) {
    refusedAt_ = text_.tokenBegin();
    return refusal_.refuse(tracker_.path(), std::move(message));
}

/// Refuses a value that stands where only certain objects or lists fit.
bool ResultsEvents::refuseValue(const std::string& found) {
    if (mode_ == Mode::cells && tracker_.path().back().isIndex) {
        return refuseHere(mismatch(found, frame().cells.isSparse ? "an object"_text : kExpectedCell));
    }
    if (mode_ == Mode::cells ||
        (mode_ == Mode::children && !frames_.empty() && !tracker_.path().back().isIndex)) {
        return refuseHere(mismatch(found, "a list"_text));
    }
    return refuseHere(mismatch(found, "an object"_text));
}

bool ResultsEvents::start_object(std::size_t /*elements*/) {
    tracker_.value();
    if (tracker_.depth() >= kDeepest) {
        return refuseHere(composed("Values nest more than ^1 deep here."_text, {std::to_string(kDeepest)}));
    }
    if (mode_ == Mode::children && (frames_.empty() || tracker_.path().back().isIndex)) return openChild();
    if (mode_ == Mode::cells && tracker_.path().back().isIndex) {
        builder_.start(cell_);
        mode_ = Mode::cell;
    }
    return openValue(false);
}

bool ResultsEvents::start_array(std::size_t /*elements*/) {
    tracker_.value();
    if (tracker_.depth() >= kDeepest) {
        return refuseHere(composed("Values nest more than ^1 deep here."_text, {std::to_string(kDeepest)}));
    }
    const bool isList = !frames_.empty() && (mode_ == Mode::children || mode_ == Mode::cells);
    if (isList && !tracker_.path().back().isIndex) {
        tracker_.open(true);
        return true;
    }
    return openValue(true);
}

bool ResultsEvents::openValue(bool isList) {
    if (mode_ == Mode::skipped) {
        ++skippedDepth_;
    } else if (mode_ == Mode::value || mode_ == Mode::cell) {
        builder_.open(isList);
    } else {
        return refuseValue(isList ? "[...]" : "{...}");
    }
    tracker_.open(isList);
    return true;
}

/// The document's object begins, or an item's.
bool ResultsEvents::openChild() {
    if (frames_.size() > maximalImportDepth) {
        return refuseHere(
            composed("Items nest more than ^1 deep here."_text, {std::to_string(maximalImportDepth)}));
    }
    Frame child;
    child.path = tracker_.path();
    child.begin = text_.tokenBegin();
    if (!frames_.empty()) ++frame().views;
    frames_.push_back(std::move(child));
    tracker_.open(false);
    mode_ = Mode::object;
    return true;
}

bool ResultsEvents::key(string_t& value) {
    tracker_.key(value);
    if (mode_ == Mode::skipped) return true;
    if (mode_ == Mode::value || mode_ == Mode::cell) {
        const std::string copy = value;
        return builder_.key(value) || refuseHere(composed("The key '^1' stands here twice."_text, {copy}));
    }
    Frame& current = frame();
    const bool isItem = frames_.size() > 1;
    const bool isKnown = !current.isUnknown;
    if (value.starts_with(kIgnoredKey) && isKnown) {
        current.isPartial = true;
        skippedDepth_ = 0;
        mode_ = Mode::skipped;
        return true;
    }
    // Values that are not gathered leave their key alone here, so that a second one is seen.
    const auto [place, added] = current.keys.get_ref<Json::object_t&>().try_emplace(value);
    if (!added) return refuseHere(composed("The key '^1' stands here twice."_text, {value}));
    current.key = std::move(value);
    current.isPartial = current.isPartial || current.key == "items" || current.key == "views" ||
                        current.key == "cells" || current.key == "sparse";
    if (isKnown && (current.key == "items" || (isItem && current.key == "views"))) {
        mode_ = Mode::children;
        if (isItem) addPlaceholder(current);
    } else if (isKnown && isItem && (current.key == "cells" || current.key == "sparse")) {
        mode_ = Mode::cells;
        if (current.cells.isThere) {
            return refuseHere(translated("A table has either cells or sparse, not both."_text));
        }
        current.cells.isThere = true;
        current.cells.isSparse = current.key == "sparse";
    } else {
        builder_.start(place->second);
        mode_ = Mode::value;
    }
    return true;
}

/// What stands under an item needs it in the outline.
void ResultsEvents::addPlaceholder(Frame& frame) {
    if (frame.id != 0) return;
    Item item;
    item.content = frame.key == "items" ? ItemContent(HeaderContent()) : ItemContent(ModelContent());
    const ItemId under = frames_.size() > 1 ? frames_[frames_.size() - 2].id : 0;
    frame.id = imported_.outline.add(std::move(item), under);
}

/// A value that was gathered has ended.
void ResultsEvents::endValue() {
    if (mode_ == Mode::cell) {
        mode_ = Mode::cells;
        static_cast<void>(readCellObject(cell_, JsonPlace(tracker_.path()), refusal_, frame().cells));
        return;
    }
    mode_ = Mode::object;
    noteType();
}

void ResultsEvents::noteType() {
    Frame& current = frame();
    if (frames_.size() < 2 || current.key != "type" || !current.keys["type"].is_string()) return;
    current.isUnknown = itemTypeOf(current.keys["type"].get_ref<const std::string&>()) == ItemType::unknown;
}

bool ResultsEvents::end_object() {
    tracker_.close();
    if (mode_ == Mode::skipped) {
        if (--skippedDepth_ == 0) mode_ = Mode::object;
        return true;
    }
    if (mode_ == Mode::value || mode_ == Mode::cell) {
        builder_.close();
        if (!builder_.isOpen()) endValue();
        return !refusal_.isThere;
    }
    Frame ended = std::move(frames_.back());
    frames_.pop_back();
    mode_ = Mode::children;
    return frames_.empty() ? endDocument(ended) : endItem(std::move(ended));
}

bool ResultsEvents::end_array() {
    tracker_.close();
    if (mode_ == Mode::skipped) {
        if (--skippedDepth_ == 0) mode_ = Mode::object;
    } else if (mode_ == Mode::value || mode_ == Mode::cell) {
        builder_.close();
        if (!builder_.isOpen()) endValue();
    } else {
        mode_ = Mode::object;
    }
    return !refusal_.isThere;
}

bool ResultsEvents::endDocument(Frame& frame) {
    const JsonPlace place(frame.path);
    JsonObject object(frame.keys, place, refusal_);
    std::int64_t version = 1;
    object.readWhole("vexaResults", {1, 1}, version);
    std::string name;
    object.read("name", name);
    if (!object.has("items") && !object.has("vexaResults")) {
        return refusal_.refuse(
            place, translated("These are not results: neither 'vexaResults' nor 'items' is there."_text));
    }
    if (imported_.name.empty()) imported_.name = std::move(name);
    return object.finish();
}

/// The keys that hold other items, and the types that have them.
constexpr std::array<std::pair<const char*, const char*>, 2> keysOfHolders{
    {{"items", "header"}, {"views", "model"}}};

/// Items or views stand only under what holds such.
bool ResultsEvents::checkUnder(const Frame& frame) {
    const auto& type = frame.keys["type"].get_ref<const std::string&>();
    for (const auto& [key, owner] : keysOfHolders) {
        if (frame.keys.contains(key) && type != owner) {
            return refusal_.refuse(frame.path,
                                   composed("An item of the type '^1' has no key '^2'."_text, {type, key}));
        }
    }
    return true;
}

void ResultsEvents::warnOfType(const Frame& frame, const std::string& word) {
    constexpr std::size_t kMostWarnings = 20;  // of one file; finding their places takes time
    if (++unknownTypes_ > kMostWarnings) return;
    const std::string_view nearest = nearestTypeWord(word);
    ImportProblem warning{file_, placeOf(text_.text(), frame.begin), pathText(frame.path), "", false};
    warning.message =
        nearest.empty()
            ? composed("The type '^1' is not known; the item is kept as it is."_text, {word})
            : composed("The type '^1' is not known; the item is kept as it is. Did you mean '^2'?"_text,
                       {word, std::string(nearest)});
    imported_.warnings.push_back(std::move(warning));
}

bool ResultsEvents::endItem(Frame frame) {
    const auto type = frame.keys.find("type");
    if (type == frame.keys.end()) {
        return refusal_.refuse(
            frame.path, translated("The item has no 'type', such as table, chart, text or header."_text));
    }
    if (!type->is_string()) {
        return refusal_.refuse(JsonPlace(JsonPlace(frame.path), "type"),
                               mismatch(foundText(*type), "a text"_text));
    }
    const std::string word = type->get<std::string>();
    const bool isUnknown = itemTypeOf(word) == ItemType::unknown;
    if (!isUnknown && !checkUnder(frame)) return false;
    if (isUnknown) {
        warnOfType(frame, word);
        if (frame.isPartial && !rereadUnknown(frame)) return false;
    }
    for (const char* const streamed : {"cells", "sparse"}) {
        if (!isUnknown && word == "table") frame.keys.erase(streamed);
    }
    JsonItemSource source{frame.keys, frame.path, frame.cells, frame.views, folder_};
    Item item;
    if (!readItem(source, context_, refusal_, item)) return false;
    if (frame.id != 0) {
        imported_.outline.change(frame.id) = std::move(item);
    } else {
        imported_.outline.add(std::move(item), parent());
    }
    return true;
}

/// The type came behind what a known item would have had under it: the item is read once more, as a value.
bool ResultsEvents::rereadUnknown(Frame& frame) {
    if (frame.id != 0) imported_.outline.remove(frame.id);
    frame.id = 0;
    frame.cells = {};
    const std::string_view text = text_.text().substr(frame.begin, text_.offset() - frame.begin);
    frame.keys = Json::parse(text.begin(), text.end(), nullptr, false);
    return frame.keys.is_object();
}

bool ResultsEvents::parse_error(std::size_t /*position*/, const std::string& /*token*/,
                                const nlohmann::detail::exception& /*error*/) {
    return false;  // the reader itself keeps what is no JSON
}

}  // namespace vexa::frontend
