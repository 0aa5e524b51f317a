#include "frontend/export/xlsx/formula_shift.h"

#include <gtest/gtest.h>

namespace vexa::frontend {
namespace {

struct Case {
    const char* formula;
    const char* shifted;
};

TEST(FormulaShift, MovesWhatIsRelative) {
    constexpr Case cases[] = {
        {"A1", "B3"},
        {"$A$1+A$1+$A1", "$A$1+B$1+$A3"},
        {"SUM(A1:B2,Sheet2!C3)", "SUM(B3:C4,Sheet2!D5)"},
        {"'A1 and ''B2'''!C3", "'A1 and ''B2'''!D5"},
        {"\"A1 \"\"B2\"\"\"&C3", "\"A1 \"\"B2\"\"\"&D5"},
        {"LOG10(A1)+A1(1)", "LOG10(B3)+A1(1)"},
        {"Table1[[#This Row],[A1]]*B2", "Table1[[#This Row],[A1]]*C4"},
        {"[1]Sheet1!A1", "[1]Sheet1!B3"},
        {"A:A+$B:C", "B:B+$B:D"},
        {"1:1+$2:3", "3:3+$2:5"},
        {"1.5E+5+2e-3*A1", "1.5E+5+2e-3*B3"},
        {"TRUE+Name_1+A1B2+_A1", "TRUE+Name_1+A1B2+_A1"},
        {"#REF!+#N/A+A1", "#REF!+#N/A+B3"},
        {"a1*xfd1048576", "B3*#REF!"},
        {"IF(A1>=10,\"x\",A1%)", "IF(B3>=10,\"x\",B3%)"},
        {"", ""},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(shiftFormula(each.formula, 2, 1), each.shifted) << each.formula;
    }
}

TEST(FormulaShift, LosesWhatLeavesTheSheet) {
    EXPECT_EQ(shiftFormula("A1+B2", -1, -1), "#REF!+A1");
    EXPECT_EQ(shiftFormula("$A$1", -5, -5), "$A$1");
}

TEST(FormulaShift, ComesToAnEndWhateverItIs) {
    for (const char* text : {"\"", "'", "[", "#", "A", "$", "1E", "A1:", "((", "[[[", "\xFF\xFE"}) {
        EXPECT_EQ(shiftFormula(text, 0, 0), text);
    }
}

}  // namespace
}  // namespace vexa::frontend
