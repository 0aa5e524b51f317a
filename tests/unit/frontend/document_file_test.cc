#include "frontend/store/document_file.h"

#include <gtest/gtest.h>

#include <cmath>

#include "frontend/package/xml_escapes.h"
#include "frontend/store/item_xml.h"
#include "frontend/store/limits.h"
#include "frontend/store/password.h"
#include "tests/unit/frontend/sample_documents.h"

namespace vexa::frontend {
namespace {

TEST(DocumentFile, KeepsEveryKindOfItem) {
    const auto document = makeEveryKind();
    const auto again = opened(saved(*document));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->name(), document->name());
    EXPECT_EQ(again->items(), document->items());
    EXPECT_FALSE(again->isModified());
    EXPECT_FALSE(again->isLocked());
}

TEST(DocumentFile, KeepsAnEmptyDocument) {
    const auto again = opened(saved(ViewerDocument()));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->name(), "");
    EXPECT_TRUE(again->items().empty());
}

TEST(DocumentFile, KeepsBigTablesAndOddNumbers) {
    auto odd = std::make_shared<PivotTable>();
    odd->dimensions.push_back({"", 0, {0, 0, 0, 0}, {}, {{"a", -1}, {"b", -1}, {"c", -1}, {"d", -1}}});
    odd->cells = {{3, "tiny", 5e-324, 0},
                  {1, "third", 1.0 / 3, 0},
                  {0, "infinite", -std::numeric_limits<double>::infinity(), 0},
                  {2, "large", 1.7976931348623157e308, 0}};
    ViewerDocument document;
    document.add(makeItem("big", TableContent{makeTable(1000, 40)}));
    document.add(makeItem("odd", TableContent{odd}));
    const auto again = opened(saved(document));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->items(), document.items());
}

TEST(DocumentFile, KeepsTheLockMark) {
    SaveOptions options;
    options.locked = true;
    const auto again = opened(saved(ViewerDocument(), options));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->lock(), (DocumentLock{true, false}));
}

TEST(DocumentFile, TheReadersCopyHasOnlyWhatReadersSee) {
    SaveOptions options;
    options.type = DocumentFileType::reader;
    const auto again = opened(saved(*makeEveryKind(), options));
    ASSERT_NE(again, nullptr);
    ASSERT_EQ(again->items().size(), 4U);
    const auto& outer = std::get<HeadingContent>(again->items()[0].content).children;
    ASSERT_EQ(outer.size(), 1U);
    const auto& inner = std::get<HeadingContent>(outer[0].content).children;
    ASSERT_EQ(inner.size(), 1U);
    EXPECT_EQ(inner[0].kind(), ItemKind::table);
}

TEST(DocumentFile, WithoutTheDataModelTablesAreGrids) {
    ViewerDocument document;
    document.add(makeItem("Table", TableContent{makeTable(2, 2)}));
    SaveOptions options;
    options.dataModel = false;
    const auto again = opened(saved(document, options));
    ASSERT_NE(again, nullptr);
    const auto& flat = std::get<FlatTableContent>(again->items()[0].content);
    EXPECT_EQ(*flat.table, *flatten(*makeTable(2, 2)));
}

TEST(DocumentFile, ATableThatIsTooLargeForAGridIsRefused) {
    auto table = std::make_shared<PivotTable>();
    table->title = "Wide";
    for (int axis : {0, 1}) {
        PivotDimension dimension{"", 0, {axis, 0, 0, 0}, {}, {}};
        dimension.categories.resize(2000, {"x", -1});
        table->dimensions.push_back(dimension);
    }
    ViewerDocument document;
    document.add(makeItem("Wide", TableContent{table}));
    SaveOptions options;
    options.dataModel = false;
    const StoreResult result =
        writeDocument(document, options, [](std::string_view) { return PackageResult(); });
    EXPECT_EQ(result.problem, StoreProblem::tableTooLarge);
    EXPECT_EQ(result.detail, "Wide");
}

TEST(DocumentFile, TheSameDocumentGivesTheSameBytes) {
    EXPECT_EQ(saved(*makeEveryKind()), saved(*makeEveryKind()));
    SaveOptions options;
    options.passwordForm = sampleForm;
    options.keyCost = cheapKey;
    EXPECT_NE(saved(*makeEveryKind(), options), saved(*makeEveryKind(), options));
}

