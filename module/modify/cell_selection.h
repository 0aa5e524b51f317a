// SELECT of TABLECELLS: the cells by statistic, by area, by the text of their labels, by position.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "backend/syntax/command_spec.h"
#include "backend/syntax/parser_message.h"
#include "module/frame/grammar.h"

namespace vexa {

inline constexpr std::string_view kCellWords[] = {
    "CORRELATION", "CORRELATIONS", "COUNT", "MEAN",    "MEDIAN",    "PERCENT", "RESIDUAL",
    "RESIDUALS",   "SIGNIFICANCE", "BODY",  "HEADERS", "FOOTNOTES", "TITLE",   "CAPTION"};

inline constexpr QualifierRow kCellQualifiers[] = {{"POSITION", UPSpecTypes::ParamSpec::qualifiedLists}};

/// What help texts call them.
inline constexpr std::string_view kCellsLabel =
    "[{CORRELATION|COUNT|MEAN|MEDIAN|PERCENT|RESIDUAL|SIGNIFICANCE|BODY|HEADERS|FOOTNOTES|TITLE|CAPTION|"
    "'label'|POSITION(index ...)} ...]";

/// Not required as far as the parser knows: a missing one is refused with a message of its own.
inline constexpr auto kCellSelection =
    optionalParameter("SELECT", UPSpecTypes::ParamSpec::tokens, kCellsLabel)
        .of(kCellWords)
        .qualifiedBy(kCellQualifiers);

/// Kinds of cells, in the order of the request: body stands before significance.
enum class CellKind : std::uint8_t {
    correlation,
    count,
    mean,
    median,
    percent,
    residual,
    body,
    significance,
    headers,
    footnotes,
    title,
    caption
};

struct CellSelection {
    std::uint32_t kinds = 0;               ///< one bit a `CellKind`
    std::vector<std::string> expressions;  ///< texts of labels, escaped
    std::vector<std::int32_t> positions;   ///< each at least 1
};

/// Reads SELECT of `cells`. False when it is missing or was refused, which has been reported.
[[nodiscard]] bool readCellSelection(const SubComObj& cells, ParserMessage& messages,
                                     CellSelection& selection);

/// Appends the attributes of the selection.
void writeCellSelection(const CellSelection& selection, std::string& request);

}  // namespace vexa
