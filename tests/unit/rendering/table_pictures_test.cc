// Whole pictures of tables, as a user sees them.
#include <gtest/gtest.h>

#include "tests/unit/rendering/example_tables.h"

namespace vexa {
namespace {

TEST(Picture, ShowsTheDocumentList) {
    EXPECT_EQ(picture(documents(), {80, true, false}), R"(
Output Document
┌──────┬───────────────────────────┐
│ Name │                           │
├──────┼───────────────────────────┤
│ 0    │ report                    │
│ 1    │ (unnamed)                 │
│ 2    │ analysis [a]              │
└──────┴───────────────────────────┘
[a] Active output document
)");
}

TEST(Picture, ShowsTheDocumentListInAscii) {
    EXPECT_EQ(picture(documents(), {80, false, false}), R"(
Output Document
+------+---------------------------+
| Name |                           |
+------+---------------------------+
| 0    | report                    |
| 1    | (unnamed)                 |
| 2    | analysis [a]              |
+------+---------------------------+
[a] Active output document
)");
}

TEST(Picture, ShowsACommentWithoutTitle) {
    EXPECT_EQ(picture(comment(), {80, true, false}), R"(
┌─────────┬───────────────────────────────────┐
│ Comment │                                   │
├─────────┼───────────────────────────────────┤
│ 0       │ First run with the new weights    │
│ 1       │ The sample was drawn again on 5   │
│         │ March, after the frame was        │
│         │ corrected.                        │
└─────────┴───────────────────────────────────┘
)");
}

TEST(Picture, ShowsACommentInAscii) {
    EXPECT_EQ(picture(comment(), {80, false, false}), R"(
+---------+-----------------------------------+
| Comment |                                   |
+---------+-----------------------------------+
| 0       | First run with the new weights    |
| 1       | The sample was drawn again on 5   |
|         | March, after the frame was        |
|         | corrected.                        |
+---------+-----------------------------------+
)");
}

TEST(Picture, ShowsGroupsOverColumnsAndNestedRows) {
    EXPECT_EQ(picture(grouped(), {80, true, false}), R"(
Cases
┌─────────────────┬──────────────────────┐
│                 │         Time         │
│                 ├─────────┬────────────┤
│                 │  2025   │            │
│                 ├────┬────┤            │
│ Region │ Sex    │ Q1 │ Q2 │ Total 2026 │
├────────┼────────┼────┼────┼────────────┤
│ North  │ Female │  7 │ 14 │   1400 [a] │
│        │ Male   │ 21 │ 28 │   2800 [a] │
├────────┼────────┼────┼────┼────────────┤
│ South  │ Female │ 35 │ 42 │   4200 [a] │
│        │ Male   │ 49 │ 56 │   5600 [a] │
└────────┴────────┴────┴────┴────────────┘
Weighted by frequency
[a] Provisional
)");
}

TEST(Picture, ShowsGroupsInAscii) {
    EXPECT_EQ(picture(grouped(), {80, false, false}), R"(
Cases
+-----------------+----------------------+
|                 |         Time         |
|                 +---------+------------+
|                 |  2025   |            |
|                 +----+----+            |
| Region | Sex    | Q1 | Q2 | Total 2026 |
+--------+--------+----+----+------------+
| North  | Female |  7 | 14 |   1400 [a] |
|        | Male   | 21 | 28 |   2800 [a] |
+--------+--------+----+----+------------+
| South  | Female | 35 | 42 |   4200 [a] |
|        | Male   | 49 | 56 |   5600 [a] |
+--------+--------+----+----+------------+
Weighted by frequency
[a] Provisional
)");
}

TEST(Picture, ShowsGroupsOfRowsInBold) {
    EXPECT_EQ(picture(exportSummary(), {0, true, true}), R"(
<b>Export Summary</b>
┌─────────────────────────┬───────────────────────────────────┐
│ <b>Contents</b>                │                                   │
├─────────────────────────┼───────────────────────────────────┤
│ Viewer                  │ Output1                           │
│ Document File           │ c:\projects\survey of             │
│                         │ households\results\first wave.pdf │
│ Image Files   Count     │                                 3 │
│               Root Name │                                   │
│ Format                  │ png                               │
└─────────────────────────┴───────────────────────────────────┘
)");
}

TEST(Picture, ShowsLabelsAndTextsWrappedForANarrowTerminal) {
    EXPECT_EQ(picture(exportSummary(), {48, true, false}), R"(
Export Summary
┌───────────────────────┬──────────────────────┐
│ Contents              │                      │
├───────────────────────┼──────────────────────┤
│ Viewer                │ Output1              │
├───────────────────────┼──────────────────────┤
│ Document File         │ c:\projects\survey   │
│                       │ of                   │
│                       │ households\results\  │
│                       │ first wave.pdf       │
├───────────────────────┼──────────────────────┤
│ Image       Count     │                    3 │
│ Files                 │                      │
│           ────────────┼──────────────────────┤
│             Root Name │                      │
├───────────────────────┼──────────────────────┤
│ Format                │ png                  │
└───────────────────────┴──────────────────────┘
)");
}

TEST(Picture, ShowsWideAndCombiningCharacters) {
    EXPECT_EQ(picture(wideTexts(), {80, true, false}), R"(
文字の幅
┌──────┬────────────────────────────────┐
│      │            Language            │
│      ├───────────┬──────────┬─────────┤
│ Key  │ de        │ ja       │ fr      │
├──────┼───────────┼──────────┼─────────┤
│ open │ Öffnen    │ 開く     │ élargir │
│ 保存 │ Speichern │ 保存する │ sauver  │
└──────┴───────────┴──────────┴─────────┘
)");
}

TEST(Picture, ShowsWideCharactersInAscii) {
    EXPECT_EQ(picture(wideTexts(), {80, false, false}), R"(
文字の幅
+------+--------------------------------+
|      |            Language            |
|      +-----------+----------+---------+
| Key  | de        | ja       | fr      |
+------+-----------+----------+---------+
| open | Öffnen    | 開く     | élargir |
| 保存 | Speichern | 保存する | sauver  |
+------+-----------+----------+---------+
)");
}

TEST(Picture, ShowsTextsThatHaveToBeBrokenOrMadeSafe) {
    EXPECT_EQ(picture(crowded(), {44, true, false}), R"(
A title that is longer than the terminal of
this picture is wide
┌─────┬───────────────────────────┐
│     │ A group with a long label │
│     ├───────────────────────────┤
│ Row │                         x │
├─────┼───────────────────────────┤
│ one │                         1 │
│ two │                           │
└─────┴───────────────────────────┘

┌─────┬────────────────────────────────────┐
│ Row │ y                                  │
├─────┼────────────────────────────────────┤
│ one │ first line                         │
│     │ second line                        │
│     │                                    │
│     │ https://example.org/a/very/long/   │
│     │ address/without/any/blank [a]      │
│ two │ ␛[31mred␛[0m␉and␇ more             │
└─────┴────────────────────────────────────┘
[a] A note that goes on for so long that it
    has to be continued on another line
)");
}

TEST(Picture, ShowsRulesBetweenRowsWhoseLabelsAreWrapped) {
    EXPECT_EQ(picture(longKeys(), {44, true, false}), R"(
texts.xlf
┌─────────────────────┬────────────────────┐
│                     │      Language      │
│                     ├────────────────────┤
│ Key                 │ ja                 │
├─────────────────────┼────────────────────┤
│ Contents            │ 内容               │
├─────────────────────┼────────────────────┤
│ OUTPUT EXPORT       │ OUTPUT EXPORT を実 │
│ requires an open    │ 行するには、出力文 │
│ output document.    │ 書を開いておいてく │
│                     │ ださい。           │
├─────────────────────┼────────────────────┤
│ Format              │ 形式               │
└─────────────────────┴────────────────────┘
)");
    EXPECT_EQ(picture(longKeys(), {44, false, false}), R"(
texts.xlf
+---------------------+--------------------+
|                     |      Language      |
|                     +--------------------+
| Key                 | ja                 |
+---------------------+--------------------+
| Contents            | 内容               |
+---------------------+--------------------+
| OUTPUT EXPORT       | OUTPUT EXPORT を実 |
| requires an open    | 行するには、出力文 |
| output document.    | 書を開いておいてく |
|                     | ださい。           |
+---------------------+--------------------+
| Format              | 形式               |
+---------------------+--------------------+
)");
}

TEST(Picture, ShowsNoRulesWhereTheLabelsAreNotWrapped) {
    EXPECT_EQ(picture(longKeys(), {0, false, false}).find("+\n| Format"), std::string::npos);
    EXPECT_NE(picture(longKeys(), {44, false, false}).find("+\n| Format"), std::string::npos);
}

TEST(Picture, ShowsColumnsWithoutRows) {
    EXPECT_EQ(picture(columnsOnly(), {80, true, false}), R"(
Columns
┌───────────────┐
│    Measure    │
├───────┬───────┤
│ Count │ Text  │
├───────┼───────┤
│     3 │ three │
└───────┴───────┘
)");
}

TEST(Picture, ShowsATableWithoutAnything) {
    EXPECT_EQ(picture(built("Nothing", [](BpPivotTable&) {}), {80, true, false}), R"(
Nothing
(empty)
)");
}

TEST(Picture, ShowsATableWithoutRows) {
    EXPECT_EQ(picture(withoutCells({}), {80, true, false}), R"(
croutput.xlf Help
(empty)
)");
}

TEST(Picture, ShowsATableWithoutCells) {
    EXPECT_EQ(picture(withoutCells({"open"}), {80, false, false}), R"(
croutput.xlf Help
+------+----------+
|      | Language |
|      +----------+
| Key  | de       |
+------+----------+
| open |          |
+------+----------+
)");
}

}  // namespace
}  // namespace vexa
