#include "frontend/export/word/docx/docx_writer.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "backend/strings/dictionary.h"
#include "frontend/export/office/office_values.h"
#include "frontend/export/word/docx/docx_drawing.h"
#include "frontend/export/word/docx/docx_styles.h"
#include "frontend/export/word/docx/docx_table.h"
#include "frontend/export/word/docx/docx_text.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view wordSpace = "http://schemas.openxmlformats.org/wordprocessingml/2006/main";
constexpr const char* documentPart = "/word/document.xml";
/// Of the line of a head or foot to the edge of the paper, points.
constexpr double usualEdge = 35;
/// No entry of an archive is larger.
constexpr std::uint64_t mostBody = 0xFFFFFFFE;

std::string partBeginning(std::string_view root) {
    return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"")
        .append(" standalone=\"yes\"?>\n<w:")
        .append(root)
        .append(" xmlns:w=\"")
        .append(wordSpace)
        .append("\"");
}

std::string contentType(std::string_view part) {
    return officeContentType("wordprocessingml." + std::string(part) + "+xml");
}

/// A field with what it shows until it is computed.
void appendField(std::string& xml, std::string_view instruction, std::string_view shown) {
    xml.append("<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText xml:space=\"preserve\"> ");
    xml.append(instruction).append(" </w:instrText></w:r>");
    xml.append("<w:r><w:fldChar w:fldCharType=\"separate\"/></w:r><w:r><w:t>").append(shown);
    xml.append("</w:t></w:r><w:r><w:fldChar w:fldCharType=\"end\"/></w:r>");
}

void appendMeasure(std::string& xml, std::string_view name, double points) {
    xml.append(" w:").append(name).append("=\"").append(std::to_string(twipsOf(points))).append("\"");
}

}  // namespace

DocxWriter::DocxWriter(ByteSink sink, std::string title, const std::string& language, const WordPage& page)
    : package_(std::move(sink), {std::move(title), language}, documentPart),
      language_(officeLanguage(language)),
      page_(page) {
    body_ = partBeginning("document");
    body_ += std::string(" xmlns:r=\"").append(officeRelationsSpace).append("\"");
    body_ += drawingSpaces();
    body_ += "><w:body>";
    package_.relate(documentPart, "styles", "/word/styles.xml");
    package_.relate(documentPart, "settings", "/word/settings.xml");
    addFooter();
}

void DocxWriter::begin(const std::vector<WordParagraph>& head) { setHead(head); }

void DocxWriter::beginSection(const std::vector<WordParagraph>& head) {
    // What a section is stands in its last paragraph.
    std::string section;
    appendSection(section);
    body_.insert(propertiesEnd_, section);
    setHead(head);
}

void DocxWriter::setHead(const std::vector<WordParagraph>& head) {
    if (head.empty()) return;
    const std::string part = "/word/header" + std::to_string(++heads_) + ".xml";
    headId_ = package_.relate(documentPart, "header", part);
    std::string xml = partBeginning("hdr") + ">";
    for (const WordParagraph& line : head) {
        const bool isTurned = isRightToLeft(line);
        xml += "<w:p><w:pPr><w:pStyle w:val=\"Header\"/>";
        if (line.own.background) appendShading(xml, *line.own.background);
        xml += isTurned ? "<w:bidi/></w:pPr>" : "</w:pPr>";
        appendRuns(xml, line, isTurned);
        xml += "</w:p>";
    }
    static_cast<void>(package_.add(part, contentType("header"), xml + "</w:hdr>"));
}

void DocxWriter::addFooter() {
    footId_ = package_.relate(documentPart, "footer", "/word/footer1.xml");
    std::string xml = partBeginning("ftr") + "><w:p><w:pPr><w:pStyle w:val=\"Footer\"/></w:pPr>";
    appendField(xml, "PAGE", "1");
    static_cast<void>(package_.add("/word/footer1.xml", contentType("footer"), xml + "</w:p></w:ftr>"));
}

