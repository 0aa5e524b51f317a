#include "backend/pivot/check_file_ref.h"

#include <utility>

#include "backend/paths/file_specification.h"

namespace vexa {

std::string CheckFileRef(std::string_view reference, bool resolve, bool file) {
    std::string path = resolve ? wholeFileName(std::string(reference)) : std::string(reference);
    return file ? withoutFinalSeparators(std::move(path)) : path;
}

}  // namespace vexa
