#include "apps/vexa/scripted_answers.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>

#include "backend/strings/dictionary.h"
#include "backend/syntax/nearest_keyword.h"
#include "backend/text/text_width.h"

namespace vexa::program {

namespace {

using Answer = nlohmann::json;

/// What is wrong with a line. Thrown inside this file only.
struct LineError {
    std::string message;
};

std::string quotedName(std::string_view text) { return '"' + printableText(text) + '"'; }

/// The members of one object, each asked for once under its name; what nobody asked for is an error at the
/// end.
class Members {
  public:
    Members(const Answer& object, std::string where) : object_(object), where_(std::move(where)) {
        if (!object.is_object()) {
            throw LineError{composed("^1 must be an object in braces, but is of type ^2"_text,
                                     {where_, object.type_name()})};
        }
    }

    void text(const char* key, std::string& value) {
        if (const Answer* const found = find(key)) {
            value = checked(key, found->get_ptr<const Answer::string_t*>(),
                            "^1 of ^2 must be a text in quotes, but is of type ^3"_text, *found);
        }
    }

    void flag(const char* key, bool& value) {
        if (const Answer* const found = find(key)) {
            value = checked(key, found->get_ptr<const Answer::boolean_t*>(),
                            "^1 of ^2 must be true or false, but is of type ^3"_text, *found);
        }
    }

    void integer(const char* key, std::optional<int>& value) {
        if (const Answer* const found = find(key)) {
            const std::int64_t number =
                checked(key, found->get_ptr<const Answer::number_integer_t*>(),
                        "^1 of ^2 must be a whole number, but is of type ^3"_text, *found);
            if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) {
                throw LineError{
                    composed("^1 of ^2 is a number that is too large"_text, {quotedName(key), where_})};
            }
            value = static_cast<int>(number);
        }
    }

    [[nodiscard]] const Answer* find(const char* key) {
        known_.emplace_back(key);
        const auto found = object_.find(key);
        return found == object_.end() ? nullptr : &*found;
    }

    /// To be called when every possible key has been asked for.
    void refuseOthers() const {
        for (const auto& [key, value] : object_.items()) {
            if (std::find(known_.begin(), known_.end(), key) == known_.end()) {
                throw LineError{composed("^1 has no key ^2; it takes ^3"_text,
                                         {where_, quotedName(key), listKeywords(known_)})};
            }
        }
    }

  private:
    template <typename Value>
    const Value& checked(const char* key, const Value* value, SystemText complaint,
                         const Answer& found) const {
        if (value == nullptr) {
            throw LineError{composed(complaint, {quotedName(key), where_, found.type_name()})};
        }
        return *value;
    }

    const Answer& object_;
    std::string where_;
    std::vector<std::string_view> known_;
};

ScriptedSend readSend(const Answer& object) {
    ScriptedSend answer;
    Members members(object, quotedName("send"));
    members.flag("ok", answer.ok);
    members.integer("severity", answer.severity);
    members.text("message", answer.message);
    members.text("argument", answer.argument);
    if (const Answer* const documents = members.find("documents")) {
        if (!documents->is_array()) {
            throw LineError{composed("^1 must be a list in brackets, but is of type ^2"_text,
                                     {quotedName("documents"), documents->type_name()})};
        }
        for (const Answer& entry : *documents) {
            Members document(entry, translated("a document"_text));
            document.text("name", answer.documents.emplace_back().name);
            document.flag("active", answer.documents.back().active);
            document.refuseOthers();
        }
    }
    members.refuseOthers();
    return answer;
}

ScriptedExchange::Throw readThrow(const std::string& text) {
    using Throw = ScriptedExchange::Throw;
    constexpr std::pair<std::string_view, Throw> kKinds[] = {{"standard", Throw::standard},
                                                             {"text", Throw::text},
                                                             {"other", Throw::other},
                                                             {"goToCaller", Throw::goToCaller}};
    for (const auto& [name, kind] : kKinds) {
        if (text == name) {
            return kind;
        }
    }
    throw LineError{composed(R"("throw" must be "standard", "text", "other" or "goToCaller", but is ^1)"_text,
                             {quotedName(text)})};
}

ScriptedExchange readExchange(const Answer& object, const char* kind) {
    ScriptedExchange answer;
    Members members(object, quotedName(kind));
    std::string thrown;
    members.text("reply", answer.reply);
    members.text("throw", thrown);
    members.text("what", answer.what);
    members.refuseOthers();
    if (object.contains("throw")) {
        answer.thrown = readThrow(thrown);
    }
    return answer;
}

void readLine(std::string_view line, ScriptedAnswers& answers) {
    const Answer object = Answer::parse(line);
    Members members(object, translated("a line"_text));
    if (const Answer* const send = members.find("send")) {
        answers.send.push_back(readSend(*send));
    }
    if (const Answer* const modify = members.find("modify")) {
        answers.modify.push_back(readExchange(*modify, "modify"));
    }
    if (const Answer* const exported = members.find("export")) {
        answers.exportAnswers.push_back(readExchange(*exported, "export"));
    }
    members.refuseOthers();
}

}  // namespace

std::optional<ScriptedAnswers> readScriptedAnswers(std::string_view content, std::string_view file,
                                                   std::string& message) {
    ScriptedAnswers answers;
    const auto fail = [&message, file](int line, const std::string& text) {
        message = std::string(file) + ":" + std::to_string(line) + ": " + text;
        return std::nullopt;
    };
    int number = 0;
    while (!content.empty()) {
        ++number;
        const std::size_t end = std::min(content.find('\n'), content.size());
        const std::string_view line = content.substr(0, end);
        content.remove_prefix(std::min(end + 1, content.size()));
        if (line.find_first_not_of(" \t\r") == std::string_view::npos) {
            continue;
        }
        try {
            readLine(line, answers);
        } catch (const LineError& error) {
            return fail(number, error.message);
        } catch (const Answer::parse_error& error) {
            return fail(number, composed("this is not JSON at byte ^1 of the line"_text,
                                         {std::to_string(error.byte)}));
        } catch (const Answer::out_of_range&) {
            return fail(number, translated("this line has a number that is too large"_text));
        }
    }
    return answers;
}

}  // namespace vexa::program
