#include "backend/strings/dictionary.h"

namespace vexa {

StringDictionary& StringDictionary::current() {
    static StringDictionary dictionary;
    return dictionary;
}

void StringDictionary::add(std::string_view procedure, std::string_view key, std::string_view text) {
    auto texts = texts_.find(procedure);
    if (texts == texts_.end()) texts = texts_.try_emplace(std::string(procedure)).first;
    texts->second.insert_or_assign(std::string(key), std::string(text));
}

void StringDictionary::clear() { texts_.clear(); }

std::string_view StringDictionary::lookUp(std::string_view procedure, std::string_view key) const {
    const auto texts = texts_.find(procedure);
    if (texts == texts_.end()) return key;
    const auto text = texts->second.find(key);
    return text == texts->second.end() ? key : std::string_view(text->second);
}

}  // namespace vexa
