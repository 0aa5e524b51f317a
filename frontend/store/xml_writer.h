// Writes XML into a text, element by element.
//
// Every text survives, also one that XML cannot hold: a backslash, a control character, U+FFFE, U+FFFF and
// each byte that belongs to no valid UTF-8 character are written as a backslash and two hexadecimal digits a
// byte. What is then left of special meaning is escaped as XML does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vexa::frontend {

class XmlWriter {
  public:
    /// Begins with the XML declaration.
    XmlWriter();

    /// Opens an element; the name must live until it is closed.
    XmlWriter& begin(std::string_view name);
    /// Attributes of the element opened last, before its content.
    XmlWriter& attribute(std::string_view name, std::string_view text);
    XmlWriter& attribute(std::string_view name, std::int64_t number);
    /// Writes "true", or nothing at all for false.
    XmlWriter& flag(std::string_view name, bool value);
    /// Writes nothing for an empty text.
    XmlWriter& optional(std::string_view name, std::string_view text);
    /// The content of an element that has no elements in it.
    XmlWriter& text(std::string_view text);
    void end();

    /// Tags and quotation marks written so far; see limits.h.
    [[nodiscard]] std::size_t tags() const { return tags_; }
    [[nodiscard]] std::size_t quotes() const { return quotes_; }
    /// The finished text; every element must be closed. The writer is empty afterwards.
    [[nodiscard]] std::string take();

  private:
    void closeStartTag();
    void append(std::string_view text);

    std::string out_;
    std::vector<std::string_view> open_;
    bool startTagOpen_ = false;
    std::size_t tags_ = 1;
    std::size_t quotes_ = 4;
};

/// Undoes the writing of bytes as a backslash and two digits, in place. False when a backslash stands alone.
[[nodiscard]] bool decodeText(std::string& text);

/// Tags (`<`) and quotation marks of a text.
struct XmlSize {
    std::size_t tags = 0;
    std::size_t quotes = 0;
};
[[nodiscard]] XmlSize measureXml(std::string_view xml);

}  // namespace vexa::frontend
