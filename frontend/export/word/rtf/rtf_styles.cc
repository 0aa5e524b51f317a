#include "frontend/export/word/rtf/rtf_styles.h"

#include <array>
#include <string_view>

#include "frontend/export/office/office_values.h"

namespace vexa::frontend {

namespace {

using tables::CellStyle;
using tables::HorizontalAlign;

constexpr std::size_t firstTableStyle = 100;

struct RoleStyle {
    int number;
    std::string_view name;  ///< those that word processors know have the names that these give them
    std::string_view words;
};

/// In the order of the roles; fonts and colours come behind.
constexpr std::array<RoleStyle, 13> roleStyles{
    {{0, "Normal", "\\sa120\\fs20"},
     {1, "heading", ""},
     {20, "Log", "\\sa0\\fs17"},
     {21, "Warning", "\\sa120\\li170\\fs20\\brdrl\\brdrs\\brdrw60\\brsp60"},
     {22, "Notes", "\\sa20\\fs18"},
     {0, "Normal", "\\sa120\\fs20"},
     {23, "Table Title", "\\keepn\\keep\\sb120\\sa60\\b\\fs20"},
     {24, "Table Layer", "\\keepn\\keep\\sa60\\fs18"},
     {25, "caption", "\\sb40\\sa40\\i\\fs18"},
     {26, "Table Footnote", "\\keep\\sa20\\fs16"},
     {27, "header", "\\sa0\\fs18"},
     {28, "Table Gap", "\\sa0\\sl-200\\slmult0\\fs16"},
     {29, "Picture", "\\sb120\\sa160\\fs20"}}};
constexpr int contentsHeadingNumber = 30;
constexpr int contentsNumber = 30;  // and the level
constexpr int footerNumber = 40;

void appendStyle(std::string& rtf, std::string_view words, std::string_view name) {
    rtf.append("{").append(words).append(" ").append(name).append(";}\n");
}

}  // namespace

std::string RtfStyles::role(WordRole role, std::size_t level) {
    const RoleStyle& style = roleStyles[static_cast<std::size_t>(role)];
    std::string rtf;
    if (role == WordRole::heading) {
        appendWord(rtf, "s", static_cast<std::int64_t>(level));
        appendWord(rtf, "outlinelevel", static_cast<std::int64_t>(level) - 1);
        rtf += level == 1 ? "\\keepn\\keep\\sb320\\sa100\\b" : "\\keepn\\keep\\sb240\\sa100\\b";
        if (level > 5) rtf += "\\i";
        appendWord(rtf, "fs", headingSizes[level - 1]);
        return rtf + "\\f0";
    }
    appendWord(rtf, "s", style.number);
    rtf += style.words;
    if (role == WordRole::warning)
        appendWord(rtf, "brdrcf", static_cast<std::int64_t>(tables_.color(tables::Color{0xB45309})));
    appendWord(rtf, "f",
               static_cast<std::int64_t>(tables_.font(role == WordRole::log ? "monospace" : "sans-serif")));
    if (role == WordRole::log)
        appendWord(rtf, "cbpat", static_cast<std::int64_t>(tables_.color(tables::Color{0xF5F5F5})));
    if (role == WordRole::pageTitle)
        appendWord(rtf, "cf", static_cast<std::int64_t>(tables_.color(tables::Color{0x555555})));
    if (role == WordRole::notes && level > 0) appendWord(rtf, "li", static_cast<std::int64_t>(level) * 240);
    return rtf;
}

std::string RtfStyles::contentsHeading() {
    std::string rtf;
    appendWord(rtf, "s", contentsHeadingNumber);
    return rtf + "\\keepn\\keep\\sb120\\sa80\\b\\f0\\fs28";
}

std::string RtfStyles::contentsEntry(std::size_t level) {
    std::string rtf;
    appendWord(rtf, "s", contentsNumber + static_cast<int>(level));
    appendWord(rtf, "li", (static_cast<std::int64_t>(level) - 1) * 240);
    appendWord(rtf += "\\tqr\\tldot", "tx", textWidth_);
    return rtf + "\\sa40\\f0\\fs20";
}

std::string RtfStyles::footer() {
    std::string rtf;
    appendWord(rtf, "s", footerNumber);
    rtf += "\\qc\\f0\\fs18";
    appendWord(rtf, "cf", static_cast<std::int64_t>(tables_.color(tables::Color{0x555555})));
    return rtf;
}

std::string RtfStyles::looks(const WordTextStyle& style) {
    std::string rtf;
    if (style.align == HorizontalAlign::right) rtf += "\\qr";
    if (style.align == HorizontalAlign::center) rtf += "\\qc";
    if (style.bold) rtf += "\\b";
    if (style.italic) rtf += "\\i";
    if (style.underline) rtf += "\\ul";
    appendWord(rtf, "f", static_cast<std::int64_t>(tables_.font(style.font)));
    appendWord(rtf, "fs", style.halfPoints);
    const std::size_t color = tables_.color(style.color);
    if (style.color.rgb != 0) appendWord(rtf, "cf", static_cast<std::int64_t>(color));
    return rtf;
}

std::string RtfStyles::tableText(const WordTextStyle& style) {
    const std::size_t number = styles_.find(style);
    std::string rtf;
    if (number < mostTableStyles) appendWord(rtf, "s", static_cast<std::int64_t>(firstTableStyle + number));
    return rtf + looks(style);
}

std::string RtfStyles::own(const CellStyle& style) {
    std::string rtf;
    if (style.background)
        appendWord(rtf, "cbpat", static_cast<std::int64_t>(tables_.color(*style.background)));
    if (!style.font.empty()) appendWord(rtf, "f", static_cast<std::int64_t>(tables_.font(style.font)));
    if (style.size) appendWord(rtf, "fs", halfPointsOf(*style.size));
    if (style.bold) rtf += *style.bold ? "\\b" : "\\b0";
    if (style.italic) rtf += *style.italic ? "\\i" : "\\i0";
    if (style.underline) rtf += *style.underline ? "\\ul" : "\\ulnone";
    if (style.color) appendWord(rtf, "cf", static_cast<std::int64_t>(tables_.color(*style.color)));
    return rtf;
}

std::string RtfStyles::sheet() {
    std::string rtf = "{\\stylesheet\n";
    appendStyle(rtf, role(WordRole::text, 0), "Normal");
    for (std::size_t level = 1; level <= deepestHeading; ++level) {
        appendStyle(rtf, role(WordRole::heading, level) + "\\sbasedon0\\snext0",
                    "heading " + std::to_string(level));
    }
    for (std::size_t i = 0; i < roleStyles.size(); ++i) {
        if (roleStyles[i].number < 20) continue;
        appendStyle(rtf, role(static_cast<WordRole>(i), 0) + "\\sbasedon0", roleStyles[i].name);
    }
    appendStyle(rtf, contentsHeading() + "\\sbasedon0\\snext0", "TOC Heading");
    for (std::size_t level = 1; level <= deepestEntry; ++level) {
        appendStyle(rtf, contentsEntry(level) + "\\sbasedon0\\snext0", "toc " + std::to_string(level));
    }
    appendStyle(rtf, footer() + "\\sbasedon0", "footer");
    std::size_t number = 0;
    for (const WordTextStyle& style : styles_.all()) {
        if (number == mostTableStyles) break;
        std::string words;
        appendWord(words, "s", static_cast<std::int64_t>(firstTableStyle + number++));
        appendStyle(rtf, words + looks(style) + "\\sbasedon0",
                    std::string("Table Text") + " " + std::to_string(number));
    }
    return rtf + "}\n";
}

}  // namespace vexa::frontend
