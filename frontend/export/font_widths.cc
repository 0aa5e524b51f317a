#include "frontend/export/font_widths.h"

#include <algorithm>
#include <string>

#include "backend/text/text_width.h"
#include "backend/text/utf8.h"

namespace vexa::frontend {

namespace {

using Widths = std::array<std::uint16_t, 95>;

// U+0020 to U+007E, in thousandths of the size. A test compares them with fonts of the system.
constexpr Widths sans{278,  278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278,
                      556,  556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556,
                      1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,
                      667,  778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556,
                      333,  556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556,
                      556,  556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584};
constexpr Widths sansBold{278, 333, 474, 556, 556, 889, 722, 238, 333, 333, 389, 584, 278, 333, 278, 278,
                          556, 556, 556, 556, 556, 556, 556, 556, 556, 556, 333, 333, 584, 584, 584, 611,
                          975, 722, 722, 722, 722, 667, 611, 778, 722, 278, 556, 722, 611, 833, 722, 778,
                          667, 778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 333, 278, 333, 584, 556,
                          333, 556, 611, 556, 611, 556, 333, 611, 611, 278, 278, 556, 278, 889, 611, 611,
                          611, 611, 389, 556, 333, 611, 556, 778, 556, 556, 500, 389, 280, 389, 584};
constexpr Widths serif{250, 333, 408, 500, 500, 833, 778, 180, 333, 333, 500, 564, 250, 333, 250, 278,
                       500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 278, 278, 564, 564, 564, 444,
                       921, 722, 667, 667, 722, 611, 556, 722, 722, 333, 389, 722, 611, 889, 722, 722,
                       556, 722, 667, 556, 611, 722, 722, 944, 722, 722, 611, 333, 278, 333, 469, 500,
                       333, 444, 500, 444, 500, 444, 333, 500, 500, 278, 278, 500, 278, 778, 500, 500,
                       500, 500, 333, 389, 278, 500, 500, 722, 500, 500, 444, 480, 200, 480, 541};
constexpr Widths serifBold{250, 333, 555, 500, 500, 1000, 833, 278,  333, 333, 500, 570, 250, 333, 250, 278,
                           500, 500, 500, 500, 500, 500,  500, 500,  500, 500, 333, 333, 570, 570, 570, 500,
                           930, 722, 667, 722, 722, 667,  611, 778,  778, 389, 500, 778, 667, 944, 722, 778,
                           611, 778, 722, 556, 667, 722,  722, 1000, 722, 722, 667, 333, 278, 333, 581, 500,
                           333, 500, 556, 444, 556, 444,  333, 500,  556, 278, 333, 556, 278, 833, 556, 500,
                           556, 556, 444, 389, 333, 556,  500, 722,  500, 500, 444, 394, 220, 394, 520};

constexpr Widths monospaced = [] {
    Widths widths{};
    for (std::uint16_t& each : widths) each = 600;
    return widths;
}();

/// The letters that U+00C0 to U+017F are as wide as: those that they are made of.
constexpr std::string_view baseLetters =
    "AAAAAAMCEEEEIIIIDNOOOOO+OUUUUYPbaaaaaamceeeeiiiidnooooo+ouuuuypy"
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlLlLlNnNnNnnNnOoOoOoMmRrRrRrSsSsSsSsTtTtTt"
    "UuUuUuUuUuUuWwYyYZzZzZzf";

/// A family whose letters are not as wide as those of its kind, in lower case and without
/// blanks.
struct KnownFamily {
    std::string_view name;
    std::string_view kind;
    double factor;
};
constexpr std::array knownFamilies{KnownFamily{"serif", "serif", 1},
                                   KnownFamily{"times", "serif", 1},
                                   KnownFamily{"timesnewroman", "serif", 1},
                                   KnownFamily{"liberationserif", "serif", 1},
                                   KnownFamily{"dejavuserif", "serif", 1.2},
                                   KnownFamily{"notoserif", "serif", 1.12},
                                   KnownFamily{"georgia", "serif", 1.1},
                                   KnownFamily{"cambria", "serif", 1.05},
                                   KnownFamily{"garamond", "serif", 0.95},
                                   KnownFamily{"palatinolinotype", "serif", 1.1},
                                   KnownFamily{"bookantiqua", "serif", 1.1},
                                   KnownFamily{"monospace", "monospace", 1},
                                   KnownFamily{"courier", "monospace", 1},
                                   KnownFamily{"couriernew", "monospace", 1},
                                   KnownFamily{"liberationmono", "monospace", 1},
                                   KnownFamily{"dejavusansmono", "monospace", 1.01},
                                   KnownFamily{"consolas", "monospace", 0.92},
                                   KnownFamily{"lucidaconsole", "monospace", 1.01},
                                   KnownFamily{"calibri", "sans-serif", 0.93},
                                   KnownFamily{"carlito", "sans-serif", 0.93},
                                   KnownFamily{"verdana", "sans-serif", 1.18},
                                   KnownFamily{"dejavusans", "sans-serif", 1.17},
                                   KnownFamily{"notosans", "sans-serif", 1.06},
                                   KnownFamily{"tahoma", "sans-serif", 1},
                                   KnownFamily{"segoeui", "sans-serif", 1},
                                   KnownFamily{"trebuchetms", "sans-serif", 1}};

KnownFamily familyOf(std::string_view family) {
    std::string name;
    for (const char each : family) {
        if (each != ' ') name += each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
    }
    for (const KnownFamily& known : knownFamilies) {
        if (known.name == name) return known;
    }
    return {"", "sans-serif", 1};
}

/// Letters beyond the tables, by their kind, in thousandths.
std::uint32_t otherLetter(char32_t code) {
    constexpr std::uint32_t capital = 720;
    constexpr std::uint32_t small = 570;
    if (code < 0x20 || code == 0x7F) return 0;
    if (code >= 0x370 && code < 0x3AC) return capital;
    if (code >= 0x3AC && code < 0x400) return small;
    if (code >= 0x400 && code < 0x430) return capital;
    if (code >= 0x430 && code < 0x530) return small;
    if (code == 0xA0 || (code >= 0x2000 && code <= 0x200A) || code == 0x202F) return 300;
    const std::size_t columns = characterWidth(code);
    return columns == 0 ? 0U : columns == 1 ? 620U : 1000U;
}

bool isLineEnd(char each) { return each == '\n' || each == '\r'; }

}  // namespace

std::string_view genericFamily(std::string_view family) { return familyOf(family).kind; }

FontWidths::FontWidths(std::string_view family, double size, bool bold) {
    const KnownFamily known = familyOf(family);
    if (known.kind == "monospace") {
        table_ = &monospaced;
    } else if (known.kind == "serif") {
        table_ = bold ? &serifBold : &serif;
    } else {
        table_ = bold ? &sansBold : &sans;
    }
    scale_ = size * known.factor / 1000;
}

std::uint32_t FontWidths::letter(std::string_view text, std::size_t& index) const {
    const auto byte = static_cast<unsigned char>(text[index]);
    if (byte >= 0x20 && byte < 0x7F) {
        ++index;
        return (*table_)[byte - 0x20U];
    }
    const Utf8Character character = decodeUtf8(text.substr(index));
    index += character.length;
    if (character.code >= 0xC0 && character.code < 0x180) {
        return (*table_)[static_cast<unsigned char>(baseLetters[character.code - 0xC0]) - 0x20U];
    }
    return otherLetter(character.code);
}

double FontWidths::width(std::string_view text) const {
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < text.size();) sum += letter(text, i);
    return static_cast<double>(sum) * scale_;
}

