// Reads and writes table looks: XML whose root is `tableProperties`. docs/formats/table-look.md describes it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "backend/tables/model/table_look.h"

namespace vexa::frontend {

/// A look, or why there is none.
struct ReadLook {
    std::shared_ptr<const tables::TableLook> look;  ///< null when the text was refused
    std::string problem;  ///< where it was refused, what was found and what would fit; as shown, UTF-8
};

/// The look that `xml` describes. Areas that it leaves out are those of the plain look; lines that it leaves
/// out are not drawn. Its `source` is `xml`. Refuses what is no XML, unknown elements and attributes, and
/// values beyond their bounds.
[[nodiscard]] ReadLook readLook(std::string_view xml);

/// XML that reads as `look`, its `source` apart; everything is written, also what is as in the plain look.
[[nodiscard]] std::string writeLook(const tables::TableLook& look);

}  // namespace vexa::frontend
