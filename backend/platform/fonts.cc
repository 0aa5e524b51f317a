#include "backend/platform/fonts.h"

#include <algorithm>
#include <array>
#include <set>

#include "backend/platform/system_fonts.h"
#include "backend/text/letters.h"
#include "backend/text/utf8.h"

namespace vexa {

namespace {

constexpr std::array<std::string_view, 3> kGenericFamilies = {"serif", "sans-serif", "monospace"};

/// What two names have in common that differ in case and in blanks around them only.
std::string comparable(std::string_view family) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = family.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    family = family.substr(first, family.find_last_not_of(kBlanks) - first + 1);
    std::string folded;
    while (!family.empty()) {
        const Utf8Character character = decodeUtf8(family);
        appendUtf8(folded, foldedLetter(character.code));
        family.remove_prefix(character.length);
    }
    return folded;
}

/// Families as they are listed, and as they are looked for.
struct Families {
    explicit Families(std::vector<std::string> names) : listed(std::move(names)) {
        std::sort(listed.begin(), listed.end());
        const auto isRepeated = [this](const std::string& family) {
            const std::string name = comparable(family);
            return name.empty() || !known.insert(name).second;
        };
        listed.erase(std::remove_if(listed.begin(), listed.end(), isRepeated), listed.end());
    }

    std::vector<std::string> listed;
    std::set<std::string> known;
};

std::optional<Families>& replaced() {
    static std::optional<Families> families;
    return families;
}

const Families& families() {
    if (replaced()) return *replaced();
    static const Families ofTheSystem(systemFonts());
    return ofTheSystem;
}

}  // namespace

std::vector<std::string> installedFonts() { return families().listed; }

bool isFontInstalled(std::string_view family) {
    const std::string name = comparable(family);
    const bool generic =
        std::find(kGenericFamilies.begin(), kGenericFamilies.end(), name) != kGenericFamilies.end();
    return generic || families().known.count(name) > 0;
}

void installFonts(std::optional<std::vector<std::string>> families) {
    replaced().reset();
    if (families) replaced().emplace(std::move(*families));
}

}  // namespace vexa
