// Copies the XML of a worksheet piece by piece; whoever changes a part of it puts that in between.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "frontend/export/xlsx/xml_stream.h"
#include "frontend/package/deflate_stream.h"

namespace vexa::frontend {

/// What changes of worksheets have in common: the XML that comes, and what goes out.
class SheetCopy {
  public:
    /// `prefix` is that of the sheet's elements, with its colon.
    SheetCopy(const ByteSource& source, std::string prefix, DeflateStream& sink);
    SheetCopy(const SheetCopy&) = delete;
    SheetCopy& operator=(const SheetCopy&) = delete;

  protected:
    ~SheetCopy() = default;

    /// Goes to the next piece; false at the end, and after any failure.
    bool next() { return result_ && xml_.next(); }
    /// Hands over what is left, and says how it went.
    PackageResult finish();
    /// Whether the element is one of worksheets, not of an extension with another prefix.
    [[nodiscard]] bool isOwn() const;
    /// Whether the piece is the end tag at this depth.
    [[nodiscard]] bool isEndAt(std::size_t depth) const { return xml_.isEnd() && xml_.depth() == depth; }

    void copy() { emit(xml_.raw()); }
    /// Copies the element whose start tag is the piece, or passes over it.
    void copyElement();
    void skipElement();
    /// The element whose start tag is the piece, with all that is in it.
    [[nodiscard]] std::string takeElement();
    void emit(std::string_view xml);
    /// Writes a tag of an element of the sheet.
    void open(std::string_view name) { emit("<" + prefix_ + std::string(name) + ">"); }
    void close(std::string_view name) { emit("</" + prefix_ + std::string(name) + ">"); }
    /// Hands over what `out_` holds where that is much.
    void passOn();
    /// Copies so many bytes that are not looked at.
    void copyBytes(std::uint64_t count);
    /// Copies blocks that the source leaves out.
    void copyBlocks(const PackedBlocks& blocks);

    XmlStream xml_;
    std::string prefix_;
    PackageResult result_;
    std::string out_;

  private:
    DeflateStream& sink_;
};

/// The tag with another value of an attribute, which is added where it is missing; without a value it goes.
[[nodiscard]] std::string withAttribute(std::string_view raw, std::string_view name, std::string_view value);

}  // namespace vexa::frontend
