#include "apps/vexa/options.h"

#include <gtest/gtest.h>

#include <vector>

namespace vexa::program {
namespace {

std::optional<Options> read(std::vector<const char*> arguments, int& status) {
    arguments.insert(arguments.begin(), "vexa");
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    std::optional<Options> options =
        readOptions(static_cast<int>(arguments.size()), arguments.data(), status);
    ::testing::internal::GetCapturedStdout();
    ::testing::internal::GetCapturedStderr();
    return options;
}

Options readGood(const std::vector<const char*>& arguments) {
    int status = -1;
    const std::optional<Options> options = read(arguments, status);
    EXPECT_TRUE(options);
    return options.value_or(Options());
}

TEST(Options, HasTheDefaults) {
    const Options options = readGood({"run", "a.vxs", "-"});
    EXPECT_EQ(options.action, Action::run);
    EXPECT_EQ(options.files, (std::vector<std::string>{"a.vxs", "-"}));
    EXPECT_EQ(options.session.adapter, AdapterKind::embedded);
    EXPECT_FALSE(options.session.localMode);
    EXPECT_FALSE(options.session.traceFile);
    EXPECT_FALSE(options.session.now);
    EXPECT_EQ(options.session.charset, "UTF-8");
    EXPECT_FALSE(options.session.language);
    EXPECT_EQ(options.session.installationFolder, "");
    EXPECT_FALSE(options.session.recordAll);
    EXPECT_FALSE(options.session.stopOnError);
    EXPECT_FALSE(options.session.checkOnly);
}

TEST(Options, ReadsEveryOptionOfRun) {
    const Options options =
        readGood({"run", "--adapter", "script:answers.jsonl", "--local-mode", "yes", "--trace", "-", "--now",
                  "2026-03-05T10:07:09", "--charset", "Shift_JIS", "--language", "de", "--installation",
                  "own/files", "--record", "all", "--stop-on-error", "a.vxs"});
    EXPECT_EQ(options.session.adapter, AdapterKind::script);
    EXPECT_EQ(options.session.answersFile, "answers.jsonl");
    EXPECT_TRUE(options.session.localMode);
    EXPECT_EQ(options.session.traceFile, "-");
    EXPECT_EQ(options.session.now, (LocalTime{2026, 3, 5, 10, 7, 9}));
    EXPECT_EQ(options.session.charset, "Shift_JIS");
    EXPECT_EQ(options.session.language, "de");
    EXPECT_EQ(options.session.installationFolder, "own/files");
    EXPECT_TRUE(options.session.recordAll);
    EXPECT_TRUE(options.session.stopOnError);
}

TEST(Options, ReadsTheOtherCommands) {
    EXPECT_EQ(readGood({}).action, Action::prompt);
    EXPECT_EQ(readGood({"--adapter", "none"}).session.adapter, AdapterKind::none);
    EXPECT_TRUE(readGood({"check", "a.vxs"}).session.checkOnly);
    EXPECT_EQ(readGood({"help", "OUTPUT", "SAVE"}).commandWords,
              (std::vector<std::string>{"OUTPUT", "SAVE"}));
    EXPECT_EQ(readGood({"password"}).action, Action::password);
    EXPECT_EQ(readGood({"run", "--adapter", "no-controller", "a"}).session.adapter,
              AdapterKind::noController);
}

TEST(Options, AnswersWrongUsageWithTwo) {
    const std::vector<std::vector<const char*>> wrong = {
        {"run"},
        {"rum", "a.vxs"},
        {"check"},
        {"run", "--adapter", "other", "a.vxs"},
        {"run", "--adapter", "script:", "a.vxs"},
        {"run", "--local-mode", "maybe", "a.vxs"},
        {"run", "--now", "2026-02-30T10:07:09", "a.vxs"},
        {"run", "--record", "some", "a.vxs"},
        {"run", "--nonsense", "a.vxs"},
        {"run", "a.vxs", "--trace"},
        {"password", "secret"},
    };
    for (const std::vector<const char*>& arguments : wrong) {
        int status = -1;
        EXPECT_FALSE(read(arguments, status)) << arguments.front();
        EXPECT_EQ(status, 2) << arguments.front();
    }
}

TEST(Options, AnswersHelpAndVersionWithZero) {
    for (const std::vector<const char*>& arguments :
         std::vector<std::vector<const char*>>{{"--help"},
                                               {"--version"},
                                               {"run", "--help"},
                                               {"check", "--help"},
                                               {"help", "--help"},
                                               {"password", "--help"}}) {
        int status = -1;
        EXPECT_FALSE(read(arguments, status));
        EXPECT_EQ(status, 0) << arguments.front();
    }
}

}  // namespace
}  // namespace vexa::program
