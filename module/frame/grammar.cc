#include "module/frame/grammar.h"

#include <utility>

namespace vexa {

namespace {

/// What qualifiers and parameters have in common.
template <typename Row>
void setRules(ParamDescriptor& descriptor, const Row& row) {
    if (row.lower) {
        descriptor.setLowerBoundary(row.lower->value, row.lower->option);
    }
    if (row.upper) {
        descriptor.setUpperBoundary(row.upper->value, row.upper->option);
    }
    if (row.checkedByCommand) {
        descriptor.checkedByCommand();
    }
}

ParamDescriptor describe(const QualifierRow& row) {
    ParamDescriptor qualifier(row.name, row.spec, false, true);
    qualifier.setValueLabel(row.valueLabel);
    setRules(qualifier, row);
    return qualifier;
}

}  // namespace

ParamDescriptor describe(const ParameterRow& row) {
    ParamDescriptor parameter(row.name, row.spec, row.required, row.valueRequired, row.brackets);
    parameter.setValueLabel(row.valueLabel);
    parameter.setStringValues(row.values);
    for (const QualifierRow& qualifier : row.qualifiers) {
        parameter.addQualifDesc(describe(qualifier));
    }
    setRules(parameter, row);
    parameter.readOnly(row.readValue);
    return parameter;
}

SubComDescriptor describe(const SubcommandRow& row) {
    SubComDescriptor subcommand(row.name, row.spec, row.required, row.repeatable);
    subcommand.reserveParams(row.parameters.size());
    for (const ParameterRow& parameter : row.parameters) {
        subcommand.addParamDesc(describe(parameter));
    }
    if (row.mayBeEmpty) {
        subcommand.allowSubComEmpty();
    }
    return subcommand;
}

void describe(CommandDescriptor& descriptor, GrammarTable table) {
    descriptor.reserveSubComs(descriptor.subcommands().size() + table.size());
    for (const SubcommandRow& row : table) {
        descriptor.addSubComDesc(describe(row));
    }
}

}  // namespace vexa
