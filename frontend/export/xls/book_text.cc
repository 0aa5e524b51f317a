#include "frontend/export/xls/book_text.h"

#include <algorithm>

#include "backend/text/utf16.h"

namespace vexa::frontend::biff {

namespace {

BookText encoded(std::u16string_view units) {
    BookText text;
    text.units = units.size();
    text.wide = std::any_of(units.begin(), units.end(), [](char16_t unit) { return unit > 0xFF; });
    text.bytes.reserve(units.size() * text.width());
    for (const char16_t unit : units) {
        text.bytes += static_cast<char>(unit & 0xFF);
        if (text.wide) text.bytes += static_cast<char>(unit >> 8);
    }
    return text;
}

}  // namespace

BookText bookText(std::string_view text) {
    const bool ascii = std::all_of(text.begin(), text.end(),
                                   [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
    if (ascii) return {std::string(text), text.size(), false};
    return encoded(utf8ToUtf16(text));
}

void appendText(Records& records, std::string_view text, std::size_t lengthBytes) {
    const std::size_t most = lengthBytes == 1 ? 0xFF : 0xFFFF;
    const std::u16string units = utf8ToUtf16(text);
    const BookText encodedText = encoded(std::u16string_view(units).substr(0, most));
    const auto length = static_cast<std::uint32_t>(encodedText.units);
    if (lengthBytes == 1) {
        records.one(length);
    } else {
        records.two(length);
    }
    records.one(encodedText.wide ? 1 : 0).bytes(encodedText.bytes);
}

std::optional<std::string> textAt(std::string_view content, std::size_t at, std::size_t lengthBytes) {
    if (at > content.size() || content.size() - at < lengthBytes + 1) return std::nullopt;
    const std::size_t units = numberAt(content, at, lengthBytes);
    const std::uint32_t flags = numberAt(content, at + lengthBytes, 1);
    const bool wide = (flags & 1U) != 0;
    at += lengthBytes + 1 + ((flags & 8U) != 0 ? 2 : 0) + ((flags & 4U) != 0 ? 4 : 0);
    const std::size_t width = wide ? 2 : 1;
    if (at > content.size() || (content.size() - at) / width < units) return std::nullopt;
    std::u16string text;
    for (std::size_t i = 0; i < units; ++i) {
        text += static_cast<char16_t>(numberAt(content, at + i * width, width));
    }
    return utf16ToUtf8(text);
}

}  // namespace vexa::frontend::biff
