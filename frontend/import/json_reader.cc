#include "frontend/import/json_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "backend/text/ascii.h"
#include "backend/text/utf8.h"
#include "frontend/import/import_problem.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Bytes that stand for themselves inside a text: ASCII without quotation mark, backslash and control
/// characters.
constexpr std::array<bool, 256> makePlain() {
    std::array<bool, 256> plain{};
    for (std::size_t i = 0x20; i < 0x80; ++i) plain[i] = i != '"' && i != '\\';
    return plain;
}
constexpr std::array<bool, 256> kPlain = makePlain();

/// The powers of ten that a double holds exactly.
constexpr std::array<double, 23> kPowers{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// A number of few digits without an exponent, which one exact division makes; false for others.
bool readShort(std::string_view text, double& number) {
    constexpr std::size_t kMostDigits = 15;
    const bool isNegative = text.front() == '-';
    if (isNegative) text.remove_prefix(1);
    if (text.size() > kMostDigits + 1) return false;
    std::uint64_t digits = 0;
    std::size_t decimals = 0;
    bool isBehindPoint = false;
    for (const char c : text) {
        if (c == '.') {
            isBehindPoint = true;
            continue;
        }
        if (!isAsciiDigit(c)) return false;
        digits = digits * 10 + static_cast<unsigned>(c - '0');
        decimals += isBehindPoint ? 1 : 0;
    }
    number = static_cast<double>(digits) / kPowers[decimals];
    if (isNegative) number = -number;
    return true;
}

}  // namespace

bool JsonReader::failWith(const char* at, std::string message) {
    token_ = at;
    failure_ = std::move(message);
    return false;
}

bool JsonReader::fail(const char* at, std::string_view expected) {
    std::string found = translated("the end of the text"_text);
    if (at < end_) {
        const std::string_view rest(at, static_cast<std::size_t>(end_ - at));
        const Utf8Character character = decodeUtf8(rest);
        if (!character.valid) return failWith(at, translated("The text is not UTF-8 here."_text));
        found = nlohmann::json(std::string(rest.substr(0, character.length))).dump();
    }
    return failWith(at, mismatch(found, expected));
}

void JsonReader::skipBlanks() {
    while (at_ < end_ && (*at_ == ' ' || *at_ == '\n' || *at_ == '\r' || *at_ == '\t')) ++at_;
}

bool JsonReader::read(JsonEvents& events) {
    if (text_.starts_with(kByteOrderMark)) at_ += kByteOrderMark.size();
    while (true) {
        skipBlanks();
        token_ = at_;
        if (state_ == State::end && at_ == end_) return true;
        if (!step(events)) return false;
    }
}

bool JsonReader::step(JsonEvents& events) {
    const bool isEnd = at_ == end_;
    switch (state_) {
        case State::valueOrEnd:
            if (!isEnd && *at_ == ']') return close(events);
            return readValue(events);
        case State::value:
            return readValue(events);
        case State::keyOrEnd:
            if (!isEnd && *at_ == '}') return close(events);
            return readKey(events);
        case State::key:
            return readKey(events);
        case State::colon:
            if (isEnd || *at_ != ':') return fail(at_, "a colon"_text);
            ++at_;
            state_ = State::value;
            return true;
        case State::behindValue:
            return readBehindValue(events);
        case State::end:
            break;
    }
    return fail(at_, "the end of the text"_text);
}

bool JsonReader::readBehindValue(JsonEvents& events) {
    const bool isList = open_.back();
    const char c = at_ == end_ ? '\0' : *at_;
    if (c == (isList ? ']' : '}')) return close(events);
    if (c != ',') return fail(at_, isList ? "a comma or ]"_text : "a comma or }"_text);
    ++at_;
    state_ = isList ? State::value : State::key;
    return true;
}

bool JsonReader::open(JsonEvents& events, bool isList) {
    ++at_;
    open_.push_back(isList);
    state_ = isList ? State::valueOrEnd : State::keyOrEnd;
    constexpr auto kUnknownSize = static_cast<std::size_t>(-1);
    return isList ? events.start_array(kUnknownSize) : events.start_object(kUnknownSize);
}

bool JsonReader::close(JsonEvents& events) {
    ++at_;
    const bool isList = open_.back();
    open_.pop_back();
    ended();
    return isList ? events.end_array() : events.end_object();
}

bool JsonReader::readKey(JsonEvents& events) {
    if (at_ == end_ || *at_ != '"') return fail(at_, "a key in double quotes"_text);
    if (!readText()) return false;
    state_ = State::colon;
    return events.key(value_);
}

bool JsonReader::readValue(JsonEvents& events) {
    switch (at_ == end_ ? '\0' : *at_) {
        case '{':
            return open(events, false);
        case '[':
            return open(events, true);
        case '"':
            if (!readText()) return false;
            ended();
            return events.string(value_);
        case 't':
            return readWord("true", events);
        case 'f':
            return readWord("false", events);
        case 'n':
            return readWord("null", events);
        default:
            return readNumber(events);
    }
}

