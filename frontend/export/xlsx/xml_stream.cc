#include "frontend/export/xlsx/xml_stream.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace vexa::frontend {
namespace {

constexpr SystemText notWellFormed = "it has XML that is not well formed"_text;
constexpr SystemText otherXml = "it has XML of a kind that is not accepted"_text;

// Far more than a tag or a comment has.
constexpr std::size_t mostOfATag = 8U << 20U;
constexpr std::size_t mostDepth = 256;
constexpr std::size_t shortText = 128U << 10U;

bool isBlank(char byte) { return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r'; }

std::size_t passBlanks(std::string_view text, std::size_t at) {
    while (at < text.size() && isBlank(text[at])) {
        ++at;
    }
    return at;
}

std::string_view nameIn(std::string_view inside) {
    std::size_t end = 0;
    while (end < inside.size() && !isBlank(inside[end]) && inside[end] != '/' && inside[end] != '=' &&
           inside[end] != '"' && inside[end] != '\'' && inside[end] != '<') {
        ++end;
    }
    return inside.substr(0, end);
}

/// Takes the next attribute off `rest`, which is the inside of a tag behind its name. False at the end, and
/// where none follows.
bool takeAttribute(std::string_view& rest, RawAttribute& attribute) {
    std::size_t at = passBlanks(rest, 0);
    const std::string_view name = nameIn(rest.substr(at));
    if (name.empty() || at == 0) {
        return false;
    }
    attribute.name = name;
    at = passBlanks(rest, at + name.size());
    if (at >= rest.size() || rest[at] != '=') {
        return false;
    }
    at = passBlanks(rest, at + 1);
    if (at >= rest.size() || (rest[at] != '"' && rest[at] != '\'')) {
        return false;
    }
    const std::size_t end = rest.find(rest[at], at + 1);
    if (end == std::string_view::npos) {
        return false;
    }
    attribute.value = rest.substr(at + 1, end - at - 1);
    attribute.whole = rest.substr(0, end + 1);
    rest.remove_prefix(end + 1);
    return true;
}

std::string_view behindName(std::string_view raw) {
    const std::string_view inside = raw.substr(1, raw.size() - 2);
    return inside.substr(nameIn(inside).size());
}

/// Appends the character with this number as UTF-8; false for what is none.
bool appendCharacter(std::string& out, std::uint32_t code) {
    if (code == 0 || code > 0x10FFFFU || (code >= 0xD800U && code < 0xE000U)) {
        return false;
    }
    const auto tail = [&out](std::uint32_t bits) { out += static_cast<char>(0x80U | (bits & 0x3FU)); };
    if (code < 0x80U) {
        out += static_cast<char>(code);
    } else if (code < 0x800U) {
        out += static_cast<char>(0xC0U | code >> 6U);
        tail(code);
    } else if (code < 0x10000U) {
        out += static_cast<char>(0xE0U | code >> 12U);
        tail(code >> 6U);
        tail(code);
    } else {
        out += static_cast<char>(0xF0U | code >> 18U);
        tail(code >> 12U);
        tail(code >> 6U);
        tail(code);
    }
    return true;
}

bool appendReference(std::string& out, std::string_view name) {
    if (name.starts_with('#')) {
        const bool hexadecimal = name.size() > 1 && name[1] == 'x';
        const std::string_view digits = name.substr(hexadecimal ? 2 : 1);
        std::uint32_t code = 0;
        const char* const end = digits.data() + digits.size();
        const auto read = std::from_chars(digits.data(), end, code, hexadecimal ? 16 : 10);
        return read.ec == std::errc() && read.ptr == end && appendCharacter(out, code);
    }
    constexpr std::array<std::pair<std::string_view, char>, 5> known{
        {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
    for (const auto& [word, character] : known) {
        if (word == name) {
            out += character;
            return true;
        }
    }
    return false;
}

}  // namespace

XmlStream::XmlStream(ByteSource source) : source_(std::move(source)) {}

bool XmlStream::fail(SystemText text) {
    if (result_) {
        result_ = {PackageProblem::damaged, text};
    }
    return false;
}

/// Gets the next piece of the source. False at its end; what was given out is dropped.
bool XmlStream::fill() {
    if (isSourceAtEnd_ || !result_) {
        return false;
    }
    buffer_.erase(0, at_);
    at_ = 0;
    std::string_view piece;
    result_ = source_(piece);
    isSourceAtEnd_ = piece.empty();
    buffer_ += piece;
    filled_ += piece.size();
    return result_ && !isSourceAtEnd_;
}

std::string_view XmlStream::localName() const {
    const std::size_t colon = name_.find(':');
    return colon == std::string_view::npos ? name_ : name_.substr(colon + 1);
}

bool XmlStream::next() {
    if (kind_ == XmlPiece::start && !isWhole_ && !raw_.empty()) {
        ++depth_;
    }
    raw_ = {};
    if (!result_) {
        return false;
    }
    if (at_ == buffer_.size() && !fill()) {
        return result_ && (openAt_.empty() && hadRoot_) ? false : fail(notWellFormed);
    }
    return buffer_[at_] == '<' ? readTag() : readText();
}

bool XmlStream::take(XmlPiece kind, std::size_t length) {
    kind_ = kind;
    raw_ = std::string_view(buffer_).substr(at_, length);
    at_ += length;
    return true;
}

bool XmlStream::readText() {
    // A short text comes as a whole.
    while (buffer_.find('<', at_) == std::string::npos && buffer_.size() - at_ < shortText && fill()) {
    }
    const std::size_t end = std::min(buffer_.find('<', at_), buffer_.size());
    take(XmlPiece::text, end - at_);
    const std::string_view mark = "\xEF\xBB\xBF";
    const std::string_view text = !hadRoot_ && raw_.starts_with(mark) ? raw_.substr(mark.size()) : raw_;
    const bool inside = !openAt_.empty();
    return inside || std::all_of(text.begin(), text.end(), isBlank) || fail(otherXml);
}

/// Where `end` begins, from `from` on.
bool XmlStream::findBehind(std::string_view end, std::size_t from, std::size_t& found) {
    std::size_t ahead = from - at_;
    while ((found = buffer_.find(end, at_ + ahead)) == std::string::npos) {
        ahead = std::max(ahead, buffer_.size() - at_ - std::min(end.size() - 1, buffer_.size() - at_));
        if (buffer_.size() - at_ > mostOfATag || !fill()) {
            return fail(notWellFormed);
        }
    }
    return true;
}

/// The `>` that ends the tag: not one inside of a value.
bool XmlStream::findTagEnd(std::size_t& found) {
    char quote = '\0';
    std::size_t ahead = 1;
    while (true) {
        for (; at_ + ahead < buffer_.size(); ++ahead) {
            const char byte = buffer_[at_ + ahead];
            if (quote != '\0') {
                quote = byte == quote ? '\0' : quote;
            } else if (byte == '"' || byte == '\'') {
                quote = byte;
            } else if (byte == '>') {
                found = at_ + ahead;
                return true;
            } else if (byte == '<') {
                return fail(notWellFormed);
            }
        }
        if (ahead > mostOfATag || !fill()) {
            return fail(notWellFormed);
        }
    }
}

bool XmlStream::readSpecial() {
    const auto isNext = [this](std::string_view text) {
        return std::string_view(buffer_).substr(at_).starts_with(text);
    };
    std::size_t end = 0;
    if (isNext("<!--")) {
        return findBehind("-->", at_ + 4, end) && take(XmlPiece::other, end + 3 - at_);
    }
    if (isNext("<![CDATA[")) {
        if (openAt_.empty()) {
            return fail(otherXml);
        }
        return findBehind("]]>", at_ + 9, end) && take(XmlPiece::other, end + 3 - at_);
    }
    if (!isNext("<?")) {
        return fail(otherXml);
    }
    if (!findBehind("?>", at_ + 2, end) || !take(XmlPiece::other, end + 2 - at_)) {
        return false;
    }
    if (!raw_.starts_with("<?xml ")) {
        return true;
    }
    const std::size_t encoding = raw_.find("encoding");
    std::string_view named = encoding == std::string_view::npos ? "utf-8" : raw_.substr(encoding + 8);
    const auto matches = [named](std::string_view wanted) {
        const auto same = [](char left, char right) {
            return (left >= 'A' && left <= 'Z' ? left + 32 : left) == right;
        };
        return std::search(named.begin(), named.end(), wanted.begin(), wanted.end(), same) != named.end();
    };
    return matches("utf-8") || matches("us-ascii") || fail(otherXml);
}

bool XmlStream::readTag() {
    constexpr std::size_t longestOpening = 9;  // of a section
    while (buffer_.size() - at_ < longestOpening && fill()) {
    }
    if (buffer_.size() - at_ < 2) {
        return fail(notWellFormed);
    }
    const char second = buffer_[at_ + 1];
    if (second == '!' || second == '?') {
        return readSpecial();
    }
    std::size_t end = 0;
    if (!findTagEnd(end)) {
        return false;
    }
    take(second == '/' ? XmlPiece::end : XmlPiece::start, end + 1 - at_);
    return second == '/' ? closeTag(raw_.substr(2, raw_.size() - 3))
                         : openTag(raw_.substr(1, raw_.size() - 2));
}

bool XmlStream::openTag(std::string_view inside) {
    isWhole_ = inside.ends_with('/');
    name_ = nameIn(inside);
    if (name_.empty() || (openAt_.empty() && hadRoot_)) {
        return fail(notWellFormed);
    }
    hadRoot_ = true;
    if (isWhole_) {
        return true;
    }
    if (openAt_.size() >= mostDepth) {
        return fail(notWellFormed);
    }
    openAt_.push_back(open_.size());
    open_ += name_;
    return true;
}

bool XmlStream::closeTag(std::string_view inside) {
    name_ = nameIn(inside);
    if (openAt_.empty() || std::string_view(open_).substr(openAt_.back()) != name_) {
        return fail(notWellFormed);
    }
    open_.resize(openAt_.back());
    openAt_.pop_back();
    depth_ = openAt_.size();
    return true;
}

std::string_view XmlStream::takeInside() {
    if (!isStart() || isWhole_ || openAt_.empty()) {
        return {};
    }
    const std::string end = "</" + std::string(std::string_view(open_).substr(openAt_.back())) + ">";
    std::size_t ahead = 0;
    std::size_t found = 0;
    while ((found = buffer_.find(end, at_ + ahead)) == std::string::npos) {
        ahead = std::max(ahead, buffer_.size() - at_ - std::min(end.size(), buffer_.size() - at_));
        if (buffer_.size() - at_ > shortText || !fill()) {
            return {};
        }
    }
    const std::string_view inside = std::string_view(buffer_).substr(at_, found - at_);
    if (inside.find("<!") != std::string_view::npos || inside.find("<?") != std::string_view::npos) {
        return {};
    }
    take(XmlPiece::end, found + end.size() - at_);
    name_ = raw_.substr(raw_.size() - end.size() + 2, end.size() - 3);
    open_.resize(openAt_.back());
    openAt_.pop_back();
    depth_ = openAt_.size();
    return raw_;
}

std::string_view XmlStream::takeBytes(std::uint64_t most) {
    if (at_ == buffer_.size() && !fill()) {
        return {};
    }
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(most, buffer_.size() - at_));
    const std::string_view bytes = std::string_view(buffer_).substr(at_, count);
    at_ += count;
    return bytes;
}

std::optional<std::string_view> XmlStream::attribute(std::string_view name) const {
    std::string_view rest = behindName(raw_);
    RawAttribute found;
    while (takeAttribute(rest, found)) {
        if (found.name == name) {
            return found.value;
        }
    }
    return std::nullopt;
}

bool XmlStream::hasCharacters() const {
    return kind_ == XmlPiece::text ? !std::all_of(raw_.begin(), raw_.end(), isBlank)
                                   : kind_ == XmlPiece::other && raw_.starts_with("<![CDATA[");
}

std::string plainText(std::string_view raw) {
    std::string text;
    while (!raw.empty()) {
        const std::size_t ampersand = std::min(raw.find('&'), raw.size());
        text += raw.substr(0, ampersand);
        raw.remove_prefix(ampersand);
        if (raw.empty()) {
            break;
        }
        const std::size_t end = raw.find(';');
        if (end == std::string_view::npos || !appendReference(text, raw.substr(1, end - 1))) {
            text += '&';
            raw.remove_prefix(1);
        } else {
            raw.remove_prefix(end + 1);
        }
    }
    return text;
}

std::vector<RawAttribute> attributesOf(std::string_view raw) {
    std::vector<RawAttribute> attributes;
    std::string_view rest = behindName(raw);
    RawAttribute attribute;
    while (takeAttribute(rest, attribute)) {
        attributes.push_back(attribute);
    }
    return attributes;
}

}  // namespace vexa::frontend
