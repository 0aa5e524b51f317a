#include "backend/text/code_page_windows.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <limits>
#include <utility>

#include "backend/text/utf8.h"

namespace vexa {

namespace {

constexpr char16_t kUnreadable = 0xFFFD;
constexpr std::size_t kLongestCharacter = 4;
/// Bytes or units that the system is handed at a time; it counts in `int`.
constexpr std::size_t kPiece = std::size_t{1} << 16U;
static_assert(kPiece * kLongestCharacter <= std::numeric_limits<int>::max());

unsigned char byteOf(char c) { return static_cast<unsigned char>(c); }
bool isAscii(char16_t unit) { return unit < 0x80; }
bool isHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// What the system reads in a piece of text; nothing when it says that it cannot.
std::optional<std::u16string> readBySystem(UINT codePage, std::string_view piece) {
    std::u16string units(piece.size(), u'\0');
    if (piece.empty()) return units;
    const int length =
        MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, piece.data(), static_cast<int>(piece.size()),
                            reinterpret_cast<wchar_t*>(units.data()), static_cast<int>(units.size()));
    if (length <= 0) return std::nullopt;
    units.resize(static_cast<std::size_t>(length));
    return units;
}

/// The same for characters beyond ASCII. The system drops the high bit of some bytes, or reads them as zero,
/// and calls that no error; nothing but an ASCII byte may become an ASCII character, since texts are escaped
/// and searched before they are converted.
std::optional<std::u16string> convert(UINT codePage, std::string_view characters) {
    auto units = readBySystem(codePage, characters);
    if (units && std::any_of(units->begin(), units->end(), isAscii)) return std::nullopt;
    return units;
}

/// What the system writes for a piece of text: letters that only look alike for those that the code page
/// lacks, or its own substitute.
std::string writeBySystem(UINT codePage, std::u16string_view piece) {
    std::string bytes(piece.size() * kLongestCharacter, '\0');
    const int length = WideCharToMultiByte(codePage, 0, reinterpret_cast<const wchar_t*>(piece.data()),
                                           static_cast<int>(piece.size()), bytes.data(),
                                           static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(std::max(length, 0)));
    return bytes;
}

/// True when the code page reads printable ASCII characters as themselves, and all at once.
bool readsAscii(UINT codePage) {
    std::string ascii;
    for (char c = ' '; c <= '~'; ++c) ascii.push_back(c);
    return readBySystem(codePage, ascii) == std::u16string(ascii.begin(), ascii.end());
}

std::size_t asciiPrefixOf(std::u16string_view text) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isAscii) - text.begin());
}

/// Units of the character that a text begins with.
std::size_t unitsAt(std::u16string_view text) {
    return isHighSurrogate(text[0]) && text.size() > 1 && isLowSurrogate(text[1]) ? 2 : 1;
}

/// Units at the beginning of a text that are whole characters beyond ASCII, at most a piece.
std::size_t unitsBeyondAscii(std::u16string_view text) {
    std::size_t length = 0;
    while (length < text.size() && length < kPiece - 1 && !isAscii(text[length])) {
        length += unitsAt(text.substr(length));
    }
    return length;
}

/// A code page whose characters have one byte or two, of which the first says how many. ASCII characters are
/// copied, and the system only sees what is between them.
class WindowsConverter : public CodePageConverter {
  public:
    explicit WindowsConverter(UINT codePage) : codePage_(codePage) { measure(); }

    [[nodiscard]] Reading classify(std::string_view bytes) const override;
    [[nodiscard]] std::u16string toUtf16(std::string_view text) const override;
    [[nodiscard]] std::optional<std::u16string> toUtf16Strictly(std::string_view text) const override;
    [[nodiscard]] std::string fromUtf16(std::u16string_view text) const override;

  protected:
    /// For a code page that says by itself what its characters are.
    WindowsConverter(UINT codePage, std::nullptr_t /*unmeasured*/) : codePage_(codePage) {}
    [[nodiscard]] UINT codePage() const { return codePage_; }

