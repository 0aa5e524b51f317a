// Pictures in WordprocessingML.
#pragma once

#include <cstddef>
#include <string>

#include "frontend/export/word/word_content.h"

namespace vexa::frontend {

struct DocxDrawing {
    std::size_t number = 1;  ///< unlike that of every other one of the document
    std::string bitmap;      ///< ids of relations
    std::string vector;      ///< empty for none
};

/// Appends `w:drawing`: the bitmap in the line, and the SVG beside it for those who know it.
void appendDrawing(std::string& xml, const WordPicture& picture, const DocxDrawing& drawing);

/// The namespaces that drawings need, as attributes of the document.
[[nodiscard]] std::string drawingSpaces();

}  // namespace vexa::frontend
