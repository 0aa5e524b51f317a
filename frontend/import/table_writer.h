// Prints pivot tables, and values that others print too, in the JSON form.
#pragma once

#include <optional>
#include <string_view>

#include "backend/tables/model/table.h"
#include "frontend/import/json_text.h"
#include "frontend/import/statistic_words.h"

namespace vexa::frontend {

/// The keys of a table but for those that every item has.
void writeTable(JsonText& json, const tables::Table& table, const StatisticWords& words);

/// Each writes nothing for a value that is default.
void writeText(JsonText& json, std::string_view key, std::string_view value);
void writeNumber(JsonText& json, std::string_view key, std::optional<double> value);
void writeFlag(JsonText& json, std::string_view key, bool value);
void writeStyle(JsonText& json, const tables::CellStyle& style);
void writeStyleAt(JsonText& json, std::string_view key, const tables::CellStyle& style);
void writeFootnoteNumbers(JsonText& json, const std::vector<tables::FootnoteId>& footnotes);
void writeFormat(JsonText& json, tables::DisplayFormat format);

}  // namespace vexa::frontend
