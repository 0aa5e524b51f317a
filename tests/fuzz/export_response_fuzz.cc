// Reads any bytes as the answer to an export, and what was read once more after it was written.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "backend/text/utf8.h"
#include "backend/viewerxml/response_spec.h"

namespace {

using vexa::ResponseSpec;
using Code = ResponseSpec::WARNING_CODE;

constexpr Code kCodes[] = {Code::LONG_ROW_LABEL, Code::MAX_COLUMNS, Code::CELL_CHARACTERS};

/// Stops the program when something that always holds does not.
void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

bool isUtf8(const std::string& text) { return vexa::validUtf8(text) == text; }

/// Every character as a reference.
std::string attribute(const char* name, const std::string& text) {
    require(isUtf8(text));
    std::string written = std::string(" ") + name + "=\"";
    for (std::string_view rest = text; !rest.empty();) {
        const vexa::Utf8Character character = vexa::decodeUtf8(rest);
        written += "&#" + std::to_string(static_cast<std::uint32_t>(character.code)) + ";";
        rest.remove_prefix(character.length);
    }
    return written + "\"";
}

std::string written(const ResponseSpec& response) {
    // The version in which control characters may be written.
    std::string xml = "<?xml version=\"1.1\"?><exportResponse";
    xml += attribute("success", response.getSuccessCode() ? "true" : "false");
    xml += " errorCode=\"" + std::to_string(response.getErrorCode()) + "\"";
    if (response.isImageCountPresent())
        xml += attribute("imageCount", std::to_string(response.getImageCount()));
    xml += attribute("name", response.getName()) + attribute("documentFile", response.getDocumentFile());
    xml +=
        attribute("imageRoot", response.getImageRoot()) + attribute("imageFormat", response.getImageFormat());
    xml += ">";
    for (const Code code : kCodes) {
        xml += "<warnings code=\"" + std::to_string(static_cast<int>(code)) + "\">";
        for (const auto& [first, second] : response.getWarnings(code)) {
            xml += "<warning" + attribute("first", first) + attribute("second", second) + "/>";
        }
        xml += "</warnings>";
    }
    return xml + "</exportResponse>";
}

void requireEmpty(const ResponseSpec& response) {
    require(!response.getSuccessCode() && response.getErrorCode() == 0 && !response.warningsFound());
    require(response.getName().empty() && response.getDocumentFile().empty());
    require(response.getImageCount() == 0 && !response.isImageCountPresent());
    require(response.getImageRoot().empty() && response.getImageFormat().empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view answer(reinterpret_cast<const char*>(data), size);
    ResponseSpec response;
    if (!response.processResponse(answer)) {
        require(!response.getParserError().empty() && isUtf8(response.getParserError()));
        requireEmpty(response);
        return 0;
    }
    require(response.getParserError().empty() && response.getImageCount() >= 0);
    const std::string xml = written(response);
    // It is several times as long as the answer, and may not be read again for that.
    if (xml.size() > (std::size_t{16} << 20)) return 0;
    ResponseSpec again;
    require(again.processResponse(xml));
    require(written(again) == xml);
    return 0;
}
