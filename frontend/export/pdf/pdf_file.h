// The objects of a PDF file, written one behind the other as they come: what was written is not held in
// memory, but for where it stands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/package/deflate.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend::pdf {

/// The number of an object; 0 is none.
using PdfObject = std::uint32_t;

class PdfFile {
  public:
    /// `sink` takes the bytes; its first failure is the result of `finish`.
    explicit PdfFile(ByteSink sink);

    /// A number for an object that is written later, or never.
    [[nodiscard]] PdfObject reserve();
    /// Writes an object that is no stream.
    void write(PdfObject number, std::string_view body);
    PdfObject add(std::string_view body);
    /// Writes a stream. `entries` are those of its dictionary but for its length and, when it is compressed,
    /// its filter.
    void writeStream(PdfObject number, std::string_view entries, std::string_view data, bool compress = true);
    PdfObject addStream(std::string_view entries, std::string_view data);
    /// Writes what ends a file. The file's id is made of all its bytes.
    [[nodiscard]] PackageResult finish(PdfObject catalog, PdfObject information);

    [[nodiscard]] const PackageResult& result() const { return result_; }

  private:
    void put(std::string_view bytes);
    void putStream(PdfObject number, std::string_view entries, std::string_view data, bool compress);
    void flushObjects();
    [[nodiscard]] std::string crossReferences() const;
    [[nodiscard]] std::string idText() const;

    ByteSink sink_;
    PackageResult result_;
    Deflater deflater_;
    /// By number: where an object stands; of one within a stream of objects `isWithin`, that stream and the
    /// index in it.
    std::vector<std::uint64_t> places_;
    std::uint64_t offset_ = 0;
    std::uint64_t hash_;
    std::uint64_t otherHash_;
    PdfObject openStream_ = 0;  // objects that wait for their stream
    std::size_t waiting_ = 0;
    std::string waitingIndex_;
    std::string waitingBodies_;
};

/// Appends a number with at most two decimals, as content streams have them.
void appendNumber(std::string& text, double number);
/// Appends " 12 0 R" without the blank.
void appendReference(std::string& text, PdfObject object);
/// Appends a text string that a reader shows: ASCII, or UTF-16 with its mark.
void appendTextString(std::string& text, std::string_view utf8);
/// Appends a name with its slash; every byte may stand in it.
void appendName(std::string& text, std::string_view name);
/// Appends the digits of UTF-16BE, without brackets.
void appendHexUtf16(std::string& text, std::string_view utf8);

}  // namespace vexa::frontend::pdf
