#include "backend/platform/user_languages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>

namespace vexa {
namespace {

using testing::ElementsAreArray;

/// The variables that name languages; as they were before when the object dies.
class Environment {
  public:
    explicit Environment(const std::map<std::string, std::string>& values) {
        for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
            const char* const value = std::getenv(name);
            before_[name] = value == nullptr ? std::nullopt : std::optional<std::string>(value);
            const auto given = values.find(name);
            set(name, given == values.end() ? std::nullopt : std::optional(given->second));
        }
    }
    ~Environment() {
        for (const auto& [name, value] : before_) set(name, value);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

  private:
    static void set(const std::string& name, const std::optional<std::string>& value) {
        if (value) {
            setenv(name.c_str(), value->c_str(), 1);
        } else {
            unsetenv(name.c_str());
        }
    }

    std::map<std::string, std::optional<std::string>> before_;
};

TEST(UserLanguages, AreThoseOfTheLocale) {
    const struct {
        std::map<std::string, std::string> environment;
        std::vector<std::string> languages;
    } cases[] = {
        {{}, {}},
        {{{"LANG", "de_DE.UTF-8"}}, {"de_DE"}},
        {{{"LANG", "de_DE@euro"}}, {"de_DE"}},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR.UTF-8"}}, {"fr_FR"}},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}, {"LC_ALL", "pl"}}, {"pl"}},
        {{{"LANG", "de_DE"}, {"LC_ALL", ""}}, {"de_DE"}},
        {{{"LANG", "de_DE"}, {"LANGUAGE", "sw:pt_BR::sw:de_DE"}}, {"sw", "pt_BR", "de_DE"}},
        {{{"LANG", "C.UTF-8"}, {"LANGUAGE", "de"}}, {}},
        {{{"LANG", "POSIX"}}, {}},
        {{{"LANGUAGE", "de"}}, {}},
        {{{"LANG", "de_DE"}, {"LC_ALL", "C"}}, {}},
    };
    for (const auto& one : cases) {
        const Environment environment(one.environment);
        EXPECT_THAT(userLanguages(), ElementsAreArray(one.languages))
            << testing::PrintToString(one.environment);
    }
}

}  // namespace
}  // namespace vexa
