// A library loaded at run time.
#pragma once

#include <memory>
#include <string>

#include "backend/platform/file_system.h"

namespace vexa {

class DynamicLibrary {
  public:
    virtual ~DynamicLibrary() = default;

    /// Loads the library at `path` (UTF-8), or gives null; `result` says how it went.
    [[nodiscard]] static std::unique_ptr<DynamicLibrary> load(const std::string& path, FileResult& result);

    /// The address of an exported function without arguments and result, or null.
    using Entry = void (*)();
    [[nodiscard]] virtual Entry find(const char* name) const = 0;
};

/// The folder that the running program stands in, UTF-8, in the system's own form.
[[nodiscard]] std::string programFolder();

}  // namespace vexa
