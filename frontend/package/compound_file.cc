#include "frontend/package/compound_file.h"

#include <algorithm>
#include <utility>

#include "backend/text/letters.h"
#include "backend/text/utf16.h"
#include "frontend/package/compound_format.h"

namespace vexa::frontend {

namespace {

char32_t capital(char16_t unit) { return capitalLetter(unit); }

bool sameName(const std::u16string& left, const std::u16string& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char16_t a, char16_t b) { return a == b || capital(a) == capital(b); });
}

}  // namespace

bool compoundNameLess(const std::u16string& left, const std::u16string& right) {
    if (left.size() != right.size()) return left.size() < right.size();
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char16_t a, char16_t b) { return capital(a) < capital(b); });
}

CompoundFile::CompoundFile() {
    CompoundEntry root;
    root.name = u"Root Entry";
    root.isStorage = true;
    entries_.push_back(std::move(root));
}

bool CompoundFile::isOne(std::string_view bytes) { return bytes.starts_with(compoundformat::signature); }

std::optional<std::size_t> CompoundFile::find(std::string_view path) const {
    std::size_t place = 0;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        const std::u16string name = utf8ToUtf16(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
        const auto found = std::find_if(
            entries_.begin() + 1, entries_.end(),
            [&](const CompoundEntry& entry) { return entry.parent == place && sameName(entry.name, name); });
        if (found == entries_.end()) return std::nullopt;
        place = static_cast<std::size_t>(found - entries_.begin());
    }
    return place;
}

std::size_t CompoundFile::addStorage(std::size_t parent, std::string_view name) {
    CompoundEntry entry;
    entry.name = utf8ToUtf16(name);
    entry.isStorage = true;
    entry.parent = parent;
    entries_.push_back(std::move(entry));
    return entries_.size() - 1;
}

std::size_t CompoundFile::addStream(std::size_t parent, std::string_view name, std::string content) {
    CompoundEntry entry;
    entry.name = utf8ToUtf16(name);
    entry.parent = parent;
    entry.content = std::move(content);
    entries_.push_back(std::move(entry));
    return entries_.size() - 1;
}

}  // namespace vexa::frontend