void DocxWriter::addSettings() {
    std::string xml = partBeginning("settings");
    xml += "><w:zoom w:percent=\"100\"/><w:defaultTabStop w:val=\"708\"/>";
    xml += "<w:characterSpacingControl w:val=\"doNotCompress\"/>";
    // Only the reader's program knows on which pages the headings come to stand: it is asked to fill that in.
    if (hasContents_) xml += "<w:updateFields w:val=\"true\"/>";
    xml +=
        "<w:compat><w:compatSetting "
        "w:name=\"compatibilityMode\" w:uri=\"http://schemas.microsoft.com/office/word\" w:val=\"15\"/>"
        "</w:compat><w:themeFontLang w:val=\"";
    appendXmlValue(xml, language_, XmlEscapes::replacing);
    static_cast<void>(package_.add("/word/settings.xml", contentType("settings"), xml + "\"/></w:settings>"));
}

void DocxWriter::appendSection(std::string& xml) {
    xml += "<w:sectPr>";
    if (!headId_.empty())
        xml.append("<w:headerReference w:type=\"default\" r:id=\"").append(headId_).append("\"/>");
    xml.append("<w:footerReference w:type=\"default\" r:id=\"").append(footId_).append("\"/>");
    if (sections_++ > 0) xml += "<w:type w:val=\"nextPage\"/>";
    xml += "<w:pgSz";
    appendMeasure(xml, "w", page_.paper.width);
    appendMeasure(xml, "h", page_.paper.height);
    if (page_.isLandscape()) xml += " w:orient=\"landscape\"";
    xml += "/><w:pgMar";
    const Margins& margins = page_.margins;
    appendMeasure(xml, "top", margins.top);
    appendMeasure(xml, "right", margins.right);
    appendMeasure(xml, "bottom", margins.bottom);
    appendMeasure(xml, "left", margins.left);
    appendMeasure(xml, "header", std::min(usualEdge, margins.top / 2));
    appendMeasure(xml, "footer", std::min(usualEdge, margins.bottom / 2));
    xml += " w:gutter=\"0\"/></w:sectPr>";
}

void DocxWriter::openParagraph(const WordParagraph& paragraph, bool isTurned) {
    passOn(body_);
    body_ += "<w:p><w:pPr>";
    const std::string style = styleIdOf(paragraph.role, paragraph.level);
    if (style != "Normal") body_.append("<w:pStyle w:val=\"").append(style).append("\"/>");
    if (paragraph.keepsWithNext) body_ += "<w:keepNext/>";
    if (paragraph.breaksPage) body_ += "<w:pageBreakBefore/>";
    if (paragraph.own.background) appendShading(body_, *paragraph.own.background);
    if (isTurned) body_ += "<w:bidi/>";
    if (paragraph.role == WordRole::notes && paragraph.level > 0)
        body_.append("<w:ind w:left=\"").append(std::to_string(paragraph.level * 240)).append("\"/>");
    if (const std::string_view align = justification(paragraph.align); !align.empty())
        body_.append("<w:jc w:val=\"").append(align).append("\"/>");
    propertiesEnd_ = body_.size();
    body_ += "</w:pPr>";
}

void DocxWriter::appendRuns(std::string& xml, const WordParagraph& paragraph, bool isTurned) const {
    for (const WordRun& run : paragraph.runs) {
        appendRun(xml, run.text, runProperties(paragraph.own, run.bold, run.raised, isTurned));
    }
}

void DocxWriter::paragraph(const WordParagraph& paragraph) {
    const bool isTurned = isRightToLeft(paragraph);
    openParagraph(paragraph, isTurned);
    const std::string id = std::to_string(bookmarks_);
    if (paragraph.bookmark != 0) {
        ++bookmarks_;
        body_.append("<w:bookmarkStart w:id=\"").append(id).append("\" w:name=\"");
        body_.append(bookmarkName(paragraph.bookmark)).append("\"/>");
    }
    appendRuns(body_, paragraph, isTurned);
    if (paragraph.bookmark != 0) body_.append("<w:bookmarkEnd w:id=\"").append(id).append("\"/>");
    body_ += "</w:p>";
}

