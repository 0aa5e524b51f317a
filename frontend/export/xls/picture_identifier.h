// What pictures are told apart by in documents that store each once.
#pragma once

#include <string>
#include <string_view>

namespace vexa::frontend::biff {

/// 16 bytes that are the same for the same bytes of a picture and, as good as certain, for no others.
[[nodiscard]] std::string pictureIdentifier(std::string_view picture);

}  // namespace vexa::frontend::biff