    /// A piece of whole characters beyond ASCII, read; nothing when there is one that cannot be.
    [[nodiscard]] virtual std::optional<std::u16string> read(std::string_view piece) const;
    /// A piece of characters beyond ASCII, written; what the set lacks becomes anything that does not read as
    /// it.
    [[nodiscard]] virtual std::string write(std::u16string_view piece) const;

  private:
    enum class Unreadable { stops, isReplaced };

    void measure();
    [[nodiscard]] std::size_t characterAt(std::string_view text) const;
    [[nodiscard]] std::size_t brokenAt(std::string_view text) const;
    [[nodiscard]] std::size_t pieceBeyondAscii(std::string_view text) const;
    [[nodiscard]] bool append(std::u16string& result, std::string_view text, Unreadable unreadable) const;
    void appendEach(std::u16string& result, std::string_view piece) const;
    void appendEach(std::string& result, std::u16string_view piece) const;

    UINT codePage_;
    std::bitset<256> leads_;
    std::bitset<256> trails_;  // the bytes that are the second one of any character
};

bool isCharacter(UINT codePage, std::string_view bytes) {
    const auto units = convert(codePage, bytes);
    // A pair that the system reads as two characters is none.
    return units && !units->empty() && unitsAt(*units) == units->size();
}

void WindowsConverter::measure() {
    for (int lead = 0; lead < 0x100; ++lead) {
        if (IsDBCSLeadByteEx(codePage_, static_cast<BYTE>(lead)) == 0) continue;
        leads_.set(static_cast<std::size_t>(lead));
        for (int trail = 0; trail < 0x100; ++trail) {
            const std::array<char, 2> pair = {static_cast<char>(lead), static_cast<char>(trail)};
            const auto place = static_cast<std::size_t>(trail);
            if (!trails_[place]) trails_[place] = isCharacter(codePage_, {pair.data(), pair.size()});
        }
    }
}

CodePageConverter::Reading WindowsConverter::classify(std::string_view bytes) const {
    const bool leads = leads_[byteOf(bytes[0])];
    if (bytes.size() == 1) return leads ? Reading::needsMore : Reading::character;
    const bool pair = bytes.size() == 2 && leads && trails_[byteOf(bytes[1])];
    return pair ? Reading::character : Reading::broken;
}

/// Bytes of the character that a text begins with; 0 when its first byte is broken.
std::size_t WindowsConverter::characterAt(std::string_view text) const {
    for (std::size_t length = 1; length <= std::min(kLongestCharacter, text.size()); ++length) {
        switch (classify(text.substr(0, length))) {
            case Reading::character:
                return length;
            case Reading::broken:
                return 0;
            case Reading::needsMore:
                break;
        }
    }
    return 0;
}

/// Bytes of the broken part that a text begins with, for which one mark stands, as on other systems: the
/// first one with what follows it and can begin no character, or the whole beginning of a character that is
/// cut off.
std::size_t WindowsConverter::brokenAt(std::string_view text) const {
    std::size_t length = 1;
    while (length < text.size() && classify(text.substr(0, length)) == Reading::needsMore) ++length;
    if (classify(text.substr(0, length)) == Reading::needsMore) return length;
    std::size_t broken = 1;
    while (broken < length && classify(text.substr(broken, 1)) == Reading::broken) ++broken;
    return broken;
}

/// Bytes at the beginning of a text that are whole characters beyond ASCII, at most a piece.
std::size_t WindowsConverter::pieceBeyondAscii(std::string_view text) const {
    std::size_t length = 0;
    while (length < text.size() && length <= kPiece - kLongestCharacter && byteOf(text[length]) >= 0x80) {
        const std::size_t character = characterAt(text.substr(length));
        if (character == 0) break;
        length += character;
    }
    return length;
}

