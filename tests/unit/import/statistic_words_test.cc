// Roles of categories, inferred from their labels.

#include "frontend/import/statistic_words.h"

#include <gtest/gtest.h>

#include "tests/unit/import/import_samples.h"

namespace vexa::frontend {
namespace {

using tables::StatisticRole;

TEST(StatisticWords, KnowEveryRoleInEveryLanguage) {
    const ImportSurroundings surroundings;
    const auto role = [&](const char* label) { return surroundings.words.roleOf(label); };
    for (const char* const label : {"Mean", "Mittelwert", "Media", "Moyenne", "平均値", "평균", "Średnia",
                                    "Média", "Среднее", "均值"}) {
        EXPECT_EQ(role(label), StatisticRole::mean) << label;
    }
    for (const char* const label : {"N", "n", "Count", "Anzahl", "Recuento", "Effectif", "Conteggio", "度数",
                                    "빈도", "Liczebność", "Contagem", "Частота", "计数", "計數"}) {
        EXPECT_EQ(role(label), StatisticRole::count) << label;
    }
    EXPECT_EQ(role("%"), StatisticRole::percent);
    EXPECT_EQ(role("Prozent"), StatisticRole::percent);
    EXPECT_EQ(role("Sig."), StatisticRole::significance);
    EXPECT_EQ(role("p"), StatisticRole::significance);
    EXPECT_EQ(role("Résidu"), StatisticRole::residual);
    EXPECT_EQ(role("相関係数"), StatisticRole::correlation);
    EXPECT_EQ(role("Médiane"), StatisticRole::median);
    EXPECT_EQ(role("ИТОГО"), StatisticRole::total);
}

TEST(StatisticWords, CompareWholeLabelsWithoutRegardToCase) {
    const ImportSurroundings surroundings;
    EXPECT_EQ(surroundings.words.roleOf("  MEAN "), StatisticRole::mean);
    EXPECT_EQ(surroundings.words.roleOf("Mean income"), StatisticRole::none);
    EXPECT_EQ(surroundings.words.roleOf(""), StatisticRole::none);
}

TEST(StatisticWords, SayWhyTheyAreNotThere) {
    StatisticWords words;
    EXPECT_FALSE(words.open("/no/such/file"));
    EXPECT_FALSE(words.read("<statisticRoles>"));
    EXPECT_EQ(words.size(), 0U);
    EXPECT_EQ(words.roleOf("Mean"), StatisticRole::none);
}

}  // namespace
}  // namespace vexa::frontend
