// A page and its pictures in one MIME file, as mail carries them: lines end in CR LF, nothing depends on
// time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vexa::frontend {

class MimeFile {
  public:
    /// Takes a PNG; the same one is taken once. Gives the address that the page refers to it by.
    std::string addPicture(const std::string& png);
    /// The whole file around a page of HTML. `title` is its subject.
    [[nodiscard]] std::string finish(std::string_view title, std::string_view page) const;

  private:
    std::vector<std::string> pictures_;
};

/// `text` as quoted-printable: lines of at most 76 characters; line feeds become CR LF.
[[nodiscard]] std::string quotedPrintable(std::string_view text);

}  // namespace vexa::frontend
