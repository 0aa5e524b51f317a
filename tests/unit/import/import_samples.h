// What the tests of imports share.
#pragma once

#include <string>

#include "frontend/import/import_context.h"
#include "frontend/import/statistic_words.h"

namespace vexa::frontend {

/// Knows the look "banded" and no other by name, and every style sheet but "Nowhere".
class FewLooks : public LookSource {
  public:
    FewLooks();
    ReadLook find(std::string_view name) override;
    bool hasStyleSheet(const std::string& name) const override { return name != "Nowhere"; }

  private:
    std::shared_ptr<const tables::TableLook> banded_;
};

/// A context with the words of the source tree.
struct ImportSurroundings {
    ImportSurroundings();

    FewLooks looks;
    StatisticWords words;
    ImportContext context{looks, words};
};

/// The outline of a JSON text; a refusal fails the test and gives an empty one.
Outline resultsOf(const std::string& json);
/// What a JSON text is refused with, as shown, with the file "a.json"; empty when it is not.
std::string refusalOf(const std::string& json);
/// `text` printed as JSON.
std::string printed(const Outline& outline, const std::string& name = {});

/// The n-th item of the top level, and its table.
const Item& itemAt(const Outline& outline, std::size_t index);
const tables::Table& tableAt(const Outline& outline, std::size_t index);
/// The labels of a dimension's categories, groups before them: "Europe/North".
std::vector<std::string> labelsOf(const tables::TableDimension& dimension);
/// What stands at each place: "1.5", "'text'", or "" for nothing.
std::vector<std::string> cellsOf(const tables::TableData& data);

/// The smallest PNG of that size.
std::string samplePng(unsigned width, unsigned height);
inline constexpr char kSampleSvg[] = "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20'/>";

}  // namespace vexa::frontend
