// Values that several places of the JSON form share.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "backend/tables/formats/display_format.h"
#include "backend/tables/model/table_look.h"
#include "frontend/import/json_object.h"

namespace vexa::frontend {

inline constexpr std::array<std::string_view, 7> kStyleKeys{"bold", "italic", "underline", "font",
                                                            "size", "color",  "background"};

/// Reads the style keys of an object.
void readStyle(JsonObject& object, tables::CellStyle& style);
/// The same of an object of its own at a key.
void readStyleAt(JsonObject& object, std::string_view key, tables::CellStyle& style);
void readFormat(JsonObject& object, std::string_view key, tables::DisplayFormat& format);
/// One of a few words; its index, from 0, in `words`.
void readWord(JsonObject& object, std::string_view key, const std::vector<std::string_view>& words,
              std::optional<std::size_t>& value);

}  // namespace vexa::frontend
