#include "tests/unit/import/import_samples.h"

#include <gtest/gtest.h>

#include "backend/tables/formats/number_text.h"
#include "frontend/document/compared_text.h"
#include "frontend/import/results_reader.h"
#include "frontend/import/results_writer.h"
#include "frontend/package/deflate.h"

namespace vexa::frontend {

FewLooks::FewLooks() {
    tables::TableLook look = *tables::plainLook();
    look.name = "banded";
    look.banding.rows = 1;
    banded_ = std::make_shared<const tables::TableLook>(look);
}

ReadLook FewLooks::find(std::string_view name) {
    if (comparedText(name) == comparedText("banded")) return {banded_, ""};
    return {nullptr, "There is no look " + std::string(name) + "."};
}

ImportSurroundings::ImportSurroundings() {
    EXPECT_TRUE(words.open(VEXA_SOURCE_FOLDER "/stringtables/statistic-roles.xml"));
}

Outline resultsOf(const std::string& json) {
    ImportSurroundings surroundings;
    Imported imported;
    ImportProblem problem;
    const bool isRead = readResults(json, "a.json", surroundings.context, imported, problem);
    EXPECT_TRUE(isRead) << problem.shown();
    return isRead ? imported.outline : Outline();
}

std::string refusalOf(const std::string& json) {
    ImportSurroundings surroundings;
    Imported imported;
    ImportProblem problem;
    return readResults(json, "a.json", surroundings.context, imported, problem) ? std::string()
                                                                                : problem.shown();
}

std::string printed(const Outline& outline, const std::string& name) {
    return writeResults(outline, name, ImportSurroundings().words);
}

const Item& itemAt(const Outline& outline, std::size_t index) {
    return outline.find(outline.roots().at(index))->item;
}

const tables::Table& tableAt(const Outline& outline, std::size_t index) {
    return std::get<TableContent>(itemAt(outline, index).content).table;
}

std::vector<std::string> labelsOf(const tables::TableDimension& dimension) {
    std::vector<std::string> labels;
    for (const tables::TableCategory& category : dimension.categories) {
        std::string label = category.label;
        for (auto group = category.group; group != tables::noGroup; group = dimension.groups[group].parent) {
            label.insert(0, dimension.groups[group].label + '/');
        }
        labels.push_back(label);
    }
    return labels;
}

std::vector<std::string> cellsOf(const tables::TableData& data) {
    std::vector<std::string> cells(data.placeCount());
    data.forEachCell([&](tables::Place place, const tables::TableCell& cell) {
        const bool isText = cell.kind == tables::CellKind::text;
        cells[place] =
            isText ? "'" + std::string(data.text(cell)) + "'" : tables::numberText(cell.number, {});
    });
    return cells;
}

std::string samplePng(unsigned width, unsigned height) {
    const auto number = [](unsigned value) {
        std::string bytes;
        for (const unsigned shift : {24U, 16U, 8U, 0U}) bytes += static_cast<char>(value >> shift & 0xFFU);
        return bytes;
    };
    const std::string header = number(width) + number(height) + std::string("\x08\x00\x00\x00\x00", 5);
    const auto chunk = [&](const std::string& name, const std::string& content) {
        return number(static_cast<unsigned>(content.size())) + name + content + number(crcOf(name + content));
    };
    return "\x89PNG\r\n\x1a\n" + chunk("IHDR", header) + chunk("IDAT", "") + chunk("IEND", "");
}

}  // namespace vexa::frontend
