#include "frontend/requests/modify_reply.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "backend/text/character_set.h"

namespace vexa::frontend {

namespace {

void appendComplaints(std::string_view complaint, const std::vector<std::string>& values, std::string& text) {
    for (const std::string& value : values) {
        text.append("\n").append(complaint).append(" (");
        std::copy_if(value.begin(), value.end(), std::back_inserter(text),
                     [](char character) { return character != ')' && character != '\n'; });
        text += ')';
    }
}

}  // namespace

std::string writeModifyReply(const ModifyReply& reply) {
    std::string text = "Output modified (";
    text.append(std::to_string(reply.selected)).append(",");
    text.append(std::to_string(reply.modified)).append(",");
    text.append(std::to_string(reply.deleted)).append(").");
    appendComplaints("Invalid format", reply.invalidFormats, text);
    appendComplaints("Invalid font", reply.invalidFonts, text);
    return fromUtf8(text);
}

}  // namespace vexa::frontend
