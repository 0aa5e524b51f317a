// TABLECELLS: look and content of cells of the selected tables. The only subcommand that a group may hold
// several times; each occurrence has settings of its own.

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "backend/tokens/token_sequence.h"
#include "module/frame/xml_text.h"
#include "module/modify/cell_selection.h"
#include "module/modify/color_value.h"
#include "module/modify/font_style.h"
#include "module/modify/modify_spec.h"
#include "module/modify/parameter_values.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr std::string_view kDimensions[] = {"COLUMNS", "ROWS", "BOTH"};
constexpr std::string_view kReaches[] = {"CELL",    "COLUMN",       "ROW",      "COLUMNDATA",
                                         "ROWDATA", "COLUMNHEADER", "ROWHEADER"};
constexpr QualifierRow kConditions[] = {{"ALL", Spec::keyword},
                                        {"SYSMIS", Spec::keyword},
                                        {"TOP", Spec::number, {}, atLeast(1.0)},
                                        {"BOTTOM", Spec::integer, {}, atLeast(1.0)}};
constexpr QualifierRow kWidthUnits[] = {{"CENTIMETERS", Spec::tokens, "width"},
                                        {"INCHES", Spec::tokens, "width"},
                                        {"POINTS", Spec::tokens, "width"}};

constexpr auto kColumnWidth =
    optionalParameter("COLUMNWIDTH", Spec::qualifiedValue).qualifiedBy(kWidthUnits).checked();

constexpr ParameterRow kParameters[] = {
    kCellSelection,
    optionalParameter("SELECTDIMENSION", Spec::word).of(kDimensions),
    optionalParameter("SELECTCONDITION", Spec::tokens, "{ALL|SYSMIS|TOP(count)|BOTTOM(count)|[>= number]}")
        .qualifiedBy(kConditions),
    kColumnWidth,
    kColumnWidth.boundedBy(atLeast(1.0)),  // described twice; this is meant
    optionalParameter("APPLYTO", Spec::word).of(kReaches),
    optionalParameter("REVERTTODEFAULT", Spec::word).of(kNoYes),
    optionalParameter("FORMAT", Spec::literalOrWord, "format"),
    optionalParameter("FONT", Spec::literalOrWord, "font family"),
    optionalParameter("FONTSIZE", Spec::number).boundedBy(atLeast(1.0)),
    optionalParameter("STYLE", Spec::words).of(kStyles),
    optionalParameter("TEXTCOLOR", Spec::tokens, kColorLabel).of(kColorWords),
    optionalParameter("BACKGROUNDCOLOR", Spec::tokens, kColorLabel).of(kColorWords),
    optionalParameter("REPLACE", Spec::tokens, "{'text'|number}"),
};

constexpr SubcommandRow kGrammar{"TABLECELLS", UPSpecTypes::SubComSpec::keywordParameters, false, true,
                                 kParameters};

/// The cells that the values choose.
struct Condition {
    bool all = false;
    bool missing = false;
    std::int32_t top = -1;
    std::int32_t bottom = -1;
    std::string expression;  ///< escaped
};

/// What is put into the cells.
struct Replacement {
    std::string text;  ///< as written
    double number = -1.0;
};

struct TableCellsSettings {
    CellSelection select;
    bool columns = false;
    bool both = true;
    bool revertToDefault = false;
    Condition condition;
    FontStyle style;
    std::int32_t columnWidth = -1;  ///< points
    double fontSize = -1.0;         ///< points
    std::optional<Color> text, background;
    std::optional<Replacement> replacement;
    std::string applyTo, format, font;
};

void readDimension(const ParamObj& given, TableCellsSettings& cells) {
    cells.columns = given.isStringValue("COLUMNS");
    cells.both = given.isStringValue("BOTH");
}

/// The texts of the tokens between square brackets, joined; without brackets the value's one text, in
/// capitals.
std::string expressionOf(const ParamObj& given) {
    const std::span<const TokenInfoObj> tokens = given.getTokenList();
    if (tokens.size() <= 2 || tokens.front().getOperatorCode() != TokenSequenceBase::openBracket ||
        tokens.back().getOperatorCode() != TokenSequenceBase::closeBracket) {
        return given.getUpStringToken();
    }
    std::string expression;
    for (const TokenInfoObj& token : tokens.subspan(1, tokens.size() - 2)) {
        expression += token.getString();
    }
    return expression;
}

