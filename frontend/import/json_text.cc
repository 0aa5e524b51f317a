#include "frontend/import/json_text.h"

#include <cmath>
#include <string>

#include "backend/tables/formats/number_text.h"
#include "backend/text/utf8.h"

namespace vexa::frontend {

namespace {

constexpr std::size_t kLongLine = 100;

void appendEscape(std::string& out, char c) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    switch (c) {
        case '"':
        case '\\':
            out += '\\';
            out += c;
            return;
        case '\n':
            out += "\\n";
            return;
        case '\t':
            out += "\\t";
            return;
        case '\r':
            out += "\\r";
            return;
        default:
            out += "\\u00";
            out += kDigits[byte >> 4U];
            out += kDigits[byte & 0xFU];
    }
}

bool needsEscape(char c) {
    return c == '"' || c == '\\' || static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

}  // namespace

void JsonText::separate() {
    if (isKeyWritten_) {
        isKeyWritten_ = false;
        return;
    }
    if (levels_.empty()) return;
    Level& level = levels_.back();
    if (!level.isFirst) out_ += ',';
    if (isLinePending_) {
        out_ += '\n';
        lineBegin_ = out_.size();
        out_.append(level.indentation, ' ');
        isLinePending_ = false;
    } else if (!level.isFirst) {
        out_ += ' ';
    }
    level.isFirst = false;
}

void JsonText::begin(char bracket) {
    separate();
    levels_.push_back({true, indentation() + 1});
    out_ += bracket;
}

void JsonText::end(char bracket) {
    levels_.pop_back();
    isLinePending_ = false;
    out_ += bracket;
}

void JsonText::word(std::string_view json) {
    separate();
    out_ += json;
}

void JsonText::key(std::string_view name) {
    text(name);
    out_ += ": ";
    isKeyWritten_ = true;
}

void JsonText::text(std::string_view value) {
    separate();
    out_ += '"';
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80 && !needsEscape(c); };
    while (!value.empty()) {
        std::size_t plain = 0;
        while (plain < value.size() && isPlain(value[plain])) ++plain;
        out_ += value.substr(0, plain);
        value.remove_prefix(plain);
        if (value.empty()) break;
        const Utf8Character character = decodeUtf8(value);
        if (character.length == 1 && character.valid) {
            appendEscape(out_, value.front());
        } else {
            appendUtf8(out_, character.code);
        }
        value.remove_prefix(character.length);
    }
    out_ += '"';
}

void JsonText::number(double value) {
    if (!std::isfinite(value)) return null();
    separate();
    tables::appendShortest(out_, value);
    // A zero without decimals is read as a whole number, which has no sign.
    if (value == 0 && std::signbit(value)) out_ += ".0";
}

void JsonText::whole(std::uint64_t value) {
    separate();
    out_ += std::to_string(value);
}

void JsonText::newLineIfLong() {
    if (!levels_.back().isFirst && out_.size() - lineBegin_ > kLongLine) newLine();
}

}  // namespace vexa::frontend
