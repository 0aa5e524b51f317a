// Where the installation's own files stand.
#pragma once

#include <string>
#include <string_view>

namespace vexa {

/// One folder of the installation.
class PathFinder {
  public:
    virtual ~PathFinder() = default;

    /// The folder in the back end's character set, with backslashes and one at the end; empty as long as
    /// `installPaths` was not called.
    [[nodiscard]] virtual std::string getPath() const = 0;
};

/// The path service.
class PathFactory {
  public:
    static constexpr int kInstallation = 0;
    static constexpr int kLanguage = 3;

    /// Instance 0 is the installation folder, 3 the folder of the current language in it (`...\lang\en\`).
    /// Null for any other number. Owned by the library, for as long as the process lives.
    [[nodiscard]] static const PathFinder* getPathInstance(int instance);
};

/// Says where the installation stands (UTF-8, either separator) and what the current language is (`en`).
void installPaths(std::string_view installationFolder, std::string_view language);

}  // namespace vexa
