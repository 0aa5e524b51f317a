#include "apps/vexa/plain_adapters.h"

#include <stdexcept>
#include <utility>

#include "backend/adapter/go_to_caller.h"
#include "backend/text/character_set.h"

namespace vexa::program {

namespace {

constexpr const char* kNothingModified = "(0,0,0)";
constexpr int kRefusalSeverity = 3;

/// Throws what the answer tells to throw.
void throwIfTold(const ScriptedExchange& answer) {
    switch (answer.thrown) {
        case ScriptedExchange::Throw::nothing:
            return;
        case ScriptedExchange::Throw::standard:
            throw std::runtime_error(fromUtf8(answer.what));
        case ScriptedExchange::Throw::text: {
            // Whoever catches a bare text cannot own it, so it lives on until the next one.
            static std::string text;
            text = fromUtf8(answer.what);
            throw text.c_str();  // NOLINT(misc-throw-by-value-catch-by-reference): as it was told
        }
        case ScriptedExchange::Throw::other:
            throw 0;
        case ScriptedExchange::Throw::goToCaller:
            throw VexaGoToCaller();
    }
}

template <typename Answer>
Answer takeFirst(std::deque<Answer>& answers, Answer otherwise) {
    if (answers.empty()) {
        return otherwise;
    }
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

}  // namespace

std::string NoControllerAdapter::exchangeExport(const std::string& /*specification*/) { return {}; }

std::string NoControllerAdapter::exchangeModify(const std::string& /*request*/) { return kNothingModified; }

bool ScriptedAdapter::Send(const VexawMsgOutputControllerRequest& /*request*/,
                           VexawMsgOutputControllerResponse& response) {
    const ScriptedSend answer = takeFirst(answers_.send, ScriptedSend());
    const int severity = answer.severity.value_or(answer.ok ? 0 : kRefusalSeverity);
    response.setError(severity, fromUtf8(answer.message), fromUtf8(answer.argument));
    for (const ScriptedSend::Document& document : answer.documents) {
        response.addDocument({fromUtf8(document.name), document.active});
    }
    return answer.ok;
}

std::string ScriptedAdapter::exchangeExport(const std::string& /*specification*/) {
    const ScriptedExchange answer = takeFirst(answers_.exportAnswers, ScriptedExchange());
    throwIfTold(answer);
    return answer.reply;
}

std::string ScriptedAdapter::exchangeModify(const std::string& /*request*/) {
    ScriptedExchange nothingLeft;
    nothingLeft.reply = kNothingModified;
    const ScriptedExchange answer = takeFirst(answers_.modify, std::move(nothingLeft));
    throwIfTold(answer);
    return fromUtf8(answer.reply);
}

}  // namespace vexa::program
