// TABLE: title, summary, transposition, sorting, format, table look and shown layers of the selected tables.

#include <utility>
#include <vector>

#include "module/frame/xml_text.h"
#include "module/modify/looks.h"
#include "module/modify/modify_spec.h"
#include "module/modify/parameter_values.h"

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;

constexpr std::string_view kDirections[] = {"ASCENDING", "DESCENDING"};
constexpr QualifierRow kSortKeys[] = {{"COLLABEL", Spec::literalOrWord}, {"COLPOSITION", Spec::integer}};

constexpr auto kSort = optionalParameter("SORT", Spec::qualifierList).qualifiedBy(kSortKeys).checked();

constexpr ParameterRow kParameters[] = {
    optionalParameter("TABLETITLE", Spec::literalOrWord),
    optionalParameter("TABLESUMMARY", Spec::literalOrWord),
    optionalParameter("TRANSPOSE", Spec::word).of(kYesNo),
    optionalParameter("FORMAT", Spec::literalOrWord, "format"),
    optionalParameter("TLOOK", Spec::tokens, "{'file'|NONE}"),
    optionalParameter("SELECTEDLAYER", Spec::tokens, "[{'layer'|index|ALL} {'category'|index|LAST} ...]"),
    kSort,
    optionalParameter("SORTDIRECTION", Spec::word).of(kDirections).checked(),
};

constexpr SubcommandRow kGrammar{"TABLE", UPSpecTypes::SubComSpec::keywordParameters, false, false,
                                 kParameters};

/// A layer or a category of it. The index is 0 for the keyword, -1 for a name.
struct Designator {
    std::string name;  ///< escaped
    std::int32_t index = -1;
};

using Layer = std::pair<Designator, Designator>;

struct TableModifySettings {
    bool transpose = false;
    bool ascending = true;
    bool sort = false;
    bool defaultTableLook = false;
    std::string tableLookPath;  ///< as found
    std::string title;          ///< expanded and escaped, as the summary
    std::string summary;
    std::string sortLabel;  ///< escaped
    std::string format;
    std::int32_t sortPosition = -1;
    /// By what names them: layer and category, layer alone, category alone, neither.
    std::vector<Layer> namedLayers, layerNameCategoryIndex, layerIndexCategoryName, indexedLayers;
};

bool readTableLook(const ParamObj& given, ParserMessage& messages, TableModifySettings& table) {
    const std::optional<TextValue> value = textValue(given);
    if (value && !value->isLiteral && AreStringsEqualCase(value->text, "NONE")) {
        table.defaultTableLook = true;
        return true;
    }
    const std::string name = value ? std::string(value->text) : given.joinedTokens();
    table.tableLookPath = name;
    if (!FindTableLook(table.tableLookPath, ".tlk")) {
        messages.FileNameInvalid(name);
        return false;
    }
    return true;
}

bool readColumnLabel(const ParamObj& label, ParserMessage& messages, TableModifySettings& table) {
    std::vector<std::string_view> literals;
    label.getLiterals(literals);
    if (literals.empty()) {
        // Shows the label stored so far and not the value at fault; this is meant.
        messages.InvalidParamValue(table.sortLabel, "COLLABEL", "TABLE");
        return false;
    }
    table.sortLabel = escapeXml(literals.front());
    return true;
}

bool readColumnPosition(const ParamObj& position, ParserMessage& messages, TableModifySettings& table) {
    const std::optional<std::int32_t> number = position.getIntegerValue();
    if (!number) {
        messages.ParamNeedInteger("COLPOSITION", "TABLE");
        return false;
    }
    table.sortPosition = *number;
    return true;
}

bool readSortKey(const QualifierObj& key, ParserMessage& messages, TableModifySettings& table) {
    if (AreStringsEqualCase(key.name(), "COLLABEL")) {
        return readColumnLabel(key, messages, table);
    }
    if (AreStringsEqualCase(key.name(), "COLPOSITION")) {
        return readColumnPosition(key, messages, table);
    }
    messages.ParamNoSubCom(key.name());
    return false;
}

bool readSort(const ParamObj& given, ParserMessage& messages, TableModifySettings& table) {
    table.sort = true;
    std::vector<QualifierObj> keys;
    bool valid = given.getQualifiers(describe(kSort), keys);
    for (const QualifierObj& key : keys) {
        valid = readSortKey(key, messages, table) && valid;
    }
    if (valid && table.sortPosition >= 1 && !table.sortLabel.empty()) {
        messages.ParamExclusive("COLPOSITION", "COLLABEL", "SORT");
        return false;
    }
    return valid;
}

bool readSortDirection(const ParamObj& given, ParserMessage& messages, TableModifySettings& table) {
    table.ascending = given.isStringValue("ASCENDING");
    if (table.ascending || given.isStringValue("DESCENDING")) {
        return true;
    }
    // Names SORT and not TABLE; this is meant.
    messages.InvalidParamValue(given.joinedTokens(), "SORTDIRECTION", "SORT");
    return false;
}

bool readDesignator(const TokenInfoObj& token, std::string_view keyword, ParserMessage& messages,
                    Designator& designator) {
    if (const std::optional<std::int32_t> index = token.getIntegerValue()) {
        designator.index = *index;
        if (*index < 1) {
            messages.ParamNeedInteger("SELECTEDLAYER", "TABLE");
        }
        return *index >= 1;
    }
    if (token.isLiteral()) {
        designator.name = escapeXml(token.getString());
        return true;
    }
    if (token.spells(keyword)) {
        designator.index = 0;
        return true;
    }
    messages.InvalidParam("SELECTEDLAYER", "TABLE");
    return false;
}