void readExpression(const ParamObj& given, ParserMessage& messages, Condition& condition) {
    condition.expression = escapeXml(expressionOf(given));
    if (!condition.expression.empty()) {
        return;
    }
    std::string_view shown = given.isTokenList() ? given.getTokenObj(0).getString() : std::string_view();
    static_cast<void>(given.getStringGeneric(shown));
    messages.InvalidParamValue(shown, "SELECTCONDITION", "TABLECELLS");
}

/// Nothing that is refused here stops the command.
void readCondition(const ParamObj& given, ParserMessage& messages, Condition& condition) {
    const std::string keyword = given.getUpStringToken();
    condition.all = keyword == "ALL";
    condition.missing = keyword == "SYSMIS";
    if (condition.all || condition.missing) {
        return;
    }
    const std::optional<QualifierObj> qualifier = given.getQualifier();
    const bool top = qualifier && AreStringsEqualCase(qualifier->name(), "TOP");
    if (!top && !(qualifier && AreStringsEqualCase(qualifier->name(), "BOTTOM"))) {
        readExpression(given, messages, condition);
        return;
    }
    if (const std::optional<std::int32_t> count = qualifier->getIntegerValue()) {
        (top ? condition.top : condition.bottom) = *count;
    } else {
        // Names TOP also for BOTTOM; this is meant.
        messages.ParamNeedInteger("TOP", "TABLECELLS");
    }
}

/// Whole points, towards 0, the greatest or least that fit where there are more.
std::int32_t wholePoints(double points) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<double>(std::trunc(points), Limits::min(), Limits::max()));
}

/// Nothing that is refused here stops the command.
void readColumnWidth(const ParamObj& given, ParserMessage& messages, TableCellsSettings& cells) {
    const std::optional<QualifierObj> width = given.getQualifier();
    const std::optional<double> number = width ? width->getDoubleValue() : std::nullopt;
    if (!number) {
        messages.InvalidParamValue(0.0, "COLUMNWIDTH", "TABLECELLS");
    }
    const std::optional<double> unit = width ? pointsOfUnit(width->name()) : std::nullopt;
    if (unit) {
        cells.columnWidth = wholePoints(number.value_or(0.0) * *unit);
    }
    if (cells.columnWidth < 1) {
        messages.InvalidParamValue(number.value_or(0.0), "COLUMNWIDTH", "TABLECELLS");
    }
}

bool readFontSize(const ParamObj& given, TableCellsSettings& cells) {
    const std::optional<double> size = given.getDoubleValue();
    cells.fontSize = size.value_or(cells.fontSize);
    return size.has_value();
}

bool readColor(const ParamObj* given, ParserMessage& messages, std::optional<Color>& color) {
    if (given == nullptr || ParseColorValue(*given, color.emplace())) {
        return true;
    }
    messages.GenericError(kNoColor, {"TABLECELLS"});
    return false;
}

bool readReplacement(const ParamObj& given, ParserMessage& messages, TableCellsSettings& cells) {
    Replacement& replacement = cells.replacement.emplace();
    const std::optional<TextValue> value = textValue(given);
    if (value && value->isLiteral) {
        replacement.text = value->text;
        return true;
    }
    const std::optional<double> number = given.getDoubleValue();
    if (number) {
        replacement.number = *number;
    } else if (given.isTokenList()) {
        messages.InvalidParamValue(given.getTokenObj(0).getString(), "REPLACE", "TABLECELLS");
    }
    return number.has_value();
}

/// What is checked without failing, and the font size.
bool readSettings(const SubComObj& given, ParserMessage& messages, TableCellsSettings& cells) {
    if (const ParamObj* const dimension = given.getParamObj("SELECTDIMENSION")) {
        readDimension(*dimension, cells);
    }
    if (const ParamObj* const condition = given.getParamObj("SELECTCONDITION")) {
        readCondition(*condition, messages, cells.condition);
    }
    if (const ParamObj* const width = given.getParamObj("COLUMNWIDTH")) {
        readColumnWidth(*width, messages, cells);
    }
    cells.applyTo = upperTextOf(given, "APPLYTO");
    const ParamObj* const revert = given.getParamObj("REVERTTODEFAULT");
    cells.revertToDefault = revert != nullptr && revert->isStringValue("YES");
    cells.format = upperTextOf(given, "FORMAT");
    cells.font = upperTextOf(given, "FONT");
    const ParamObj* const size = given.getParamObj("FONTSIZE");
    return size == nullptr || readFontSize(*size, cells);
}

