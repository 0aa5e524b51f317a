#include "module/frame/grammar.h"

#include <utility>

namespace vexa {

namespace {

ParamDescriptor describe(const ParameterRow& row) {
    ParamDescriptor parameter(row.name, row.spec, row.required, row.valueRequired);
    parameter.setValueLabel(row.valueLabel);
    parameter.setStringValues(row.values);
    return parameter;
}

}  // namespace

void describe(CommandDescriptor& descriptor, GrammarTable table) {
    descriptor.reserveSubComs(descriptor.subcommands().size() + table.size());
    for (const SubcommandRow& row : table) {
        SubComDescriptor subcommand(row.name, row.spec, row.required, row.repeatable);
        subcommand.reserveParams(row.parameters.size());
        for (const ParameterRow& parameter : row.parameters) {
            subcommand.addParamDesc(describe(parameter));
        }
        descriptor.addSubComDesc(std::move(subcommand));
    }
}

}  // namespace vexa
