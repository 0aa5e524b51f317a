#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "backend/platform/fonts.h"
#include "backend/platform/system_fonts.h"

namespace vexa {
namespace {

constexpr const wchar_t* kUserFonts = LR"(SOFTWARE\Microsoft\Windows NT\CurrentVersion\Fonts)";

/// A font that the user has installed for himself, as long as the object lives.
class UserFont {
  public:
    explicit UserFont(const wchar_t* name) : name_(name) {
        const std::wstring file = L"nowhere.ttf";
        const auto bytes = static_cast<DWORD>((file.size() + 1) * sizeof(wchar_t));
        EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kUserFonts, name, REG_SZ, file.c_str(), bytes),
                  ERROR_SUCCESS);
    }
    ~UserFont() { EXPECT_EQ(RegDeleteKeyValueW(HKEY_CURRENT_USER, kUserFonts, name_), ERROR_SUCCESS); }
    UserFont(const UserFont&) = delete;
    UserFont& operator=(const UserFont&) = delete;

  private:
    const wchar_t* name_;
};

bool isOfTheSystem(const std::string& family) {
    const std::vector<std::string> families = systemFonts();
    return std::find(families.begin(), families.end(), family) != families.end();
}

TEST(FontsOfWindows, AreThoseOfTheRegistry) {
    EXPECT_FALSE(isOfTheSystem("Vexa Tëst"));
    {
        const UserFont font(L"Vexa T\u00EBst Bold & Vexa Other (TrueType)");
        EXPECT_TRUE(isOfTheSystem("Vexa Tëst"));
        EXPECT_TRUE(isOfTheSystem("Vexa Other"));
        EXPECT_FALSE(isOfTheSystem("Vexa Tëst Bold"));
    }
    EXPECT_FALSE(isOfTheSystem("Vexa Tëst"));
}

TEST(FontsOfWindows, AreListed) {
    for (const std::string& family : installedFonts()) EXPECT_TRUE(isFontInstalled(family)) << family;
    EXPECT_TRUE(isFontInstalled("serif"));
    EXPECT_FALSE(isFontInstalled("A font that nobody has drawn"));
}

}  // namespace
}  // namespace vexa
