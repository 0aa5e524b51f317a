// Checks that a picture can be read as such, and finds its natural size.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "frontend/document/item.h"

namespace vexa::frontend {

/// Larger picture files are not read.
inline constexpr std::uint64_t maximalPictureBytes = std::uint64_t{256} << 20;

/// An SVG in UTF-8: well-formed XML whose root is `svg`. Null, with the reason as shown, for anything else.
///
/// Its size is that of `width` and `height` (px, pt, pc, in, cm, mm, Q, em of 16 px, ex of 8 px, or no unit);
/// a side that is missing or a percentage comes from `viewBox` in proportion, and without one from 300 x 150
/// px. A px is 0.75 points.
[[nodiscard]] std::shared_ptr<const Picture> readSvg(std::string bytes, std::string& reason);
/// A PNG whose chunks are whole: header first, image data, an end. A pixel is 0.75 points.
[[nodiscard]] std::shared_ptr<const Picture> readPng(std::string bytes, std::string& reason);
/// Either, by how it begins.
[[nodiscard]] std::shared_ptr<const Picture> readPicture(std::string bytes, std::string& reason);

}  // namespace vexa::frontend
