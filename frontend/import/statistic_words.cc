#include "frontend/import/statistic_words.h"

#include <array>
#include <pugixml.hpp>
#include <utility>

#include "backend/text/letters.h"
#include "backend/text/utf8.h"
#include "frontend/document/compared_text.h"
#include "frontend/import/text_input.h"

namespace vexa::frontend {

namespace {

using tables::StatisticRole;

constexpr std::uint64_t kLimit = std::uint64_t{1} << 20;

constexpr std::array<std::pair<std::string_view, StatisticRole>, 9> kRoles{{
    {"none", StatisticRole::none},
    {"mean", StatisticRole::mean},
    {"count", StatisticRole::count},
    {"percent", StatisticRole::percent},
    {"significance", StatisticRole::significance},
    {"residual", StatisticRole::residual},
    {"correlation", StatisticRole::correlation},
    {"median", StatisticRole::median},
    {"total", StatisticRole::total},
}};

/// What each ASCII character stands for in comparisons.
std::array<char, 128> makeFolded() {
    std::array<char, 128> folded{};
    for (std::size_t i = 0; i < folded.size(); ++i) {
        folded[i] = static_cast<char>(foldedLetter(static_cast<char32_t>(i)));
    }
    return folded;
}

/// `comparedText`, sooner for labels in ASCII, as most of them are.
std::string comparedLabel(std::string_view label) {
    static const std::array<char, 128> folded = makeFolded();
    if (asciiPrefix(label) != label.size()) return comparedText(label);
    label = withoutBlanks(label);
    std::string compared(label);
    for (char& c : compared) c = folded[static_cast<unsigned char>(c)];
    return compared;
}

}  // namespace

std::string_view roleWord(StatisticRole role) { return kRoles[static_cast<std::size_t>(role)].first; }

bool readRole(std::string_view word, StatisticRole& role) {
    for (const auto& [name, value] : kRoles) {
        if (name == word) {
            role = value;
            return true;
        }
    }
    return false;
}

FileResult StatisticWords::open(const std::string& path) {
    std::string xml;
    roles_.clear();
    if (FileResult result = FileSystem::current().read(path, xml, kLimit); !result) return result;
    return read(std::move(xml));
}

FileResult StatisticWords::read(std::string xml) {
    roles_.clear();
    pugi::xml_document document;
    const pugi::xml_parse_result parsed =
        document.load_buffer_inplace(xml.data(), xml.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!parsed) return {false, parsed.description()};
    for (const pugi::xml_node role : document.child("statisticRoles").children("role")) {
        StatisticRole value = StatisticRole::none;
        if (!readRole(role.attribute("name").value(), value)) continue;  // of a later version
        for (const pugi::xml_node word : role.children("word")) {
            roles_.try_emplace(comparedText(word.child_value()), value);
        }
    }
    return {};
}

StatisticRole StatisticWords::roleOf(std::string_view label) const {
    if (roles_.empty()) return StatisticRole::none;
    const auto found = roles_.find(comparedLabel(label));
    return found == roles_.end() ? StatisticRole::none : found->second;
}

}  // namespace vexa::frontend
