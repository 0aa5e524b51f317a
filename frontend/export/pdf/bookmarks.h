// The bookmarks: the outline that readers of the file show beside its pages.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "frontend/export/pdf/pdf_file.h"

namespace vexa::frontend::pdf {

class Bookmarks {
  public:
    /// A bookmark below the last one of a lesser depth. `destination` is what `PageFlow` gives.
    void add(const std::string& title, std::size_t depth, std::string destination);

    /// Writes all of them; gives their root, 0 where there are none.
    [[nodiscard]] PdfObject write(PdfFile& file) const;

  private:
    struct Bookmark {
        std::string title;
        std::size_t depth = 0;
        std::string destination;
    };
    std::vector<Bookmark> bookmarks_;
};

}  // namespace vexa::frontend::pdf
