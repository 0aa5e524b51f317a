// Where the entry functions of commands come from.
#pragma once

#include <memory>
#include <string>

#include "backend/platform/dynamic_library.h"

namespace vexa {

/// A module that implements commands.
class CommandModule {
  public:
    using Entry = DynamicLibrary::Entry;

    virtual ~CommandModule() = default;

    /// Makes the module ready; false, with the reason as it is shown (UTF-8), when it cannot be used. Asking
    /// again costs nothing.
    [[nodiscard]] virtual bool load(std::string& reason) = 0;
    /// The entry function of that name, or null when the module lacks it. Needs a successful `load`.
    [[nodiscard]] virtual Entry find(const char* entry) const = 0;
};

/// The module in a shared library, loaded when it is first needed and unloaded when the object dies.
class LibraryModule : public CommandModule {
  public:
    /// `path`: the library's file, UTF-8.
    explicit LibraryModule(std::string path) : path_(std::move(path)) {}

    [[nodiscard]] bool load(std::string& reason) override;
    [[nodiscard]] Entry find(const char* entry) const override;

  private:
    std::string path_;
    std::string failure_;
    std::unique_ptr<DynamicLibrary> library_;
};

}  // namespace vexa