TEST(DocumentFile, AnOutlineThatIsTooDeepIsRefused) {
    ViewerDocument document;
    ItemId heading = 0;
    for (int depth = 1; depth <= limits::outlineDepth; ++depth) {
        heading = document.add(makeItem("h", HeadingContent{}), heading);
    }
    const auto again = opened(saved(document));
    ASSERT_NE(again, nullptr);
    document.add(makeItem("too deep", TextContent{}), heading);
    const StoreResult result = writeDocument(document, {}, [](std::string_view) { return PackageResult(); });
    EXPECT_EQ(result.problem, StoreProblem::beyondLimits);
}

TEST(Protection, KeepsTheContentFromWhoeverLacksThePassword) {
    SaveOptions options;
    options.passwordForm = encryptedPassword("secret");
    options.keyCost = cheapKey;
    const auto document = makeEveryKind();
    const std::string bytes = saved(*document, options);
    EXPECT_EQ(bytes.find("items/"), std::string::npos);
    EXPECT_EQ(problemOf(bytes).problem, StoreProblem::passwordMissing);
    EXPECT_EQ(problemOf(bytes, "Secret").problem, StoreProblem::passwordWrong);
    const auto byPassword = opened(bytes, "secret");
    ASSERT_NE(byPassword, nullptr);
    EXPECT_EQ(byPassword->items(), document->items());
    EXPECT_NE(opened(bytes, options.passwordForm), nullptr);
}

TEST(Protection, AFileWithoutProtectionOpensWithAnyPassword) {
    EXPECT_NE(opened(saved(ViewerDocument()), "whatever"), nullptr);
}

TEST(Protection, FindsCutsAndSwaps) {
    const Protection protection = makeProtection(cheapKey);
    const std::string plain(3 * sealedChunkBytes, 'x');
    std::string sealed;
    ASSERT_TRUE(seal(sampleForm, protection, "manifest", plain, sealed));
    std::string again;
    ASSERT_TRUE(unseal(sampleForm, protection, "manifest", sealed, again));
    EXPECT_EQ(again, plain);
    EXPECT_EQ(unseal(sampleForm, protection, "manifesT", sealed, again).problem, StoreProblem::passwordWrong);

    constexpr std::size_t head = 24 + 17;
    constexpr std::size_t chunk = sealedChunkBytes + 17;
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{40}, head, head + chunk, head + 2 * chunk + 5}) {
        EXPECT_EQ(unseal(sampleForm, protection, "manifest", sealed.substr(0, length), again).problem,
                  StoreProblem::damaged)
            << length;
        EXPECT_TRUE(again.empty());
    }
    const std::string swapped = sealed.substr(0, head) + sealed.substr(head + chunk, chunk) +
                                sealed.substr(head, chunk) + sealed.substr(head + 2 * chunk);
    EXPECT_EQ(unseal(sampleForm, protection, "manifest", swapped, again).problem, StoreProblem::damaged);
}

TEST(Password, HasOneFormOfTwentyCharacters) {
    // Pinned: the form of a password may never change, because forms stand in users' syntax files.
    const std::string form = encryptedPassword("secret");
    EXPECT_EQ(form, "p9vFiqZ8o9SCxKynUbNG");
    EXPECT_EQ(encryptedPassword("p\xc3\xa4ss"), "RkRB-7I62wHmpSrd2Nm2");
    EXPECT_TRUE(isEncryptedPassword(form));
    EXPECT_EQ(encryptedPassword("secret"), form);
    EXPECT_NE(encryptedPassword("Secret"), form);
    EXPECT_FALSE(isEncryptedPassword("secret"));
    EXPECT_FALSE(isEncryptedPassword("aaaaaaaaaaaaaaaaaaa="));
    EXPECT_TRUE(isEncryptedPassword(sampleForm));
}

TEST(XmlText, EveryByteSurvives) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
        all += "\\0";
    }
    std::string xml;
    ASSERT_TRUE(writeItemXml(TextContent{all}, xml));
    ItemContent content;
    ASSERT_TRUE(readItemXml(ItemKind::text, xml, content));
    EXPECT_EQ(std::get<TextContent>(content).text, all);
    for (std::string bad : {"\\", "\\4", "x\\4g", "\\a0", "\\"}) {
        EXPECT_FALSE(decodeBackslashes(bad)) << bad;
    }
}

}  // namespace
}  // namespace vexa::frontend
