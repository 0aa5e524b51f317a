// Styles as XML.
#pragma once

#include <optional>
#include <string_view>

#include "backend/tables/model/table_look.h"
#include "frontend/package/xml_writer.h"
#include "frontend/store/element_reader.h"

namespace vexa::frontend {

/// What is set of a style, as attributes of the element opened last.
void writeStyle(const tables::CellStyle& style, XmlWriter& xml);
/// Asks for the same attributes.
void readStyle(ElementReader& element, tables::CellStyle& style);

/// A finite number as an attribute; anything else is as if it were not set.
void writeNumber(std::string_view name, const std::optional<double>& number, XmlWriter& xml);

}  // namespace vexa::frontend
