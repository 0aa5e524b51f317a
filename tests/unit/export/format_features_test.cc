// Holds every exporter to its table of features, and docs/exports.md to these tables. tools/losses writes the
// document anew.
#include "frontend/export/format_features.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "tests/unit/export/export_samples.h"
#include "tests/unit/export/feature_samples.h"

namespace vexa::frontend {
namespace {

/// What asks for a format with the defaults of the command; a new format has a line here.
ExportRequest requestOf(std::string_view format, const ExportFolder& folder) {
    ExportRequest request;
    const auto ask = [&folder](auto& target, const std::string& name) {
        target.emplace();
        target->file = folder.file(name);
    };
    if (format == "HTML") ask(request.html, "a.htm");
    if (format == "REPORT") ask(request.report, "a.htm");
    if (format == "PPT") ask(request.ppt, "a.pptx");
    if (format == "TEXT") ask(request.text, "a.txt");
    if (format == "PDF") ask(request.pdf, "a.pdf");
    if (format == "XLS") ask(request.xls, "a.xls");
    if (format == "XLSX") ask(request.xlsx, "a.xlsx");
    if (format == "DOC") ask(request.doc, "a.docx");
    if (format == "RTF") ask(request.doc, "a.rtf");
    return request;
}

/// What an export writes, and what it says.
struct Written {
    std::string bytes;  ///< of all files
    std::vector<std::string> warnings;
};

Written write(std::string_view format, const ViewerDocument& document, const std::string& language) {
    const ExportFolder folder;
    ExportSurroundings surroundings;
    surroundings.language = language;
    const ExportOutcome outcome = exportDocument(document, requestOf(format, folder), surroundings);
    // Pictures alone of a document without any.
    const bool isEmpty = outcome.response.errorCode == static_cast<int>(ExportError::noPictures);
    EXPECT_TRUE(outcome.response.success || isEmpty) << outcome.response.errorCode << " " << outcome.reason;
    Written written{{}, outcome.warnings};
    std::istringstream names(folder.names());
    for (std::string name; names >> name;) written.bytes += name + folder.read(name);
    return written;
}

bool anyNames(const std::vector<std::string>& warnings, Feature feature) {
    for (const std::string& warning : warnings) {
        const std::size_t lost = warning.find("Lost: ");
        if (lost != std::string::npos && warning.find(featureText(feature).key(), lost) != std::string::npos)
            return true;
    }
    return false;
}

TEST(FormatFeatures, EveryExporterDoesWhatItsTableSays) {
    for (const FormatFeatures* const format : formatFeatures()) {
        for (const FeatureFate& fate : format->fates) {
            SCOPED_TRACE(std::string(format->format) + ": " + std::string(featureText(fate.feature).key()));
            const FeatureSample sample = sampleOf(fate.feature);
            const Written with = write(format->format, sample.with, sample.language);
            const Written without = write(format->format, sample.without, "en");
            if (fate.fate == Fate::warned) {
                EXPECT_TRUE(anyNames(with.warnings, fate.feature));
                EXPECT_FALSE(anyNames(without.warnings, fate.feature));
                continue;
            }
            EXPECT_EQ(with.warnings, without.warnings);
            EXPECT_EQ(with.bytes == without.bytes, fate.fate == Fate::dropped);
        }
    }
}

// What stands around the table of the document.
constexpr std::string_view tableBegin = "<!-- The table is written by tools/losses. -->\n";
constexpr std::string_view tableEnd = "<!-- Here the table ends. -->\n";

std::string table() {
    std::string first = "|";
    std::string second = "|---";
    for (const FormatFeatures* const format : formatFeatures()) {
        first += " | [" + std::string(format->format) + "](" + std::string(format->details) + ")";
        second += "|---";
    }
    std::string text = first + " |\n" + second + "|\n";
    for (std::size_t i = 0; i < featureCount; ++i) {
        text += "| " + std::string(featureText(static_cast<Feature>(i)).key());
        for (const FormatFeatures* const format : formatFeatures())
            text += " | " + std::string(wordsOf(format->fates[i]));
        text += " |\n";
    }
    return text;
}

TEST(FormatFeatures, TheDocumentSaysWhatTheTablesSay) {
    const std::string path = VEXA_SOURCE_FOLDER "/docs/exports.md";
    std::ifstream file(path, std::ios::binary);
    std::string document{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::size_t begin = document.find(tableBegin);
    const std::size_t end = document.find(tableEnd);
    ASSERT_NE(begin, std::string::npos);
    ASSERT_NE(end, std::string::npos);
    const std::size_t inside = begin + tableBegin.size();
    if (std::getenv("VEXA_WRITE_LOSSES") != nullptr) {
        document.replace(inside, end - inside, table());
        std::ofstream(path, std::ios::binary) << document;
        return;
    }
    EXPECT_EQ(document.substr(inside, end - inside), table()) << "tools/losses writes it anew";
}

}  // namespace
}  // namespace vexa::frontend
