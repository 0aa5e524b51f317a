#include "frontend/store/xml_writer.h"

#include <array>
#include <cassert>
#include <charconv>

namespace vexa::frontend {
namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";

unsigned byteAt(std::string_view text, std::size_t index) { return static_cast<unsigned char>(text[index]); }

bool isContinuation(std::string_view text, std::size_t index) {
    return index < text.size() && (byteAt(text, index) & 0xC0U) == 0x80U;
}

// Length of the valid UTF-8 character of several bytes at `index` that XML can hold, else 0.
std::size_t characterLength(std::string_view text, std::size_t index) {
    const unsigned first = byteAt(text, index);
    const std::size_t length = first < 0xC2U   ? 0
                               : first < 0xE0U ? 2
                               : first < 0xF0U ? 3
                               : first < 0xF5U ? 4
                                               : 0;
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text, index + i)) {
            return 0;
        }
    }
    if (length < 3) {
        return length;
    }
    const unsigned second = byteAt(text, index + 1);
    const bool overlong = (first == 0xE0U && second < 0xA0U) || (first == 0xF0U && second < 0x90U);
    const bool outside = (first == 0xEDU && second > 0x9FU) || (first == 0xF4U && second > 0x8FU);
    const bool noCharacter = first == 0xEFU && second == 0xBFU && byteAt(text, index + 2) >= 0xBEU;
    return overlong || outside || noCharacter ? 0 : length;
}

constexpr bool isPlain(unsigned byte) {
    return byte >= 0x20U && byte < 0x80U && byte != '&' && byte != '<' && byte != '>' && byte != '"' &&
           byte != '\\';
}

constexpr std::array<bool, 256> makePlainTable() {
    std::array<bool, 256> table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        table[byte] = isPlain(byte);
    }
    return table;
}

constexpr std::array<bool, 256> plainTable = makePlainTable();

std::string_view entityOf(char character) {
    switch (character) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        default:
            return {};
    }
}

int hexValue(char digit) {
    const auto place = hexDigits.find(digit);
    return place == std::string_view::npos ? -1 : static_cast<int>(place);
}

}  // namespace

XmlWriter::XmlWriter() : out_("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") {}

void XmlWriter::append(std::string_view text) {
    std::size_t index = 0;
    while (index < text.size()) {
        std::size_t plain = index;
        while (plain < text.size() && plainTable[byteAt(text, plain)]) {
            ++plain;
        }
        out_.append(text, index, plain - index);
        index = plain;
        if (index == text.size()) {
            return;
        }
        if (const std::string_view entity = entityOf(text[index]); !entity.empty()) {
            out_ += entity;
            ++index;
        } else if (const std::size_t length = characterLength(text, index); length > 0) {
            out_.append(text, index, length);
            index += length;
        } else {
            const unsigned byte = byteAt(text, index++);
            out_ += '\\';
            out_ += hexDigits[byte >> 4U];
            out_ += hexDigits[byte & 0xFU];
        }
    }
}

void XmlWriter::closeStartTag() {
    if (startTagOpen_) {
        out_ += '>';
        startTagOpen_ = false;
    }
}

XmlWriter& XmlWriter::begin(std::string_view name) {
    if (startTagOpen_) {
        out_ += ">\n";
    }
    out_ += '<';
    out_ += name;
    open_.push_back(name);
    startTagOpen_ = true;
    ++tags_;
    return *this;
}

XmlWriter& XmlWriter::attribute(std::string_view name, std::string_view text) {
    assert(startTagOpen_);
    out_ += ' ';
    out_ += name;
    out_ += "=\"";
    append(text);
    out_ += '"';
    quotes_ += 2;
    return *this;
}

XmlWriter& XmlWriter::attribute(std::string_view name, std::int64_t number) {
    std::array<char, 24> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return attribute(name,
                     std::string_view(digits.data(), static_cast<std::size_t>(result.ptr - digits.data())));
}

XmlWriter& XmlWriter::flag(std::string_view name, bool value) {
    return value ? attribute(name, "true") : *this;
}

XmlWriter& XmlWriter::optional(std::string_view name, std::string_view text) {
    return text.empty() ? *this : attribute(name, text);
}

XmlWriter& XmlWriter::text(std::string_view text) {
    if (!text.empty()) {
        closeStartTag();
        append(text);
    }
    return *this;
}

void XmlWriter::end() {
    assert(!open_.empty());
    if (startTagOpen_) {
        out_ += "/>\n";
        startTagOpen_ = false;
    } else {
        out_ += "</";
        out_ += open_.back();
        out_ += ">\n";
        ++tags_;
    }
    open_.pop_back();
}

std::string XmlWriter::take() {
    assert(open_.empty());
    return std::move(out_);
}

bool decodeText(std::string& text) {
    std::size_t from = text.find('\\');
    if (from == std::string::npos) {
        return true;
    }
    std::size_t to = from;
    while (from < text.size()) {
        if (text[from] != '\\') {
            text[to++] = text[from++];
            continue;
        }
        const bool whole = text.size() - from >= 3;
        const int high = whole ? hexValue(text[from + 1]) : -1;
        const int low = whole ? hexValue(text[from + 2]) : -1;
        if (high < 0 || low < 0) {
            return false;
        }
        text[to++] = static_cast<char>(high * 16 + low);
        from += 3;
    }
    text.resize(to);
    return true;
}

XmlSize measureXml(std::string_view xml) {
    XmlSize size;
    for (const char character : xml) {
        size.tags += character == '<' ? 1U : 0U;
        size.quotes += character == '"' ? 1U : 0U;
    }
    return size;
}

}  // namespace vexa::frontend
