// Answers of a front end, read from a file of JSON lines. See docs/vexa.md for its form.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexa::program {

/// What a document request is answered with. Texts are UTF-8.
struct ScriptedSend {
    struct Document {
        std::string name;
        bool active = false;
    };

    bool ok = true;
    std::optional<int> severity;  ///< when left out: 3 for a refusal, 0 otherwise
    std::string message;
    std::string argument;
    std::vector<Document> documents;
};

/// What a modification or an export is answered with: a reply, or an exception.
struct ScriptedExchange {
    enum class Throw { nothing, standard, text, other, goToCaller };

    std::string reply;
    Throw thrown = Throw::nothing;
    std::string what;  ///< the exception's text
};

/// All answers of a file, by kind, in the order of their lines.
struct ScriptedAnswers {
    std::deque<ScriptedSend> send;
    std::deque<ScriptedExchange> modify;
    std::deque<ScriptedExchange> exportAnswers;
};

/// Reads the content of an answers file; blank lines are passed over. Nothing when a line is wrong: `message`
/// then says what, beginning with `file` and the line's number.
[[nodiscard]] std::optional<ScriptedAnswers> readScriptedAnswers(std::string_view content,
                                                                 std::string_view file, std::string& message);

}  // namespace vexa::program