bool JsonReader::readWord(std::string_view word, JsonEvents& events) {
    if (std::string_view(at_, static_cast<std::size_t>(end_ - at_)).substr(0, word.size()) != word) {
        return fail(at_, "a value"_text);
    }
    at_ += word.size();
    ended();
    return word == "null" ? events.null() : events.boolean(word == "true");
}

bool JsonReader::readNumber(JsonEvents& events) {
    const char* const begin = at_;
    const auto skipDigits = [this] {
        const char* const first = at_;
        while (at_ < end_ && isAsciiDigit(*at_)) ++at_;
        return at_ != first;
    };
    bool isWhole = true;
    if (at_ < end_ && *at_ == '-') ++at_;
    const char* const first = at_;
    if (!skipDigits())
        return fail(begin == at_ ? begin : at_, begin == at_ ? "a value"_text : "a digit"_text);
    if (*first == '0' && at_ - first > 1) return fail(first, "a number without leading zeros"_text);
    if (at_ < end_ && *at_ == '.') {
        ++at_;
        isWhole = false;
        if (!skipDigits()) return fail(at_, "a digit"_text);
    }
    if (at_ < end_ && (*at_ == 'e' || *at_ == 'E')) {
        ++at_;
        isWhole = false;
        if (at_ < end_ && (*at_ == '+' || *at_ == '-')) ++at_;
        if (!skipDigits()) return fail(at_, "a digit"_text);
    }
    ended();
    return reportNumber(events, begin, isWhole);
}

bool JsonReader::reportNumber(JsonEvents& events, const char* begin, bool isWhole) {
    if (isWhole && *begin != '-') {
        std::uint64_t whole = 0;
        if (std::from_chars(begin, at_, whole).ec == std::errc()) return events.number_unsigned(whole);
    } else if (isWhole) {
        std::int64_t whole = 0;
        if (std::from_chars(begin, at_, whole).ec == std::errc()) return events.number_integer(whole);
    }
    double number = 0;
    static const std::string kNoText;
    if (!readShort({begin, static_cast<std::size_t>(at_ - begin)}, number)) {
        const std::from_chars_result read = std::from_chars(begin, at_, number);
        // Beyond what a double holds: too small for one is zero to everyone, too large is nothing.
        if (read.ec != std::errc()) number = std::strtod(std::string(begin, at_).c_str(), nullptr);
        if (!std::isfinite(number)) return failWith(begin, translated("The number is too large."_text));
    }
    return events.number_float(number, kNoText);
}

bool JsonReader::readText() {
    const char* const begin = at_++;
    value_.clear();
    while (true) {
        const char* const plain = at_;
        while (at_ < end_ && kPlain[static_cast<unsigned char>(*at_)]) ++at_;
        value_.append(plain, at_);
        if (at_ == end_) return fail(end_, "a closing double quote"_text);
        if (*at_ == '"') {
            ++at_;
            token_ = begin;
            return true;
        }
        if (*at_ == '\\') {
            if (!readEscape()) return false;
        } else if (static_cast<unsigned char>(*at_) < 0x80) {
            return fail(at_, "an escape such as \\n or \\u00e4"_text);
        } else {
            const Utf8Character character = decodeUtf8({at_, static_cast<std::size_t>(end_ - at_)});
            if (!character.valid) return failWith(at_, translated("The text is not UTF-8 here."_text));
            value_.append(at_, character.length);
            at_ += character.length;
        }
    }
}

bool JsonReader::readEscape() {
    constexpr std::string_view kLetters = "\"\\/bfnrt";
    constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    const char* const begin = at_++;
    const std::size_t letter = at_ == end_ ? std::string_view::npos : kLetters.find(*at_);
    if (letter != std::string_view::npos) {
        value_ += kMeanings[letter];
        ++at_;
        return true;
    }
    unsigned code = 0;
    if (at_ == end_ || *at_ != 'u' || !readCode(code))
        return fail(begin, "an escape such as \\n or \\u00e4"_text);
    if (code >= 0xD800 && code < 0xDC00) {
        unsigned low = 0;
        const bool hasLow = end_ - at_ > 1 && at_[0] == '\\' && at_[1] == 'u' && (++at_, readCode(low));
        if (!hasLow || low < 0xDC00 || low >= 0xE000)
            return fail(begin, "an escape such as \\n or \\u00e4"_text);
        code = 0x10000 + ((code - 0xD800) << 10U) + (low - 0xDC00);
    } else if (code >= 0xDC00 && code < 0xE000) {
        return fail(begin, "an escape such as \\n or \\u00e4"_text);
    }
    appendUtf8(value_, code);
    return true;
}

/// Four hexadecimal digits behind a "u".
bool JsonReader::readCode(unsigned& code) {
    constexpr std::ptrdiff_t kDigits = 4;
    constexpr int kHexadecimal = 16;
    ++at_;
    if (end_ - at_ < kDigits) return false;
    const auto [end, error] = std::from_chars(at_, at_ + kDigits, code, kHexadecimal);
    if (error != std::errc() || end != at_ + kDigits) return false;
    at_ += kDigits;
    return true;
}

}  // namespace vexa::frontend
