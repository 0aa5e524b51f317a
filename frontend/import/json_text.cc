#include "frontend/import/json_text.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "backend/tables/formats/number_text.h"
#include "backend/text/utf8.h"
#include "frontend/package/base64.h"

namespace vexa::frontend {

namespace {

constexpr std::size_t kLongLine = 100;
/// What is handed out at one time.
constexpr std::size_t kPiece = 65'536;

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

void JsonText::handOut() {
    sink_(out_);
    handedOut_ += out_.size();
    out_.clear();
}

void JsonText::handOutIfLong() {
    if (out_.size() >= kPiece) handOut();
}

void JsonText::finish() {
    out_ += '\n';
    handOut();
}

void JsonText::separate() {
    handOutIfLong();
    if (isKeyWritten_) {
        isKeyWritten_ = false;
        return;
    }
    if (levels_.empty()) return;
    Level& level = levels_.back();
    if (!level.isFirst) out_ += ',';
    if (isLinePending_) {
        out_ += '\n';
        lineBegin_ = written();
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
        while (plain < std::min(value.size(), kPiece) && isPlain(value[plain])) ++plain;
        out_ += value.substr(0, plain);
        value.remove_prefix(plain);
        handOutIfLong();
        if (value.empty() || plain == kPiece) continue;
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

void JsonText::base64(std::string_view bytes) {
    static_assert(kPiece % 4 == 0);
    constexpr std::size_t kBytes = kPiece / 4 * 3;  // no padding but at the end
    separate();
    out_ += '"';
    for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), kBytes))) {
        out_ += encodeBase64(bytes.substr(0, kBytes));
        handOutIfLong();
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
    if (!levels_.back().isFirst && written() - lineBegin_ > kLongLine) newLine();
}

}  // namespace vexa::frontend
