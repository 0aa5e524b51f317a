#include "module/frame/grammar.h"

namespace vexa {

namespace {

ParamDescriptor describe(const ParameterRow& row) {
    ParamDescriptor parameter(row.name, row.spec, row.required, row.valueRequired);
    parameter.setValueLabel(row.valueLabel);
    for (const std::string_view value : row.values) {
        parameter.addStringValue(value);
    }
    return parameter;
}

}  // namespace

void describe(CommandDescriptor& descriptor, GrammarTable table) {
    for (const SubcommandRow& row : table) {
        SubComDescriptor subcommand(row.name, row.spec, row.required, row.repeatable);
        for (const ParameterRow& parameter : row.parameters) {
            subcommand.addParamDesc(describe(parameter));
        }
        descriptor.addSubComDesc(subcommand);
    }
}

}  // namespace vexa