void DocxWriter::contents(const std::vector<WordEntry>& entries) {
    hasContents_ = true;
    body_ +=
        "<w:sdt><w:sdtPr><w:docPartObj><w:docPartGallery w:val=\"Table of Contents\"/><w:docPartUnique/>"
        "</w:docPartObj></w:sdtPr><w:sdtContent><w:p><w:pPr><w:pStyle w:val=\"TOCHeading\"/></w:pPr>";
    appendRun(body_, translated("Contents"_text.key()), {});
    body_ += "</w:p>";
    bool isFirst = true;
    for (const WordEntry& entry : entries) {
        const bool isTurned = isRightToLeft(entry.text);
        body_.append("<w:p><w:pPr><w:pStyle w:val=\"TOC").append(std::to_string(entry.level));
        body_.append(isTurned ? "\"/><w:bidi/></w:pPr>" : "\"/></w:pPr>");
        if (std::exchange(isFirst, false)) {
            body_ +=
                "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText xml:space=\"preserve\"> "
                "TOC \\o \"1-3\" \\h \\z \\u </w:instrText></w:r><w:r><w:fldChar "
                "w:fldCharType=\"separate\"/></w:r>";
        }
        body_.append("<w:hyperlink w:anchor=\"").append(bookmarkName(entry.bookmark));
        body_ += "\" w:history=\"1\">";
        appendRun(body_, entry.text, isTurned ? "<w:rtl/>" : "");
        body_ += "</w:hyperlink>";
        if (&entry == &entries.back()) body_ += "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>";
        body_ += "</w:p>";
    }
    body_ += "</w:sdtContent></w:sdt>";
}

void DocxWriter::table(const TablePart& part) {
    // A paragraph comes before a section ends, so that the last one is never taken away.
    appendDocxTable(body_, part, styles_, [this](std::string& xml) { passOn(xml); });
}

/// What failed is the result at the end.
void DocxWriter::passOn(std::string& xml) {
    if (xml.size() < PackedText::pieceBytes) return;
    if (written_ == nullptr) written_ = std::make_unique<DeflateStream>(mostBody);
    static_cast<void>(written_->write(xml));
    xml.clear();
}

PackageResult DocxWriter::addBody() {
    if (written_ == nullptr) {
        return package_.add(documentPart, contentType("document.main"), std::move(body_));
    }
    ZipEntry entry;
    std::string packed;
    PackageResult result = written_->write(body_);
    if (result) result = written_->finish(entry, packed);
    if (!result) return result;
    return package_.addPacked(documentPart, contentType("document.main"), std::move(entry),
                              std::move(packed));
}

void DocxWriter::picture(const WordParagraph& place, const WordPicture& picture) {
    openParagraph(place, false);
    DocxDrawing drawing;
    drawing.number = ++pictures_;
    drawing.bitmap = package_.relate(documentPart, "image", package_.addPicture(picture.picture.png, "png"));
    if (!picture.picture.svg.empty()) {
        drawing.vector =
            package_.relate(documentPart, "image", package_.addPicture(picture.picture.svg, "svg"));
    }
    body_ += "<w:r>";
    appendDrawing(body_, picture, drawing);
    body_ += "</w:r></w:p>";
}

PackageResult DocxWriter::finish() {
    appendSection(body_);
    body_ += "</w:body></w:document>";
    addSettings();
    static_cast<void>(package_.add("/word/styles.xml", contentType("styles"),
                                   docxStyles(styles_, language_, twipsOf(page_.textWidth()))));
    PackageResult result = addBody();
    return result ? package_.finish() : result;
}

}  // namespace vexa::frontend
