#include "frontend/package/xml_check.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {
namespace {

constexpr SystemText brokenTag = "line ^1, column ^2: a broken tag"_text;
constexpr SystemText openElement = "line ^1, column ^2: an element that is not closed"_text;
constexpr SystemText strayEnd = "line ^1, column ^2: an end tag without its start tag"_text;
constexpr SystemText twice = "line ^1, column ^2: an attribute that appears twice"_text;
constexpr SystemText undefinedEntity = "line ^1, column ^2: an entity that is not defined"_text;
constexpr SystemText noCharacter = "line ^1, column ^2: a character that XML cannot hold"_text;
constexpr SystemText besideRoot = "line ^1, column ^2: something besides the root element"_text;
constexpr SystemText notTaken = "line ^1, column ^2: XML of a kind that is not accepted"_text;
constexpr SystemText otherEncoding = "line ^1, column ^2: an encoding other than UTF-8"_text;
constexpr SystemText noRoot = "line ^1, column ^2: no root element"_text;
constexpr SystemText tooDeep = "line ^1, column ^2: elements that are nested too deeply"_text;

// More attributes than this are sorted to find doubled ones.
constexpr std::size_t fewAttributes = 12;

enum ByteClass : unsigned char { plain, blank, special, high };

constexpr std::array<ByteClass, 256> makeClasses() {
    std::array<ByteClass, 256> classes{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool isBlank = byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
        const bool isSpecial = byte < 0x20U || byte == '<' || byte == '&';
        classes[byte] = isBlank ? blank : isSpecial ? special : byte >= 0x80U ? high : plain;
    }
    return classes;
}

constexpr std::array<ByteClass, 256> classes = makeClasses();

ByteClass classOf(char byte) { return classes[static_cast<unsigned char>(byte)]; }

/// Whether each of eight bytes is plain. All at once, since most of a document are long texts of numbers.
bool areEightPlain(const char* bytes) {
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t highBits = ones * 0x80U;
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    // Such a byte borrows from its high bit, which it does not have itself.
    const auto below = [](std::uint64_t bytesOf, unsigned least) {
        return (bytesOf - ones * least) & ~bytesOf & highBits;
    };
    const auto equal = [&](char byte) { return below(word ^ ones * static_cast<unsigned char>(byte), 1); };
    return ((word & highBits) | below(word, ' ') | equal('<') | equal('&')) == 0;
}

bool isNameStart(char byte) {
    const char lower = static_cast<char>(static_cast<unsigned char>(byte) | 0x20U);
    return (lower >= 'a' && lower <= 'z') || byte == '_' || byte == ':' || classOf(byte) == high;
}

bool isNameByte(char byte) {
    return isNameStart(byte) || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.';
}

bool isXmlCharacter(std::uint32_t code) {
    return code == 0x9U || code == 0xAU || code == 0xDU || (code >= 0x20U && code < 0xD800U) ||
           (code >= 0xE000U && code < 0xFFFEU) || (code >= 0x10000U && code < 0x110000U);
}

/// `#65` or `#x41`, as it stands in a reference.
bool isCharacterReference(std::string_view text) {
    text.remove_prefix(1);
    const bool hexadecimal = !text.empty() && text.front() == 'x';
    text.remove_prefix(hexadecimal ? 1 : 0);
    std::uint32_t code = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, code, hexadecimal ? 16 : 10);
    return result.ec == std::errc() && result.ptr == end && isXmlCharacter(code);
}

bool isKnownEntity(std::string_view name) {
    constexpr std::array<std::string_view, 5> known{"amp", "lt", "gt", "quot", "apos"};
    return std::find(known.begin(), known.end(), name) != known.end();
}

bool isUtf8Name(std::string_view name) {
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
    });
    return lower == "utf-8" || lower == "us-ascii";
}

class Scanner {
  public:
    Scanner(std::string_view xml, const XmlLimits& limits, const XmlPolicy& policy)
        : xml_(xml), limits_(limits), policy_(policy) {}

    bool scan() {
        // Far more than there may be is told as such, whatever else is wrong with it.
        if (static_cast<std::size_t>(std::count(xml_.begin(), xml_.end(), '<')) > limits_.tags) {
            return fail("XML elements"_text, PackageProblem::tooLarge);
        }
        if (xml_.starts_with("\xEF\xBB\xBF")) {
            at_ = 3;
        }
        if (xml_.substr(at_).starts_with("<?xml") && classOf(peek(5)) == blank && !declaration()) {
            return false;
        }
        while (at_ < xml_.size()) {
            if (!text() || (at_ < xml_.size() && !markup())) {
                return false;
            }
        }
        return !open_.empty() ? fail(openElement) : hasRoot_ ? true : fail(noRoot);
    }

    XmlSize size;

