#include "backend/strings/dictionary.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

TEST(StringDictionary, FindsTextsByProcedureAndKey) {
    StringDictionary dictionary;
    dictionary.add("Output Name", "Name", "Nom");
    dictionary.add("Output Open", "Name", "Titre");
    EXPECT_EQ(dictionary.lookUp("Output Name", "Name"), "Nom");
    EXPECT_EQ(dictionary.lookUp("Output Open", "Name"), "Titre");
    dictionary.add("Output Name", "Name", "Nom du document");
    EXPECT_EQ(dictionary.lookUp("Output Name", "Name"), "Nom du document");
}

TEST(StringDictionary, AnUnknownKeyIsItsOwnText) {
    StringDictionary dictionary;
    EXPECT_EQ(dictionary.lookUp("Output Name", "Name"), "Name");
    dictionary.add("Output Name", "Name", "Nom");
    EXPECT_EQ(dictionary.lookUp("Output Name", "name"), "name");
    EXPECT_EQ(dictionary.lookUp("Output Open", "Name"), "Name");
    EXPECT_EQ(dictionary.lookUp("", ""), "");
}

TEST(StringDictionary, ClearForgetsTheTextsAndKeepsTheProcedure) {
    StringDictionary dictionary;
    dictionary.setProcedure("Output Name");
    dictionary.add("Output Name", "Name", "Nom");
    dictionary.clear();
    EXPECT_EQ(dictionary.lookUp("Output Name", "Name"), "Name");
    EXPECT_EQ(dictionary.procedure(), "Output Name");
}

TEST(StringDictionary, TheCurrentOneIsOne) {
    EXPECT_EQ(&StringDictionary::current(), &StringDictionary::current());
}

}  // namespace
}  // namespace vexa
