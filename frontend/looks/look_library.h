// Table looks by their name, as the folders `Looks` hold them.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frontend/looks/look_reader.h"

namespace vexa::frontend {

/// Who knows looks, and style sheets of charts, by name. Tests have their own.
class LookSource {
  public:
    virtual ~LookSource() = default;
    /// The look of that name, as written or in small letters; the same object every time. Null look and a
    /// problem when there is none, or when it cannot be read.
    [[nodiscard]] virtual ReadLook find(std::string_view name) = 0;
    [[nodiscard]] virtual bool hasStyleSheet(const std::string& name) const = 0;
};

/// The looks of folders, the first one that has the file `NAME.tlk` counting; each file is read once.
class LookLibrary : public LookSource {
  public:
    /// Folders in UTF-8, either separator, with one at the end or without.
    explicit LookLibrary(std::vector<std::string> folders) : folders_(std::move(folders)) {}

    /// A look found here is named as its file is, and has no source.
    [[nodiscard]] ReadLook find(std::string_view name) override;
    [[nodiscard]] bool hasStyleSheet(const std::string& name) const override;

  private:
    [[nodiscard]] ReadLook read(std::string_view name) const;

    std::vector<std::string> folders_;
    std::map<std::string, ReadLook, std::less<>> found_;
};

}  // namespace vexa::frontend
