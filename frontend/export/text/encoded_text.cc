#include "frontend/export/text/encoded_text.h"

#include <string>

#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "backend/text/utf16.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16Mark = "\xFF\xFE";

std::string asUtf16(std::string_view text) {
    const std::u16string units = utf8ToUtf16(text);
    std::string bytes;
    bytes.reserve(units.size() * 2);
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

}  // namespace

PackageResult EncodedText::write(std::string_view text) {
    if (encoding_ == TextEncoding::locale) return writeLocale(text);
    const bool isUtf16 = encoding_ == TextEncoding::utf16;
    if (!isBegun_) {
        isBegun_ = true;
        if (PackageResult result = out_(isUtf16 ? utf16Mark : utf8Mark); !result) return result;
    }
    return isUtf16 ? out_(asUtf16(text)) : out_(text);
}

PackageResult EncodedText::writeLocale(std::string_view text) {
    if (currentCharacterSet().isUtf8()) return out_(text);
    const std::string bytes = currentCharacterSet().fromUtf8(text);
    if (currentCharacterSet().toUtf8(bytes) != text) {
        report_.note(composed(
            "Characters that the character set ^1 does not have were written as question marks. ENCODING=UTF8 keeps them."_text,
            {currentCharacterSet().name()}));
    }
    return out_(bytes);
}

}  // namespace vexa::frontend
