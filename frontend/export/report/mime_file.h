// A page and its pictures in one MIME file, as mail carries them: lines end in CR LF, nothing depends on
// time.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/package/package_result.h"

namespace vexa::frontend {

class MimeFile {
  public:
    /// Takes a picture of a type such as `image/png`; the same one is taken once. Gives the address that the
    /// page refers to it by.
    std::string addPicture(const std::string& content, std::string_view type);
    /// Writes the whole file around a page of HTML, which `page` writes. `title` is its subject.
    PackageResult write(const ByteSink& out, std::string_view title,
                        const std::function<PackageResult(const ByteSink&)>& page) const;

  private:
    struct Part {
        std::string content;
        std::string type;
    };
    std::vector<Part> pictures_;
};

/// Text as quoted-printable, piece by piece: lines of at most 76 characters; line feeds become CR LF.
class QuotedPrintable {
  public:
    /// What is known of the text so far; a blank at its end is kept back.
    [[nodiscard]] std::string add(std::string_view text);
    /// What is left at the end.
    [[nodiscard]] std::string finish();

  private:
    void put(std::string& quoted, char each, bool endsLine);

    std::size_t column_ = 0;
    char waiting_ = '\0';  // the last character, of which it is not known whether it ends a line
    bool waits_ = false;
};

}  // namespace vexa::frontend
