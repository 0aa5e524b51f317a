#include "frontend/import/results_reader.h"

#include "frontend/import/results_events.h"

namespace vexa::frontend {

bool readResults(std::string_view text, const std::string& file, const ImportContext& context,
                 Imported& imported, ImportProblem& problem) {
    JsonReader reader(text);
    ResultsEvents events(reader, file, context, imported);
    const bool isFine = reader.read(events);
    const JsonRefusal& refusal = events.refusal();
    if (isFine && !refusal.isThere) return true;
    if (!reader.failure().empty()) {
        problem = {file, placeOf(text, reader.tokenBegin()), "", reader.failure(), false};
        return false;
    }
    const std::size_t at =
        events.refusedAt() <= text.size() ? events.refusedAt() : offsetOf(text, refusal.path);
    problem = {file, placeOf(text, at), pathText(refusal.path), refusal.message, false};
    return false;
}

}  // namespace vexa::frontend
