// A document as text for a terminal.
#pragma once

#include <cstddef>
#include <string>

#include "apps/rendering/drawing_writer.h"
#include "apps/rendering/text_style.h"
#include "frontend/document/outline.h"

namespace vexa::program {

/// The outline as a tree, a line an item: its number, its type, its label, its size, and whether it is
/// hidden. `under`: only this item and what stands under it; 0 for all.
[[nodiscard]] std::string outlineText(const frontend::Outline& outline, frontend::ItemId under = 0);

/// The item with that number in the outline, from 1; null when there is none.
[[nodiscard]] const frontend::OutlineNode* findNumber(const frontend::Outline& outline, std::size_t number);

/// One item as the terminal can show it: all layers of a table with its title, footnotes and styles; the
/// outline below a header; the outline of a model and the view that it shows; of a picture its form, size and
/// alternative text. `sink` takes it piece by piece, since a small document can be very long as text.
void writeItem(const frontend::Outline& outline, const frontend::OutlineNode& node,
               const rendering::RenderOptions& options, const rendering::TextSink& sink);

}  // namespace vexa::program
