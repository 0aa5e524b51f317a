// The code pages of Windows, as converters. For the text library's own files.
#pragma once

#include <memory>

#include "backend/text/character_set_implementations.h"

namespace vexa {

/// Those that are not read as the system reads them.
inline constexpr unsigned kEucJpCodePage = 20932;
inline constexpr unsigned kGb18030CodePage = 54936;

/// The converter for that code page; null for one that the system does not have, that reads ASCII as anything
/// else, or that has shift states and the like.
[[nodiscard]] std::unique_ptr<CodePageConverter> makeWindowsConverter(unsigned codePage);

}  // namespace vexa
