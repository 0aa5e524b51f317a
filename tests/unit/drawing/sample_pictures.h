// Pictures for tests, and what other programs say of the files made of them.
#pragma once

#include <string>

#include "frontend/drawing/picture_drawing.h"

namespace vexa::frontend::test {

inline constexpr const char* kOpening = R"(<svg xmlns="http://www.w3.org/2000/svg" width="80" height="40">)";

/// 60 x 30 points, 80 x 40 px: red at the left, blue at the right, nothing in the middle.
[[nodiscard]] Picture twoBars();
/// The same size, with a colour for each of 80 columns.
[[nodiscard]] Picture manyColors();
[[nodiscard]] Picture someText();
/// An SVG of 80 x 40 px with that content.
[[nodiscard]] Picture svgOf(const std::string& content);

[[nodiscard]] DrawingOrder orderOf(DrawnForm form, DrawnDepth depth = DrawnDepth::true24Bit);
[[nodiscard]] DrawnPicture drawn(const Picture& picture, const DrawingOrder& order,
                                 const std::string& rules = {});
/// What judge_picture.py says of `bytes`.
[[nodiscard]] std::string judged(const std::string& bytes, const std::string& extension,
                                 const std::string& places = {});

/// A file in the folder for temporary ones that no other run of the tests has.
[[nodiscard]] std::string temporaryFile(const std::string& ending);
/// Whether a program is installed; a line says so where it is not.
[[nodiscard]] bool isInstalled(const std::string& program);
/// How far Ghostscript's pictures of two files of EPS are from each other: the mean difference of a pixel,
/// from 0 to 255.
[[nodiscard]] std::string rendered(const std::string& one, const std::string& other);

}  // namespace vexa::frontend::test
