#include "apps/vexa/export_command.h"

#include <gtest/gtest.h>

#include <optional>

#include "backend/session/command_catalog.h"
#include "backend/session/session.h"

namespace vexa::program {
namespace {

class ExportCommandTest : public testing::Test {
  protected:
    /// The command on one line, or the problem.
    std::string made(const ExportWish& wish) {
        const ExportCommand command = exportCommand(wish, *grammar());
        EXPECT_NE(command.text.empty(), command.problem.empty());
        if (command.text.empty()) return command.problem;
        std::string line;
        for (const char each : command.text) {
            if (each == '\n') continue;
            line += each;
        }
        return line;
    }

    /// Made of a file alone.
    std::string madeOf(const std::string& file) { return made({file, "", {}}); }

  private:
    std::optional<CommandDescriptor>& grammar() {
        if (!grammar_) grammar_ = session_.describe(*findKnownCommand("OUTPUT EXPORT"));
        return grammar_;
    }

    LibraryModule module_{VEXA_MODULE_FILE};
    Session session_{module_};
    std::optional<CommandDescriptor> grammar_;
};

TEST_F(ExportCommandTest, TakesTheFormatFromTheExtension) {
    EXPECT_EQ(madeOf("a.htm"), "OUTPUT EXPORT  /HTML DOCUMENTFILE='a.htm'.");
    EXPECT_EQ(madeOf("a.HTML"), "OUTPUT EXPORT  /HTML DOCUMENTFILE='a.HTML'.");
    EXPECT_EQ(madeOf("a.mht"), "OUTPUT EXPORT  /REPORT DOCUMENTFILE='a.mht' FORMAT=MHT.");
    EXPECT_EQ(madeOf("a.txt"), "OUTPUT EXPORT  /TEXT DOCUMENTFILE='a.txt'.");
    EXPECT_EQ(madeOf("a.pdf"), "OUTPUT EXPORT  /PDF DOCUMENTFILE='a.pdf'.");
    for (const std::string extension : {"doc", "docx", "rtf"})
        EXPECT_EQ(madeOf("a." + extension), "OUTPUT EXPORT  /DOC DOCUMENTFILE='a." + extension + "'.");
    for (const std::string extension : {"ppt", "pptx"})
        EXPECT_EQ(madeOf("a." + extension), "OUTPUT EXPORT  /PPT DOCUMENTFILE='a." + extension + "'.");
    EXPECT_EQ(madeOf("a.xls"), "OUTPUT EXPORT  /XLS DOCUMENTFILE='a.xls'.");
    EXPECT_EQ(madeOf("a.xlsx"), "OUTPUT EXPORT  /XLSX DOCUMENTFILE='a.xlsx'.");
    EXPECT_EQ(madeOf("a.xlsm"), "OUTPUT EXPORT  /XLSM DOCUMENTFILE='a.xlsm'.");
}

TEST_F(ExportCommandTest, TakesTheRootOfAPicturesName) {
    EXPECT_EQ(madeOf("folder.d/a.b.png"), "OUTPUT EXPORT  /PNG IMAGEROOT='folder.d/a.b'.");
    EXPECT_EQ(madeOf("a.jpeg"), "OUTPUT EXPORT  /JPG IMAGEROOT='a'.");
    EXPECT_EQ(madeOf("a.TIFF"), "OUTPUT EXPORT  /TIF IMAGEROOT='a'.");
    EXPECT_EQ(madeOf("a.bmp"), "OUTPUT EXPORT  /BMP IMAGEROOT='a'.");
    EXPECT_EQ(madeOf("a.emf"), "OUTPUT EXPORT  /EMF IMAGEROOT='a'.");
    EXPECT_EQ(madeOf("a.eps"), "OUTPUT EXPORT  /EPS IMAGEROOT='a'.");
}

TEST_F(ExportCommandTest, IsToldTheFormat) {
    EXPECT_EQ(made({"a.html", "report", {}}), "OUTPUT EXPORT  /REPORT DOCUMENTFILE='a.html'.");
    EXPECT_EQ(made({"a.mht", "REPORT", {}}), "OUTPUT EXPORT  /REPORT DOCUMENTFILE='a.mht' FORMAT=MHT.");
    EXPECT_EQ(made({"march", "text", {}}), "OUTPUT EXPORT  /TEXT DOCUMENTFILE='march'.");
    EXPECT_EQ(made({"a.b", "png", {}}), "OUTPUT EXPORT  /PNG IMAGEROOT='a'.");
    EXPECT_NE(
        made({"a.htm", "sheet", {}}).find("There is no format sheet. Give one of these: REPORT, HTML, "),
        std::string::npos);
    EXPECT_NE(made({"a.htm", "reprot", {}}).find("There is no format reprot. Did you mean REPORT?"),
              std::string::npos);
}

TEST_F(ExportCommandTest, KnowsNoFormatWithoutAnExtension) {
    for (const std::string file : {"a", "a.xyz", ".html", "folder.html/a", "folder/.png", "a."})
        EXPECT_NE(madeOf(file).find("What " + file + " shall be is not known."), std::string::npos) << file;
}

TEST_F(ExportCommandTest, GivesAKeywordToWhoKnowsIt) {
    EXPECT_EQ(made({"a.htm", "", {"notescaptions=no", "LAYERS=ALL", "Print=Errors", "IMAGEFORMAT=PNG"}}),
              "OUTPUT EXPORT PRINT=Errors  /CONTENTS LAYERS=ALL"
              "  /HTML DOCUMENTFILE='a.htm' NOTESCAPTIONS=no IMAGEFORMAT=PNG.");
    EXPECT_EQ(made({"a.png", "", {"EXPORT=ALL", "DEPTH=COLORS16", "NAME=*"}}),
              "OUTPUT EXPORT NAME=*  /CONTENTS EXPORT=ALL  /PNG IMAGEROOT='a' DEPTH=COLORS16.");
    EXPECT_EQ(made({"a.doc", "", {"PAGESIZE=MM(210 297)"}}),
              "OUTPUT EXPORT  /DOC DOCUMENTFILE='a.doc' PAGESIZE=MM(210 297).");
}

TEST_F(ExportCommandTest, RefusesWhatNobodyKnows) {
    EXPECT_NE(made({"a.txt", "", {"STYLING=NO"}}).find("OUTPUT EXPORT has no keyword STYLING for TEXT."),
              std::string::npos);
    for (const std::string keyword : {"STYLING", "=NO", "STYLING="}) {
        EXPECT_NE(made({"a.htm", "", {keyword}}).find(keyword + " is no KEYWORD=VALUE"), std::string::npos)
            << keyword;
    }
}

TEST_F(ExportCommandTest, QuotesTexts) {
    EXPECT_EQ(madeOf("it's.htm"), "OUTPUT EXPORT  /HTML DOCUMENTFILE='it''s.htm'.");
    EXPECT_EQ(made({"a.txt", "", {"ROWBORDER=-", "COLUMNBORDER='|'"}}),
              "OUTPUT EXPORT  /TEXT DOCUMENTFILE='a.txt' ROWBORDER='-' COLUMNBORDER='|'.");
    EXPECT_EQ(made({"a.xlsx", "", {"SHEET=March 2026", "OPERATION=CREATESHEET"}}),
              "OUTPUT EXPORT  /XLSX DOCUMENTFILE='a.xlsx' SHEET='March 2026' OPERATION=CREATESHEET.");
    EXPECT_EQ(made({"a.mht", "", {"TITLE=March's"}}),
              "OUTPUT EXPORT  /REPORT DOCUMENTFILE='a.mht' FORMAT=MHT TITLE='March''s'.");
    EXPECT_EQ(made({"a.mht", "", {"TITLE=filename"}}),
              "OUTPUT EXPORT  /REPORT DOCUMENTFILE='a.mht' FORMAT=MHT TITLE=filename.");
    EXPECT_EQ(made({"a.mht", "", {"TITLE=\"A\""}}),
              "OUTPUT EXPORT  /REPORT DOCUMENTFILE='a.mht' FORMAT=MHT TITLE=\"A\".");
}

}  // namespace
}  // namespace vexa::program
