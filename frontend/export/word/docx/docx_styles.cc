#include "frontend/export/word/docx/docx_styles.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "frontend/export/word/docx/docx_text.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {

namespace {

struct ParagraphStyle {
    std::string_view id;
    std::string_view name;  ///< those that word processors know have the names that these give them
    std::string_view base;
    std::string_view next;
    std::string_view paragraph;  ///< what stands in `w:pPr`
    std::string_view run;        ///< what stands in `w:rPr`
};

constexpr std::array paragraphStyles{
    ParagraphStyle{"Header", "header", "Normal", "", R"(<w:spacing w:after="0"/>)",
                   R"(<w:color w:val="555555"/><w:sz w:val="18"/><w:szCs w:val="18"/>)"},
    ParagraphStyle{"Footer", "footer", "Normal", "", R"(<w:spacing w:after="0"/><w:jc w:val="center"/>)",
                   R"(<w:color w:val="555555"/><w:sz w:val="18"/><w:szCs w:val="18"/>)"},
    ParagraphStyle{"Caption", "caption", "Normal", "Normal", R"(<w:spacing w:before="40" w:after="40"/>)",
                   R"(<w:i/><w:iCs/><w:sz w:val="18"/><w:szCs w:val="18"/>)"},
    ParagraphStyle{"TableTitle", "Table Title", "Normal", "Normal",
                   R"(<w:keepNext/><w:keepLines/><w:spacing w:before="120" w:after="60"/>)",
                   R"(<w:b/><w:bCs/>)"},
    ParagraphStyle{"TableLayer", "Table Layer", "Normal", "Normal",
                   R"(<w:keepNext/><w:keepLines/><w:spacing w:after="60"/>)",
                   R"(<w:sz w:val="18"/><w:szCs w:val="18"/>)"},
    ParagraphStyle{"TableText", "Table Text", "Normal", "", R"(<w:spacing w:after="0"/>)",
                   R"(<w:sz w:val="18"/><w:szCs w:val="18"/>)"},
    ParagraphStyle{"TableFootnote", "Table Footnote", "Normal", "",
                   R"(<w:keepLines/><w:spacing w:after="20"/>)", R"(<w:sz w:val="16"/><w:szCs w:val="16"/>)"},
    ParagraphStyle{"TableGap", "Table Gap", "Normal", "Normal",
                   R"(<w:spacing w:after="0" w:line="200" w:lineRule="exact"/>)",
                   R"(<w:sz w:val="16"/><w:szCs w:val="16"/>)"},
    ParagraphStyle{"Picture", "Picture", "Normal", "Normal", R"(<w:spacing w:before="120" w:after="160"/>)",
                   ""},
    ParagraphStyle{
        "Log", "Log", "Normal", "",
        R"(<w:shd w:val="clear" w:color="auto" w:fill="F5F5F5"/><w:spacing w:after="0"/>)",
        R"(<w:rFonts w:ascii="Courier New" w:hAnsi="Courier New" w:cs="Courier New"/><w:noProof/><w:sz w:val="17"/><w:szCs w:val="17"/>)"},
    ParagraphStyle{
        "Warning", "Warning", "Normal", "",
        R"(<w:pBdr><w:left w:val="single" w:sz="24" w:space="6" w:color="B45309"/></w:pBdr><w:ind w:left="170"/>)",
        ""},
    ParagraphStyle{"Notes", "Notes", "Normal", "", R"(<w:spacing w:after="20"/>)",
                   R"(<w:sz w:val="18"/><w:szCs w:val="18"/>)"},
    ParagraphStyle{"TOCHeading", "TOC Heading", "Normal", "Normal",
                   R"(<w:keepNext/><w:keepLines/><w:spacing w:before="120" w:after="80"/>)",
                   R"(<w:b/><w:bCs/><w:sz w:val="28"/><w:szCs w:val="28"/>)"},
};

void appendPart(std::string& xml, std::string_view element, std::string_view content) {
    if (content.empty()) return;
    xml.append("<w:").append(element).append(">").append(content).append("</w:").append(element).append(">");
}

void appendStyle(std::string& xml, const ParagraphStyle& style, bool isOwn) {
    xml += R"(<w:style w:type="paragraph")";
    if (isOwn) xml += R"( w:customStyle="1")";
    xml.append(R"( w:styleId=")").append(style.id).append(R"("><w:name w:val=")").append(style.name);
    xml.append(R"("/><w:basedOn w:val=")").append(style.base).append(R"("/>)");
    if (!style.next.empty()) xml.append(R"(<w:next w:val=")").append(style.next).append(R"("/>)");
    xml += "<w:qFormat/>";
    appendPart(xml, "pPr", style.paragraph);
    appendPart(xml, "rPr", style.run);
    xml += "</w:style>";
}

/// Word processors' own names begin in lower case, but for one.
bool isKnownName(std::string_view name) {
    return (name.front() >= 'a' && name.front() <= 'z') || name == "TOC Heading";
}

void appendHeadings(std::string& xml) {
    for (std::size_t i = 0; i < headingSizes.size(); ++i) {
        const std::string level = std::to_string(i + 1);
        const std::string size = std::to_string(headingSizes[i]);
        const std::string id = "Heading" + level;
        const std::string name = "heading " + level;
        const std::string before = i == 0 ? "320" : "240";
        const std::string paragraph = R"(<w:keepNext/><w:keepLines/><w:spacing w:before=")" + before +
                                      R"(" w:after="100"/><w:outlineLvl w:val=")" + std::to_string(i) +
                                      R"("/>)";
        std::string run = "<w:b/><w:bCs/>";
        if (i > 4) run += "<w:i/><w:iCs/>";
        run.append(R"(<w:sz w:val=")")
            .append(size)
            .append(R"("/><w:szCs w:val=")")
            .append(size)
            .append(R"("/>)");
        appendStyle(xml, {id, name, "Normal", "Normal", paragraph, run}, false);
    }
}