    [[nodiscard]] PackageResult failure() const {
        if (result_) {
            return result_;
        }
        PackageResult placed = result_;
        const std::string_view before = xml_.substr(0, at_);
        const std::size_t line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
        const std::size_t lineEnd = before.rfind('\n');
        const std::string_view inLine =
            lineEnd == std::string_view::npos ? before : before.substr(lineEnd + 1);
        const auto column = std::count_if(inLine.begin(), inLine.end(), [](char byte) {
            return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
        });
        placed.arguments = {std::to_string(line), std::to_string(column + 1)};
        return placed;
    }

  private:
    bool fail(SystemText text, PackageProblem problem = PackageProblem::damaged) {
        result_ = {problem, text};
        return false;
    }

    [[nodiscard]] char peek(std::size_t ahead = 0) const {
        return at_ + ahead < xml_.size() ? xml_[at_ + ahead] : '\0';
    }
    [[nodiscard]] bool isNext(std::string_view text) const { return xml_.substr(at_).starts_with(text); }

    /// Takes `text` when it comes next.
    bool take(std::string_view text) {
        if (!isNext(text)) {
            return false;
        }
        at_ += text.size();
        return true;
    }

    bool blanks() {
        const std::size_t from = at_;
        while (at_ < xml_.size() && classOf(xml_[at_]) == blank) {
            ++at_;
        }
        return at_ > from;
    }

    /// One character that is not plain: a character of several bytes or a reference.
    bool unusual() {
        if (xml_[at_] == '&') {
            return reference();
        }
        const std::size_t length = classOf(xml_[at_]) == high ? xmlCharacterLength(xml_, at_) : 0;
        at_ += length;
        return length > 0 || fail(noCharacter);
    }

    bool reference() {
        const std::size_t end = xml_.substr(at_, 64).find(';');
        const std::string_view name =
            end == std::string_view::npos ? std::string_view() : xml_.substr(at_ + 1, end - 1);
        const bool known =
            !name.empty() && (name.front() == '#' ? isCharacterReference(name) : isKnownEntity(name));
        at_ += known ? end + 1 : 0;
        return known || fail(undefinedEntity);
    }

    /// Text up to the next tag or the end.
    bool text() {
        if (open_.empty()) {
            blanks();
            return at_ == xml_.size() || xml_[at_] == '<' || fail(besideRoot);
        }
        for (passPlain(); at_ < xml_.size() && xml_[at_] != '<'; passPlain()) {
            if (!unusual()) {
                return false;
            }
        }
        return true;
    }

    /// Goes to the next byte of a text that is neither plain nor a blank, or to the end.
    void passPlain() {
        const char* at = xml_.data() + at_;
        const char* const end = xml_.data() + xml_.size();
        while (end - at >= 8 && areEightPlain(at)) {
            at += 8;
        }
        while (at != end && (classOf(*at) == plain || classOf(*at) == blank)) {
            ++at;
        }
        at_ = static_cast<std::size_t>(at - xml_.data());
    }

    bool markup() {
        ++size.tags;
        if (isNext("<!") || isNext("<?")) {
            return special();
        }
        return isNext("</") ? endTag() : startTag();
    }

    bool special() {
        if (isNext("<!--")) {
            return policy_.comments ? passOver(4, "-->") : fail(notTaken);
        }
        if (isNext("<![CDATA[")) {
            return open_.empty() ? fail(besideRoot) : policy_.sections ? passOver(9, "]]>") : fail(notTaken);
        }
        if (isNext("<?")) {
            const bool declares = isNext("<?xml") && !isNameByte(peek(5));
            const bool allowed = policy_.instructions && !declares && isNameStart(peek(2));
            return allowed ? passOver(2, "?>") : fail(notTaken);
        }
        const bool first = !hasRoot_ && size.documentTypeEnd == 0;
        const bool allowed = policy_.documentTypes && isNext("<!DOCTYPE") && first;
        return allowed ? documentType() : fail(notTaken);
    }

    /// What begins with `length` bytes, up to `end`; its characters must be such that XML can hold.
    bool passOver(std::size_t length, std::string_view end) {
        const std::size_t last = xml_.find(end, at_ + length);
        if (last == std::string_view::npos) {
            return fail(brokenTag);
        }
        for (at_ += length; at_ < last;) {
            const ByteClass kind = classOf(xml_[at_]);
            if (kind == plain || kind == blank || xml_[at_] == '&' || xml_[at_] == '<') {
                ++at_;
            } else if (!unusual()) {
                return false;
            }
        }
        at_ = last + end.size();
        return true;
    }

