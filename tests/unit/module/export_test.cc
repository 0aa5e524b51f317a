// OUTPUT EXPORT where surroundings fail that the program itself cannot make fail, and what one run leaves to
// the next: nothing.
#include <gtest/gtest.h>

#include <map>
#include <new>
#include <stdexcept>

#include "backend/paths/file_specification.h"
#include "backend/platform/file_system.h"
#include "backend/viewerxml/xml_platform.h"
#include "module/export/commands.h"
#include "tests/unit/module/command_fixture.h"

namespace vexa {
namespace {

constexpr const char* kSuccess = "<exportResponse success=\"true\"/>";
constexpr const char* kBadFileName = "<exportResponse success=\"false\" errorCode=\"6\"/>";

/// A folder `\data` with files of which some may be written, and a folder in which none can be made.
class GuardedDisk : public FileSystem {
  public:
    FileResult read(const std::string&, std::string&, std::uint64_t) override { return refused(); }
    FileResult readStream(const std::string&, std::string&, std::uint64_t) override { return refused(); }
    bool isFile(const std::string& path) override { return files_.count(path) != 0; }
    bool isFolder(const std::string& path) override {
        return path == "\\data\\" || path == "\\data\\sub" || path == "\\closed\\";
    }
    bool isWritable(const std::string& path) override {
        const auto file = files_.find(path);
        return file == files_.end() ? !path.starts_with("\\closed\\") : file->second;
    }
    std::string workingFolder() override { return "\\data"; }
    std::string canonicalPath(const std::string& path) override { return path; }
    FileResult createTemporary(const std::string&, std::string&) override { return refused(); }
    FileResult append(const std::string&, std::string_view) override { return refused(); }
    FileResult flush(const std::string&) override { return refused(); }
    FileResult replace(const std::string&, const std::string&) override { return refused(); }
    FileResult remove(const std::string&) override { return refused(); }

  private:
    static FileResult refused() { return {false, "this disk is only looked at"}; }

    const std::map<std::string, bool> files_ = {
        {"\\data\\open.xlsx", true}, {"\\data\\locked.xlsx", false}, {"\\closed\\open.xlsx", true}};
};

class Export : public CommandFixture {
  protected:
    Export() {
        FileSystem::install(&disk_);
        FileLocations::current().reset();
        adapter.answer = kSuccess;
    }
    ~Export() override {
        installXmlInitialisation(nullptr);
        FileSystem::install(nullptr);
        FileLocations::current().reset();
    }

    /// Runs the command alone; the export specification that it sent, empty when it sent none.
    std::string exported(const std::string& command) {
        events.clear();
        adapter.exports.clear();
        run(outputExport, command);
        EXPECT_LE(adapter.exports.size(), 1U) << command;
        return adapter.exports.empty() ? std::string() : adapter.exports.front();
    }

    /// The text and the arguments of every message of the parser, each between bars.
    [[nodiscard]] std::string parserMessages() const {
        std::string all;
        for (const ParserMessageReported& message : this->all<ParserMessageReported>()) {
            all += message.warning ? "(warning)" : "";
            for (const auto& argument : message.arguments) {
                all += '|' + std::get<std::string>(argument);
            }
            all += '|';
        }
        return all;
    }

    /// The texts of all reports and their levels.
    [[nodiscard]] std::string reports() const {
        std::string all;
        for (const ErrorReported& error : this->all<ErrorReported>()) {
            all +=
                error.message + ' ' + std::to_string(error.level) + '/' + std::to_string(error.show) + '\n';
        }
        return all;
    }

