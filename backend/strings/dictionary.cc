#include "backend/strings/dictionary.h"

#include <algorithm>
#include <cstdint>

#include "backend/strings/string_table.h"
#include "backend/strings/string_table_cache.h"

namespace vexa {

namespace {

/// Tables that hold what may be shown under any procedure.
constexpr std::string_view kLibraryTables[] = {
    "outframe.xlf", "synparse.xlf", "session.xlf", "pivotlog.xlf",
    "viewxml.xlf",  "platform.xlf", "outctrl.xlf", "vexaprog.xlf",
};

constexpr std::string_view kWideMarks[] = {"\u3002", "\uff1f", "\uff01"};  // 。？！

const std::string* find(const LoadedStringTable& table, std::string_view key) {
    const auto found = table.positions.find(key);
    if (found == table.positions.end()) {
        return nullptr;
    }
    const std::string& text = table.entries[found->second].value;
    return text.empty() ? nullptr : &text;
}

bool isMarker(std::string_view text, std::size_t at) {
    return text[at] == '^' && at + 1 < text.size() && text[at + 1] >= '1' && text[at + 1] <= '9';
}

}  // namespace

StringDictionary& StringDictionary::current() {
    static StringDictionary dictionary;
    return dictionary;
}

void StringDictionary::open(std::string_view folder) {
    folder_ = folder;
    const bool ended = folder_.empty() || folder_.back() == '\\' || folder_.back() == '/';
    if (!ended) {
        folder_.push_back('\\');
    }
    ofProcedure_.reset();
    ofLibraries_.reset();
}

void StringDictionary::setProcedure(std::string_view procedure) {
    procedure_ = procedure;
    ofProcedure_.reset();
}

std::string StringDictionary::lookUp(std::string_view key) const {
    if (folder_.empty() || key.empty()) {
        return std::string(key);
    }
    if (!ofProcedure_) {
        const std::string_view file = stringTableFile(procedure_);
        ofProcedure_ = file.empty() ? nullptr : loadForDictionary(folder_ + std::string(file));
    }
    if (*ofProcedure_ != nullptr) {
        if (const std::string* const text = find(**ofProcedure_, key)) {
            return *text;
        }
    }
    if (!ofLibraries_) {
        ofLibraries_.emplace();
        for (const std::string_view file : kLibraryTables) {
            ofLibraries_->push_back(loadForDictionary(folder_ + std::string(file)));
        }
    }
    for (const Table& table : *ofLibraries_) {
        if (const std::string* const text = find(*table, key)) {
            return *text;
        }
    }
    return std::string(key);
}

std::string translated(std::string_view text) { return StringDictionary::current().lookUp(text); }

std::string composed(SystemText text, const std::vector<std::string>& arguments) {
    return replaceMarkers(translated(text), arguments);
}

std::string shownReason(const FileResult& failure) {
    return replaceMarkers(translated(failure.reason), failure.arguments);
}

std::string replaceMarkers(std::string_view text, const std::vector<std::string>& arguments) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t number = isMarker(text, i) ? static_cast<std::size_t>(text[i + 1] - '1') : SIZE_MAX;
        if (number < arguments.size()) {
            result += arguments[number];
            ++i;
        } else {
            result += text[i];
        }
    }
    return result;
}

void appendSentence(std::string& message, std::string_view sentence) {
    const bool wide =
        std::any_of(std::begin(kWideMarks), std::end(kWideMarks),
                    [&message](std::string_view mark) { return std::string_view(message).ends_with(mark); });
    if (!message.empty() && !sentence.empty() && !wide) {
        message += ' ';
    }
    message += sentence;
}

}  // namespace vexa
