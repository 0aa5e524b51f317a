// A file that is written from the beginning, a piece at a time.
#pragma once

#include <fstream>
#include <string>
#include <string_view>

#include "backend/platform/file_system.h"

namespace vexa {

/// For files that may be read while they grow; a file that must not
/// be lost is made beside its place and put there as a whole (`FileSystem::createTemporary`).
class OutputFile {
  public:
    enum class Before { dropped, kept };
    /// `path`: UTF-8, with either separator. What the file holds is dropped, or is kept and written behind.
    [[nodiscard]] FileResult open(const std::string& path, Before before = Before::dropped);
    [[nodiscard]] FileResult write(std::string_view bytes);
    /// Hands what was written to the system.
    [[nodiscard]] FileResult flush();

  private:
    std::ofstream stream_;
};

}  // namespace vexa
