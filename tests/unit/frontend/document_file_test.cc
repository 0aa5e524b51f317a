#include "frontend/store/document_file.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "backend/tables/layout/table_grid.h"
#include "frontend/package/zip_reader.h"
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
    EXPECT_TRUE(again->outline() == document->outline());
    EXPECT_FALSE(again->isModified());
    EXPECT_FALSE(again->isLocked());
}

TEST(DocumentFile, KeepsAnEmptyDocument) {
    const auto again = opened(saved(ViewerDocument()));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->name(), "");
    EXPECT_TRUE(again->outline().isEmpty());
}

TEST(DocumentFile, KeepsBigTablesAndOddNumbers) {
    tables::TableDimension dimension;
    dimension.categories.resize(1000);
    tables::TableDataBuilder odd({dimension, dimension, dimension, dimension});
    odd.setNumber(0, -std::numeric_limits<double>::infinity());
    odd.setNumber(1, 1.0 / 3);
    odd.setNumber(999'999'999'999, 5e-324);
    odd.setNumber(17'000'000'000, std::nan(""));
    tables::TableView view;
    view.rows = {1, 3};
    view.layers = {0, 2};
    ViewerDocument document;
    document.add(makeItem("big", TableContent{makeTable(1000, 40)}));
    document.add(makeItem("odd", TableContent{tables::makeTable(odd.finish(), view)}));
    const auto again = opened(saved(document));
    ASSERT_NE(again, nullptr);
    EXPECT_TRUE(again->outline() == document.outline());
}

/// What the entries of a file are together, unpacked.
std::uint64_t unpackedBytes(const std::string& bytes) {
    ZipReader archive;
    EXPECT_TRUE(archive.open(bytes));
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < archive.count(); ++i) total += archive.entry(i).bytes;
    return total;
}

// What can be opened can be saved: each entry counts once, for writing as for reading.
TEST(DocumentFile, SavesAndOpensUpToTheWholeLimit) {
    const auto document = makeEveryKind();
    const std::string bytes = saved(*document);
    SaveOptions options;
    options.archive.totalBytes = unpackedBytes(bytes);
    EXPECT_EQ(saved(*document, options), bytes);
    std::unique_ptr<ViewerDocument> again;
    EXPECT_TRUE(readDocument(bytes, "", again, options.archive));
    ASSERT_NE(again, nullptr);
    EXPECT_TRUE(again->outline() == document->outline());
    --options.archive.totalBytes;
    EXPECT_EQ(writeDocument(*document, options, [](std::string_view) { return PackageResult(); }).problem,
              StoreProblem::beyondLimits);
    EXPECT_EQ(readDocument(bytes, "", again, options.archive).problem, StoreProblem::tooLarge);
}

/// Numbers of one to seventeen digits with the point anywhere, either sign, and such as need an exponent.
std::vector<double> numbersOfAllLengths() {
    std::vector<double> numbers{0.0, -0.0, 1e15, 999999999999999, 9007199254740994, 1e300, 0.1 + 0.2};
    std::uint64_t random = 1;
    for (int digits = 1; digits <= 17; ++digits) {
        for (int decimals = 0; decimals <= 20; ++decimals) {
            random = random * 6364136223846793005U + 1442695040888963407U;
            const double whole =
                std::floor(std::pow(10.0, digits) * static_cast<double>(random >> 11U) / 0x1p53);
            numbers.push_back(whole / std::pow(10.0, decimals));
            numbers.push_back(-numbers.back());
        }
    }
    return numbers;
}

TEST(DocumentFile, KeepsEveryBitOfNumbers) {
    const std::vector<double> numbers = numbersOfAllLengths();
    tables::TableDimension dimension;
    dimension.categories.resize(numbers.size());
    tables::TableDataBuilder data({dimension});
    for (std::size_t i = 0; i < numbers.size(); ++i) data.setNumber(i, numbers[i]);
    tables::TableView view;
    view.rows = {0};
    ViewerDocument document;
    document.add(makeItem("numbers", TableContent{tables::makeTable(data.finish(), view)}));
    const auto again = opened(saved(document));
    ASSERT_NE(again, nullptr);
    const auto& table = std::get<TableContent>(itemAt(*again, 1).content).table;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const tables::TableCell* const cell = table.data->find(i);
        ASSERT_NE(cell, nullptr);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(numbers[i]), std::bit_cast<std::uint64_t>(cell->number))
            << numbers[i];
    }
}

TEST(DocumentFile, AMillionEqualNumbersCanBeSaved) {
    tables::TableDimension dimension;
    dimension.categories.resize(1200);
    tables::TableDataBuilder ones({dimension, dimension});
    for (tables::Place place = 0; place < ones.placeCount(); ++place) ones.setNumber(place, 1);
    tables::TableView view;
    view.rows = {0};
    view.columns = {1};
    ViewerDocument document;
    document.add(makeItem("ones", TableContent{tables::makeTable(ones.finish(), view)}));
    const std::string bytes = saved(document);
    EXPECT_GT(bytes.size(), 2'000'000U) << "small files may not become so large";
    const auto again = opened(bytes);
    ASSERT_NE(again, nullptr);
    EXPECT_TRUE(again->outline() == document.outline());
}

