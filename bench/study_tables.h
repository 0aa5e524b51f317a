// Documents of tables of 40 x 8 numbers, for exports to be measured with.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "frontend/document/viewer_document.h"

namespace vexa::bench {

inline constexpr std::size_t kStudyRows = 40;
inline constexpr std::size_t kStudyColumns = 8;
using StudyValues = std::array<double, kStudyRows * kStudyColumns>;

/// What a study of one seed measured; the scripts beside make the same numbers.
StudyValues measured(std::size_t seed);
std::string titleOf(std::size_t seed);
tables::Table studyTable(std::size_t seed);

frontend::ViewerDocument documentOf(std::int64_t count);
/// The document of work that is measured in a process of its own: made before the work, or as the work.
std::unique_ptr<frontend::ViewerDocument>& documentAlone();

}  // namespace vexa::bench
