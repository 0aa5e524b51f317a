// Why a file is not taken in.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "backend/strings/dictionary.h"

namespace vexa::frontend {

/// A place in a text: line and column from 1, columns counted in characters.
struct TextPlace {
    std::size_t line = 0;  ///< 0 where no place can be said
    std::size_t column = 0;

    bool operator==(const TextPlace&) const = default;
};

/// The place of the byte at `offset`; the end of the text for a larger one.
[[nodiscard]] TextPlace placeOf(std::string_view text, std::size_t offset);

/// What does not fit, and where.
struct ImportProblem {
    std::string file;  ///< as the user named it
    TextPlace place;
    std::string path;     ///< of JSON, "items[0].rows[1].label"; empty elsewhere
    std::string message;  ///< as shown: what was found, and what would fit
    bool isFile = false;  ///< the file itself cannot be read

    /// "march.json:3:14: items[0].rows[1].label: Found: 3. Expected: a text."
    [[nodiscard]] std::string shown() const;
};

/// "Found: 3. Expected: a text." `expected` is a text of the system's own.
[[nodiscard]] std::string mismatch(const std::string& found, std::string_view expected);

/// What is wrong with a row that has more or fewer fields than the first one.
[[nodiscard]] std::string otherNumberOfFields(std::size_t found, std::size_t inFirstRow);

}  // namespace vexa::frontend
