// The part of a workbook that lists its sheets and names, and says how it is calculated.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/export/xlsx/package_xml.h"

namespace vexa::frontend {

struct WorkbookSheet {
    std::string name;
    std::string relation;  ///< id
};

class WorkbookPart {
  public:
    /// Refuses workbooks of the strict kind.
    PackageResult parse(std::string xml);
    [[nodiscard]] std::string text() const { return xml_.text(); }

    /// Whether its days are counted from 1904.
    [[nodiscard]] bool countsFrom1904() const;
    [[nodiscard]] std::vector<WorkbookSheet> sheets() const;
    /// The number of the sheet of that name, from 0, whatever its case.
    [[nodiscard]] std::optional<std::size_t> find(std::string_view name) const;
    /// Adds a sheet behind the others; `relation` is the id of the workbook's relation to it.
    void add(std::string_view name, std::string_view relation);
    /// Another part for a sheet.
    void relate(std::size_t sheet, std::string_view relation);
    /// Takes away what belonged to the content of a sheet that is replaced: its print area, its titles, its
    /// filter.
    void dropBuiltInNames(std::size_t sheet);
    /// Asks for a calculation when the workbook is opened.
    void calculateOnLoad();

  private:
    [[nodiscard]] pugi::xml_node sheet(std::size_t number) const;

    PackageXml xml_;
};

}  // namespace vexa::frontend