bool read(const SubComObj& given, ParserMessage& messages, TableCellsSettings& cells) {
    if (!readCellSelection(given, messages, cells.select) || !readSettings(given, messages, cells)) {
        return false;
    }
    if (const ParamObj* const style = given.getParamObj("STYLE")) {
        cells.style = readFontStyle(*style);
    }
    if (!readColor(given.getParamObj("TEXTCOLOR"), messages, cells.text) ||
        !readColor(given.getParamObj("BACKGROUNDCOLOR"), messages, cells.background)) {
        return false;
    }
    const ParamObj* const replace = given.getParamObj("REPLACE");
    return replace == nullptr || readReplacement(*replace, messages, cells);
}

void writeCondition(const Condition& condition, std::string& request) {
    constexpr std::string_view kName = "selectCondition";
    if (condition.all) {
        appendAsIs(request, kName, "all");
    } else if (condition.missing) {
        appendAsIs(request, kName, "missing");
    } else if (condition.top > 0) {
        appendAsIs(request, kName, "top(" + std::to_string(condition.top) + ')');
    } else if (condition.bottom > 0) {
        appendAsIs(request, kName, "bottom(" + std::to_string(condition.bottom) + ')');
    } else if (!condition.expression.empty()) {
        appendText(request, kName, condition.expression);
    }
}

void writeLook(const TableCellsSettings& cells, std::string& request) {
    if (cells.revertToDefault) {
        appendFlag(request, "revertToDefault", true);
    }
    appendStyle(cells.style.bold, "bold", request);
    appendStyle(cells.style.underline, "underline", request);
    appendStyle(cells.style.italic, "italic", request);
    if (cells.columnWidth > 0) {
        appendInteger(request, "columnWidth", cells.columnWidth);
    }
    if (cells.fontSize > 0.0) {
        appendNumber(request, "fontSize", cells.fontSize);
    }
    if (cells.text) {
        appendColor(*cells.text, "text", request);
    }
    if (cells.background) {
        appendColor(*cells.background, "background", request);
    }
}

void write(const TableCellsSettings& cells, std::string& request) {
    request += "<tableCells";
    writeCellSelection(cells.select, request);
    appendAsIs(request, "selectColumns", cells.both ? "both" : cells.columns ? "true" : "false");
    writeCondition(cells.condition, request);
    writeLook(cells, request);
    appendTextIfAny(request, "applyTo", cells.applyTo);
    appendTextIfAny(request, "format", cells.format);
    appendTextIfAny(request, "font", cells.font);
    // An empty text is sent as the number that no REPLACE gave; this is meant.
    if (cells.replacement && cells.replacement->text.empty()) {
        appendNumber(request, "replaceValue", cells.replacement->number);
    } else if (cells.replacement) {
        appendText(request, "replace", cells.replacement->text);
    }
    request += "/>";
}

class TableCellsHandler : public ModifyHandler {
  public:
    void describe(GroupComDescriptor& group) const override {
        group.addSubComDesc(vexa::describe(kGrammar), false);
    }

    /// Stops at the first occurrence that was refused.
    bool read(const GroupComObj& group, ParserMessage& messages) override {
        cells_.clear();
        std::vector<const SubComObj*> given;
        group.getSubComObj(given, kGrammar.name);
        return std::all_of(given.begin(), given.end(), [&](const SubComObj* each) {
            return vexa::read(*each, messages, cells_.emplace_back());
        });
    }

    [[nodiscard]] bool isPresent() const override { return !cells_.empty(); }

    void write(std::string& request) const override {
        for (const TableCellsSettings& each : cells_) {
            vexa::write(each, request);
        }
    }

  private:
    std::vector<TableCellsSettings> cells_;
};

}  // namespace

std::unique_ptr<ModifyHandler> makeTableCellsHandler() { return std::make_unique<TableCellsHandler>(); }

}  // namespace vexa
