#include "tests/unit/syntax/example_grammars.h"

#include <initializer_list>
#include <string_view>

namespace vexa {

namespace {

using Spec = UPSpecTypes::ParamSpec;
using SubSpec = UPSpecTypes::SubComSpec;
using Brackets = UPSpecTypes::BracketOptions;
using Bound = UPSpecTypes::BoundaryOption;
using Names = std::initializer_list<std::string_view>;

ParamDescriptor optional(std::string_view name, Spec spec, Brackets brackets = Brackets::none) {
    return {name, spec, false, true, brackets};
}

ParamDescriptor oneOf(std::string_view name, Spec spec, Names values) {
    ParamDescriptor parameter = optional(name, spec);
    for (const std::string_view value : values) {
        parameter.addStringValue(value);
    }
    return parameter;
}

ParamDescriptor qualified(std::string_view name, Spec spec, Names qualifiers, Spec qualifierSpec) {
    ParamDescriptor parameter = optional(name, spec);
    for (const std::string_view qualifier : qualifiers) {
        parameter.addQualifDesc(optional(qualifier, qualifierSpec));
    }
    return parameter;
}

constexpr std::string_view kTypes[] = {"CHARTS", "HEADINGS", "LOGS", "TABLES", "TEXTS", "NOTES"};

SubComDescriptor selectGrammar() {
    SubComDescriptor select("SELECT", SubSpec::keywordList, true, false);
    select.addParamDesc(optional("ALL", Spec::keyword));
    for (const std::string_view type : kTypes) {
        select.addParamDesc(optional(type, Spec::keyword));
    }
    ParamDescriptor except = optional("EXCEPT", Spec::words);
    except.setStringValues(kTypes).setBracketOption(Brackets::optional).checkedByCommand();
    return select.addParamDesc(except);
}

SubComDescriptor ifGrammar() {
    SubComDescriptor narrowed("IF", SubSpec::keywordParameters, false, false);
    narrowed.addParamDesc(optional("COMMANDS", Spec::tokens).setBracketOption(Brackets::optional));
    narrowed.addParamDesc(optional("SUBTYPES", Spec::literals, Brackets::required));
    narrowed.addParamDesc(
        qualified("LABELS", Spec::qualifiedLists, {"EXACT", "BEGINS", "CONTAINS", "ENDS"}, Spec::literals)
            .setBracketOption(Brackets::required));
    narrowed.addParamDesc(optional("INSTANCES", Spec::tokens, Brackets::required).addStringValue("LAST"));
    ParamDescriptor visible("VISIBLEONLY", Spec::word, false, false);
    return narrowed.addParamDesc(visible.addStringValue("NO").addStringValue("YES"));
}

SubComDescriptor tableGrammar() {
    SubComDescriptor table("TABLE", SubSpec::keywordParameters, false, false);
    table.addParamDesc(optional("TABLETITLE", Spec::literalOrWord));
    table.addParamDesc(oneOf("TRANSPOSE", Spec::word, {"YES", "NO"}));
    table.addParamDesc(optional("TLOOK", Spec::tokens));
    table.addParamDesc(optional("SELECTEDLAYER", Spec::tokens));
    ParamDescriptor sort = optional("SORT", Spec::qualifierList);
    sort.addQualifDesc(optional("COLLABEL", Spec::literalOrWord));
    sort.addQualifDesc(optional("COLPOSITION", Spec::integer));
    table.addParamDesc(sort.checkedByCommand());
    return table.addParamDesc(
        oneOf("SORTDIRECTION", Spec::word, {"ASCENDING", "DESCENDING"}).checkedByCommand());
}

SubComDescriptor cellsGrammar() {
    SubComDescriptor cells("TABLECELLS", SubSpec::keywordParameters, false, true);
    ParamDescriptor select = oneOf("SELECT", Spec::tokens, {"COUNT", "MEAN", "BODY", "TITLE"});
    cells.addParamDesc(select.addQualifDesc(optional("POSITION", Spec::qualifiedLists)));
    ParamDescriptor condition = optional("SELECTCONDITION", Spec::tokens);
    condition.addQualifDesc(optional("ALL", Spec::keyword)).addQualifDesc(optional("SYSMIS", Spec::keyword));
    condition.addQualifDesc(optional("TOP", Spec::number).setLowerBoundary(1, Bound::inclusive));
    condition.addQualifDesc(optional("BOTTOM", Spec::integer).setLowerBoundary(1, Bound::inclusive));
    cells.addParamDesc(condition);
    ParamDescriptor width =
        qualified("COLUMNWIDTH", Spec::qualifiedValue, {"CENTIMETERS", "INCHES", "POINTS"}, Spec::tokens);
    cells.addParamDesc(width);
    cells.addParamDesc(width.setLowerBoundary(1, Bound::inclusive));
    cells.addParamDesc(optional("FONTSIZE", Spec::number).setLowerBoundary(1, Bound::inclusive));
    cells.addParamDesc(oneOf("STYLE", Spec::words, {"REGULAR", "BOLD", "ITALIC"}));
    cells.addParamDesc(oneOf("TEXTCOLOR", Spec::tokens, {"BLACK", "RED", "RGB"}));
    return cells.addParamDesc(optional("REPLACE", Spec::tokens));
}

SubComDescriptor textsGrammar() {
    SubComDescriptor texts("TEXTS", SubSpec::keywordParameters, false, false);
    texts.addParamDesc(optional("TEXT", Spec::literalOrWord));
    texts.addParamDesc(optional("FONTSIZE", Spec::number).checkedByCommand());
    return texts.addParamDesc(oneOf("STYLE", Spec::words, {"REGULAR", "BOLD", "ITALIC"}));
}

SubComDescriptor propertiesGrammar() {
    SubComDescriptor properties("OBJECTPROPERTIES", SubSpec::keywordParameters, false, false);
    properties.addParamDesc(oneOf("VISIBLE", Spec::word, {"ASIS", "YES", "NO"}));
    return properties.addParamDesc(qualified("SIZE", Spec::qualifiedValue,
                                             {"PERCENT", "CENTIMETERS", "INCHES", "POINTS"}, Spec::tokens));
}

SubComDescriptor deleteGrammar() {
    SubComDescriptor removal("DELETEOBJECT", SubSpec::keywordParameters, false, false);
    ParamDescriptor answer("DELETE", Spec::word, false, false);
    return removal.allowSubComEmpty().addParamDesc(answer.addStringValue("YES").addStringValue("NO"));
}

/// INCHES or MM with a value above or at 0.
ParamDescriptor measured(std::string_view name, Spec spec) {
    ParamDescriptor parameter = optional(name, Spec::qualifiedValue);
    for (const std::string_view unit : {"INCHES", "MM"}) {
        parameter.addQualifDesc(optional(unit, spec).setLowerBoundary(0, Bound::inclusive));
    }
    return parameter;
}

}  // namespace

CommandDescriptor modifyGrammar() {
    CommandDescriptor command("OUTPUT MODIFY", "Output Modify");
    SubComDescriptor leading("", SubSpec::keywordParameters, false, false);
    leading.addParamDesc(optional("NAME", Spec::tokens)).addParamDesc(optional("DEBUG", Spec::tokens));
    SubComDescriptor report("REPORT", SubSpec::keywordParameters, false, false);
    report.addParamDesc(oneOf("PRINTREPORT", Spec::word, {"NO", "YES"}));
    GroupComDescriptor group(UPSpecTypes::GroupSpec::selection, true, "Select command ^1...");
    group.addSubComDesc(selectGrammar(), true);
    group.addSubComDesc(ifGrammar(), false).addSubComDesc(deleteGrammar(), false);
    group.addSubComDesc(textsGrammar(), false).addSubComDesc(propertiesGrammar(), false);
    group.addSubComDesc(tableGrammar(), false).addSubComDesc(cellsGrammar(), false);
    return command.addSubComDesc(leading).addSubComDesc(report).addGroupComDesc(group);
}

CommandDescriptor exportGrammar() {
    CommandDescriptor command("OUTPUT EXPORT", "Output Export");
    SubComDescriptor leading("", SubSpec::keywordParameters, false, false);
    leading.addParamDesc(optional("NAME", Spec::tokens));
    SubComDescriptor contents("CONTENTS", SubSpec::keywordParameters, false, false);
    contents.addParamDesc(oneOf("EXPORT", Spec::word, {"ALL", "VISIBLE"}));
    contents.addParamDesc(oneOf("LAYERS", Spec::word, {"PRINTSETTING", "ALL", "VISIBLE"}));
    SubComDescriptor doc("DOC", SubSpec::keywordParameters, false, false);
    doc.addParamDesc(optional("DOCUMENTFILE", Spec::tokens));
    doc.addParamDesc(measured("PAGESIZE", Spec::numbers)).addParamDesc(measured("TOPMARGIN", Spec::number));
    SubComDescriptor report("REPORT", SubSpec::keywordParameters, false, false);
    report.addParamDesc(oneOf("EXCLUDE", Spec::words, {"TEXTS", "LOGS", "NOTES"}));
    report.addParamDesc(optional("URL", Spec::tokens));
    SubComDescriptor text("TEXT", SubSpec::keywordParameters, false, false);
    ParamDescriptor columns("COLUMNWIDTH", Spec::integer, false, false);
    text.addParamDesc(columns.addStringValue("AUTOFIT").setLowerBoundary(0, Bound::inclusive));
    text.addParamDesc(optional("ROWBORDER", Spec::literalOrWord));
    SubComDescriptor xls("XLS", SubSpec::keywordParameters, false, false);
    ParamDescriptor location = optional("LOCATION", Spec::qualifiedValue);
    location.addQualifDesc(optional("LASTCOLUMN", Spec::keyword)).addStringValue("LASTROW");
    xls.addParamDesc(location.addQualifDesc(optional("STARTCELL", Spec::literalOrWord)));
    SubComDescriptor eps("EPS", SubSpec::keywordParameters, false, false);
    ParamDescriptor width = optional("WIDTH", Spec::qualifiedValue);
    width.addQualifDesc(optional("PERCENT", Spec::number)
                            .setLowerBoundary(0, Bound::exclusive)
                            .setUpperBoundary(200, Bound::inclusive));
    eps.addParamDesc(
        width.addQualifDesc(optional("POINTS", Spec::number).setLowerBoundary(0, Bound::exclusive)));
    SubComDescriptor bmp("BMP", SubSpec::keywordParameters, false, false);
    ParamDescriptor percent("PERCENTSIZE", Spec::number, false, false);
    percent.setLowerBoundary(0, Bound::inclusive).setUpperBoundary(200, Bound::inclusive);
    bmp.addParamDesc(percent.checkedByCommand());
    command.addSubComDesc(leading).addSubComDesc(contents).addSubComDesc(doc).addSubComDesc(report);
    return command.addSubComDesc(text).addSubComDesc(xls).addSubComDesc(eps).addSubComDesc(bmp);
}

CommandDescriptor grammarOf(const ParamDescriptor& parameter) {
    CommandDescriptor command("TRY");
    SubComDescriptor leading("", SubSpec::keywordParameters, false, false);
    return command.addSubComDesc(leading.addParamDesc(parameter));
}

}  // namespace vexa
