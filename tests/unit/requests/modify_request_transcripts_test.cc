// Reads every request that a transcript shows, and compares what was read with the request once more.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "frontend/requests/modify_request_reader.h"
#include "frontend/requests/request_form.h"
#include "tests/unit/requests/request_text.h"
#include "tests/unit/requests/transcript_events.h"

namespace vexa::frontend {
namespace {

/// Requests that are refused, by their places: those whose condition is no comparison with a number. The
/// command checks no condition.
const std::set<std::string> kRefused = {"cells/character-set.transcript 2",
                                        "cells/condition-expression.transcript 2",
                                        "cells/condition-expression.transcript 3",
                                        "cells/condition-expression.transcript 5",
                                        "cells/condition-expression.transcript 6",
                                        "cells/condition-expression.transcript 7",
                                        "cells/condition-expression.transcript 8",
                                        "cells/condition-expression.transcript 9",
                                        "cells/condition-in-brackets-is-an-expression.transcript 1",
                                        "cells/condition-in-brackets-is-an-expression.transcript 3",
                                        "cells/condition-quoted.transcript 1",
                                        "cells/condition-quoted.transcript 2",
                                        "cells/condition-quoted.transcript 3",
                                        "cells/condition-quoted.transcript 4",
                                        "cells/condition-quoted.transcript 5",
                                        "cells/condition-quoted.transcript 6",
                                        "cells/condition-quoted.transcript 7",
                                        "cells/double-byte-characters.transcript 3"};

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// The exceptions of every group in the order of the types, each once.
std::string withSortedExceptions(const std::string& text) {
    const std::string begin = "<modifyEvent all=\"true\"";
    std::string sorted;
    std::size_t done = 0;
    for (std::size_t at = text.find(begin); at != std::string::npos; at = text.find(begin, done)) {
        at += begin.size();
        const std::size_t end = std::min(text.find('>', at), text.find(" visibleOnly", at));
        const std::string given = text.substr(at, end - at);
        sorted.append(text, done, at - done);
        for (const AttributeForm& type : form::kEventAttributes) {
            const std::string exception = " " + std::string(type.name) + "=\"false\"";
            if (given.find(exception) != std::string::npos) sorted += exception;
        }
        done = end;
    }
    return sorted.append(text, done);
}

/// The request without what says nothing, and with the shortest form of its numbers.
std::string plain(std::string text) {
    constexpr std::pair<const char*, const char*> kReplacements[] = {
        {"<modifyGraph<", "<"},
        {"<modifyGraph styleSheet=\"\"/>", ""},
        {" applyTo=\"CELL\"", ""},
        {" title=\"\" summary=\"\" sortLabel=\"\" ascending=\"true\" format=\"\"",
         " sortPosition=\"-1\" ascending=\"true\""},
        {"&lt;&gt;-2.50\"", "&lt;&gt;-2.5\""}};
    for (const auto& [from, to] : kReplacements) {
        text = replaced(std::move(text), from, to);
    }
    return withSortedExceptions(text);
}

TEST(RequestsOfTranscripts, AreReadWhole) {
    std::size_t count = 0;
    for (const auto& [place, text] : wiredTexts(VEXA_TRANSCRIPTS "/modify", "modify")) {
        const auto read = readModifyRequest(text);
        ++count;
        if (const auto* const refusal = std::get_if<RequestRefusal>(&read)) {
            EXPECT_TRUE(kRefused.contains(place)) << place << "\n" << text << "\n" << refusal->message;
            EXPECT_EQ(refusal->attribute, "selectCondition") << place;
            continue;
        }
        EXPECT_FALSE(kRefused.contains(place)) << place;
        EXPECT_EQ(writeModifyRequest(std::get<ModifyRequest>(read)), plain(text)) << place;
    }
    EXPECT_GT(count, 300U);
}

}  // namespace
}  // namespace vexa::frontend
