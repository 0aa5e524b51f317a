// The structure of the document: what assistive programs read instead of pages. An element is written as soon
// as it is closed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/pdf/pdf_file.h"

namespace vexa::frontend::pdf {

/// A page as far as the structure refers to it: which element each piece of its content belongs to.
struct TaggedPage {
    PdfObject number = 0;
    std::uint32_t key = 0;  ///< in the tree of parents
    std::vector<PdfObject> owners;
};

/// An element that is not closed yet.
struct StructureElement {
    PdfObject number = 0;
    PdfObject parent = 0;
    std::string_view type;   ///< "P", "TD"; lives as long as the program
    std::string attributes;  ///< further entries of its dictionary
    PdfObject page = 0;      ///< of its content, the first one
    std::string kids;
    std::uint32_t kidCount = 0;
};

class StructureTree {
  public:
    explicit StructureTree(PdfFile& file);

    /// The element that holds all others on the top level.
    [[nodiscard]] StructureElement& document() { return document_; }

    /// Opens an element as the last one of `parent`.
    [[nodiscard]] StructureElement open(std::string_view type, StructureElement& parent);
    /// Names the element, so that others can refer to it: gives the name.
    std::string nameElement(StructureElement& element);
    void close(StructureElement& element);

    /// Readies a page; it is to be ended before the next one begins.
    void beginPage(TaggedPage& page, PdfObject number);
    void endPage(TaggedPage& page);
    /// The number of the next piece of content on `page`, which belongs to the element.
    [[nodiscard]] std::size_t addContent(StructureElement& element, TaggedPage& page);
    /// An annotation that belongs to the element; gives its key in the tree of parents.
    [[nodiscard]] std::uint32_t addAnnotation(StructureElement& element, PdfObject annotation,
                                              const TaggedPage& page);

    /// Writes the tree; gives its root.
    [[nodiscard]] PdfObject finish();

  private:
    void addKid(StructureElement& element, std::string_view kid);
    void addName(const std::string& name, PdfObject element);
    void flushNames();
    [[nodiscard]] PdfObject writeParents();

    PdfFile& file_;
    PdfObject root_;
    StructureElement document_;
    std::vector<PdfObject> parents_;  // by key
    std::uint32_t names_ = 0;
    std::string leaf_;  // names that wait for being written
    std::string firstName_;
    std::string lastName_;
    std::size_t leafSize_ = 0;
    std::string leaves_;
    std::string body_;
};

}  // namespace vexa::frontend::pdf
