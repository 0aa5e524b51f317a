#include "backend/viewerxml/xml_library.h"

#include <xercesc/util/PlatformUtils.hpp>

#include "backend/text/utf8.h"

namespace vexa {

namespace {

bool initialise() {
    try {
        xercesc::XMLPlatformUtils::Initialize();
    } catch (...) {
        return false;
    }
    return true;
}

/// The characters of XML 1.0, without surrogates, which no UTF-8 holds.
bool isXmlCharacter(char32_t code) {
    if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
    return code != 0xFFFE && code != 0xFFFF;
}

void appendUnits(std::u16string& units, char32_t code) {
    if (code < 0x10000) {
        units.push_back(static_cast<char16_t>(code));
        return;
    }
    units.push_back(static_cast<char16_t>(0xD7C0 + (code >> 10)));
    units.push_back(static_cast<char16_t>(0xDC00 + (code & 0x3FF)));
}

}  // namespace

bool xmlLibraryWorks() {
    static const bool works = initialise();
    return works;
}

std::u16string xmlUnits(std::string_view utf8) {
    std::u16string units;
    units.reserve(utf8.size());
    while (!utf8.empty()) {
        const Utf8Character character = decodeUtf8(utf8);
        appendUnits(units, isXmlCharacter(character.code) ? character.code : kReplacementCharacter);
        utf8.remove_prefix(character.length);
    }
    return units;
}

}  // namespace vexa
