// Where something stands in a syntax file.
#pragma once

#include <string>

namespace vexa {

/// Lines and columns count from 1, columns in characters; 0 means not known. Texts are UTF-8.
struct SourcePlace {
    std::string file;  ///< as the user named it; empty for none
    int line = 0;
    int column = 0;
    std::string sourceLine;  ///< the text of that line, without its end

    bool operator==(const SourcePlace&) const = default;
};

}  // namespace vexa
