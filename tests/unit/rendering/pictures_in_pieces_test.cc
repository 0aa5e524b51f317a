// Whole pictures of tables that are shown in several pieces: one a layer, or blocks of columns.
#include <gtest/gtest.h>

#include "tests/unit/rendering/example_tables.h"

namespace vexa {
namespace {

TEST(PictureInPieces, ShowsOneTableALayer) {
    EXPECT_EQ(picture(layered(), {80, true, false}), R"(
Visits
Country: Norway
┌──────────┬───────────────────────┐
│          │        Measure        │
│          ├────────┬──────────────┤
│ Kind     │  Count │ Comment      │
├──────────┼────────┼──────────────┤
│ first    │ 12     │ complete [a] │
│ repeated │  7 [b] │              │
└──────────┴────────┴──────────────┘

Country: Peru
┌──────────┬──────────────────────┐
│          │       Measure        │
│          ├────────────┬─────────┤
│ Kind     │      Count │ Comment │
├──────────┼────────────┼─────────┤
│ first    │ 1005 [b,a] │         │
│ repeated │            │         │
└──────────┴────────────┴─────────┘
[a] Checked by hand
[b] Estimated
)");
}

TEST(PictureInPieces, ShowsLayersInAscii) {
    EXPECT_EQ(picture(layered(), {80, false, false}), R"(
Visits
Country: Norway
+----------+-----------------------+
|          |        Measure        |
|          +--------+--------------+
| Kind     |  Count | Comment      |
+----------+--------+--------------+
| first    | 12     | complete [a] |
| repeated |  7 [b] |              |
+----------+--------+--------------+

Country: Peru
+----------+----------------------+
|          |       Measure        |
|          +------------+---------+
| Kind     |      Count | Comment |
+----------+------------+---------+
| first    | 1005 [b,a] |         |
| repeated |            |         |
+----------+------------+---------+
[a] Checked by hand
[b] Estimated
)");
}

TEST(PictureInPieces, ShowsBlocksOfColumns) {
    EXPECT_EQ(picture(broad(), {40, true, false}), R"(
Monthly
┌───────┬─────────────────────────────┐
│       │            Month            │
│       ├─────────────────────────────┤
│       │         First half          │
│       ├─────┬─────┬─────┬─────┬─────┤
│ Place │   1 │   2 │   3 │   4 │   5 │
├───────┼─────┼─────┼─────┼─────┼─────┤
│ Oslo  │ 111 │ 222 │ 333 │ 444 │ 555 │
│ Lima  │ 111 │ 222 │ 333 │ 444 │ 555 │
└───────┴─────┴─────┴─────┴─────┴─────┘

┌───────┬──────────────────────────────┐
│       │            Month             │
│       ├────────────┬─────────────────┤
│       │ First half │   Second half   │
│       ├────────────┼─────┬─────┬─────┤
│ Place │          6 │   7 │   8 │   9 │
├───────┼────────────┼─────┼─────┼─────┤
│ Oslo  │        666 │ 777 │ 888 │ 999 │
│ Lima  │        666 │ 777 │ 888 │ 999 │
└───────┴────────────┴─────┴─────┴─────┘

┌───────┬────────────────────┐
│       │       Month        │
│       ├────────────────────┤
│       │    Second half     │
│       ├──────┬──────┬──────┤
│ Place │   10 │   11 │   12 │
├───────┼──────┼──────┼──────┤
│ Oslo  │ 1110 │ 1221 │ 1332 │
│ Lima  │ 1110 │ 1221 │ 1332 │
└───────┴──────┴──────┴──────┘
)");
}

TEST(PictureInPieces, ShowsBlocksOfColumnsInAscii) {
    EXPECT_EQ(picture(broad(), {40, false, false}), R"(
Monthly
+-------+-----------------------------+
|       |            Month            |
|       +-----------------------------+
|       |         First half          |
|       +-----+-----+-----+-----+-----+
| Place |   1 |   2 |   3 |   4 |   5 |
+-------+-----+-----+-----+-----+-----+
| Oslo  | 111 | 222 | 333 | 444 | 555 |
| Lima  | 111 | 222 | 333 | 444 | 555 |
+-------+-----+-----+-----+-----+-----+

+-------+------------------------------+
|       |            Month             |
|       +------------+-----------------+
|       | First half |   Second half   |
|       +------------+-----+-----+-----+
| Place |          6 |   7 |   8 |   9 |
+-------+------------+-----+-----+-----+
| Oslo  |        666 | 777 | 888 | 999 |
| Lima  |        666 | 777 | 888 | 999 |
+-------+------------+-----+-----+-----+

+-------+--------------------+
|       |       Month        |
|       +--------------------+
|       |    Second half     |
|       +------+------+------+
| Place |   10 |   11 |   12 |
+-------+------+------+------+
| Oslo  | 1110 | 1221 | 1332 |
| Lima  | 1110 | 1221 | 1332 |
+-------+------+------+------+
)");
}

TEST(PictureInPieces, ShowsBlocksCutBetweenGroups) {
    EXPECT_EQ(picture(grouped(), {32, true, false}), R"(
Cases
┌─────────────────┬─────────┐
│                 │  Time   │
│                 ├─────────┤
│                 │  2025   │
│                 ├────┬────┤
│ Region │ Sex    │ Q1 │ Q2 │
├────────┼────────┼────┼────┤
│ North  │ Female │  7 │ 14 │
│        │ Male   │ 21 │ 28 │
├────────┼────────┼────┼────┤
│ South  │ Female │ 35 │ 42 │
│        │ Male   │ 49 │ 56 │
└────────┴────────┴────┴────┘

┌─────────────────┬────────────┐
│                 │    Time    │
│                 ├────────────┤
│ Region │ Sex    │ Total 2026 │
├────────┼────────┼────────────┤
│ North  │ Female │   1400 [a] │
│        │ Male   │   2800 [a] │
├────────┼────────┼────────────┤
│ South  │ Female │   4200 [a] │
│        │ Male   │   5600 [a] │
└────────┴────────┴────────────┘
Weighted by frequency
[a] Provisional
)");
}

TEST(PictureInPieces, ShowsLayersWithoutRowsAndColumns) {
    EXPECT_EQ(picture(layersOnly(), {80, true, false}), R"(
Layers
Year: 2025
┌───┐
│ 1 │
└───┘

Year: 2026
┌────┐
│ 22 │
└────┘
)");
}

}  // namespace
}  // namespace vexa