  private:
    GuardedDisk disk_;
};

constexpr const char* kNoFormat = "|DOC|HTML|REPORT|PDF|PPT|TEXT|XLS|XLSX|XLSM|BMP|EMF|EPS|JPG|PNG|TIF|";

TEST_F(Export, RefusesFilesThatCannotBeWritten) {
    const char* const refused[] = {"\\data\\locked.xlsx", "\\closed\\new.xlsx", "\\data\\sub",
                                   "\\nowhere\\a.xlsx"};
    for (const char* const format : {"DOC", "HTML", "REPORT", "PDF", "PPT", "TEXT", "XLSM"}) {
        for (const std::string path : refused) {
            EXPECT_EQ(exported(std::string("/") + format + " DOCUMENTFILE='" + path + "'"), "");
            EXPECT_EQ(parserMessages(), "|File ^1 has no access...|" + path + '|' + kNoFormat) << format;
            EXPECT_EQ(reports(), "");
        }
    }
}

TEST_F(Export, TakesFilesThatCanBeWritten) {
    for (const std::string path : {"\\data\\open.xlsx", "\\data\\new.doc", "\\closed\\open.xlsx"}) {
        EXPECT_EQ(exported("/DOC DOCUMENTFILE='" + path + "'"),
                  "<exportSpecification><global/><contents/><doc documentFile=\"" + path +
                      "\"/></exportSpecification>");
        EXPECT_EQ(parserMessages(), "");
    }
}

TEST_F(Export, AWorkbookThatIsThereNeedNotBeWritableToBeFound) {
    EXPECT_EQ(exported("/XLSX DOCUMENTFILE='locked.xlsx' OPERATION=MODIFYSHEET SHEET='a'"), "");
    EXPECT_EQ(parserMessages(), std::string("|File ^1 has no access...|\\data\\locked.xlsx|") + kNoFormat);
    EXPECT_EQ(exported("/XLSX DOCUMENTFILE='/closed/new' OPERATION=CREATESHEET"), "");
    EXPECT_EQ(parserMessages(), std::string("|File ^1 has no access...|\\closed\\new.xlsx|"
                                            "(warning)|^1 was specified, but file \"^2\" does not exist...|"
                                            "CREATESHEET|\\closed\\new.xlsx|") +
                                    kNoFormat);
}

TEST_F(Export, LooksAtNoFileForImages) {
    EXPECT_EQ(exported("/PNG IMAGEROOT='/closed/new'"),
              "<exportSpecification><global/><contents/><png imageRoot=\"\\closed\\new\"/>"
              "</exportSpecification>");
    EXPECT_EQ(parserMessages(), "");
}

TEST_F(Export, LeavesNothingToTheNextRun) {
    const std::string small = "/PNG IMAGEROOT='r'";
    const std::string large =
        "NAME='n' PRINT=ERRORS /CONTENTS EXPORT=VISIBLE LAYERS=VISIBLE MODELVIEWS=ALL "
        "/HTML DOCUMENTFILE='a.htm' NOTESCAPTIONS=YES /JPG PERCENTSIZE=50 GRAYSCALE=YES";
    const std::string ofSmall = exported(small);
    const std::string ofLarge = exported(large);
    EXPECT_EQ(
        ofSmall,
        "<exportSpecification><global/><contents/><png imageRoot=\"\\data\\r\"/></exportSpecification>");
    EXPECT_NE(ofLarge, "");
    EXPECT_EQ(exported("/DOC TOPMARGIN=MM(0)"), "");
    EXPECT_EQ(exported(small), ofSmall);
    EXPECT_EQ(exported("/DOC COLOR=RED"), "");
    EXPECT_EQ(exported(large), ofLarge);
    EXPECT_EQ(parserMessages() + reports(), "");
}

TEST_F(Export, LeavesNeitherFileNorPrintOptionToTheNextReport) {
    adapter.answer = kBadFileName;
    EXPECT_NE(exported("PRINT=NEVER /DOC DOCUMENTFILE='a.doc'"), "");
    EXPECT_EQ(reports(), "");
    EXPECT_NE(exported("/DOC DOCUMENTFILE='a.doc'"), "");
    EXPECT_EQ(reports(), "\\data\\a.doc not a valid file name... 3/2\n");
    EXPECT_NE(exported("/PNG IMAGEROOT='r'"), "");
    EXPECT_EQ(reports(), " not a valid file name... 3/2\n");
}

TEST_F(Export, SendsNothingWhenTheXmlLibraryFails) {
    installXmlInitialisation([] { throw std::runtime_error("no transcoder"); });
    EXPECT_EQ(exported("/DOC DOCUMENTFILE='a.doc'"), "");
    EXPECT_EQ(reports(), "Failed to export output no transcoder... 3/2\n");
    installXmlInitialisation([] { throw std::bad_alloc(); });
    EXPECT_EQ(exported("/DOC DOCUMENTFILE='a.doc'"), "");
    EXPECT_EQ(reports(), std::string("Failed to export output ") + std::bad_alloc().what() + "... 3/2\n");
    installXmlInitialisation([] { throw 7; });
    EXPECT_EQ(exported("/DOC DOCUMENTFILE='a.doc'"), "");
    EXPECT_EQ(reports(), "Failed to export output... 3/2\n");
    EXPECT_EQ(all<NotesAdded>().size() + all<TableFinished>().size(), 0U);
    EXPECT_EQ(all<ProcedureEnded>().size(), 1U);
    installXmlInitialisation(nullptr);
    EXPECT_NE(exported("/DOC DOCUMENTFILE='a.doc'"), "");
    EXPECT_EQ(reports(), "");
}

TEST_F(Export, ReportsAFailureOfTheXmlLibraryWhateverIsPrinted) {
    installXmlInitialisation([] { throw std::runtime_error(""); });
    installAdapter(nullptr);
    EXPECT_EQ(exported("PRINT=NEVER /PNG IMAGEROOT='r'"), "");
    ASSERT_EQ(all<ErrorReported>().size(), 1U) << "the adapter is not asked for";
    EXPECT_EQ(all<ErrorReported>()[0].text, "Failed to export output ^1...");
    EXPECT_EQ(all<ErrorReported>()[0].arguments, std::vector<std::string>{""});
}

TEST_F(Export, DoesNotTouchTheXmlLibraryBeforeThereIsSomethingToSend) {
    installXmlInitialisation([] { throw std::runtime_error("not now"); });
    for (const char* const command :
         {"", "/CONTENTS", "/DOC DOCUMENTFILE='a' /PDF DOCUMENTFILE='b'", "/DOC COLOR=RED"}) {
        EXPECT_EQ(exported(command), "");
        EXPECT_EQ(reports().find("not now"), std::string::npos) << command;
    }
}

}  // namespace
}  // namespace vexa
