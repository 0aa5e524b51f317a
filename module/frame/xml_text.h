// Text for the XML that the module hands to the front end: escaping, UTF-8, attributes.
//
// The XML is built by appending to one byte string, which holds UTF-8. Values are in the back end's character
// set until they are appended. Who builds an element decides which of its values are escaped.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vexa {

/// `text` with the characters " & ' < > as entities; everything else, control characters included, as it is.
/// A byte of a multi-byte character is never replaced.
[[nodiscard]] std::string escapeXml(std::string_view text);

/// `text` in UTF-8, or nothing where it cannot be converted. The text library's conversion ends at a zero
/// byte.
[[nodiscard]] std::string toXmlUtf8(const std::string& text);

/// Each appends a blank, `name`, an equals sign and the value between quotes.
/// @{
void appendAsIs(std::string& xml, std::string_view name, std::string_view value);
/// The text in UTF-8, not escaped.
void appendText(std::string& xml, std::string_view name, const std::string& value);
/// The same; nothing at all for an empty text.
void appendTextIfAny(std::string& xml, std::string_view name, const std::string& value);
/// true or false.
void appendFlag(std::string& xml, std::string_view name, bool value);
void appendInteger(std::string& xml, std::string_view name, std::int32_t value);
/// Six significant digits, the shorter of fixed and scientific notation, no trailing zeros: 144, 141.732.
void appendNumber(std::string& xml, std::string_view name, double value);
/// @}

}  // namespace vexa