/// Entries of the contents, with a place for page numbers at the right margin.
void appendEntries(std::string& xml, std::int64_t textWidth) {
    for (std::size_t i = 0; i < deepestEntry; ++i) {
        const std::string level = std::to_string(i + 1);
        const std::string id = "TOC" + level;
        const std::string name = "toc " + level;
        const std::string paragraph =
            R"(<w:tabs><w:tab w:val="right" w:leader="dot" w:pos=")" + std::to_string(textWidth) +
            R"("/></w:tabs><w:spacing w:after="40"/><w:ind w:left=")" + std::to_string(i * 240) + R"("/>)";
        appendStyle(xml, {id, name, "Normal", "Normal", paragraph, ""}, false);
    }
}

void appendTableTexts(std::string& xml, const TextStyles& styles) {
    std::size_t number = 0;
    for (const WordTextStyle& style : styles.all()) {
        if (number == mostTableStyles) return;
        const std::string id = tableStyleId(number++);
        const std::string name = std::string("Table Text") + " " + std::to_string(number);
        std::string paragraph;
        if (style.align != tables::HorizontalAlign::left) {
            paragraph = R"(<w:jc w:val=")" + std::string(justification(style.align)) + R"("/>)";
        }
        appendStyle(xml, {id, name, "TableText", "", paragraph, runProperties(style)}, true);
    }
}

/// The families that programs take for scripts without small letters, by language.
std::string_view eastAsianFont(std::string_view language) {
    if (language.starts_with("ja")) return "MS Mincho";
    if (language.starts_with("ko")) return "Malgun Gothic";
    return language == "zh-TW" ? "PMingLiU" : "SimSun";
}

void appendDefaults(std::string& xml, const std::string& language) {
    std::string tag;
    appendXmlValue(tag, language, XmlEscapes::replacing);
    const bool isEastAsian = tag.starts_with("ja") || tag.starts_with("ko") || tag.starts_with("zh");
    xml += R"(<w:docDefaults><w:rPrDefault><w:rPr><w:rFonts w:ascii="Arial" w:hAnsi="Arial" w:eastAsia=")";
    xml.append(eastAsianFont(tag)).append(R"(" w:cs="Arial"/><w:sz w:val="20"/><w:szCs w:val="20"/>)");
    xml.append(R"(<w:lang w:val=")").append(tag).append(R"(" w:eastAsia=")");
    xml.append(isEastAsian ? tag : std::string("en-US"))
        .append(R"(" w:bidi="ar-SA"/></w:rPr></w:rPrDefault>)");
    xml += R"(<w:pPrDefault/></w:docDefaults>)";
}

}  // namespace

std::string docxStyles(const TextStyles& styles, const std::string& language, std::int64_t textWidth) {
    std::string xml = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
                      "\n"
                      R"(<w:styles xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main">)";
    appendDefaults(xml, language);
    xml +=
        R"(<w:style w:type="paragraph" w:default="1" w:styleId="Normal"><w:name w:val="Normal"/><w:qFormat/><w:pPr><w:spacing w:after="120"/></w:pPr></w:style>)"
        R"(<w:style w:type="character" w:default="1" w:styleId="DefaultParagraphFont"><w:name w:val="Default Paragraph Font"/><w:uiPriority w:val="1"/><w:semiHidden/></w:style>)"
        R"(<w:style w:type="table" w:default="1" w:styleId="TableNormal"><w:name w:val="Normal Table"/><w:uiPriority w:val="99"/><w:semiHidden/><w:tblPr><w:tblInd w:w="0" w:type="dxa"/><w:tblCellMar><w:top w:w="0" w:type="dxa"/><w:left w:w="108" w:type="dxa"/><w:bottom w:w="0" w:type="dxa"/><w:right w:w="108" w:type="dxa"/></w:tblCellMar></w:tblPr></w:style>)"
        R"(<w:style w:type="table" w:customStyle="1" w:styleId="PivotTable"><w:name w:val="Pivot Table"/><w:basedOn w:val="TableNormal"/><w:qFormat/><w:tblPr><w:tblCellMar><w:top w:w="20" w:type="dxa"/><w:left w:w="80" w:type="dxa"/><w:bottom w:w="20" w:type="dxa"/><w:right w:w="80" w:type="dxa"/></w:tblCellMar></w:tblPr></w:style>)";
    appendHeadings(xml);
    for (const ParagraphStyle& style : paragraphStyles) appendStyle(xml, style, !isKnownName(style.name));
    appendEntries(xml, textWidth);
    appendTableTexts(xml, styles);
    return xml + "</w:styles>";
}

}  // namespace vexa::frontend
