#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "apps/vexa/actions.h"
#include "backend/text/character_set.h"

namespace vexa::program {
namespace {

/// Has standard input come from a terminal at which `typed` was typed, for as long as the object lives.
class TypingUser {
  public:
    explicit TypingUser(const std::string& typed) {
        grantpt(hand_);
        unlockpt(hand_);
        const int terminal = open(ptsname(hand_), O_RDWR | O_NOCTTY);
        dup2(terminal, STDIN_FILENO);
        close(terminal);
        EXPECT_EQ(write(hand_, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
    }
    TypingUser(const TypingUser&) = delete;
    TypingUser& operator=(const TypingUser&) = delete;
    ~TypingUser() {
        dup2(before_, STDIN_FILENO);
        close(before_);
        close(hand_);
        std::cin.clear();
    }

  private:
    int before_ = dup(STDIN_FILENO);
    int hand_ = posix_openpt(O_RDWR | O_NOCTTY);
};

TEST(TypedSyntax, IsConvertedToTheCharacterSetOfTheBackEnd) {
    constexpr const char* kEndOfInput = "\x04";
    const TypingUser user(std::string("OUTPUT DISPL\u00c4Y.\n") + kEndOfInput);
    Options options;
    options.action = Action::run;
    options.files = {"-"};
    options.session.adapter = AdapterKind::none;
    options.session.charset = "windows-1252";
    options.session.language = "en";
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(runFiles(options), 1);
    const std::string messages = ::testing::internal::GetCapturedStderr();
    installCharacterSet(CharacterSet::find("UTF-8"));
    EXPECT_NE(messages.find("<stdin>:1:1: error: There is no command \"OUTPUT DISPL\u00c4Y\"."),
              std::string::npos)
        << messages;
}

}  // namespace
}  // namespace vexa::program
