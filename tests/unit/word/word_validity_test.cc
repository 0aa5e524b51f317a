// Text documents as other programs take them. They are programs of this system; documents are the same bytes
// on Windows.
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "tests/unit/export/export_samples.h"
#include "tests/unit/import/random_documents.h"
#include "tests/unit/word/word_samples.h"

namespace vexa::frontend {
namespace {

using test::WordFile;

/// What a judge prints of files in a folder.
std::string judged(const std::string& judge, const ExportFolder& folder, const std::string& files) {
    const std::string command = "cd \"" + folder.file("") +
                                "\" && /usr/bin/env -i PATH=/usr/bin:/bin HOME=\"" + folder.file("home") +
                                "\" python3 \"" VEXA_SOURCE_FOLDER "/tests/judges/" + judge + "\" " + files +
                                " > \"" + folder.file("out") + "\" 2>&1";
    static_cast<void>(std::system(command.c_str()));
    return folder.read("out");
}

/// What is wrong with the documents of a folder.
std::string complaints(const ExportFolder& folder, const std::string& files) {
    return judged("check_office.py", folder, files) + judged("check_docx.py", folder, files);
}

TEST(WordValidity, IsSoundWithEverythingInIt) {
    const ExportFolder folder;
    folder.write("a.docx", WordFile(everything()).bytes());
    std::string files = "a.docx";
    for (const WideTables wide : {WideTables::asIs, WideTables::shrink, WideTables::wrap}) {
        DocExport request;
        request.wideTables = wide;
        request.page = {200, 300};
        const std::string name = "w" + std::to_string(static_cast<int>(wide)) + ".docx";
        folder.write(name, WordFile(everything(), request).bytes());
        files += " " + name;
    }
    EXPECT_EQ(complaints(folder, files), "");
}

TEST(WordValidity, IsSoundWhateverDocumentsHold) {
    const ExportFolder folder;
    std::string files;
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        ViewerDocument document;
        document.edit(RandomDocuments(seed).document(25, true));
        ExportRequest request;
        request.items = ExportedItems::all;
        request.doc = DocExport{};
        request.doc->file = folder.file("a" + std::to_string(seed));
        if (exportDocument(document, request, {}).response.success) files += "a" + std::to_string(seed) + " ";
    }
    EXPECT_NE(files, "");
    EXPECT_EQ(complaints(folder, files), "");
}

/// Each line of `lines` stands in `text` behind the one before; what is missing otherwise.
std::string missing(const std::string& text, const std::vector<std::string>& lines) {
    std::size_t at = 0;
    for (const std::string& line : lines) {
        at = text.find(line, at);
        if (at == std::string::npos) return line;
        at += line.size();
    }
    return {};
}

TEST(WordValidity, AWordProcessorReadsBothForms) {
    if (std::getenv("VEXA_QUICK") != nullptr) GTEST_SKIP() << "quick run";
    const std::string items = everything() + R"(,{"type":"text","text":"\u00e4 {\\} \u8868 \u20ac 😀 end"})";
    const ExportFolder folder;
    folder.write("a.docx", WordFile(items).bytes());
    folder.write("b.rtf", WordFile(items, {}, ".rtf").bytes());
    const std::string text = judged("word_text.py", folder, "a.docx b.rtf");
    if (text.empty()) GTEST_SKIP() << "there is no LibreOffice";
    const std::vector<std::string> lines{"Contents",
                                         "Means & more",
                                         "Income & growth",
                                         "Means & more",
                                         "Income & growth",
                                         "Two lines",
                                         "of text with </p><script>alert(1)</script>.",
                                         "Input: income.csv",
                                         "Income by region",
                                         "Sex: Male",
                                         "Statistics",
                                         "Region",
                                         "Mean",
                                         "N",
                                         "Europe",
                                         "North",
                                         "1.40",
                                         "10",
                                         "South",
                                         "2.50",
                                         "9",
                                         "Total",
                                         "19",
                                         "Weighted.",
                                         "Without abroad.",
                                         "MEANS income",
                                         "\tBY region.",
                                         "There are empty cells.",
                                         "Plain grid",
                                         "first view",
                                         "\u00e4 {\\} \u8868 \u20ac 😀 end"};
    const std::size_t second = text.find("== b.rtf");
    ASSERT_NE(second, std::string::npos);
    EXPECT_EQ(missing(text.substr(0, second), lines), "") << text;
    EXPECT_EQ(missing(text.substr(second), lines), "") << text;
}

}  // namespace
}  // namespace vexa::frontend
