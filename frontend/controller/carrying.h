// Whether what is asked for is done.
#pragma once

namespace vexa::frontend {

/// In a dry run no document is modified and no file is written; only what would be is said.
enum class Carrying { out, dryRun };

}  // namespace vexa::frontend
