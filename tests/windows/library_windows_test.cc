#include <gtest/gtest.h>
#include <windows.h>

#include "backend/adapter/client_adapter.h"
#include "backend/adapter/go_to_caller.h"
#include "backend/platform/dynamic_library.h"
#include "backend/platform/file_system.h"
#include "backend/platform/windows_path.h"
#include "backend/tokens/command_text.h"

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

TEST(ProgramFolderOfWindows, IsWhereTheModuleStandsToo) {
    EXPECT_EQ(programFolder() + "\\vexaoutput.dll", FileSystem::current().canonicalPath(VEXA_MODULE_FILE));
}

}  // namespace
}  // namespace vexa
