// The labels that say what a category's numbers are, in every language: a file of the installation.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "backend/platform/file_system.h"
#include "backend/tables/model/table_data.h"

namespace vexa::frontend {

/// Infers roles from labels. Without a file it infers none.
class StatisticWords {
  public:
    /// Reads the file (docs/formats/statistic-roles.md); a failure says why, and then there are no words.
    FileResult open(const std::string& path);
    /// The same from the file's text.
    FileResult read(std::string xml);

    /// The role of a category with that label, as a whole, without regard to case and to blanks around it;
    /// `none` where the label says nothing.
    [[nodiscard]] tables::StatisticRole roleOf(std::string_view label) const;
    [[nodiscard]] std::size_t size() const { return roles_.size(); }

  private:
    std::unordered_map<std::string, tables::StatisticRole> roles_;  // by compared label
};

/// "mean", "count" and so on; "none".
[[nodiscard]] std::string_view roleWord(tables::StatisticRole role);
/// The role of that word; false for any other word.
[[nodiscard]] bool readRole(std::string_view word, tables::StatisticRole& role);

}  // namespace vexa::frontend
