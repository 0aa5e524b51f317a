#include "tests/unit/rendering/example_tables.h"

#include "backend/pivot/bp_procedure.h"
#include "tests/unit/pivot/collected_log.h"

namespace vexa {

namespace {

BpNumber count(double value) { return {value, BpProcedure::Count}; }

}  // namespace

BpString plain(std::string_view text) { return {text, 0}; }

tables::Table built(const std::string& title, const std::function<void(BpPivotTable&)>& fill) {
    const CollectedLog log;
    {
        BpProcedure procedure("Output Display", 2);
        BpPivotTable table = procedure.PivotTable(plain(title), plain(""), true);
        fill(table);
    }
    return log.all<TableFinished>().at(0).shown;
}

BpDimension dimension(BpPivotTable& table, const std::string& label, int axis) {
    return table.Dimension(plain(label), 2).Position(axis, 1, 1, 1);
}

tables::Table documents() {
    return built("Output Document", [](BpPivotTable& table) {
        table.Caption(plain("Output Document"));
        table.MinDataColumnWidth(150);
        table.MaxDataColumnWidth(300);
        BpDimension name = dimension(table, "Name", 0);
        name.Category(count(0)).Cell(plain("report"));
        name.Category(count(1)).Cell(plain("(unnamed)"));
        name.Category(count(2)).Cell(plain("analysis")).Note(plain("Active output document"));
    });
}

tables::Table comment() {
    return built("Comment", [](BpPivotTable& table) {
        table.Caption(plain("Comment"));
        table.HideTitle();
        table.MinDataColumnWidth(100);
        table.MaxDataColumnWidth(200);
        BpDimension lines = dimension(table, "Comment", 0);
        lines.Category(count(0)).Cell(plain("First run with the new weights")).Bold();
        lines.Category(count(1)).Cell(
            plain("The sample was drawn again on 5 March, after the frame was corrected."));
    });
}

tables::Table grouped() {
    return built("Cases", [](BpPivotTable& table) {
        table.Caption(plain("Weighted by frequency"));
        BpDimension region = dimension(table, "Region", 0);
        BpDimension sex = dimension(table, "Sex", 0);
        BpDimension time = dimension(table, "Time", 1);
        int value = 0;
        for (const std::string r : {"North", "South"}) {
            region.Category(plain(r));
            for (const std::string s : {"Female", "Male"}) {
                sex.Category(plain(s));
                BpGroup year = time.Group(plain("2025"), true, 2);
                for (const std::string q : {"Q1", "Q2"}) year.Category(plain(q)).Cell(count(value += 7));
                time.Category(plain("Total 2026")).Cell(count(value * 100)).Note(plain("Provisional"));
            }
        }
    });
}

tables::Table layered() {
    return built("Visits", [](BpPivotTable& table) {
        BpDimension country = dimension(table, "Country", 2);
        BpDimension kind = dimension(table, "Kind", 0);
        BpDimension measure = dimension(table, "Measure", 1);
        country.Category(plain("Norway"));
        kind.Category(plain("first"));
        measure.Category(plain("Count")).Cell(count(12));
        measure.Category(plain("Comment")).Cell(plain("complete")).Note(plain("Checked by hand"));
        kind.Category(plain("repeated"));
        measure.Category(plain("Count")).Cell(count(7)).Note(plain("Estimated"));
        country.Category(plain("Peru"));
        kind.Category(plain("first"));
        measure.Category(plain("Count"))
            .Cell(count(1005))
            .Note(plain("Estimated"))
            .Note(plain("Checked by hand"));
    });
}

tables::Table wideTexts() {
    return built("文字の幅", [](BpPivotTable& table) {
        BpDimension key = dimension(table, "Key", 0);
        BpDimension language = dimension(table, "Language", 1);
        const std::vector<std::vector<std::string>> texts = {{"open", "Öffnen", "開く", "e\xCC\x81largir"},
                                                             {"保存", "Speichern", "保存する", "sauver"}};
        for (const auto& text : texts) {
            key.Category(plain(text[0]));
            language.Category(plain("de")).Cell(plain(text[1]));
            language.Category(plain("ja")).Cell(plain(text[2]));
            language.Category(plain("fr")).Cell(plain(text[3]));
        }
    });
}

tables::Table longKeys() {
    return built("texts.xlf", [](BpPivotTable& table) {
        BpDimension key = dimension(table, "Key", 0);
        BpDimension language = dimension(table, "Language", 1);
        const std::pair<const char*, const char*> texts[] = {
            {"Contents", "内容"},
            {"OUTPUT EXPORT requires an open output document.",
             "OUTPUT EXPORT を実行するには、出力文書を開いておいてください。"},
            {"Format", "形式"}};
        for (const auto& [each, text] : texts) {
            key.Category(plain(each));
            language.Category(plain("ja")).Cell(plain(text));
        }
    });
}

tables::Table exportSummary() {
    return built("Export Summary", [](BpPivotTable& table) {
        table.MaxDataColumnWidth(200);
        BpDimension contents = table.Dimension(plain("Contents"), 2).Position(0, 1, 1, 0);
        contents.Category(plain("Viewer")).Cell(plain("Output1"));
        contents.Category(plain("Document File"))
            .Cell(plain("c:\\projects\\survey of households\\results\\first wave.pdf"));
        BpGroup images = contents.Group(plain("Image Files"), true, 2);
        images.Category(plain("Count")).Cell(count(3));
        images.Category(plain("Root Name")).Cell(plain(""));
        contents.Group(plain("hidden"), false, 2).Category(plain("Format")).Cell(plain("png"));
    });
}

tables::Table crowded() {
    return built("A title that is longer than the terminal of this picture is wide", [](BpPivotTable& table) {
        BpDimension row = dimension(table, "Row", 0);
        BpDimension column = dimension(table, "", 1);
        row.Category(plain("one"));
        column.Group(plain("A group with a long label"), true, 2).Category(plain("x")).Cell(count(1));
        column.Category(plain("y"))
            .Cell(plain(
                "first line\r\nsecond line\n\nhttps://example.org/a/very/long/address/without/any/blank"))
            .Note(plain("A note that goes on for so long that it has to be continued on another line"));
        row.Category(plain("two"));
        column.Category(plain("y")).Cell(plain("\x1b[31mred\x1b[0m\tand\x07 more"));
    });
}

tables::Table columnsOnly() {
    return built("Columns", [](BpPivotTable& table) {
        BpDimension column = dimension(table, "Measure", 1);
        column.Category(plain("Count")).Cell(count(3));
        column.Category(plain("Text")).Cell(plain("three"));
    });
}

tables::Table layersOnly() {
    return built("Layers", [](BpPivotTable& table) {
        BpDimension layer = dimension(table, "Year", 2);
        layer.Category(plain("2025")).Cell(count(1));
        layer.Category(plain("2026")).Cell(count(22));
    });
}

tables::Table withoutCells(const std::vector<std::string>& keys) {
    return built("croutput.xlf Help", [&](BpPivotTable& table) {
        BpDimension key = dimension(table, "Key", 0);
        dimension(table, "Language", 1).Category(plain("de"));
        for (const std::string& each : keys) key.Category(plain(each));
    });
}

tables::Table broad() {
    return built("Monthly", [](BpPivotTable& table) {
        BpDimension row = dimension(table, "Place", 0);
        BpDimension month = dimension(table, "Month", 1);
        for (const std::string place : {"Oslo", "Lima"}) {
            row.Category(plain(place));
            for (int i = 1; i <= 12; ++i) {
                BpGroup half = month.Group(plain(i <= 6 ? "First half" : "Second half"), true, 2);
                half.Category(count(i)).Cell(count(i * 111));
            }
        }
    });
}

std::string picture(const tables::Table& table, const rendering::RenderOptions& options) {
    std::string text = '\n' + rendering::renderTable(table, options);
    const std::pair<std::string, std::string> marks[] = {{"\x1b[1m", "<b>"}, {"\x1b[0m", "</b>"}};
    for (const auto& [sequence, mark] : marks) {
        for (auto at = text.find(sequence); at != std::string::npos; at = text.find(sequence, at)) {
            text.replace(at, sequence.size(), mark);
        }
    }
    return text;
}

}  // namespace vexa
