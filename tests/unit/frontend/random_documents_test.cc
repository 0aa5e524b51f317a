#include "tests/unit/frontend/random_documents.h"

#include <gtest/gtest.h>

#include "tests/unit/frontend/sample_documents.h"

namespace vexa::frontend {
namespace {

TEST(RandomDocuments, OpenAsTheyWereSaved) {
    constexpr std::uint32_t seeds = 600;
    std::size_t items = 0;
    for (std::uint32_t seed = 0; seed < seeds; ++seed) {
        const auto document = randomDocument(seed);
        items += document->outline().size();
        const std::string bytes = saved(*document);
        const auto again = opened(bytes);
        ASSERT_NE(again, nullptr) << seed;
        ASSERT_TRUE(again->outline() == document->outline()) << seed;
        ASSERT_EQ(again->name(), document->name());
        // Equal documents, whatever they went through, give equal bytes.
        ASSERT_EQ(saved(*again), bytes) << seed;
    }
    EXPECT_GT(items, 2 * seeds);
}

TEST(RandomDocuments, CanBeSavedInEveryWay) {
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
        const auto document = randomDocument(seed);
        for (const bool dataModel : {true, false}) {
            SaveOptions options;
            options.type = DocumentFileType::reader;
            options.dataModel = dataModel;
            const auto again = opened(saved(*document, options));
            ASSERT_NE(again, nullptr) << seed;
            ASSERT_LE(again->outline().size(), document->outline().size());
        }
    }
}

}  // namespace
}  // namespace vexa::frontend
