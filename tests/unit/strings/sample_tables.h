// Texts of string tables.
#pragma once

#include <string>
#include <string_view>

namespace vexa {

/// A table that holds `units`, under an XML declaration with that encoding.
inline std::string tableOf(std::string_view units, std::string_view encoding = "UTF-8") {
    std::string text = "<?xml version=\"1.0\" encoding=\"";
    text.append(encoding);
    text.append(
        "\"?>\n<xliff version=\"1.2\" xmlns=\"urn:oasis:names:tc:xliff:document:1.2\">\n"
        "<file original=\"x\" source-language=\"en\" datatype=\"plaintext\">\n<header><note>of the "
        "file</note></header>"
        "<body>\n");
    text.append(units);
    return text.append("\n</body></file></xliff>\n");
}

}  // namespace vexa
