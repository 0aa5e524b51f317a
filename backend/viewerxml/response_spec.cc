#include "backend/viewerxml/response_spec.h"

#include <algorithm>

#include "backend/viewerxml/response_reader.h"

namespace vexa {

bool ResponseSpec::processResponse(std::string_view answer) noexcept {
    response_ = {};
    parserError_.clear();
    try {
        parserError_ = readExportResponse(answer, response_);
    } catch (...) {
        // Out of memory, while an answer was read or a message made; a text this short needs none.
        response_ = {};
        parserError_ = "Out of memory";
    }
    return parserError_.empty();
}

bool ResponseSpec::warningsFound() const {
    return std::any_of(response_.warnings.begin(), response_.warnings.end(),
                       [](const std::vector<Warning>& warnings) { return !warnings.empty(); });
}

const std::vector<ResponseSpec::Warning>& ResponseSpec::getWarnings(WARNING_CODE code) const {
    return response_.warnings.at(static_cast<std::size_t>(code));
}

}  // namespace vexa
