// Cuts XML that comes piece by piece into tags and texts, so that parts of a hundred megabytes are copied,
// and changed on the way, without being held.
//
// What is no well-formed XML in a way that could mislead whoever copies it is refused: tags that do not
// match, tags without an end, elements nested too deeply, document types, encodings other than UTF-8.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/package/package_result.h"
#include "frontend/package/zip_entry_stream.h"

namespace vexa::frontend {

enum class XmlPiece : std::uint8_t {
    start,  ///< a start tag, or a whole element without content
    end,    ///< an end tag
    text,   ///< characters and references; a long one comes in several pieces
    other   ///< the declaration, a comment, an instruction, a section
};

class XmlStream {
  public:
    explicit XmlStream(ByteSource source);

    /// Goes to the next piece. False at the end and after a failure.
    bool next();
    [[nodiscard]] const PackageResult& result() const { return result_; }

    // All of the following are about the piece, and good until the next one.
    [[nodiscard]] XmlPiece kind() const { return kind_; }
    /// As it stands in the XML.
    [[nodiscard]] std::string_view raw() const { return raw_; }
    /// Of a tag: with its prefix, and without it.
    [[nodiscard]] std::string_view name() const { return name_; }
    [[nodiscard]] std::string_view localName() const;
    [[nodiscard]] bool isStart() const { return kind_ == XmlPiece::start; }
    [[nodiscard]] bool isEnd() const { return kind_ == XmlPiece::end; }
    /// Whether a start tag is an element without content; no end tag follows then.
    [[nodiscard]] bool isWhole() const { return isWhole_; }
    /// Elements that are open around the piece: 0 for the tags of the root.
    [[nodiscard]] std::size_t depth() const { return depth_; }
    /// The value of an attribute of a start tag as it stands there, references and all. `name` with its
    /// prefix.
    [[nodiscard]] std::optional<std::string_view> attribute(std::string_view name) const;
    /// Behind a start tag: what stands up to the end of its element, end tag and all, which then is the
    /// piece. Empty, and nothing taken, where that is long or holds anything but elements and texts. Whether
    /// the tags in it match is not looked at, and no element in it may have the same name.
    [[nodiscard]] std::string_view takeInside();
    /// Behind a piece: what comes next as it stands, up to so many bytes, which is not looked at. Empty at
    /// the end. The piece is no more then.
    [[nodiscard]] std::string_view takeBytes(std::uint64_t most);
    /// Bytes of the source up to the end of the piece.
    [[nodiscard]] std::uint64_t position() const { return filled_ - (buffer_.size() - at_); }
    /// Whether it is a text of anything but blanks, or a section.
    [[nodiscard]] bool hasCharacters() const;

  private:
    bool fill();
    bool readTag();
    bool readSpecial();
    bool readText();
    bool openTag(std::string_view inside);
    bool closeTag(std::string_view inside);
    bool take(XmlPiece kind, std::size_t length);
    bool fail(SystemText text);
    bool findBehind(std::string_view end, std::size_t from, std::size_t& found);
    bool findTagEnd(std::size_t& found);

    ByteSource source_;
    PackageResult result_;
    std::string buffer_;
    std::uint64_t filled_ = 0;  ///< bytes that came from the source
    std::size_t at_ = 0;        ///< in the buffer: what was not given out yet
    bool isSourceAtEnd_ = false;
    XmlPiece kind_ = XmlPiece::other;
    std::string_view raw_;
    std::string_view name_;
    bool isWhole_ = false;
    std::size_t depth_ = 0;
    std::string open_;  ///< the names of the open elements, one behind the other
    std::vector<std::size_t> openAt_;
    bool hadRoot_ = false;
};

/// A value, or a text, with its references resolved. What is none stays.
[[nodiscard]] std::string plainText(std::string_view raw);

/// One attribute as it stands in a start tag.
struct RawAttribute {
    std::string_view name;
    std::string_view value;  ///< without its quotation marks
    std::string_view whole;  ///< with the blanks before it
};
/// The attributes of a start tag, `raw` being all of it.
[[nodiscard]] std::vector<RawAttribute> attributesOf(std::string_view raw);

}  // namespace vexa::frontend
