// Reads XML that XmlWriter wrote: elements, attributes and text, and nothing else of XML.
#pragma once

#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "frontend/store/store_result.h"

namespace vexa::frontend {

/// One parsed text. The text is taken over and parsed in place.
class XmlReader {
  public:
    /// Refuses what is no XML, what holds more than the limits, and document types, comments and entities of
    /// its own.
    StoreResult parse(std::string xml, std::string_view root);
    [[nodiscard]] pugi::xml_node root() const { return document_.document_element(); }

  private:
    std::string buffer_;
    pugi::xml_document document_;
};

/// The following answer false when a value is there but cannot be read; a value that is missing leaves
/// `value` alone.
[[nodiscard]] bool readText(const pugi::xml_node& node, const char* attribute, std::string& value);
[[nodiscard]] bool readInteger(const pugi::xml_node& node, const char* attribute, int& value);
[[nodiscard]] bool readInteger(const pugi::xml_node& node, const char* attribute, std::optional<int>& value);
[[nodiscard]] bool readInteger(const pugi::xml_node& node, const char* attribute, std::uint64_t& value);
[[nodiscard]] bool readNumber(const pugi::xml_node& node, const char* attribute,
                              std::optional<double>& value);
[[nodiscard]] bool readFlag(const pugi::xml_node& node, const char* attribute, bool& value);
/// The text of an element that holds nothing else.
[[nodiscard]] bool readContent(const pugi::xml_node& node, std::string& value);

}  // namespace vexa::frontend
