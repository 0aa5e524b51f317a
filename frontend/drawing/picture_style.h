// What is applied to a chart when it is shown: the rules of its templates, then its style sheet. The picture
// itself stays as it came; this room knows CSS only as text.
#pragma once

#include <string>
#include <string_view>

#include "frontend/document/item.h"

namespace vexa::frontend {

/// The rules of the picture's templates in their order (those of the `style` children of each `<template>`),
/// behind them `styleSheet`, the text of its style sheet. A template that cannot be read has no rules.
[[nodiscard]] std::string appliedRules(const ShownPicture& picture, std::string_view styleSheet);

/// `svg` with `rules` as its last style, so that of equally strong rules these win, and what elements say
/// themselves in a `style` attribute stays. Without rules, or when the picture is no XML, it is unchanged.
[[nodiscard]] std::string applyRules(std::string_view svg, std::string_view rules);

}  // namespace vexa::frontend
