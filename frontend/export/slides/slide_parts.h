// The parts of a presentation that are the same on every slide: the theme, the master, the layouts, and what
// programs ask for beside them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "frontend/export/slides/slide_design.h"
#include "frontend/package/xml_writer.h"

namespace vexa::frontend {

/// What a slide is made for; a presentation has a layout for each.
enum class SlideLayout : std::uint8_t {
    titled,     ///< a title, and room below
    text,       ///< a title, and a text below
    section,    ///< nothing but a title
    blank,      ///< room
    plainText,  ///< a text
};
inline constexpr std::size_t slideLayoutCount = 5;

[[nodiscard]] constexpr bool hasTitle(SlideLayout layout) {
    return layout == SlideLayout::titled || layout == SlideLayout::text || layout == SlideLayout::section;
}
[[nodiscard]] constexpr bool hasText(SlideLayout layout) {
    return layout == SlideLayout::text || layout == SlideLayout::plainText;
}

/// Names of parts; numbers from 1.
inline constexpr std::string_view presentationPart = "/ppt/presentation.xml";
inline constexpr std::string_view slideMasterPart = "/ppt/slideMasters/slideMaster1.xml";
inline constexpr std::string_view notesMasterPart = "/ppt/notesMasters/notesMaster1.xml";
[[nodiscard]] std::string slideLayoutPart(SlideLayout layout);

/// Numbers of placeholders of the same kind, which tie those of a slide to those of its layout.
inline constexpr int textPlaceholder = 1;
inline constexpr int footerPlaceholder = 11;
inline constexpr int numberPlaceholder = 12;

/// The content of parts. Relations are those that `writeSlideParts` makes.
[[nodiscard]] std::string slideTheme();
[[nodiscard]] std::string slideMaster(const SlideDesign& design,
                                      const std::array<std::string, slideLayoutCount>& layoutRelations);
[[nodiscard]] std::string slideLayout(const SlideDesign& design, SlideLayout layout);
[[nodiscard]] std::string notesMaster();

}  // namespace vexa::frontend
