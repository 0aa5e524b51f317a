// Unpacks one entry of an archive piece by piece, so that a large one is never held.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "frontend/package/package_result.h"
#include "frontend/package/zip_reader.h"

namespace vexa::frontend {

/// Gives the next piece, which is good until the next call; an empty one at the end, and again after it.
using ByteSource = std::function<PackageResult(std::string_view& piece)>;

/// The content of an entry. Fails where `ZipReader::read` fails, if only at the end. The reader must live as
/// long as the source.
[[nodiscard]] ByteSource entrySource(const ZipReader& reader, std::size_t place);
/// A text that is there already; it must live as long as the source.
[[nodiscard]] ByteSource textSource(std::string_view text);

}  // namespace vexa::frontend
