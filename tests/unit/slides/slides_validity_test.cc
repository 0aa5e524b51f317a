// Presentations as other programs take them.
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/unit/export/export_samples.h"
#include "tests/unit/import/random_documents.h"
#include "tests/unit/slides/slides_samples.h"

namespace vexa::frontend {
namespace {

/// What a judge complains of; empty when nothing.
std::string complaints(const std::string& judge, const std::string& presentation) {
    const ExportFolder folder;
    folder.write("a.pptx", presentation);
    const std::string command = "/usr/bin/env -i PATH=/usr/bin:/bin HOME=\"" + folder.file("home") +
                                "\" python3 \"" VEXA_SOURCE_FOLDER "/tests/judges/" + judge + "\" \"" +
                                folder.file("a.pptx") + "\" > \"" + folder.file("out") + "\" 2>&1";
    static_cast<void>(std::system(command.c_str()));
    return folder.read("out");
}

TEST(SlidesValidity, PackagesAreSoundWithEverythingInThem) {
    EXPECT_EQ(complaints("check_office.py", test::Presentation(everything()).bytes()), "");
    PptExport request;
    request.slideTitles = false;
    request.slide = {200, 150};
    EXPECT_EQ(complaints("check_office.py", test::Presentation(everything(), request).bytes()), "");
}

TEST(SlidesValidity, PackagesAreSoundWhateverDocumentsHold) {
    if (std::getenv("VEXA_QUICK") != nullptr) GTEST_SKIP() << "quick run";
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        ViewerDocument document;
        document.edit(RandomDocuments(seed).document(25, true));
        const ExportFolder folder;
        ExportRequest request;
        request.items = ExportedItems::all;
        request.ppt = PptExport{};
        request.ppt->file = folder.file("a");
        const ExportOutcome outcome = exportDocument(document, request, {});
        if (!outcome.response.success) continue;
        EXPECT_EQ(complaints("check_office.py", folder.read("a")), "") << seed;
    }
}

TEST(SlidesValidity, AProgramForPresentationsShowsEverySlide) {
    if (std::getenv("VEXA_QUICK") != nullptr) GTEST_SKIP() << "quick run";
    PptExport request;
    request.slide = {480, 360};
    request.margins = {30, 30, 30, 30};
    const test::Presentation made(everything() + "," + test::numbers("Wide", 30, 20), request);
    const std::string shown = complaints("check_slides.py", made.bytes());
    if (shown.find("is not installed") != std::string::npos) GTEST_SKIP() << shown;
    std::size_t line = 0;
    for (std::size_t i = 1; i <= made.slides(); ++i) {
        const std::size_t end = shown.find('\n', line);
        ASSERT_NE(end, std::string::npos) << shown;
        const std::string page = shown.substr(line, end - line);
        EXPECT_NE(std::string::npos, page.find(made.title(i))) << page;
        line = end + 1;
    }
    EXPECT_EQ(shown.size(), line) << shown;
    EXPECT_NE(std::string::npos,
              shown.find("North 1.40 10 South 2.50 9 Totala 19 Weighted. a Without abroad."))
        << shown;
}

}  // namespace
}  // namespace vexa::frontend
