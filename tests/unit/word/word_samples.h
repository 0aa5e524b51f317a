// What the tests of text documents share: exported documents, and what stands in them.
#pragma once

#include <pugixml.hpp>
#include <string>

#include "frontend/export/export_document.h"

namespace vexa::frontend::test {

/// A document that was exported as DOC, and what was said of it.
class WordFile {
  public:
    /// `items` as results are written (docs/formats/results-json.md), without the brackets around them. The
    /// file is named `a` with that extension.
    explicit WordFile(const std::string& items, DocExport request = {},
                      const std::string& extension = ".docx", const std::string& language = "en");

    [[nodiscard]] const std::string& bytes() const { return bytes_; }
    [[nodiscard]] const ExportOutcome& outcome() const { return outcome_; }
    /// The content of a part, "word/document.xml"; "(none)" where there is none.
    [[nodiscard]] std::string part(const std::string& name) const;
    /// What stands on the pages, a line a paragraph: its style, its text; `/` for a line that ends. Rows of
    /// tables have `|` between their cells, `#` in front where they are header rows, `^` for a place that is
    /// merged with the one above and `>` for one merged with the one before.
    [[nodiscard]] std::string page() const;
    /// The first node of the document that the path finds, its attribute; "(none)" where there is none.
    [[nodiscard]] std::string attribute(const char* path, const char* name) const;
    /// What is said of the style that the first node that the path finds has as its `w:val`.
    [[nodiscard]] std::string styleOf(const char* path) const;
    /// How many nodes the path finds.
    [[nodiscard]] std::size_t count(const char* path) const;

  private:
    std::string bytes_;
    ExportOutcome outcome_;
    pugi::xml_document document_;
};

/// The labels of the items that a warning of the answer names, with a blank behind each.
[[nodiscard]] std::string warned(const ExportOutcome& outcome, ExportWarning code);

}  // namespace vexa::frontend::test
