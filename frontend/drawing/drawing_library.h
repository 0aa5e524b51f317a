// The library of everything that draws: pictures and PDF. It and the system's libraries that it needs are
// loaded when something is drawn for the first time, since most runs of the program draw nothing.
#pragma once

#include "backend/platform/dynamic_library.h"

namespace vexa::frontend {

/// A function of that library, to be cast to the type that its name has where it is exported; null where the
/// library is not installed. Loads the library.
[[nodiscard]] DynamicLibrary::Entry drawingFunction(const char* name);

/// Whether the library stands beside the program. Does not load it.
[[nodiscard]] bool isDrawingInstalled();

}  // namespace vexa::frontend
