#include "apps/vexa/password_mask.h"

#include <algorithm>
#include <string>
#include <vector>

#include "backend/text/character_set.h"

namespace vexa::program {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kMask = "***";
constexpr std::string_view kKeyword = "PASSWORD";

std::string_view withoutBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n"), text.size()));
    return text;
}

/// The text of the literal that `text` begins with, its doubled quotes single; empty for none.
std::string literalAt(std::string_view text) {
    std::string literal;
    const char quote = text.empty() ? '\0' : text.front();
    if (quote != '\'' && quote != '"') return literal;
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == quote && (++at >= text.size() || text[at] != quote)) break;
        literal += text[at];
    }
    return literal;
}

std::vector<std::string> passwordsIn(std::string_view command) {
    std::vector<std::string> passwords;
    for (std::size_t at = 0; at + kKeyword.size() <= command.size(); ++at) {
        if (!equalsIgnoringCase(command.substr(at, kKeyword.size()), kKeyword)) continue;
        std::string_view rest = withoutBlanks(command.substr(at + kKeyword.size()));
        if (rest.starts_with('=')) rest = withoutBlanks(rest.substr(1));
        if (std::string password = literalAt(rest); !password.empty()) {
            passwords.push_back(std::move(password));
        }
    }
    return passwords;
}

void maskTexts(Json& value, const std::vector<std::string>& passwords) {
    if (value.is_structured()) {
        for (Json& each : value) maskTexts(each, passwords);
    } else if (value.is_string()) {
        auto& text = value.get_ref<std::string&>();
        for (const std::string& each : passwords) {
            for (std::size_t at = text.find(each); at != std::string::npos;
                 at = text.find(each, at + kMask.size())) {
                text.replace(at, each.size(), kMask);
            }
        }
    }
}

}  // namespace

void maskPasswords(Json& line, std::string_view command) {
    const auto password = line.find("password");
    if (password != line.end() && password->is_string() && !password->get_ref<const std::string&>().empty()) {
        *password = kMask;
    }
    const std::vector<std::string> passwords = passwordsIn(command);
    if (passwords.empty()) return;
    for (auto& [key, value] : line.items()) {
        if (key != "event" && key != "password") maskTexts(value, passwords);
    }
}

}  // namespace vexa::program