TEST(DocumentFile, TablesShareALookAsBefore) {
    auto look = std::make_shared<tables::TableLook>(*tables::plainLook());
    look->name = "green";
    look->area(tables::Area::title).background = tables::Color{0x00ff00};
    tables::TableStyle style;
    style.setLook(look);
    ViewerDocument document;
    for (int i = 0; i < 3; ++i) {
        tables::Table table = makeTable(2, 2);
        if (i != 1) table.style = std::make_shared<const tables::TableStyle>(style);
        document.add(makeItem("t", TableContent{table}));
    }
    const auto again = opened(saved(document));
    ASSERT_NE(again, nullptr);
    EXPECT_TRUE(again->outline() == document.outline());
    const auto lookOf = [&](std::size_t number) {
        return std::get<TableContent>(itemAt(*again, number).content).table.style->look();
    };
    EXPECT_EQ(lookOf(1), lookOf(3));
    EXPECT_EQ(lookOf(2), tables::plainLook());
}

TEST(DocumentFile, KeepsTheLockMark) {
    SaveOptions options;
    options.locked = true;
    const auto again = opened(saved(ViewerDocument(), options));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->lock(), (DocumentLock{true, {}}));
}

TEST(DocumentFile, TheReadersCopyHasOnlyWhatReadersSee) {
    ViewerDocument document;
    const ItemId run = document.add(makeItem("run", HeaderContent{}));
    document.add(makeItem("log", LogContent{"x"}), run);
    document.add(makeItem("warning", WarningContent{2, "x"}), run);
    document.add(makeItem("notes", NotesContent{}),
                 document.add(makeItem("left empty", HeaderContent{}), run));
    document.add(makeItem("text", plainText("x")), run);
    Item hidden = makeItem("hidden", HeaderContent{});
    hidden.visible = false;
    document.add(makeItem("under hidden", plainText("x")), document.add(hidden));
    SaveOptions options;
    options.type = DocumentFileType::reader;
    const auto again = opened(saved(document, options));
    ASSERT_NE(again, nullptr);
    ASSERT_EQ(again->outline().size(), 2U);
    EXPECT_EQ(itemAt(*again, 1).label, "run");
    EXPECT_EQ(itemAt(*again, 2).label, "text");
}

TEST(DocumentFile, InTheReadersCopyAModelShowsAViewThatIsThere) {
    for (const std::size_t shown : {0U, 1U, 2U}) {
        ViewerDocument document;
        const ItemId model = document.add(makeItem("model", ModelContent{shown, {}}));
        Item hidden = makeItem("hidden", plainText("x"));
        hidden.visible = false;
        document.add(makeItem("first", plainText("x")), model);
        document.add(shown == 2 ? makeItem("second", plainText("x")) : hidden, model);
        document.add(shown == 2 ? hidden : makeItem("third", plainText("x")), model);
        SaveOptions options;
        options.type = DocumentFileType::reader;
        const auto again = opened(saved(document, options));
        ASSERT_NE(again, nullptr);
        EXPECT_EQ(again->outline().size(), 3U);
        EXPECT_EQ(std::get<ModelContent>(itemAt(*again, 1).content).shown, shown == 0 ? 0U : 1U);
    }
}

TEST(DocumentFile, WithoutTheDataModelTablesAreGrids) {
    ViewerDocument document;
    document.add(makeItem("Table", TableContent{makeTable(2, 2)}));
    SaveOptions options;
    options.dataModel = false;
    const auto again = opened(saved(document, options));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(*std::get<GridContent>(itemAt(*again, 1).content).grid, *tables::flatten(makeTable(2, 2)));
}

TEST(DocumentFile, ATableThatIsTooLargeForAGridIsRefused) {
    ViewerDocument document;
    document.add(makeItem("Wide", TableContent{makeTable(2000, 2000)}));
    SaveOptions options;
    options.dataModel = false;
    const StoreResult result =
        writeDocument(document, options, [](std::string_view) { return PackageResult(); });
    EXPECT_EQ(result.problem, StoreProblem::tableTooLarge);
    EXPECT_EQ(result.detail, "Table");
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
    ItemId header = 0;
    for (std::size_t depth = 1; depth <= limits::outlineDepth; ++depth) {
        header = document.add(makeItem("h", HeaderContent{}), header);
    }
    ASSERT_NE(opened(saved(document)), nullptr);
    document.add(makeItem("too deep", TextContent{}), header);
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
    EXPECT_TRUE(byPassword->outline() == document->outline());
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
    ViewerDocument document;
    document.add(makeItem(all, plainText(all)));
    const auto again = opened(saved(document));
    ASSERT_NE(again, nullptr);
    EXPECT_TRUE(again->outline() == document.outline());
}

}  // namespace
}  // namespace vexa::frontend
