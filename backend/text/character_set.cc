#include "backend/text/character_set.h"

#include "backend/text/character_set_implementations.h"

namespace vexa {

namespace {

std::unique_ptr<CharacterSet>& installed() {
    static std::unique_ptr<CharacterSet> set = std::make_unique<Utf8CharacterSet>();
    return set;
}

}  // namespace

std::unique_ptr<CharacterSet> CharacterSet::find(std::string_view name) {
    std::string canonicalName;
    auto converter = CodePageConverter::open(std::string(name), canonicalName);
    if (converter != nullptr) return CodePage::make(std::move(canonicalName), std::move(converter));
    if (canonicalName == "UTF-8") return std::make_unique<Utf8CharacterSet>();
    return nullptr;
}

const CharacterSet& currentCharacterSet() { return *installed(); }

void installCharacterSet(std::unique_ptr<CharacterSet> set) {
    installed() = set != nullptr ? std::move(set) : std::make_unique<Utf8CharacterSet>();
}

std::string toUtf8(std::string_view text) { return currentCharacterSet().toUtf8(text); }

std::string fromUtf8(std::string_view text) { return currentCharacterSet().fromUtf8(text); }

}  // namespace vexa