std::optional<std::u16string> WindowsConverter::read(std::string_view piece) const {
    return convert(codePage_, piece);
}

std::string WindowsConverter::write(std::u16string_view piece) const {
    return writeBySystem(codePage_, piece);
}

/// False as soon as there is something unreadable that stops.
bool WindowsConverter::append(std::u16string& result, std::string_view text, Unreadable unreadable) const {
    while (!text.empty()) {
        const std::size_t ascii = asciiPrefix(text);
        result.append(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(ascii));
        text.remove_prefix(ascii);
        const std::string_view piece = text.substr(0, pieceBeyondAscii(text));
        const auto units = read(piece);
        const bool broken = piece.empty() && !text.empty();
        if (unreadable == Unreadable::stops && (!units || broken)) return false;
        if (units) {
            result += *units;
        } else {
            appendEach(result, piece);
        }
        if (broken) result.push_back(kUnreadable);
        text.remove_prefix(broken ? brokenAt(text) : piece.size());
    }
    return true;
}

void WindowsConverter::appendEach(std::u16string& result, std::string_view piece) const {
    while (!piece.empty()) {
        const std::string_view character = piece.substr(0, characterAt(piece));
        result += read(character).value_or(std::u16string(1, kUnreadable));
        piece.remove_prefix(character.size());
    }
}

std::u16string WindowsConverter::toUtf16(std::string_view text) const {
    std::u16string result;
    static_cast<void>(append(result, text, Unreadable::isReplaced));
    return result;
}

std::optional<std::u16string> WindowsConverter::toUtf16Strictly(std::string_view text) const {
    std::u16string result;
    if (!append(result, text, Unreadable::stops)) return std::nullopt;
    return result;
}

/// What does not read as it was is not in the set, whatever the system wrote.
std::string WindowsConverter::fromUtf16(std::u16string_view text) const {
    std::string result;
    while (!text.empty()) {
        const std::size_t ascii = asciiPrefixOf(text);
        for (const char16_t unit : text.substr(0, ascii)) result.push_back(static_cast<char>(unit));
        text.remove_prefix(ascii);
        const std::u16string_view piece = text.substr(0, unitsBeyondAscii(text));
        const std::string bytes = write(piece);
        if (toUtf16Strictly(bytes) == piece) {
            result += bytes;
        } else {
            appendEach(result, piece);
        }
        text.remove_prefix(piece.size());
    }
    return result;
}

void WindowsConverter::appendEach(std::string& result, std::u16string_view piece) const {
    while (!piece.empty()) {
        const std::u16string_view character = piece.substr(0, unitsAt(piece));
        const std::string bytes = write(character);
        result += toUtf16Strictly(bytes) == character ? bytes : "?";
        piece.remove_prefix(character.size());
    }
}

/// EUC-JP has characters of three bytes, those of JIS X 0212 behind 8F. The code page writes them without
/// that byte, and with an ASCII byte at their end.
class EucJpConverter final : public WindowsConverter {
  public:
    EucJpConverter() : WindowsConverter(kEucJpCodePage, nullptr) {}

    [[nodiscard]] Reading classify(std::string_view bytes) const override;

  protected:
    [[nodiscard]] std::optional<std::u16string> read(std::string_view piece) const override;
    [[nodiscard]] std::string write(std::u16string_view piece) const override;

  private:
    static constexpr unsigned char kKana = 0x8E;
    static constexpr unsigned char kThreeBytes = 0x8F;
    static constexpr unsigned char kHighBit = 0x80;
};

