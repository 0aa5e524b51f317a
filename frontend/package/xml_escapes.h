// Texts that go into XML, and how what XML cannot hold is told.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vexa::frontend {

enum class XmlEscapes {
    /// Every text survives: a backslash, a control character, U+007F, U+FFFE, U+FFFF and each byte that
    /// belongs
    /// to no valid UTF-8 character are written as a backslash and two hexadecimal digits a byte. Document
    /// files are written so.
    backslashes,
    /// What other programs read: tabs and line ends stay (as references where a reader would change them),
    /// U+FFFD takes the place of every other character that XML cannot hold and of each byte that belongs to
    /// no character.
    replacing,
};

/// Appends `text` for the content of an element.
void appendXmlText(std::string& out, std::string_view text, XmlEscapes escapes);
/// The same for the value of an attribute, without the quotation marks around it.
void appendXmlValue(std::string& out, std::string_view text, XmlEscapes escapes);

/// Undoes the writing of bytes as a backslash and two digits, in place. False when a backslash stands alone.
[[nodiscard]] bool decodeBackslashes(std::string& text);

/// Length of the UTF-8 character of several bytes at `index` that XML can hold, else 0.
[[nodiscard]] std::size_t xmlCharacterLength(std::string_view text, std::size_t index);

}  // namespace vexa::frontend
