#include <iostream>
#include <optional>
#include <string>

#include "apps/vexa/actions.h"
#include "apps/vexa/complaints.h"
#include "apps/vexa/exit_status.h"
#include "backend/platform/terminal.h"
#include "backend/strings/dictionary.h"
#include "frontend/store/password.h"

namespace vexa::program {

namespace {

/// The password, asked for twice on a terminal; nothing, after a complaint, when there is none.
std::optional<std::string> askForPassword() {
    std::optional<std::string> first = readSecretLine(translated("Password: "_text));
    std::optional<std::string> second = first ? readSecretLine(translated("Once more: "_text)) : std::nullopt;
    if (!second) {
        complain("No password was given."_text, {});
        return std::nullopt;
    }
    const bool same = *first == *second;
    frontend::wipe(*second);
    if (!same) {
        frontend::wipe(*first);
        complain("The two passwords are not the same. Nothing was encrypted."_text, {});
        return std::nullopt;
    }
    return first;
}

std::optional<std::string> readPassword() {
    if (isTerminal(StandardStream::input)) {
        return askForPassword();
    }
    std::string line;
    if (!std::getline(std::cin, line)) {
        complain("No password was given: standard input is empty."_text, {});
        return std::nullopt;
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return line;
}

}  // namespace

int printEncryptedPassword() {
    std::optional<std::string> password = readPassword();
    if (!password) {
        return exit_status::kUsage;
    }
    if (password->empty()) {
        complain("An empty password protects nothing. Nothing was encrypted."_text, {});
        return exit_status::kUsage;
    }
    std::string encrypted = frontend::encryptedPassword(*password);
    frontend::wipe(*password);
    if (encrypted.empty()) {
        complain(
            "There is not enough memory to encrypt the password. Close other programs and try again."_text,
            {});
        return exit_status::kUsage;
    }
    std::cout << encrypted << '\n';
    frontend::wipe(encrypted);
    return exit_status::kSuccess;
}

}  // namespace vexa::program
