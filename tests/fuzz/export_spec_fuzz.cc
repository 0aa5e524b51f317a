// Reads any bytes as the XML of an export. What was read is written and read once more, and made
// into a request.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "backend/text/utf8.h"
#include "backend/viewerxml/export_reader.h"
#include "backend/viewerxml/export_xml.h"
#include "frontend/requests/export_request.h"

namespace {

/// Stops the program when something that always holds does not.
void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const vexa::ReadExportSpec read = vexa::readExportSpec(text);
    if (!read.spec) {
        require(!read.error.empty() && vexa::validUtf8(read.error) == read.error);
        return 0;
    }
    require(read.error.empty());
    const vexa::frontend::ExportRequest request = vexa::frontend::exportRequestOf(*read.spec);
    require(vexa::validUtf8(request.name) == request.name);
    require(!request.doc || (request.doc->page.width > 0.0 && request.doc->margins.top > 0.0));
    require(!request.text || !request.text->columnWidth || *request.text->columnWidth > 0);
    require(!request.png || request.png->percentSize > 0.0);
    const std::string written = vexa::ExportXML::convertToXML(*read.spec);
    // It can be longer than the text, and may not be read again for that.
    if (written.size() > (std::size_t{16} << 20)) return 0;
    const vexa::ReadExportSpec again = vexa::readExportSpec(written);
    require(again.spec != nullptr);
    // Tabs and line ends of texts that come escaped are blanks from now on.
    const std::string settled = vexa::ExportXML::convertToXML(*again.spec);
    const vexa::ReadExportSpec third = vexa::readExportSpec(settled);
    require(third.spec != nullptr && vexa::ExportXML::convertToXML(*third.spec) == settled);
    return 0;
}
