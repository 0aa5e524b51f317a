// Tables and grids as XML. Nothing that a table refers to by number may be missing, so every number is
// checked here and nowhere later. Numbers count from 1 where 0 stands for none, and from 0 where there is no
// such thing.
#pragma once

#include <memory>

#include "backend/tables/model/flat_table.h"
#include "backend/tables/model/table.h"
#include "frontend/package/xml_writer.h"
#include "frontend/store/element_reader.h"
#include "frontend/store/entry_context.h"

namespace vexa::frontend {

void writeTable(const tables::Table& table, XmlWriter& xml, WritingContext& context);
/// `element` is that of `root`.
[[nodiscard]] bool readTable(const pugi::xml_node& root, ElementReader& element, tables::Table& table,
                             ReadingContext& context);

void writeGrid(const tables::FlatTable& grid, XmlWriter& xml, WritingContext& context);
[[nodiscard]] bool readGrid(const pugi::xml_node& root, ElementReader& element, tables::FlatTable& grid,
                            ReadingContext& context);

// The pieces of a table.

inline constexpr std::array<std::string_view, 9> roleWords{
    "none", "mean", "count", "percent", "significance", "residual", "correlation", "median", "total"};
inline constexpr std::array<std::string_view, 2> layerPrintingWords{"visible", "all"};

/// Styles, widths and formats of a table, behind its cells. Nothing for a table that has none but its look.
void writeTableStyle(const tables::Table& table, XmlWriter& xml, WritingContext& context);
/// The nodes from `first` on, up to the end.
[[nodiscard]] bool readTableStyle(pugi::xml_node first, const tables::TableData& data,
                                  tables::TableStyle& style, ReadingContext& context);
/// Numbers with a blank between them.
[[nodiscard]] std::string listText(const std::vector<std::uint32_t>& numbers);
/// The same from a sequence that counts from 0 for one that counts from 1, and back.
[[nodiscard]] std::vector<std::uint32_t> fromOne(std::vector<std::uint32_t> numbers);
/// Formats with a blank between them, and back.
[[nodiscard]] std::string formatsText(const std::vector<tables::DisplayFormat>& formats);
[[nodiscard]] bool readFormats(std::string_view text, std::vector<tables::DisplayFormat>& formats);

}  // namespace vexa::frontend
