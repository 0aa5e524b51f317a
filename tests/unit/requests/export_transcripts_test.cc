// Reads every specification of an export that a transcript shows, and writes it once more.

#include <gtest/gtest.h>

#include "backend/viewerxml/export_reader.h"
#include "backend/viewerxml/export_xml.h"
#include "tests/unit/requests/transcript_events.h"

namespace vexa {
namespace {

TEST(ExportsOfTranscripts, AreReadWhole) {
    std::size_t count = 0;
    for (const auto& [place, text] : wiredTexts(VEXA_TRANSCRIPTS "/export", "export")) {
        const ReadExportSpec read = readExportSpec(text);
        ASSERT_TRUE(read.spec) << place << "\n" << text << "\n" << read.error;
        EXPECT_EQ(ExportXML::convertToXML(*read.spec), text) << place;
        ++count;
    }
    EXPECT_GT(count, 100U);
}

}  // namespace
}  // namespace vexa
