// What the tests of slides share: exported presentations, and what their slides show.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "frontend/export/export_document.h"

namespace vexa::frontend::test {

/// A presentation that was exported, and what was said of it.
class Presentation {
  public:
    /// `items` as results are written (docs/formats/results-json.md), without the brackets around them.
    explicit Presentation(const std::string& items, PptExport request = {});

    [[nodiscard]] const std::string& bytes() const { return bytes_; }
    [[nodiscard]] const ExportOutcome& outcome() const { return outcome_; }
    /// The content of a part, "ppt/presentation.xml"; "(none)" where there is none.
    [[nodiscard]] std::string part(const std::string& name) const;
    [[nodiscard]] std::size_t slides() const;
    /// The title of a slide, from 1; "(none)" where it has none.
    [[nodiscard]] std::string title(std::size_t slide) const;
    /// Texts of the slide below its title, one a line: those of a row of a table with "|" between its cells,
    /// with ">" for a place that is merged with the one before, "^" with the one above.
    [[nodiscard]] std::string content(std::size_t slide) const;
    /// What stands at the foot.
    [[nodiscard]] std::string footer(std::size_t slide) const;
    /// What the notes page of the slide says; "(none)" where there is none.
    [[nodiscard]] std::string notes(std::size_t slide) const;
    /// The first node of a slide that the path finds.
    [[nodiscard]] std::string attribute(std::size_t slide, const char* path, const char* name) const;

  private:
    [[nodiscard]] const pugi::xml_document& slide(std::size_t number) const;

    std::string bytes_;
    ExportOutcome outcome_;
    mutable std::vector<pugi::xml_document> parsed_;
};

/// A table with `rows` rows and `columns` columns of numbers, as an item in JSON; `more` goes into it.
[[nodiscard]] std::string numbers(const std::string& label, int rows, int columns,
                                  const std::string& more = {});

}  // namespace vexa::frontend::test
