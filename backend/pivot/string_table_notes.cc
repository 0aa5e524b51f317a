#include "backend/pivot/string_table_notes.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "backend/paths/path_factory.h"
#include "backend/pivot/output_log.h"
#include "backend/platform/character_set.h"
#include "backend/strings/dictionary.h"
#include "backend/strings/string_table.h"

namespace vexa {

namespace {

constexpr int kLevel = 1;

/// A table's path, taken apart: `FOLDER\\LANGUAGE\\FILE`, where FOLDER holds the installation's languages.
struct TablePlace {
    std::string file;
    std::string language;
};

/// The folder of the languages, with a backslash at its end; UTF-8.
std::string folderOfLanguages() {
    std::string path = toUtf8(PathFactory::getPathInstance(PathFactory::kLanguage)->getPath());
    path.resize(path.find_last_of('\\', path.size() < 2 ? 0 : path.size() - 2) + 1);
    return path;
}

TablePlace placeOf(std::string_view path, std::string_view languages) {
    if (path.starts_with(languages)) path.remove_prefix(languages.size());
    const std::size_t end = path.find('\\');
    if (end == std::string_view::npos) return {std::string(path), {}};
    return {std::string(path.substr(end + 1)), std::string(path.substr(0, end))};
}

/// A file name and the languages that lack it, or one broken file and its reason.
struct Note {
    TablePlace place;
    std::string reason;
};

std::vector<Note> notesOf(const std::vector<StringTableComplaint>& complaints) {
    std::vector<Note> notes;
    const std::string languages = folderOfLanguages();
    std::map<std::string, std::size_t, std::less<>> missing;
    for (const StringTableComplaint& each : complaints) {
        TablePlace place = placeOf(each.path, languages);
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