CodePageConverter::Reading EucJpConverter::classify(std::string_view bytes) const {
    const auto graphic = [](char c) { return byteOf(c) >= 0xA1 && byteOf(c) <= 0xFE; };
    const unsigned char first = byteOf(bytes[0]);
    const bool leads = first == kKana || first == kThreeBytes || graphic(bytes[0]);
    if (bytes.size() == 1) {
        if (leads) return Reading::needsMore;
        return first < 0xA0 ? Reading::character : Reading::broken;
    }
    if (!leads || !graphic(bytes[1])) return Reading::broken;
    if (first == kThreeBytes && bytes.size() == 2) return Reading::needsMore;
    if (first == kThreeBytes) {
        return bytes.size() == 3 && graphic(bytes[2]) ? Reading::character : Reading::broken;
    }
    const bool lacking = first == kKana && byteOf(bytes[1]) > 0xDF;
    return bytes.size() == 2 && !lacking ? Reading::character : Reading::broken;
}

std::optional<std::u16string> EucJpConverter::read(std::string_view piece) const {
    std::string bytes;
    while (!piece.empty()) {
        const unsigned char first = byteOf(piece[0]);
        if (first == kThreeBytes) {
            bytes.push_back(piece[1]);
            bytes.push_back(static_cast<char>(byteOf(piece[2]) & ~kHighBit));
            piece.remove_prefix(3);
            continue;
        }
        const std::size_t length = first == kKana || first > 0xA0 ? 2 : 1;
        bytes.append(piece.substr(0, length));
        piece.remove_prefix(length);
    }
    return convert(codePage(), bytes);
}

std::string EucJpConverter::write(std::u16string_view piece) const {
    const std::string bytes = writeBySystem(codePage(), piece);
    std::string result;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const bool leads = byteOf(bytes[at]) == kKana || byteOf(bytes[at]) > 0xA0;
        const bool pair = leads && at + 1 < bytes.size();
        const bool threeBytes = pair && byteOf(bytes[at + 1]) < kHighBit;
        if (threeBytes) result.push_back(static_cast<char>(kThreeBytes));
        result.push_back(bytes[at]);
        if (pair) result.push_back(static_cast<char>(byteOf(bytes[++at]) | kHighBit));
    }
    return result;
}

/// GB18030 has characters of four bytes, too, and the system's functions do not tell them apart by their
/// leads.
class Gb18030Converter final : public WindowsConverter {
  public:
    Gb18030Converter() : WindowsConverter(kGb18030CodePage, nullptr) {}

    [[nodiscard]] Reading classify(std::string_view bytes) const override;
};

CodePageConverter::Reading Gb18030Converter::classify(std::string_view bytes) const {
    const auto leads = [](char c) { return byteOf(c) >= 0x81 && byteOf(c) <= 0xFE; };
    const auto digit = [](char c) { return c >= '0' && c <= '9'; };
    const auto trails = [](char c) { return byteOf(c) >= 0x40 && c != 0x7F && byteOf(c) <= 0xFE; };
    if (bytes.size() == 1) return leads(bytes[0]) ? Reading::needsMore : Reading::character;
    if (!leads(bytes[0])) return Reading::broken;
    if (bytes.size() == 2 && trails(bytes[1])) return Reading::character;
    if (!digit(bytes[1])) return Reading::broken;
    if (bytes.size() == 2) return Reading::needsMore;
    if (!leads(bytes[2])) return Reading::broken;
    if (bytes.size() == 3) return Reading::needsMore;
    return bytes.size() == 4 && digit(bytes[3]) ? Reading::character : Reading::broken;
}

}  // namespace

std::unique_ptr<CodePageConverter> makeWindowsConverter(unsigned codePage) {
    CPINFO info{};
    if (IsValidCodePage(codePage) == 0 || GetCPInfo(codePage, &info) == 0) return nullptr;
    if (codePage == CP_UTF8 || !readsAscii(codePage)) return nullptr;
    if (codePage == kGb18030CodePage) return std::make_unique<Gb18030Converter>();
    if (codePage == kEucJpCodePage) return std::make_unique<EucJpConverter>();
    // Sets with shift states and the like have longer characters; a file cannot be read in them.
    if (info.MaxCharSize > 2) return nullptr;
    return std::make_unique<WindowsConverter>(codePage);
}

}  // namespace vexa
