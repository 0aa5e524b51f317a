#include "backend/pivot/string_table_notes.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "backend/paths/path_factory.h"
#include "backend/pivot/output_log.h"
#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "backend/strings/string_table.h"
#include "backend/text/character_set.h"

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
    std::string meant;  ///< the name of a file that is there, where only the ending is missing
};

/// An empty file name or language is shown as it was written.
std::string shownName(const std::string& name) { return name.empty() ? "\"\"" : name; }

std::string withEnding(const std::string& name) {
    constexpr std::string_view kEnding = ".xlf";
    return name + std::string(kEnding);
}

std::vector<Note> notesOf(const std::vector<StringTableComplaint>& complaints) {
    std::vector<Note> notes;
    const std::string languages = folderOfLanguages();
    std::map<std::string, std::size_t, std::less<>> missing;
    for (const StringTableComplaint& each : complaints) {
        TablePlace place = placeOf(each.path, languages);
        const auto [known, added] = each.reason.empty() ? missing.try_emplace(place.file, notes.size())
                                                        : std::pair(missing.end(), true);
        if (added) {
            const bool meant = each.reason.empty() && FileSystem::current().isFile(withEnding(each.path));
            std::string other = meant ? withEnding(place.file) : std::string();
            notes.push_back({std::move(place), each.reason, std::move(other)});
        } else {
            notes[known->second].place.language.append(", ").append(place.language);
        }
    }
    return notes;
}

std::string textOf(const Note& note) {
    const std::string file = shownName(note.place.file);
    const std::string language = shownName(note.place.language);
    if (!note.reason.empty()) {
        return composed("^1 for ^2 cannot be read: ^3."_text, {file, language, note.reason});
    }
    std::string text = composed("There is no ^1 for ^2."_text, {file, language});
    if (!note.meant.empty()) appendSentence(text, composed("Did you mean ^1?"_text, {note.meant}));
    return text;
}

}  // namespace

void publishStringTableNotes() {
    OutputLog& log = OutputLog::current();
    // What is said is looked up in tables itself, which may bring further complaints.
    for (auto taken = takeStringTableComplaints(); !taken.empty(); taken = takeStringTableComplaints()) {
        for (const Note& note : notesOf(taken)) {
            if (!log.hasListeners()) return;
            log.publish(NotesAdded{kLevel, translated("String tables"_text), textOf(note)});
        }
    }
}

}  // namespace vexa
