#include "apps/vexa/diagnostics.h"

#include <gtest/gtest.h>

namespace vexa::program {
namespace {

TEST(DiagnosticHint, IsWhatStandsBehindTheFirstSentence) {
    EXPECT_EQ(hintOf("Found \"x\". Did you mean y?", {}), "Did you mean y?");
    EXPECT_EQ(hintOf("One sentence alone.", {}), "");
    EXPECT_EQ(hintOf("What? Nothing. More.", {}), "Nothing. More.");
    EXPECT_EQ(hintOf("\u5f00\u4e0d\u4e86\u3002\u518d\u8bd5\u3002", {}), "\u518d\u8bd5\u3002");
    EXPECT_EQ(hintOf("", {}), "");
}

TEST(DiagnosticHint, DoesNotBeginInsideAnArgument) {
    EXPECT_EQ(hintOf("There is no file a. b.vxv. Check its name.", {"a. b.vxv"}), "Check its name.");
    EXPECT_EQ(hintOf("Found \"a. b\" here. Use c.", {}), "Use c.");
    EXPECT_EQ(hintOf("There is no x. Use x.", {"", "x"}), "Use x.");
}

TEST(DiagnosticLine, HasEveryKeyInOneOrder) {
    EXPECT_EQ(
        diagnosticLine({.code = diagnostic_code::kSyntax,
                        .level = 3,
                        .file = "a.vxs",
                        .line = 2,
                        .column = 5,
                        .text = "Wrong. Mend it."}),
        R"({"code":"syntax","severity":"error","file":"a.vxs","line":2,"column":5,"text":"Wrong. Mend it.","hint":"Mend it."})"
        "\n");
    EXPECT_EQ(
        diagnosticLine({.code = diagnostic_code::kCommand,
                        .level = 2,
                        .text = "No a.",
                        .key = "No ^1.",
                        .arguments = {"a"}}),
        R"({"code":"command","severity":"warning","file":null,"line":null,"column":null,"text":"No a.","hint":null,"key":"No ^1.","arguments":["a"]})"
        "\n");
}

TEST(DiagnosticLine, IsAsciiWhateverTheTextIs) {
    const std::string line = diagnosticLine(
        {.code = diagnostic_code::kProgram, .level = 1, .text = "\x1b[1m\x7f \xff \u202e \u00e9"});
    EXPECT_NE(line.find(R"("text":"\u001b[1m\u007f \ufffd \u202e \u00e9")"), std::string::npos) << line;
    EXPECT_NE(line.find(R"("severity":"note")"), std::string::npos);
}

}  // namespace
}  // namespace vexa::program
