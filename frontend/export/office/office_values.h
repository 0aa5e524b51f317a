// Values as Office Open XML writes them: measures, colours, fonts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "backend/tables/model/table_look.h"

namespace vexa::frontend {

/// What fonts of documents may measure, points.
inline constexpr double smallestDocumentFont = 1;
inline constexpr double largestDocumentFont = 1'638;

/// Lengths of drawings: 12,700 a point.
[[nodiscard]] std::int64_t emuOf(double points);
/// Lengths of pages and tables of word processors: 20 a point.
[[nodiscard]] std::int64_t twipsOf(double points);
/// Sizes of fonts: of word processors in halves, of drawings in hundredths of a point; within what they take.
[[nodiscard]] std::int64_t halfPointsOf(double points);
[[nodiscard]] std::int64_t hundredthsOf(double points);

/// "1F6FB2".
[[nodiscard]] std::string officeColor(tables::Color color);

/// A family that programs have in the place of a general one ("serif"), any other as it is. Without one, that
/// of "sans-serif".
[[nodiscard]] std::string officeFont(std::string_view font);

/// A language tag as documents have it: "pt-BR" of "pt_BR", "en-US" of "en"; "en-US" where nothing is known.
[[nodiscard]] std::string officeLanguage(std::string_view language);

/// The width of a line in points.
[[nodiscard]] double officeLineWidth(tables::LineStyle style);

}  // namespace vexa::frontend