    bool documentType() {
        int brackets = 0;
        for (std::size_t end = at_; end < xml_.size(); ++end) {
            const char byte = xml_[end];
            if (xml_.substr(end).starts_with("<!--")) {
                end = std::min(xml_.find("-->", end + 4), xml_.size() - 3) + 2;
            } else if (byte == '"' || byte == '\'') {
                end = std::min(xml_.find(byte, end + 1), xml_.size());
            } else if (byte == '<' || byte == '>') {
                brackets += byte == '<' ? 1 : -1;
            }
            if (brackets == 0) {
                size.documentType = at_;
                size.documentTypeEnd = end + 1;
                at_ = end + 1;
                return true;
            }
        }
        return fail(brokenTag);
    }

    std::string_view name() {
        const std::size_t from = at_;
        if (isNameStart(peek())) {
            while (at_ < xml_.size() && isNameByte(xml_[at_])) {
                const std::size_t length = classOf(xml_[at_]) == high ? xmlCharacterLength(xml_, at_) : 1;
                if (length == 0) {
                    break;
                }
                at_ += length;
            }
        }
        return xml_.substr(from, at_ - from);
    }

    bool endTag() {
        const std::size_t from = at_;
        at_ += 2;
        const std::string_view closed = name();
        if (open_.empty() || closed != open_.back()) {
            at_ = from;
            return fail(strayEnd);
        }
        open_.pop_back();
        blanks();
        return take(">") || fail(brokenTag);
    }

    bool startTag() {
        if (open_.empty() && hasRoot_) {
            return fail(besideRoot);
        }
        hasRoot_ = true;
        if (open_.size() >= limits_.depth) {
            return fail(tooDeep);
        }
        ++at_;
        const std::string_view element = name();
        if (element.empty()) {
            return fail(brokenTag);
        }
        if (!attributes()) {
            return false;
        }
        if (take("/>")) {
            return true;
        }
        open_.push_back(element);
        return take(">") || fail(brokenTag);
    }

    /// The attributes of one tag, up to its end.
    bool attributes() {
        attributes_.clear();
        while (true) {
            const bool parted = blanks();
            if (at_ == xml_.size() || xml_[at_] == '>' || xml_[at_] == '/' || xml_[at_] == '?') {
                return areDistinct();
            }
            const std::string_view attribute = parted ? name() : std::string_view();
            if (attribute.empty()) {
                return fail(brokenTag);
            }
            blanks();
            if (!take("=")) {
                return fail(brokenTag);
            }
            blanks();
            attributes_.push_back(attribute);
            if (!value()) {
                return false;
            }
        }
    }

    bool value() {
        const char quote = peek();
        if (quote != '"' && quote != '\'') {
            return fail(brokenTag);
        }
        if ((size.quotes += 2) > limits_.quotes) {
            return fail("XML elements"_text, PackageProblem::tooLarge);
        }
        ++at_;
        while (at_ < xml_.size() && xml_[at_] != quote) {
            const ByteClass kind = classOf(xml_[at_]);
            if (kind == plain || kind == blank) {
                ++at_;
            } else if (xml_[at_] == '<') {
                return fail(brokenTag);
            } else if (!unusual()) {
                return false;
            }
        }
        return take(std::string_view(&quote, 1)) || fail(brokenTag);
    }

    bool areDistinct() {
        auto& names = attributes_;
        if (names.size() > fewAttributes) {
            std::sort(names.begin(), names.end());
            return std::adjacent_find(names.begin(), names.end()) == names.end() || fail(twice);
        }
        for (std::size_t i = 1; i < names.size(); ++i) {
            if (std::find(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(i), names[i]) !=
                names.begin() + static_cast<std::ptrdiff_t>(i)) {
                return fail(twice);
            }
        }
        return true;
    }

    bool declaration() {
        ++size.tags;
        const std::size_t from = at_;
        at_ += 5;
        if (!attributes() || !take("?>")) {
            return fail(brokenTag);
        }
        const std::string_view text = xml_.substr(from, at_ - from);
        const std::size_t encoding = text.find("encoding");
        if (encoding == std::string_view::npos) {
            return true;
        }
        const std::size_t quote = text.find_first_of("\"'", encoding);
        const std::string_view named = text.substr(quote + 1, text.find(text[quote], quote + 1) - quote - 1);
        return isUtf8Name(named) || fail(otherEncoding);
    }

    std::string_view xml_;
    const XmlLimits& limits_;
    const XmlPolicy& policy_;
    PackageResult result_;
    std::size_t at_ = 0;
    std::vector<std::string_view> open_;
    std::vector<std::string_view> attributes_;
    bool hasRoot_ = false;
};

}  // namespace

PackageResult checkXml(std::string_view xml, const XmlLimits& limits, const XmlPolicy& policy,
                       XmlSize& size) {
    Scanner scanner(xml, limits, policy);
    scanner.scan();
    size = scanner.size;
    return scanner.failure();
}

}  // namespace vexa::frontend