TextExtent FontWidths::extent(std::string_view text) const {
    TextExtent extent;
    std::uint64_t line = 0;
    std::uint64_t word = 0;
    std::uint64_t widestLine = 0;
    std::uint64_t widestWord = 0;
    const auto endWord = [&] {
        widestWord = std::max(widestWord, word);
        word = 0;
    };
    for (std::size_t i = 0; i < text.size();) {
        const char each = text[i];
        if (isLineEnd(each)) {
            i += text.substr(i).starts_with("\r\n") ? 2U : 1U;
            endWord();
            widestLine = std::max(widestLine, line);
            line = 0;
            ++extent.lines;
            continue;
        }
        const std::size_t begin = i;
        const std::uint32_t letterWidth = letter(text, i);
        line += letterWidth;
        if (each == ' ') {
            endWord();
        } else if (i - begin >= 3 && letterWidth == 1000) {
            endWord();  // lines are broken beside ideographs
            widestWord = std::max<std::uint64_t>(widestWord, letterWidth);
        } else {
            word += letterWidth;
            if (each == '-') endWord();
        }
    }
    endWord();
    extent.width = static_cast<double>(std::max(widestLine, line)) * scale_;
    extent.word = static_cast<double>(widestWord) * scale_;
    return extent;
}

std::size_t FontWidths::linesIn(std::string_view text, double columnWidth) const {
    const double room = std::max(columnWidth / scale_, 1.0);
    std::size_t lines = 1;
    double line = 0;  // up to the last place where it may be broken
    double word = 0;  // behind that
    for (std::size_t i = 0; i < text.size();) {
        const char each = text[i];
        if (isLineEnd(each)) {
            i += text.substr(i).starts_with("\r\n") ? 2U : 1U;
            ++lines;
            line = word = 0;
            continue;
        }
        const std::size_t begin = i;
        word += letter(text, i);
        const bool mayBreak = each == ' ' || each == '-' || i - begin >= 3;
        if (line + word > room && each != ' ') {
            ++lines;
            if (line == 0) word = word > room ? word - room : word;
            line = 0;
        }
        if (mayBreak) {
            line += word;
            word = 0;
        }
    }
    return lines;
}

}  // namespace vexa::frontend
