#include "backend/pivot/string_table_notes.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "backend/pivot/output_log.h"
#include "backend/strings/dictionary.h"
#include "backend/strings/string_table.h"

namespace vexa {

namespace {

constexpr int kLevel = 1;

/// A table's path, taken apart: `...\\LANGUAGE\\FILE`.
struct TablePlace {
    std::string file;
    std::string language;
};

TablePlace placeOf(std::string_view path) {
    constexpr std::string_view kSeparators = "\\/";
    const std::size_t last = path.find_last_of(kSeparators);
    if (last == std::string_view::npos) return {std::string(path), {}};
    const std::string_view folder = path.substr(0, last);
    return {std::string(path.substr(last + 1)),
            std::string(folder.substr(folder.find_last_of(kSeparators) + 1))};
}

/// A file name and the languages that lack it, or one broken file and its reason.
struct Note {
    TablePlace place;
    std::string reason;
};

std::vector<Note> notesOf(const std::vector<StringTableComplaint>& complaints) {
    std::vector<Note> notes;
    std::map<std::string, std::size_t, std::less<>> missing;
    for (const StringTableComplaint& each : complaints) {
        TablePlace place = placeOf(each.path);
        const auto [known, added] = each.reason.empty() ? missing.try_emplace(place.file, notes.size())
                                                        : std::pair(missing.end(), true);
        if (added) {
            notes.push_back({std::move(place), each.reason});
        } else {
            notes[known->second].place.language.append(", ").append(place.language);
        }
    }
    return notes;
}

}  // namespace

void publishStringTableNotes() {
    OutputLog& log = OutputLog::current();
    for (const Note& note : notesOf(takeStringTableComplaints())) {
        if (!log.hasListeners()) return;
        std::string text =
            note.reason.empty()
                ? composed("There is no ^1 for ^2."_text, {note.place.file, note.place.language})
                : composed("^1 for ^2 cannot be read: ^3."_text,
                           {note.place.file, note.place.language, note.reason});
        log.publish(NotesAdded{kLevel, translated("String tables"_text), std::move(text)});
    }
}

}  // namespace vexa
