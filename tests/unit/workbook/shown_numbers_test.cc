// Numbers as a spreadsheet program shows them, beside what tables show. The program is one of this system;
// codes are the same on Windows.
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "backend/tables/formats/number_text.h"
#include "frontend/export/workbook/number_code.h"
#include "tests/unit/export/export_samples.h"

namespace vexa::frontend {
namespace {

using tables::numberText;
using tables::parseFormat;

struct Shown {
    std::string format;
    double value = 0;
    std::string cell;  ///< number, tab, code
    std::string text;  ///< of the table
};

std::vector<std::string> formats() {
    std::vector<std::string> names{"DATE", "ADATE", "EDATE", "SDATE", "TIME", "DATETIME"};
    for (const char* const kind : {"F", "COMMA", "DOLLAR", "PCT", "E", "N"}) {
        for (const char* const size : {"9", "9.1", "9.2", "12.5"}) names.push_back(std::string(kind) + size);
    }
    return names;
}

std::vector<double> values(bool areSeconds) {
    if (areSeconds) {
        std::vector<double> seconds{0,           1,          59.999,       3599.9999,      86399.5,
                                    86400,       90061,      360000,       951782400,      951868799.75,
                                    1772705229,  1798675200, 4102444799.0, 253402300799.0, -2203891200,
                                    -2203891201, -1,         -1234567890,  78796800.999,   -2203804801};
        // Each second of a day has other digits.
        for (int i = 0; i < 400; ++i) seconds.push_back(1772668800.0 + i * 217);
        for (int i = 0; i < 400; ++i) seconds.push_back(i * 10'007'017.0);
        return seconds;
    }
    return {0,         1,        -1,        0.5,          -0.5,     0.004,       -0.004,
            0.285,     1.005,    2.5,       3.5,          -2.5,     99.995,      1234.5,
            -1234.567, 999999.5, 1e10,      123456789.12, 0.000012, -0.00000049, 12345678.25,
            1e-20,     -1e-20,   0.1 + 0.2, 8.125,        0.049999, 1e14,        1234567.8,
            0.05,      -0.05,    1e100,     -2.5e-12,     7,        0.95,        9.995};
}

std::vector<Shown> cases() {
    std::vector<Shown> all;
    for (const std::string& name : formats()) {
        const tables::DisplayFormat format = *parseFormat(name);
        for (const double value : values(countsSeconds(format.kind))) {
            const SheetNumber number = sheetNumber(value, format);
            // What has more digits than programs know is shown with other zeros, or not at all.
            const bool isTooLong = std::abs(value) >= 1e15 && format.kind != tables::FormatKind::scientific;
            if (number.obstacle != NumberObstacle::none || isTooLong) continue;
            std::string cell;
            tables::appendShortest(cell, number.value);
            all.push_back({name, value, cell + "\t" + formatCode(number.format, number.minusIsDropped),
                           numberText(value, format)});
        }
    }
    const auto addText = [&all](double value, const std::string& code, const std::string& text) {
        all.push_back({code, value, numberText(value, {}) + "\t" + code, text});
    };
    addText(1.5, codeWithSuffix("0.00", " [a]"), "1.50 [a]");
    addText(-1.5, codeWithSuffix("0.00", " [a,b]"), "-1.50 [a,b]");
    addText(-0.001, codeWithSuffix("0.00;0.00", " [a]"), "0.00 [a]");
    addText(12.5, codeWithSuffix("0.0\"%\"", " [a]"), "12.5% [a]");
    addText(12, codeWithSuffix("", " [a]"), "12 [a]");
    addText(0.0004, literalCode("<.001"), "<.001");
    addText(-3, literalCode("a \"b\"; [c]"), "a \"b\"; [c]");
    addText(0, literalCode("none"), "none");
    return all;
}

std::vector<std::string> shownByProgram(const std::vector<Shown>& all) {
    const ExportFolder folder;
    std::string lines;
    for (const Shown& each : all) lines += each.cell + "\n";
    folder.write("cells", lines);
    const std::string command = "/usr/bin/env -i HOME=\"" + folder.file("home") +
                                "\" PATH=/usr/bin:/bin LANG=C.UTF-8 python3 \"" VEXA_SOURCE_FOLDER
                                "/tests/judges/show_numbers.py\" \"" +
                                folder.file("cells") + "\" \"" + folder.file("") + "\" > \"" +
                                folder.file("out") + "\" 2>&1";
    static_cast<void>(std::system(command.c_str()));
    std::vector<std::string> texts;
    std::istringstream out(folder.read("out"));
    for (std::string line; std::getline(out, line);) texts.push_back(line);
    return texts;
}

TEST(ShownNumbers, AreThoseOfTheTable) {
    if (std::getenv("VEXA_QUICK") != nullptr) GTEST_SKIP() << "quick run";
    const std::vector<Shown> all = cases();
    const std::vector<std::string> shown = shownByProgram(all);
    if (shown.empty()) GTEST_SKIP() << "no spreadsheet program here";
    ASSERT_EQ(shown.size(), all.size()) << shown.front();
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(shown[i], all[i].text) << all[i].value << " in " << all[i].format << ": " << all[i].cell;
    }
}

}  // namespace
}  // namespace vexa::frontend
