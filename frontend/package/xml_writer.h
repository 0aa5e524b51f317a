// Writes XML into a text, element by element, or through it into a sink, so that a big document is never
// held.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/package/package_result.h"
#include "frontend/package/xml_escapes.h"

namespace vexa::frontend {

/// How the XML looks. The predefined ones are below.
struct XmlStyle {
    XmlEscapes escapes = XmlEscapes::replacing;
    bool declaration = true;
    bool standalone = false;  ///< said in the declaration
    bool lines = false;       ///< a line end behind each tag; not for text that has elements in it
    bool pairs = false;       ///< an element without content has an end tag, too, as HTML wants it
};

inline constexpr XmlStyle documentFileXml{XmlEscapes::backslashes, true, false, true, false};
inline constexpr XmlStyle officeXml{XmlEscapes::replacing, true, true, false, false};
/// Elements without content are closed by `end` in full, and by `endShort` as `<br/>`.
inline constexpr XmlStyle htmlXml{XmlEscapes::replacing, false, false, false, true};

class XmlWriter {
  public:
    /// Keeps the whole text for `take`. Begins with the XML declaration, if the style has one.
    explicit XmlWriter(const XmlStyle& style);
    /// Hands finished pieces to `sink`; `finish` hands over the last one.
    XmlWriter(const XmlStyle& style, ByteSink sink);

    /// Room for so many bytes more, so that a long text need not move.
    void reserve(std::size_t bytes) { out_.reserve(out_.size() + bytes); }
    /// Opens an element; the name must live until it is closed.
    XmlWriter& begin(std::string_view name);
    /// Attributes of the element opened last, before its content.
    XmlWriter& attribute(std::string_view name, std::string_view text);
    XmlWriter& attribute(std::string_view name, const char* text) {
        return attribute(name, std::string_view(text));
    }
    XmlWriter& attribute(std::string_view name, std::int64_t number);
    XmlWriter& attribute(std::string_view name, int number) {
        return attribute(name, static_cast<std::int64_t>(number));
    }
    XmlWriter& attribute(std::string_view name, std::size_t number) {
        return attribute(name, static_cast<std::int64_t>(number));
    }
    /// The shortest decimal text that gives the same number again.
    XmlWriter& attribute(std::string_view name, double number);
    /// Writes "true", or nothing at all for false.
    XmlWriter& flag(std::string_view name, bool value);
    /// Writes nothing for an empty text.
    XmlWriter& optional(std::string_view name, std::string_view text);
    XmlWriter& text(std::string_view text);
    /// XML that is finished already, as content.
    XmlWriter& raw(std::string_view xml);
    void end();
    /// Closes an element without content as `<br/>`, whatever the style.
    void endShort();
    /// An element that holds a text and nothing else.
    XmlWriter& element(std::string_view name, std::string_view text);

    /// Tags and quotation marks written so far, as `XmlLimits` counts them.
    [[nodiscard]] std::size_t tags() const { return tags_; }
    [[nodiscard]] std::size_t quotes() const { return quotes_; }
    /// Of what was not handed on.
    [[nodiscard]] std::size_t bytes() const { return out_.size(); }
    /// How many elements are open.
    [[nodiscard]] std::size_t depth() const { return open_.size(); }
    /// The finished text; every element must be closed. The writer is empty afterwards.
    [[nodiscard]] std::string take();
    /// Hands over the last piece, and says how the sink took them. Every element must be closed.
    PackageResult finish();

  private:
    void closeStartTag();
    void closeElement();
    void passOn();
    XmlWriter& plainAttribute(std::string_view name, std::string_view text);

    XmlStyle style_;
    ByteSink sink_;
    PackageResult result_;
    std::string out_;
    std::vector<std::string_view> open_;
    bool startTagOpen_ = false;
    std::size_t tags_ = 0;
    std::size_t quotes_ = 0;
};

}  // namespace vexa::frontend
