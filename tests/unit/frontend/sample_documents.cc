#include "tests/unit/frontend/sample_documents.h"

#include <gtest/gtest.h>

#include <utility>

namespace vexa::frontend {

ViewerItem makeItem(const std::string& label, ItemContent content) {
    ViewerItem item;
    item.label = label;
    item.command = "OUTPUT DISPLAY";
    item.content = std::move(content);
    return item;
}

std::shared_ptr<const PivotTable> makeTable(std::size_t rows, std::size_t columns) {
    auto table = std::make_shared<PivotTable>();
    table->title = "Table";
    table->subtype = "Sample";
    table->flag = true;
    table->minDataColumnWidth = 150;
    PivotDimension row{"Rows", 2, {0, 1, 1, 1}, {{"Outer", -1}, {"Inner", 0}}, {}};
    for (std::size_t i = 0; i < rows; ++i) {
        row.categories.push_back({"row " + std::to_string(i), i % 2 == 0 ? 1 : -1});
    }
    PivotDimension column{"", 1, {1, 1, 0, 0}, {}, {}};
    for (std::size_t i = 0; i < columns; ++i) {
        column.categories.push_back({"column " + std::to_string(i), -1});
    }
    table->dimensions = {row, column};
    table->extras.push_back({{"a note", "another"}, true, "red", "#ffffff"});
    for (std::size_t i = 0; i < rows * columns; ++i) {
        const double number = static_cast<double>(i) / 3;
        table->cells.push_back({i, std::to_string(number), number, i % 7 == 3 ? 1U : 0U});
    }
    return table;
}

std::unique_ptr<ViewerDocument> makeEveryKind() {
    auto document = std::make_unique<ViewerDocument>();
    document->setName("Ärger <&>\"'");
    const ItemId heading = document->add(makeItem("Output Display", HeadingContent{}));
    const ItemId inner = document->add(makeItem("Inner", HeadingContent{}), heading);
    document->add(makeItem("Warning", MessageContent{2, std::string("nul \0 bell \a del \x7f", 19)}),
                  heading);
    document->add(makeItem("Notes", NotesContent{{{1, "Label", " "}, {-2, "", "line\r\n\tend "}}}), inner);
    ViewerItem table = makeItem("Table", TableContent{makeTable(5, 4)});
    table.subtype = "Sample";
    document->add(table, inner);
    ViewerItem hidden = makeItem("hidden \\ \\41 \xff\xc0\x80 \xed\xa0\x80 \xef\xbf\xbf", TextContent{"   "});
    hidden.visible = false;
    document->add(hidden, inner);
    document->add(makeItem("Text", TextContent{"emoji \xf0\x9f\x98\x80 ]]> <!-- &amp; \xef\xbb\xbf"}));
    document->add(makeItem("Empty", TextContent{}));
    auto flat = flatten(*makeTable(2, 2));
    document->add(makeItem("Flat", FlatTableContent{std::make_shared<const FlatTable>(*flat)}));
    document->setModified(false);
    return document;
}

std::string saved(const ViewerDocument& document, const SaveOptions& options) {
    std::string bytes;
    const StoreResult result = writeDocument(document, options, gatherInto(bytes));
    EXPECT_EQ(result.problem, StoreProblem::none) << result.detail;
    return result ? bytes : std::string();
}

std::unique_ptr<ViewerDocument> opened(const std::string& bytes, const std::string& password) {
    std::unique_ptr<ViewerDocument> document;
    const StoreResult result = readDocument(bytes, password, document);
    EXPECT_EQ(result.problem, StoreProblem::none) << result.detail;
    return document;
}

StoreResult problemOf(const std::string& bytes, const std::string& password) {
    auto document = std::make_unique<ViewerDocument>();
    StoreResult result = readDocument(bytes, password, document);
    EXPECT_EQ(document == nullptr, !result) << "a document and a problem";
    return result;
}

}  // namespace vexa::frontend
