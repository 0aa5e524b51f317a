// Pages as a strict reader of HTML takes them. The reader is a program of this system; pages are the same
// bytes on Windows.
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/unit/export/export_samples.h"
#include "tests/unit/import/random_documents.h"

namespace vexa::frontend {
namespace {

ViewerDocument sampleDocument() {
    ViewerDocument document;
    document.setName("March & April");
    fill(document, everything());
    return document;
}

/// What a strict reader of HTML complains of; empty when nothing, or when there is no such reader here.
std::string complaints(const std::string& page) {
    const ExportFolder folder;
    folder.write("page.html", page);
    const std::string command = "/usr/bin/env -i PATH=/usr/bin:/bin python3 \"" VEXA_SOURCE_FOLDER
                                "/tests/judges/check_html.py\" \"" +
                                folder.file("page.html") + "\" > \"" + folder.file("out") + "\" 2>&1";
    static_cast<void>(std::system(command.c_str()));
    return folder.read("out");
}

TEST(HtmlValidity, IsValidWithEverythingInIt) {
    const ViewerDocument document = sampleDocument();
    HtmlExport request;
    EXPECT_EQ(complaints(htmlOf(document, request)), "");
    request.interactiveLayers = true;
    EXPECT_EQ(complaints(htmlOf(document, request)), "");
    request.styling = false;
    EXPECT_EQ(complaints(htmlOf(document, request)), "");
    ReportExport report;
    report.links = {{"https://a.b/?c&d", "More <here>"}};
    EXPECT_EQ(complaints(reportOf(document, report)), "");
    report.restyle = false;
    EXPECT_EQ(complaints(reportOf(document, report)), "");
}

TEST(HtmlValidity, IsValidWhateverDocumentsHold) {
    if (std::getenv("VEXA_QUICK") != nullptr) GTEST_SKIP() << "quick run";
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        ViewerDocument document;
        document.edit(RandomDocuments(seed).document(25, true));
        const ExportFolder folder;
        ExportRequest request;
        request.items = ExportedItems::all;
        request.html = HtmlExport{};
        request.html->file = folder.file("a");
        request.report = ReportExport{};
        request.report->file = folder.file("b");
        const ExportOutcome outcome = exportDocument(document, request, {});
        if (!outcome.response.success) continue;
        EXPECT_EQ(complaints(folder.read("a")), "") << seed;
        EXPECT_EQ(complaints(folder.read("b")), "") << seed;
    }
}

}  // namespace
}  // namespace vexa::frontend
