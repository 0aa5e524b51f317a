#include "backend/text/utf16.h"

#include "backend/text/utf8.h"

namespace vexa {

std::string utf16ToUtf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        const bool high = code >= 0xD800 && code <= 0xDBFF;
        if (high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            code = 0x10000U + ((code - 0xD800U) << 10U) + (text[++i] - 0xDC00U);
        }
        appendUtf8(result, code);
    }
    return result;
}

std::u16string utf8ToUtf16(std::string_view text, bool* valid) {
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Utf8Character read = decodeUtf8(text);
        if (!read.valid && valid != nullptr) *valid = false;
        if (read.code < 0x10000) {
            result.push_back(static_cast<char16_t>(read.code));
        } else {
            const char32_t offset = read.code - 0x10000U;
            result.push_back(static_cast<char16_t>(0xD800U + (offset >> 10U)));
            result.push_back(static_cast<char16_t>(0xDC00U + (offset & 0x3FFU)));
        }
        text.remove_prefix(read.length);
    }
    return result;
}

}  // namespace vexa
