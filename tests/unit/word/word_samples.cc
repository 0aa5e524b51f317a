#include "tests/unit/word/word_samples.h"

#include <gtest/gtest.h>

#include <cstring>

#include "backend/text/character_set.h"
#include "frontend/package/zip_reader.h"
#include "tests/unit/export/export_samples.h"

namespace vexa::frontend::test {

namespace {

std::string textOf(const pugi::xml_node& paragraph) {
    std::string text;
    pugi::xpath_node_set nodes = paragraph.select_nodes(".//w:t | .//w:br | .//w:r/w:tab | .//wp:docPr");
    nodes.sort();
    for (const pugi::xpath_node each : nodes) {
        const char* const name = each.node().name();
        if (std::strcmp(name, "w:t") == 0) text += each.node().text().get();
        if (std::strcmp(name, "w:br") == 0) text += '/';
        if (std::strcmp(name, "w:tab") == 0) text += '\t';
        if (std::strcmp(name, "wp:docPr") == 0)
            text += std::string("[") + each.node().attribute("descr").value() + "]";
    }
    return text;
}

std::string rowOf(const pugi::xml_node& row) {
    std::string line = row.child("w:trPr").child("w:tblHeader") ? "#" : "";
    bool isFirst = true;
    for (const pugi::xml_node cell : row.children("w:tc")) {
        const pugi::xml_node properties = cell.child("w:tcPr");
        if (!isFirst) line += '|';
        isFirst = false;
        const pugi::xml_node merge = properties.child("w:vMerge");
        const bool goesOn = merge && merge.attribute("w:val").empty();
        line += goesOn ? "^" : textOf(cell.child("w:p"));
        for (int i = properties.child("w:gridSpan").attribute("w:val").as_int(1); i > 1; --i) line += "|>";
    }
    return line;
}

std::string paragraphOf(const pugi::xml_node& paragraph) {
    const pugi::xml_node properties = paragraph.child("w:pPr");
    std::string line = properties.child("w:pStyle").attribute("w:val").as_string("Normal");
    if (properties.child("w:pageBreakBefore")) line = "(page) " + line;
    if (const std::string text = textOf(paragraph); !text.empty()) line += ": " + text;
    if (properties.child("w:sectPr")) line += " (section ends)";
    return line;
}

}  // namespace

WordFile::WordFile(const std::string& items, DocExport request, const std::string& extension,
                   const std::string& language) {
    const ExportFolder folder;
    ViewerDocument document;
    document.setName("March & April");
    fill(document, items);
    ExportRequest asked;
    asked.doc = std::move(request);
    asked.doc->file = folder.file("a" + extension);
    ExportSurroundings surroundings;
    surroundings.language = language;
    outcome_ = exportDocument(document, asked, surroundings);
    EXPECT_TRUE(outcome_.response.success) << outcome_.reason;
    bytes_ = folder.read("a" + extension);
    if (!bytes_.starts_with("PK")) return;
    const std::string xml = part("word/document.xml");
    EXPECT_TRUE(document_.load_buffer(xml.data(), xml.size(), pugi::parse_full | pugi::parse_ws_pcdata));
}

std::string WordFile::part(const std::string& name) const {
    ZipReader reader;
    EXPECT_TRUE(reader.open(bytes_));
    std::string content;
    const std::optional<std::size_t> place = reader.find(name);
    return place && reader.read(*place, content) ? content : "(none)";
}

std::string WordFile::page() const {
    std::string text;
    for (const pugi::xml_node each : document_.child("w:document").child("w:body").children()) {
        const char* const name = each.name();
        if (std::strcmp(name, "w:p") == 0) text += paragraphOf(each) + "\n";
        for (const pugi::xml_node row : each.children("w:tr")) text += rowOf(row) + "\n";
        for (const pugi::xml_node entry : each.child("w:sdtContent").children("w:p"))
            text += paragraphOf(entry) + "\n";
    }
    return text;
}

std::string WordFile::attribute(const char* path, const char* name) const {
    return document_.select_node(path).node().attribute(name).as_string("(none)");
}

std::string WordFile::styleOf(const char* path) const {
    const std::string styles = part("word/styles.xml");
    const std::size_t begin = styles.find("w:styleId=\"" + attribute(path, "w:val") + "\"");
    return begin == std::string::npos ? "(none)"
                                      : styles.substr(begin, styles.find("</w:style>", begin) - begin);
}

std::size_t WordFile::count(const char* path) const { return document_.select_nodes(path).size(); }

std::string warned(const ExportOutcome& outcome, ExportWarning code) {
    std::string labels;
    for (const auto& each : outcome.response.warnings[static_cast<std::size_t>(code)])
        labels += toUtf8(each.second) + " ";
    return labels;
}

}  // namespace vexa::frontend::test
