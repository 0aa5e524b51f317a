#include <gtest/gtest.h>
#include <windows.h>

#include <array>

#include "backend/adapter/client_adapter.h"
#include "backend/adapter/go_to_caller.h"
#include "backend/platform/dynamic_library.h"
#include "backend/platform/file_system.h"
#include "backend/platform/windows_path.h"
#include "backend/platform/windows_text.h"
#include "backend/tokens/command_text.h"
#include "tests/unit/platform/replaced_file.h"

namespace vexa {
namespace {

/// Leaves every command that wants something.
struct LeavingAdapter : ClientAdapter {
    bool isLocalMode() override { return true; }
    OutputController* outputController() override { throw VexaGoToCaller(); }
    std::string exchangeExport(const std::string& /*specification*/) override { throw VexaGoToCaller(); }
    std::string exchangeModify(const std::string& /*request*/) override { throw VexaGoToCaller(); }
};

/// The number of the next slot that the system has for data of threads: the lowest free one.
DWORD nextThreadSlot() {
    const DWORD slot = TlsAlloc();
    TlsFree(slot);
    return slot;
}

/// Loads the module, runs a command that is left in its exchange, and unloads it.
void loadOnce() {
    FileResult result;
    const auto library = DynamicLibrary::load(VEXA_MODULE_FILE, result);
    ASSERT_NE(library, nullptr) << result.reason;
    const CommandText command{"OUTPUT MODIFY /SELECT TABLES /DELETEOBJECT DELETE=YES", 13, "a.vxs"};
    const CurrentCommandScope scope(command);
    EXPECT_THROW(library->find("OUTMODIFY")(), VexaGoToCaller);
}

TEST(LibraryOfWindows, GivesBackItsThreadSlotsWhenItIsUnloaded) {
    LeavingAdapter adapter;
    installAdapter(&adapter);
    loadOnce();  // this program and the back end take theirs
    const DWORD before = nextThreadSlot();
    for (int round = 0; round < 3; ++round) loadOnce();
    EXPECT_EQ(nextThreadSlot(), before);
    installAdapter(nullptr);
}

TEST(LibraryOfWindows, IsFoundUnderEveryFormOfItsPath) {
    const std::string canonical = FileSystem::current().canonicalPath(VEXA_MODULE_FILE);
    for (const std::string& path :
         {std::string(VEXA_MODULE_FILE), toNativePath(VEXA_MODULE_FILE), canonical}) {
        FileResult result{false, "from before"};
        const auto library = DynamicLibrary::load(path, result);
        ASSERT_NE(library, nullptr) << path << ": " << result.reason;
        EXPECT_TRUE(result);
        EXPECT_NE(library->find("STBPRINT"), nullptr);
        EXPECT_EQ(library->find("DllMain"), nullptr) << "is no entry";
    }
}

TEST(LibraryOfWindows, IsFoundFromTheWorkingFolder) {
    const std::wstring file = systemPath(VEXA_MODULE_FILE);
    const std::string name = pathOfSystem(file.substr(file.find_last_of(L'\\') + 1));
    const std::wstring before = wholeSystemPath(L".");
    SetCurrentDirectoryW(file.substr(0, file.find_last_of(L'\\')).c_str());
    for (const std::string& path : {".\\" + name, "./" + name, "..\\bin\\" + name}) {
        FileResult result;
        EXPECT_NE(DynamicLibrary::load(path, result), nullptr) << path << ": " << result.reason;
    }
    SetCurrentDirectoryW(before.c_str());
}

TEST(LibraryOfWindows, SaysWhyItIsNotLoaded) {
    for (const char* path : {"\\no\\such\\library.dll", "vexaoutput.dll", ""}) {
        FileResult result;
        EXPECT_EQ(DynamicLibrary::load(path, result), nullptr) << path;
        EXPECT_FALSE(result) << path;
        EXPECT_NE(result.reason, "") << path;
    }
}

/// A file of always the same name among the temporary ones. Wine does not let go of one whose import failed,
/// so that it may stay.
class ScratchLibrary {
  public:
    explicit ScratchLibrary(const std::string& content) {
        std::array<wchar_t, MAX_PATH> folder{};
        GetTempPathW(folder.size(), folder.data());
        path = pathOfSystem(folder.data()) + "vexa-scratch-library.dll";
        const FileResult result = replaceFile(path, content);
        EXPECT_TRUE(result) << result.reason;
    }
    ScratchLibrary(const ScratchLibrary&) = delete;
    ScratchLibrary& operator=(const ScratchLibrary&) = delete;
    ~ScratchLibrary() { static_cast<void>(FileSystem::current().remove(path)); }

    std::string path;
};

TEST(LibraryOfWindows, SaysThatTheFileIsNoLibrary) {
    const ScratchLibrary library("MZ is not enough");
    FileResult result;
    EXPECT_EQ(DynamicLibrary::load(library.path, result), nullptr);
    EXPECT_EQ(result.reason, "Exec format error");
}

TEST(LibraryOfWindows, SaysThatAnotherLibraryIsMissing) {
    std::string content;
    ASSERT_TRUE(FileSystem::current().read(VEXA_MODULE_FILE, content, 100'000'000));
    const std::string needed = "vexabackend.dll";
    const std::size_t place = content.find(needed);
    ASSERT_NE(place, std::string::npos);
    const ScratchLibrary library(content.replace(place, needed.size(), "vexanowhere.dll"));
    FileResult result;
    EXPECT_EQ(DynamicLibrary::load(library.path, result), nullptr);
    EXPECT_EQ(result.reason, "a library that it needs is missing");
}

TEST(FailuresOfWindows, HaveWordsWithoutHoles) {
    EXPECT_EQ(failureOf(ERROR_BAD_EXE_FORMAT).reason, "Exec format error");
    EXPECT_EQ(failureOf(ERROR_INVALID_ORDINAL).reason, "Windows error ^1") << "its sentence names a file";
    EXPECT_EQ(failureOf(ERROR_INVALID_ORDINAL).arguments, std::vector<std::string>{"182"});
    EXPECT_EQ(failureOf(ERROR_DLL_INIT_FAILED).arguments.size(), 0U) << "this one's is whole";
    for (DWORD code = 1; code < 10000; ++code) {
        EXPECT_EQ(failureOf(code).reason.find("%1"), std::string::npos) << code;
    }
}

TEST(ProgramFolderOfWindows, IsWhereTheModuleStandsToo) {
    EXPECT_EQ(programFolder() + "\\vexaoutput.dll", FileSystem::current().canonicalPath(VEXA_MODULE_FILE));
}

}  // namespace
}  // namespace vexa
