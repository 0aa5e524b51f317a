// Whether a PNG that is copied as it is can be shown, found without drawing it.
#pragma once

#include <string_view>

namespace vexa::frontend {

/// True when the data of a PNG, whose chunks are whole, unpack to all of its pixels. More than a gigabyte of
/// them is not looked through and passes.
[[nodiscard]] bool hasAllPixels(std::string_view png);

}  // namespace vexa::frontend
