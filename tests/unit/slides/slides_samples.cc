#include "tests/unit/slides/slides_samples.h"

#include <gtest/gtest.h>

#include <cstring>

#include "frontend/package/zip_reader.h"
#include "tests/unit/export/export_samples.h"

namespace vexa::frontend::test {

namespace {

std::string textOf(const pugi::xml_node& body) {
    std::string text;
    for (const pugi::xml_node paragraph : body.children("a:p")) {
        if (!text.empty()) text += '\n';
        for (const pugi::xml_node run : paragraph.children()) {
            if (std::strcmp(run.name(), "a:br") == 0) text += '\n';
            text += run.child("a:t").text().get();
        }
    }
    return text;
}

std::string cellText(const pugi::xml_node& cell) {
    if (cell.attribute("vMerge").as_bool()) return "^";
    return cell.attribute("hMerge").as_bool() ? ">" : textOf(cell.child("a:txBody"));
}

std::string_view placeholderOf(const pugi::xml_node& shape) {
    const pugi::xml_node found = shape.child("p:nvSpPr").child("p:nvPr").child("p:ph");
    return found ? found.attribute("type").as_string("obj") : "";
}

}  // namespace

Presentation::Presentation(const std::string& items, PptExport request) {
    const ExportFolder folder;
    ViewerDocument document;
    document.setName("March & April");
    fill(document, items);
    ExportRequest asked;
    asked.ppt = std::move(request);
    asked.ppt->file = folder.file("a.pptx");
    outcome_ = exportDocument(document, asked, {});
    EXPECT_TRUE(outcome_.response.success) << outcome_.reason;
    bytes_ = folder.read("a.pptx");
}

std::string Presentation::part(const std::string& name) const {
    ZipReader reader;
    EXPECT_TRUE(reader.open(bytes_));
    std::string content;
    const std::optional<std::size_t> place = reader.find(name);
    return place && reader.read(*place, content) ? content : "(none)";
}

std::size_t Presentation::slides() const {
    std::size_t count = 0;
    while (part("ppt/slides/slide" + std::to_string(count + 1) + ".xml") != "(none)") ++count;
    return count;
}

const pugi::xml_document& Presentation::slide(std::size_t number) const {
    while (parsed_.size() < number) {
        const std::string xml = part("ppt/slides/slide" + std::to_string(parsed_.size() + 1) + ".xml");
        EXPECT_TRUE(parsed_.emplace_back().load_buffer(xml.data(), xml.size(), pugi::parse_full));
    }
    return parsed_[number - 1];
}

std::string Presentation::title(std::size_t number) const {
    for (const pugi::xpath_node each : slide(number).select_nodes("//p:sp")) {
        if (placeholderOf(each.node()) == "title") return textOf(each.node().child("p:txBody"));
    }
    return "(none)";
}

std::string Presentation::content(std::size_t number) const {
    std::string text;
    const pugi::xml_node tree = slide(number).child("p:sld").child("p:cSld").child("p:spTree");
    for (const pugi::xml_node shape : tree.children()) {
        const std::string_view placeholder = placeholderOf(shape);
        const bool isText = placeholder.empty() || placeholder == "obj";
        if (std::strcmp(shape.name(), "p:sp") == 0 && isText) text += textOf(shape.child("p:txBody")) + "\n";
        if (std::strcmp(shape.name(), "p:pic") == 0) {
            text += std::string("[") + shape.child("p:nvPicPr").child("p:cNvPr").attribute("descr").value() +
                    "]\n";
        }
        for (const pugi::xpath_node row : shape.select_nodes("./a:graphic//a:tr")) {
            std::string line;
            for (const pugi::xml_node cell : row.node().children("a:tc")) line += "|" + cellText(cell);
            text += line.substr(1) + "\n";
        }
    }
    return text;
}

std::string Presentation::footer(std::size_t number) const {
    for (const pugi::xpath_node each : slide(number).select_nodes("//p:sp")) {
        if (placeholderOf(each.node()) == "ftr") return textOf(each.node().child("p:txBody"));
    }
    return "(none)";
}

std::string Presentation::notes(std::size_t number) const {
    const std::string xml = part("ppt/notesSlides/notesSlide" + std::to_string(number) + ".xml");
    pugi::xml_document page;
    if (xml == "(none)" || !page.load_buffer(xml.data(), xml.size())) return "(none)";
    return textOf(page.select_node("//p:txBody").node());
}

std::string Presentation::attribute(std::size_t number, const char* path, const char* name) const {
    return slide(number).select_node(path).node().attribute(name).as_string("(none)");
}

std::string numbers(const std::string& label, int rows, int columns, const std::string& more) {
    std::string text = R"({"type":"table","label":")" + label + R"(","title":")" + label +
                       R"(","rows":[{"label":"Row","categories":[)";
    for (int i = 0; i < rows; ++i) text += (i == 0 ? "\"r" : ",\"r") + std::to_string(i + 1) + "\"";
    text += R"(]}],"columns":[{"label":"Column","labelHidden":true,"categories":[)";
    for (int i = 0; i < columns; ++i) text += (i == 0 ? "\"c" : ",\"c") + std::to_string(i + 1) + "\"";
    text += R"(]}],"cells":[)";
    for (int i = 0; i < rows * columns; ++i) text += (i == 0 ? "" : ",") + std::to_string(i + 1);
    return text + "]" + (more.empty() ? "" : ",") + more + "}";
}

}  // namespace vexa::frontend::test
