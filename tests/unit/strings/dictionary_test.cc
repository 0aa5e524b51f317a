#include "backend/strings/dictionary.h"

#include <gtest/gtest.h>

#include "tests/unit/strings/installed_texts.h"

namespace vexa {
namespace {

using std::string;

const std::initializer_list<InstalledTexts::Text> kTexts = {
    {"outname.xlf", "Name", "Nom"},
    {"outname.xlf", "Both", "du nom"},
    {"outopen.xlf", "Name", "Titre"},
    {"synparse.xlf", "Found ^1.", "Trouv\u00e9 : ^1."},
    {"synparse.xlf", "Both", "de l'analyseur"},
    {"outframe.xlf", "Too long", "Trop long"},
    {"outsave.xlf", "Only here", "Seulement ici"},
};

string under(std::string_view procedure, std::string_view key) {
    StringDictionary& dictionary = StringDictionary::current();
    dictionary.setProcedure(procedure);
    string text = dictionary.lookUp(key);
    dictionary.setProcedure("");
    return text;
}

TEST(StringDictionary, LooksInTheTableOfTheProcedureAndThenInThoseOfTheLibraries) {
    const InstalledTexts installed(kTexts);
    EXPECT_EQ(under("Output Name", "Name"), "Nom");
    EXPECT_EQ(under("Output Open", "Name"), "Titre");
    EXPECT_EQ(under("Output Name", "Too long"), "Trop long");
    EXPECT_EQ(under("Output Name", "Both"), "du nom");
    EXPECT_EQ(under("Output Open", "Both"), "de l'analyseur");
    EXPECT_EQ(under("", "Both"), "de l'analyseur");
    EXPECT_EQ(under("Unknown", "Too long"), "Trop long");
}

TEST(StringDictionary, AKeyThatNoTableHasIsItsOwnText) {
    const InstalledTexts installed(kTexts);
    EXPECT_EQ(under("Output Name", "name"), "name");
    EXPECT_EQ(under("Output Name", "Only here"), "Only here");
    EXPECT_EQ(under("Output Display", "Name"), "Name");
    EXPECT_EQ(under("Output Name", ""), "");
}

TEST(StringDictionary, AnEmptyTextCountsAsNone) {
    const InstalledTexts installed({{"synparse.xlf", "later", "found"}});
    frontend::MemoryFileSystem other;
    forgetStringTables();
    other.files["\\texts\\outname.xlf"] = tableOf("<trans-unit id='Name'><source/></trans-unit>");
    EXPECT_EQ(under("Output Name", "Name"), "Name");
}

TEST(ShownReason, IsInTheLanguageOfTheUserWithItsArguments) {
    const InstalledTexts installed({{"platform.xlf", "more than ^1 bytes", "plus de ^1 octets"}});
    EXPECT_EQ(shownReason({false, "more than ^1 bytes", {"7"}}), "plus de 7 octets");
    EXPECT_EQ(shownReason({false, "more than ^1 blocks", {"^1"}}), "more than ^1 blocks");
    EXPECT_EQ(shownReason({}), "");
}

// The table that lacks its own complaint is the one that is being read.
TEST(ShownReason, OfATableThatCannotBeReadIsFoundInTheOthers) {
    InstalledTexts installed({{"platform.xlf", "It is not an XLIFF file", "Pas un fichier XLIFF"}});
    frontend::MemoryFileSystem& system = installed.system();
    system.files["\\texts\\outname.xlf"] = "<other/>";
    EXPECT_EQ(under("Output Name", "It is not an XLIFF file"), "Pas un fichier XLIFF");
    std::vector<keyValueGloss> entries;
    EXPECT_FALSE(FacSTStringTable().GetKeysAndValues("\\texts\\outname.xlf", entries));
    const std::vector<StringTableComplaint> complaints = takeStringTableComplaints();
    ASSERT_EQ(complaints.size(), 1U);
    EXPECT_EQ(complaints[0].reason, "Pas un fichier XLIFF");
}

TEST(StringDictionary, HasNoTextsUntilItIsOpened) {
    StringDictionary dictionary;
    dictionary.setProcedure("Output Name");
    EXPECT_EQ(dictionary.lookUp("Name"), "Name");
    const InstalledTexts installed(kTexts);
    EXPECT_EQ(dictionary.lookUp("Name"), "Name");
    dictionary.open("\\texts\\");
    EXPECT_EQ(dictionary.lookUp("Name"), "Nom");
    EXPECT_EQ(dictionary.lookUp("Too long"), "Trop long");
    EXPECT_EQ(dictionary.procedure(), "Output Name");
    dictionary.open("");
    EXPECT_EQ(dictionary.lookUp("Name"), "Name");
    EXPECT_EQ(dictionary.lookUp("Too long"), "Too long");
}

TEST(StringDictionary, TheCurrentOneIsOne) {
    EXPECT_EQ(&StringDictionary::current(), &StringDictionary::current());
}

TEST(ShownText, IsTranslatedAndItsMarkersReplaced) {
    const InstalledTexts installed(kTexts);
    EXPECT_EQ(translated("Too long"), "Trop long");
    EXPECT_EQ(composed("Found ^1."_text, {"\"^1\""}), "Trouv\u00e9 : \"^1\".");
    EXPECT_EQ(composed("not ^2 there ^1"_text, {"a", "b"}), "not b there a");
}

TEST(Sentences, StandBehindABlankButNotBehindAWideFullStop) {
    const struct {
        const char *first, *second, *message;
    } cases[] = {
        {"One.", "Two.", "One. Two."},
        {"", "Two.", "Two."},
        {"One.", "", "One."},
        {"\u4e00\u3002", "\u4e8c\u3002", "\u4e00\u3002\u4e8c\u3002"},
        {"\u4e00\uff1f", "\u4e8c", "\u4e00\uff1f\u4e8c"},
        {"One", "\u4e8c", "One \u4e8c"},
    };
    for (const auto& each : cases) {
        string message = each.first;
        appendSentence(message, each.second);
        EXPECT_EQ(message, each.message);
    }
}

}  // namespace
}  // namespace vexa
