#include "frontend/export/word/rtf/rtf_text.h"

#include <algorithm>
#include <array>
#include <utility>

#include "backend/text/utf8.h"
#include "frontend/export/font_widths.h"
#include "frontend/export/word/text_styles.h"

namespace vexa::frontend {

namespace {

using tables::Color;

/// A unit of UTF-16 as the number that the format has for it, and what old readers show.
void appendUnit(std::string& rtf, std::uint32_t unit) {
    appendWord(rtf, "u", static_cast<std::int16_t>(static_cast<std::uint16_t>(unit)));
    rtf += '?';
}

void appendCharacter(std::string& rtf, char32_t code) {
    if (code > 0xFFFF) {
        const std::uint32_t rest = code - 0x10000;
        appendUnit(rtf, 0xD800 + (rest >> 10U));
        appendUnit(rtf, 0xDC00 + (rest & 0x3FFU));
    } else {
        appendUnit(rtf, code);
    }
}

bool isPlain(char each) { return each >= ' ' && each < 0x7F && each != '\\' && each != '{' && each != '}'; }

std::string_view familyWord(std::string_view font) {
    const std::string_view kind = genericFamily(font);
    return kind == "serif" ? "froman" : kind == "monospace" ? "fmodern" : "fswiss";
}

}  // namespace

void appendWord(std::string& rtf, std::string_view word, std::int64_t number) {
    rtf.append("\\").append(word).append(std::to_string(number));
}

void appendRtfText(std::string& rtf, std::string_view text) {
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size() && isPlain(text[plain])) ++plain;
        rtf.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) return;
        const Utf8Character character = decodeUtf8(text);
        std::size_t length = character.length;
        if (character.code == '\\' || character.code == '{' || character.code == '}') {
            rtf.append("\\").append(text.substr(0, 1));
        } else if (character.code == '\t') {
            rtf += "\\tab ";
        } else if (character.code == '\n' || character.code == '\r') {
            rtf += "\\line ";
            if (text.starts_with("\r\n")) length = 2;
        } else if (character.code < ' ' || character.code == 0x7F) {
            appendCharacter(rtf, kReplacementCharacter);
        } else {
            appendCharacter(rtf, character.code);
        }
        text.remove_prefix(length);
    }
}

std::string turnedWords(std::string_view words) {
    std::string rtf = "\\rtlch\\fcs1";
    while (words.size() > 1) {
        const std::size_t end = std::min(words.find('\\', 1), words.size());
        const std::string_view word = words.substr(1, end - 1);
        const std::string_view name = word.substr(0, word.find_first_of("-0123456789 "));
        if (name == "b" || name == "i" || name == "f" || name == "fs") rtf.append("\\a").append(word);
        words.remove_prefix(end);
    }
    return rtf;
}

RtfTables::RtfTables() {
    static_cast<void>(font("sans-serif"));
    static_cast<void>(color(Color{}));
}

std::size_t RtfTables::font(std::string_view family) {
    const std::string name = wordFont(family);
    const auto [found, isNew] = fontNumbers_.try_emplace(name, fonts_.size());
    if (isNew) fonts_.push_back(name);
    return found->second;
}

std::size_t RtfTables::color(Color color) {
    // The first one is the reader's own.
    const auto [found, isNew] = colorNumbers_.try_emplace(color.rgb, colors_.size() + 1);
    if (isNew) colors_.push_back(color);
    return found->second;
}

std::string RtfTables::text() const {
    std::string rtf = "{\\fonttbl";
    for (std::size_t i = 0; i < fonts_.size(); ++i) {
        appendWord(rtf += "{", "f", static_cast<std::int64_t>(i));
        rtf.append("\\").append(familyWord(fonts_[i])).append("\\fcharset0 ");
        std::string name;
        for (const char each : fonts_[i]) {
            if (each != ';') name += each;
        }
        appendRtfText(rtf, name);
        rtf += ";}";
    }
    rtf += "}\n{\\colortbl;";
    for (const Color color : colors_) {
        appendWord(rtf, "red", color.rgb >> 16U & 0xFFU);
        appendWord(rtf, "green", color.rgb >> 8U & 0xFFU);
        appendWord(rtf, "blue", color.rgb & 0xFFU);
        rtf += ';';
    }
    return rtf + "}\n";
}

int languageNumber(std::string_view language) {
    constexpr int none = 1024;
    constexpr std::array<std::pair<std::string_view, int>, 13> numbers{{{"de-DE", 1031},
                                                                        {"en-GB", 2057},
                                                                        {"en-US", 1033},
                                                                        {"es-ES", 3082},
                                                                        {"fr-FR", 1036},
                                                                        {"it-IT", 1040},
                                                                        {"ja-JP", 1041},
                                                                        {"ko-KR", 1042},
                                                                        {"pl-PL", 1045},
                                                                        {"pt-BR", 1046},
                                                                        {"ru-RU", 1049},
                                                                        {"zh-CN", 2052},
                                                                        {"zh-TW", 1028}}};
    for (const auto& [tag, number] : numbers) {
        if (tag == language) return number;
    }
    return none;
}

}  // namespace vexa::frontend
