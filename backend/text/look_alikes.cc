#include "backend/text/look_alikes.h"

#include <algorithm>
#include <iterator>

namespace vexa {

namespace {

constexpr std::string_view kBlank = " ";
constexpr std::string_view kQuote = "'";
constexpr std::string_view kDoubleQuote = "\"";
constexpr std::string_view kDash = "-";
constexpr std::string_view kNothing;

/// In ascending order.
constexpr LookAlike kLookAlikes[] = {
    {0x00A0, "NO-BREAK SPACE", kBlank},
    {0x00AB, "LEFT-POINTING DOUBLE ANGLE QUOTATION MARK", kDoubleQuote},
    {0x00AD, "SOFT HYPHEN", kNothing},
    {0x00B4, "ACUTE ACCENT", kQuote},
    {0x00BB, "RIGHT-POINTING DOUBLE ANGLE QUOTATION MARK", kDoubleQuote},
    {0x1680, "OGHAM SPACE MARK", kBlank},
    {0x2000, "EN QUAD", kBlank},
    {0x2001, "EM QUAD", kBlank},
    {0x2002, "EN SPACE", kBlank},
    {0x2003, "EM SPACE", kBlank},
    {0x2004, "THREE-PER-EM SPACE", kBlank},
    {0x2005, "FOUR-PER-EM SPACE", kBlank},
    {0x2006, "SIX-PER-EM SPACE", kBlank},
    {0x2007, "FIGURE SPACE", kBlank},
    {0x2008, "PUNCTUATION SPACE", kBlank},
    {0x2009, "THIN SPACE", kBlank},
    {0x200A, "HAIR SPACE", kBlank},
    {0x200B, "ZERO WIDTH SPACE", kNothing},
    {0x200E, "LEFT-TO-RIGHT MARK", kNothing},
    {0x200F, "RIGHT-TO-LEFT MARK", kNothing},
    {0x2010, "HYPHEN", kDash},
    {0x2011, "NON-BREAKING HYPHEN", kDash},
    {0x2012, "FIGURE DASH", kDash},
    {0x2013, "EN DASH", kDash},
    {0x2014, "EM DASH", kDash},
    {0x2015, "HORIZONTAL BAR", kDash},
    {0x2018, "LEFT SINGLE QUOTATION MARK", kQuote},
    {0x2019, "RIGHT SINGLE QUOTATION MARK", kQuote},
    {0x201A, "SINGLE LOW-9 QUOTATION MARK", kQuote},
    {0x201B, "SINGLE HIGH-REVERSED-9 QUOTATION MARK", kQuote},
    {0x201C, "LEFT DOUBLE QUOTATION MARK", kDoubleQuote},
    {0x201D, "RIGHT DOUBLE QUOTATION MARK", kDoubleQuote},
    {0x201E, "DOUBLE LOW-9 QUOTATION MARK", kDoubleQuote},
    {0x201F, "DOUBLE HIGH-REVERSED-9 QUOTATION MARK", kDoubleQuote},
    {0x2028, "LINE SEPARATOR", kBlank},
    {0x2029, "PARAGRAPH SEPARATOR", kBlank},
    {0x202A, "LEFT-TO-RIGHT EMBEDDING", kNothing},
    {0x202B, "RIGHT-TO-LEFT EMBEDDING", kNothing},
    {0x202C, "POP DIRECTIONAL FORMATTING", kNothing},
    {0x202F, "NARROW NO-BREAK SPACE", kBlank},
    {0x2032, "PRIME", kQuote},
    {0x2033, "DOUBLE PRIME", kDoubleQuote},
    {0x2039, "SINGLE LEFT-POINTING ANGLE QUOTATION MARK", kQuote},
    {0x203A, "SINGLE RIGHT-POINTING ANGLE QUOTATION MARK", kQuote},
    {0x2044, "FRACTION SLASH", "/"},
    {0x205F, "MEDIUM MATHEMATICAL SPACE", kBlank},
    {0x2060, "WORD JOINER", kNothing},
    {0x2212, "MINUS SIGN", kDash},
    {0x2215, "DIVISION SLASH", "/"},
    {0x2217, "ASTERISK OPERATOR", "*"},
    {0x3000, "IDEOGRAPHIC SPACE", kBlank},
    {0x3001, "IDEOGRAPHIC COMMA", ","},
    {0x3002, "IDEOGRAPHIC FULL STOP", "."},
    {0xFEFF, "ZERO WIDTH NO-BREAK SPACE", kNothing},
    {0xFF02, "FULLWIDTH QUOTATION MARK", kDoubleQuote},
    {0xFF07, "FULLWIDTH APOSTROPHE", kQuote},
    {0xFF08, "FULLWIDTH LEFT PARENTHESIS", "("},
    {0xFF09, "FULLWIDTH RIGHT PARENTHESIS", ")"},
    {0xFF0A, "FULLWIDTH ASTERISK", "*"},
    {0xFF0B, "FULLWIDTH PLUS SIGN", "+"},
    {0xFF0C, "FULLWIDTH COMMA", ","},
    {0xFF0D, "FULLWIDTH HYPHEN-MINUS", kDash},
    {0xFF0E, "FULLWIDTH FULL STOP", "."},
    {0xFF0F, "FULLWIDTH SOLIDUS", "/"},
    {0xFF1A, "FULLWIDTH COLON", ":"},
    {0xFF1B, "FULLWIDTH SEMICOLON", ";"},
    {0xFF1C, "FULLWIDTH LESS-THAN SIGN", "<"},
    {0xFF1D, "FULLWIDTH EQUALS SIGN", "="},
    {0xFF1E, "FULLWIDTH GREATER-THAN SIGN", ">"},
    {0xFF3B, "FULLWIDTH LEFT SQUARE BRACKET", "["},
    {0xFF3D, "FULLWIDTH RIGHT SQUARE BRACKET", "]"},
};

}  // namespace

const LookAlike* findLookAlike(char32_t code) {
    const auto* const found =
        std::lower_bound(std::begin(kLookAlikes), std::end(kLookAlikes), code,
                         [](const LookAlike& each, char32_t wanted) { return each.code < wanted; });
    return found != std::end(kLookAlikes) && found->code == code ? found : nullptr;
}

}  // namespace vexa
