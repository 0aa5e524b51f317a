// Reads one XML element of a document file to the last attribute: what is not understood is refused, so that
// nothing of a file is lost in silence.
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "backend/tables/formats/display_format.h"
#include "backend/tables/model/table_look.h"

namespace vexa::frontend {

/// Asked for one attribute after the other; one that is missing leaves its value alone. `isRead` tells
/// whether all of them could be read and nothing else stands there; what does not fit is an objection
/// (objection.h).
class ElementReader {
  public:
    explicit ElementReader(const pugi::xml_node& node) : node_(node) {}

    ElementReader& text(const char* name, std::string& value);
    ElementReader& text(const char* name, std::optional<std::string>& value);
    ElementReader& flag(const char* name, bool& value);
    ElementReader& flag(const char* name, std::optional<bool>& value);
    /// Decimal digits, with a sign where `Integer` takes one.
    template <typename Integer>
    ElementReader& whole(const char* name, Integer& value);
    /// A finite number.
    ElementReader& number(const char* name, double& value);
    ElementReader& number(const char* name, std::optional<double>& value);
    /// Whole numbers with a blank between them.
    ElementReader& list(const char* name, std::vector<std::uint32_t>& values);
    ElementReader& format(const char* name, tables::DisplayFormat& value);
    /// `#rrggbb`.
    ElementReader& color(const char* name, std::optional<tables::Color>& value);
    /// One of the words, whose index is the value.
    template <std::size_t count, typename Value>
    ElementReader& word(const char* name, const std::array<std::string_view, count>& words, Value& value);
    template <std::size_t count, typename Value>
    ElementReader& word(const char* name, const std::array<std::string_view, count>& words,
                        std::optional<Value>& value);
    /// The text of the element, which then holds no elements.
    ElementReader& content(std::string& value);
    /// The same as it stands, for texts that hold nothing that is escaped.
    ElementReader& plainContent(std::string_view& value);
    /// What `condition` says of the values read so far.
    ElementReader& require(bool condition);
    /// The same of one attribute; `expected` is a text of the string tables, or words for everybody.
    ElementReader& require(bool condition, const char* name, std::string_view expected);

    [[nodiscard]] bool isRead() const;

  private:
    /// The value of an attribute, or null.
    [[nodiscard]] const char* find(const char* name);
    static bool readFinite(const char* text, double& value);
    /// Refuses the element, with its attribute `name` (empty: as a whole) for an objection, unless it fits.
    void check(bool fits, const char* name, std::string_view expected);
    void checkWhole(bool fits, const char* name);
    void checkWord(bool fits, const char* name, const std::string_view* words, std::size_t count);
    [[nodiscard]] bool isKnown(const char* name) const;
    void objectToRest() const;

    pugi::xml_node node_;
    std::array<const char*, 16> names_{};  // of the attributes found
    std::size_t found_ = 0;
    bool ok_ = true;
    bool hasContent_ = false;
};

[[nodiscard]] inline bool isNamed(const pugi::xml_node& node, const char* name) {
    return std::strcmp(node.name(), name) == 0;
}

template <typename Integer>
ElementReader& ElementReader::whole(const char* name, Integer& value) {
    if (const char* const found = find(name)) {
        const char* const end = found + std::strlen(found);
        const auto result = std::from_chars(found, end, value);
        checkWhole(result.ec == std::errc() && result.ptr == end, name);
    }
    return *this;
}

template <std::size_t count, typename Value>
ElementReader& ElementReader::word(const char* name, const std::array<std::string_view, count>& words,
                                   Value& value) {
    if (const char* const found = find(name)) {
        std::size_t index = 0;
        while (index < count && words[index] != found) ++index;
        checkWord(index < count, name, words.data(), count);
        if (index < count) value = static_cast<Value>(index);
    }
    return *this;
}

template <std::size_t count, typename Value>
ElementReader& ElementReader::word(const char* name, const std::array<std::string_view, count>& words,
                                   std::optional<Value>& value) {
    return node_.attribute(name) ? word(name, words, value.emplace()) : *this;
}

}  // namespace vexa::frontend
