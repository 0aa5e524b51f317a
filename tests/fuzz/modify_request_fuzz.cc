// Reads any bytes as the request of a modification. What was read is written in the module's form and read
// once more.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <variant>

#include "backend/text/utf8.h"
#include "frontend/requests/modify_request_reader.h"
#include "tests/unit/requests/request_text.h"

namespace {

using vexa::frontend::ModifyRequest;
using vexa::frontend::RequestRefusal;

/// Stops the program when something that always holds does not.
void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

bool isUtf8(const std::string& text) { return vexa::validUtf8(text) == text; }

void requireUtf8(const ModifyRequest& request) {
    require(isUtf8(request.documentName));
    for (const auto& group : request.groups) {
        for (const auto& command : group.commands) require(isUtf8(command.name));
        for (const auto& subtype : group.subtypes) require(isUtf8(subtype));
        for (const auto& label : group.labels) require(isUtf8(label.text));
        for (const auto& cells : group.cells) require(isUtf8(cells.font) && isUtf8(cells.labels));
        require(!group.table || isUtf8(group.table->title));
    }
}

/// True when a file of the request holds a place where it could end, so that it reads on where it is alone.
bool hasFiles(const ModifyRequest& request) {
    for (const auto& group : request.groups) {
        if ((group.table && !group.table->look.empty()) || (group.graph && !group.graph->templates.empty())) {
            return true;
        }
    }
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto read = vexa::frontend::readModifyRequest(text);
    if (const auto* const refusal = std::get_if<RequestRefusal>(&read)) {
        require(refusal->offset <= size && !refusal->message.empty() && isUtf8(refusal->message));
        return 0;
    }
    const auto& request = std::get<ModifyRequest>(read);
    requireUtf8(request);
    const std::string written = writeModifyRequest(request);
    const auto again = vexa::frontend::readModifyRequest(written);
    const auto* const same = std::get_if<ModifyRequest>(&again);
    require(same != nullptr ? *same == request : hasFiles(request));
    return 0;
}
