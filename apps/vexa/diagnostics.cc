#include "apps/vexa/diagnostics.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace vexa::program {

namespace {

using Json = nlohmann::ordered_json;

constexpr char kCovered = 'x';

bool& asJson() {
    static bool chosen = false;
    return chosen;
}

const char* severityWord(int level) {
    if (level >= kErrorLevel) return "error";
    return level == kWarningLevel ? "warning" : "note";
}

/// The same length, with nothing in it that may look like the end of a sentence.
std::string withArgumentsCovered(std::string_view text, const std::vector<std::string>& arguments) {
    std::string covered(text);
    for (const std::string& argument : arguments) {
        if (argument.empty()) continue;
        for (std::size_t at = covered.find(argument); at != std::string::npos;
             at = covered.find(argument, at + argument.size())) {
            covered.replace(at, argument.size(), argument.size(), kCovered);
        }
    }
    bool isQuoted = false;
    for (char& c : covered) {
        if (c == '"') {
            isQuoted = !isQuoted;
        } else if (isQuoted) {
            c = kCovered;
        }
    }
    return covered;
}

Json orNull(int number) { return number > 0 ? Json(number) : Json(nullptr); }
Json orNull(const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); }

}  // namespace

std::string hintOf(std::string_view text, const std::vector<std::string>& arguments) {
    // Where a blank follows, and where none does.
    constexpr std::string_view ends[] = {". ", "? ", "! ", "\u3002", "\uff1f", "\uff01"};
    const std::string covered = withArgumentsCovered(text, arguments);
    std::size_t first = std::string::npos;
    for (const std::string_view end : ends) {
        const std::size_t at = covered.find(end);
        if (at != std::string::npos) first = std::min(first, at + end.size());
    }
    if (first == std::string::npos) return {};
    const std::string_view rest = text.substr(first);
    return std::string(rest.substr(std::min(rest.find_first_not_of(' '), rest.size())));
}

std::string diagnosticLine(const Diagnostic& diagnostic) {
    Json line;
    line["code"] = diagnostic.code;
    line["severity"] = severityWord(diagnostic.level);
    line["file"] = orNull(diagnostic.file);
    line["line"] = orNull(diagnostic.line);
    line["column"] = orNull(diagnostic.column);
    line["text"] = diagnostic.text;
    line["hint"] = orNull(hintOf(diagnostic.text, diagnostic.arguments));
    if (!diagnostic.key.empty()) {
        line["key"] = diagnostic.key;
        line["arguments"] = diagnostic.arguments;
    }
    return line.dump(-1, ' ', true, Json::error_handler_t::replace) + '\n';
}

void setDiagnosticsAsJson(bool chosen) { asJson() = chosen; }

bool areDiagnosticsJson() { return asJson(); }

}  // namespace vexa::program