void addLayer(Layer layer, TableModifySettings& table) {
    const auto& [name, category] = layer;
    std::vector<Layer>& kind =
        name.name.empty() ? (category.name.empty() ? table.indexedLayers : table.layerIndexCategoryName)
                          : (category.name.empty() ? table.layerNameCategoryIndex : table.namedLayers);
    kind.push_back(std::move(layer));
}

/// True when the tokens are bracketed pairs.
bool arePairs(std::span<const TokenInfoObj> tokens, ParserMessage& messages) {
    if (tokens.size() % 2 == 1) {
        messages.InvalidParamValue(tokens.back().getString(), "SELECTEDLAYER", "TABLE");
        return false;
    }
    if (tokens.size() < 4) {
        messages.InvalidParamValue("", "SELECTEDLAYER", "TABLE");
        return false;
    }
    if (!tokens.front().getString().starts_with('[') || !tokens.back().getString().starts_with(']')) {
        messages.SquareBracketRequired("SELECTEDLAYER", "TABLE");
        return false;
    }
    return true;
}

/// `valid`: nothing has failed so far. Pairs are read, and their errors reported, in any case.
bool readSelectedLayers(const ParamObj& given, bool valid, ParserMessage& messages,
                        TableModifySettings& table) {
    const std::span<const TokenInfoObj> tokens = given.getTokenList();
    if (!arePairs(tokens, messages)) {
        return false;
    }
    for (std::size_t i = 1; i + 1 < tokens.size(); i += 2) {
        Layer layer;
        valid = readDesignator(tokens[i], "ALL", messages, layer.first) && valid;
        valid = readDesignator(tokens[i + 1], "LAST", messages, layer.second) && valid;
        if (valid) {
            addLayer(std::move(layer), table);
        }
    }
    return valid;
}

bool read(const SubComObj& given, ParserMessage& messages, TableModifySettings& table) {
    table.title = expandedTextOf(given, "TABLETITLE");
    table.summary = expandedTextOf(given, "TABLESUMMARY");
    const ParamObj* const transpose = given.getParamObj("TRANSPOSE");
    table.transpose = transpose != nullptr && transpose->isStringValue("YES");
    table.format = upperTextOf(given, "FORMAT");
    bool valid = true;
    if (const ParamObj* const look = given.getParamObj("TLOOK")) {
        valid = readTableLook(*look, messages, table);
    }
    const ParamObj* const sort = given.getParamObj("SORT");
    valid = valid && (sort == nullptr || readSort(*sort, messages, table));
    const ParamObj* const direction = given.getParamObj("SORTDIRECTION");
    valid = valid && (direction == nullptr || readSortDirection(*direction, messages, table));
    // Read, and its errors reported, also after a failure.
    const ParamObj* const layers = given.getParamObj("SELECTEDLAYER");
    return layers == nullptr ? valid : readSelectedLayers(*layers, valid, messages, table);
}

void writeSort(const TableModifySettings& table, std::string& request) {
    if (!table.sortLabel.empty()) {
        appendText(request, "sortLabel", table.sortLabel);
    } else {
        appendInteger(request, "sortPosition", table.sortPosition);
    }
    appendFlag(request, "ascending", table.ascending);
}

void writeAttributes(const TableModifySettings& table, std::string& request) {
    appendTextIfAny(request, "title", table.title);
    appendTextIfAny(request, "summary", table.summary);
    if (table.transpose) {
        appendFlag(request, "transpose", true);
    }
    if (table.sort) {
        writeSort(table, request);
    }
    appendTextIfAny(request, "format", table.format);
    if (table.defaultTableLook) {
        appendFlag(request, "defaultTableLook", true);
    }
}

void writeLayers(const TableModifySettings& table, std::string& request) {
    for (const auto& [layer, category] : table.namedLayers) {
        request += "<layer";
        appendText(request, "layer", layer.name);
        appendText(request, "category", category.name);
        request += "/>";
    }
    for (const auto& [layer, category] : table.layerNameCategoryIndex) {
        request += "<layer";
        appendText(request, "layer", layer.name);
        appendInteger(request, "categoryInt", category.index);
        request += "/>";
    }
    for (const auto& [layer, category] : table.layerIndexCategoryName) {
        request += "<layer";
        appendInteger(request, "layerInt", layer.index);
        // The one text that is not converted to UTF-8; this is meant.
        appendAsIs(request, "category", category.name);
        request += "/>";
    }
    for (const auto& [layer, category] : table.indexedLayers) {
        request += "<layer";
        appendInteger(request, "layerInt", layer.index);
        appendInteger(request, "categoryInt", category.index);
        request += "/>";
    }
}

bool hasLayers(const TableModifySettings& table) {
    return !table.namedLayers.empty() || !table.layerNameCategoryIndex.empty() ||
           !table.layerIndexCategoryName.empty() || !table.indexedLayers.empty();
}

void write(const TableModifySettings& table, std::string& request) {
    request += "<modifyTable";
    writeAttributes(table, request);
    std::string look;
    if (!table.tableLookPath.empty()) {
        look = fetchFromRoot(table.tableLookPath, "<tableProperties");
    }
    if (!hasLayers(table) && look.empty()) {
        request += "/>";
        return;
    }
    request += '>';
    writeLayers(table, request);
    if (!look.empty()) {
        ((request += "<tableLook>") += look) += "</tableLook>";
    }
    request += "</modifyTable>";
}

}  // namespace

std::unique_ptr<ModifyHandler> makeTableHandler() {
    return std::make_unique<SingleHandler<TableModifySettings>>(kGrammar, read, write);
}

}  // namespace vexa
